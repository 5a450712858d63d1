#include "TzImageRenderTableDialog.h"

#include "TZModelColorList.h"

#include "renders/TEImageRender.h"
#include "renders/TESingleBandImageRender.h"
#include "widgets/TZColorBtn.h"
#include "widgets/TZColorMenu.h"
#include "widgets/TZColorSchemeComboBox.h"
#include "widgets/TZWaitDialog.h"

#include <QHeaderView>
#include <QMessageBox>
#include <QSignalBlocker>
#include <QStyle>
#include <QTableView>

#include <algorithm>

using namespace TZObjects;

TzImageRenderTableDialog::TzImageRenderTableDialog(QWidget* parent)
    : TZRenderPanel(parent)
{
}

TzImageRenderTableDialog::~TzImageRenderTableDialog() = default;

bool TzImageRenderTableDialog::mayFillInfo(TERasterProps*)
{
    return true;
}

void TzImageRenderTableDialog::readRaster(TERasterProps*)
{
}

void TzImageRenderTableDialog::onReset()
{
    if (!isVisible())
        return;
    mRasterLayer = TERefPtr<TERasterLayer>(currentRasterLayer());
    if (!mModel)
        createModel();
    mModel->clear();
    load();
}

void TzImageRenderTableDialog::createModel()
{
    QTableView* table = tableView();
    const QSize viewport = table->viewport()->size();
    // The colour column's icons: half the viewport wide and its full height,
    // so that a row shows its colour across the whole cell.
    mModel = new TZModelColorList(QSize(viewport.width() / 2, viewport.height()), this);
    table->setModel(mModel);
    table->setIconSize(mModel->iconSize());
    table->setColumnWidth(0, viewport.width() / 2);
    table->setColumnWidth(1, viewport.width() / 2);
    table->setAlternatingRowColors(true);
    table->horizontalHeader()->setFixedHeight(25);
    // The value column takes what the colour column leaves, so the table
    // never scrolls sideways.
    table->horizontalHeader()->setStretchLastSection(true);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->verticalHeader()->hide();
    connectSlots();
}

void TzImageRenderTableDialog::load()
{
    mInfo.reset();
    mSetInfoOnApply = false;

    const TERefPtr<TEImageRender> render = currentImageRender();
    const TEColor nodata = render ? render->GetNodataColor() : TEColor();
    nodataButton()->setColor(render && render->GetNodataColorType() != 0
                                 ? qRgb(nodata.getR(), nodata.getG(), nodata.getB())
                                 : 0);
    if (!mRasterLayer || !mRasterLayer->GetRaster())
        return;

    auto* single = dynamic_cast<TESingleBandImageRender*>(render.get());
    if (single && single->getImageRenderMODE() == renderMode()) {
        const TERefPtr<TEImageRenderInfo> info = single->getRenderInfo();
        if (info && info->GetRenderMode() == renderMode())
            mInfo = info;
        if (mAppliedRamp)
            showRamp(mAppliedRamp.get());
        else
            showDefaultRamp();
    } else {
        showDefaultRamp();
    }

    TERasterProps* raster = mRasterLayer->GetRaster().get();
    TERefPtr<TEImageRenderInfo> fill;
    if (!mInfo || mInfo->GetItemCount() == 0) {
        if (!mayFillInfo(raster))
            return;
        fill = mInfo ? mInfo : makeInfo();
    }

    bool filled = true;
    TEString error;
    TZWaitDialog wait(tr("Reading the raster..."), this);
    const bool ran = wait.WaitFor([this, raster, fill, &filled, &error] {
        if (fill)
            filled = fill->AddFromRaster(raster, 1, &error);
        readRaster(raster);
    });
    if (!ran || !filled) {
        const QString reason = ran ? error.toQString() : wait.errorText();
        QMessageBox::warning(this, tr("Warning"),
                             tr("The raster cannot be shown this way: %1").arg(reason));
        if (!mInfo)
            return;
    } else if (fill) {
        if (!mInfo) {
            mInfo = fill;
            mSetInfoOnApply = true;
        }
        infoFilled();
    }
    fillRows();
    fitValueColumn();
}

void TzImageRenderTableDialog::fitValueColumn()
{
    QTableView* table = tableView();
    const int viewport = table->viewport()->width();
    // The widest of the first rows is enough: texts of one table are alike.
    const QFontMetrics metrics(table->font());
    int needed = 0;
    for (int row = 0; row < std::min(mModel->rowCount(), 1000); ++row)
        needed = std::max(needed, metrics.horizontalAdvance(mModel->row(row).text));
    needed += 4 * table->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, table) + 6;
    table->setColumnWidth(0, std::max(viewport / 4, std::min(viewport / 2, viewport - needed)));
}

void TzImageRenderTableDialog::applyToRender()
{
    const TERefPtr<TEImageRender> render = currentImageRender();
    if (!render)
        return;
    const QRgb nodata = nodataButton()->getColor();
    if (nodata != 0) {
        render->SetNodataColorType(1);
        render->SetNodataColor(TEColor(qRed(nodata), qGreen(nodata), qBlue(nodata)));
    } else {
        render->SetNodataColorType(0);
    }
    if (mSetInfoOnApply) {
        if (auto* single = dynamic_cast<TESingleBandImageRender*>(render.get()))
            single->setRenderInfo(mInfo);
    }
}

void TzImageRenderTableDialog::pickRowColor(const QModelIndex& index)
{
    if (!mModel || !index.isValid() || index.column() != 0 || index.row() >= mModel->rowCount())
        return;
    QTableView* table = tableView();
    TZColorMenu menu(this);
    menu.setColor(mModel->rowColor(index.row()));
    const QPoint cellBottomLeft = table->viewport()->mapToGlobal(table->visualRect(index).bottomLeft());
    const QSize size = menu.sizeHint();
    menu.exec(cellBottomLeft - QPoint(size.width(), size.height()));
    mModel->setRowColor(index.row(), menu.getColor());
}

void TzImageRenderTableDialog::showRamp(TEColorRamp* ramp)
{
    if (TZColorSchemeComboBox* combo = colorCombo()) {
        const QSignalBlocker blocker(combo);
        combo->setColorRamp(ramp);
    }
}

void TzImageRenderTableDialog::showDefaultRamp()
{
    if (TZColorSchemeComboBox* combo = colorCombo()) {
        const QSignalBlocker blocker(combo);
        combo->setDefaultGroup(QStringLiteral("DEM"), QStringLiteral("Default"));
    }
}

TERefPtr<TEColorRamp> TzImageRenderTableDialog::currentRampSplit(int n) const
{
    TZColorSchemeComboBox* combo = colorCombo();
    TEColorRamp* ramp = combo ? combo->currentColorRamp() : nullptr;
    if (!ramp)
        return TERefPtr<TEColorRamp>();
    TERefPtr<TEColorRamp> copy = ramp->clone();
    copy->setLevel(n);
    return copy;
}

void TzImageRenderTableDialog::keepAppliedRamp()
{
    TZColorSchemeComboBox* combo = colorCombo();
    TEColorRamp* ramp = combo ? combo->currentColorRamp() : nullptr;
    mAppliedRamp = ramp ? ramp->clone() : TERefPtr<TEColorRamp>();
}
