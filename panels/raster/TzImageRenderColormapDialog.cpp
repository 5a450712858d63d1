#include "TzImageRenderColormapDialog.h"

#include "TZModelColorList.h"

#include "ui_TzImageRenderColormapDialog.h"

#include "renders/TEImageColormapRenderInfo.h"

using namespace TZObjects;

TzImageRenderColormapDialog::TzImageRenderColormapDialog(QWidget* parent)
    : TzImageRenderTableDialog(parent)
    , mUi(std::make_unique<Ui::TzImageRenderColormapDialog>())
{
    mUi->setupUi(this);
    mUi->toolButton_nodata->setColor(0);
    // The entry numbers are the pixel values; only colours are edited.
    mUi->tableView->setEditTriggers(QAbstractItemView::NoEditTriggers);

    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_SingleBandRaster;
}

TzImageRenderColormapDialog::~TzImageRenderColormapDialog() = default;

QString TzImageRenderColormapDialog::name() const
{
    return QStringLiteral("ImageColormap");
}

QString TzImageRenderColormapDialog::title() const
{
    return tr("Image Colormap");
}

QTableView* TzImageRenderColormapDialog::tableView() const
{
    return mUi->tableView;
}

TZColorBtn* TzImageRenderColormapDialog::nodataButton() const
{
    return mUi->toolButton_nodata;
}

void TzImageRenderColormapDialog::connectSlots()
{
    connect(mUi->tableView, SIGNAL(doubleClicked(QModelIndex)), this, SLOT(onItemDoubleClicked(QModelIndex)));
}

TERefPtr<TEImageRenderInfo> TzImageRenderColormapDialog::makeInfo() const
{
    return MakeRef<TEImageColormapRenderInfo>();
}

void TzImageRenderColormapDialog::fillRows()
{
    auto* info = dynamic_cast<TEImageColormapRenderInfo*>(mInfo.get());
    const int count = info ? info->GetItemCount() : 0;
    QVector<QColor> colors;
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        TEColor color;
        info->GetItemColr(i, &color);
        colors.append(QColor(color.getR(), color.getG(), color.getB()));
        texts.append(QString::number(i));
    }
    mModel->appendRows(colors, texts);
}

void TzImageRenderColormapDialog::onItemDoubleClicked(const QModelIndex& index)
{
    pickRowColor(index);
}

bool TzImageRenderColormapDialog::onApply()
{
    auto* info = dynamic_cast<TEImageColormapRenderInfo*>(mInfo.get());
    if (!info || !mModel)
        return true;
    cancelActiveDrawing();
    for (int i = 0; i < mModel->rowCount(); ++i) {
        const QColor color = mModel->rowColor(i);
        TEColor entry(color.red(), color.green(), color.blue());
        // An entry whose colour was not changed keeps its transparency (a
        // table's no-data entry is often fully transparent); a new colour is
        // opaque.
        TEColor old;
        if (info->GetItemColr(i, &old) && old.getR() == entry.getR() && old.getG() == entry.getG()
            && old.getB() == entry.getB())
            entry.setA(old.getA());
        info->SetRenderColorTable(i, entry);
    }
    applyToRender();
    return true;
}
