#include "TZRenderPanelSingleSymbol.h"

#include "TZControlRender.h"
#include "TZLayerKinds.h"

#include "ui_TZRenderPanelSingleSymbol.h"

#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyleDB.h"
#include "symbology/TEStyleMultiLayer.h"
#include "symbology/TEStylePoint.h"
#include "widgets/TZStyleSelectorDialog.h"
#include "widgets/TZSymbolUtils.h"

#include <QMouseEvent>
#include <QStandardItemModel>

using namespace TZObjects;

namespace {

const QSize PriorityIconSize(32, 32);
const QSize UnmeasuredPointSize(16, 16);

// A length in style units as screen pixels, by the preview's own factors:
// only code 4 counts as points here, code 0 (and any other) as pixels.
double unitsToPixels(double value, int units)
{
    switch (units) {
    case TEStyle::Millimeter:
        return value / 0.2646;
    case TEStyle::Centimeter:
        return value / 0.0265;
    case TEStyle::Inch:
        return value / 0.0104;
    case TEStyle::TypographicPoint:
        return value / 0.7498;
    default:
        return value;
    }
}

} // namespace

TZRenderPanelSingleSymbol::TZRenderPanelSingleSymbol(QWidget* parent)
    : TZRenderPanel(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelSingleSymbol>())
{
    mUi->setupUi(this);
    mPriorityModel = new QStandardItemModel(mUi->tableView);
    mUi->tableView->setModel(mPriorityModel);
    mUi->tableView->setIconSize(PriorityIconSize);

    connect(mUi->mToolButtonSymbolDetail, SIGNAL(clicked(bool)), this, SLOT(onMoreDetail()));
    connect(mPriorityModel, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)), this,
            SLOT(onModelDatachanged(QModelIndex, QModelIndex, QVector<int>)));
    connect(mUi->mButtonRotate, SIGNAL(clicked(bool)), this, SLOT(onSetupRotation()));

    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Point << TELayer::LT_MultiPoint << TELayer::LT_Line << TELayer::LT_Polygon;
}

TZRenderPanelSingleSymbol::~TZRenderPanelSingleSymbol() = default;

QString TZRenderPanelSingleSymbol::name() const
{
    return QStringLiteral("SingleSymbol");
}

QString TZRenderPanelSingleSymbol::title() const
{
    return tr("Single symbol");
}

TERefPtr<TEFeatureRender> TZRenderPanelSingleSymbol::GetRender()
{
    TELayer* layer = TZControlRender::instance(nullptr)->layer();
    if (!layer)
        return nullptr;
    return layer->GetRender().cast<TEFeatureRender>();
}

TEStyle* TZRenderPanelSingleSymbol::getCurrentLayerStyle()
{
    const TERefPtr<TEFeatureRender> render = GetRender();
    if (!render || render->GetType() != TEString(L"SingleSymbol"))
        return nullptr;
    const TERefPtr<TESingleSymbolRender> single = render.cast<TESingleSymbolRender>();
    return single ? single->GetStyle().get() : nullptr;
}

bool TZRenderPanelSingleSymbol::getStyleType(TEStyle::StyleType& type)
{
    TELayer* layer = TZControlRender::instance(nullptr)->layer();
    if (!layer)
        return false;
    type = TZLayerKinds::styleType(layer->GetLayerType());
    return true;
}

void TZRenderPanelSingleSymbol::onReset()
{
    if (!isVisible())
        return;
    mStyle = nullptr;
    TELayer* layer = TZControlRender::instance(nullptr)->layer();
    if (!layer || !layer->IsFeatureLayer())
        return;
    TEFeatureLayer* features = dynamic_cast<TEFeatureLayer*>(layer);
    if (!features)
        return;

    mUi->mButtonRotate->setVisible(TZLayerKinds::isPoint(layer->GetLayerType()));
    mUi->mLabelCurrentSymbol->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);

    const TERefPtr<TEFeatureRender> render = layer->GetRender().cast<TEFeatureRender>();
    const TERefPtr<TESingleSymbolRender> single =
        render && render->GetType() == TEString(L"SingleSymbol") ? render.cast<TESingleSymbolRender>() : nullptr;
    if (single) {
        mStyle = single->GetStyle();
        mUi->mlineEditLabel->setText(single->GetStyleLabel().toQString());
        drawSymbolPreview(UnmeasuredPointSize);
        mUi->checkBox->setChecked(single->PriorityRender());
    } else {
        mStyle = features->GetDefaultStyle();
        const QSize labelSize = mUi->mLabelCurrentSymbol->size();
        showPreview(QSize(int(labelSize.width() * 0.8), int(labelSize.height() * 0.8)));
    }
    RefreshTableView();
}

void TZRenderPanelSingleSymbol::drawSymbolPreview(const QSize& fallback)
{
    if (const auto* point = dynamic_cast<const TEStylePoint*>(mStyle.get())) {
        QSize size(int(unitsToPixels(point->GetWidth(), point->GetUnits())),
                   int(unitsToPixels(point->GetHeight(), point->GetUnits())));
        showPreview(size.isEmpty() ? fallback : size);
        return;
    }
    showPreview(mUi->mLabelCurrentSymbol->size());
}

void TZRenderPanelSingleSymbol::showPreview(const QSize& size)
{
    mUi->mLabelCurrentSymbol->setPixmap(TZSymbolUtils::symbolPreviewPixmap(mStyle.get(), size));
}

void TZRenderPanelSingleSymbol::onMoreDetail()
{
    TEStyle::StyleType type = TEStyle::FillStyle;
    getStyleType(type);

    TEStyleDB* database = nullptr;
    TEStyle* chosen = mStyle ? selectStyle(mStyle.get(), database) : selectStyle(type, database);
    // A cancelled selection keeps the symbol the panel holds.
    if (!chosen)
        return;
    if (!database) {
        mMemorySymbol = true;
        mSymbolDBName.clear();
    } else {
        mMemorySymbol = false;
        mSymbolDBName = database->GetName().toQString();
    }
    mStyle = TERefPtr<TEStyle>(chosen);
    drawSymbolPreview(UnmeasuredPointSize);
    RefreshTableView();
}

void TZRenderPanelSingleSymbol::onSetupRotation()
{
    if (TEFeatureLayer* layer = currentFeatureLayer())
        mRotation.editWithDialog(layer, this, TZRotationSettings::ReadBy::Mode);
}

void TZRenderPanelSingleSymbol::RefreshTableView()
{
    auto* multi = dynamic_cast<TEStyleMultiLayer*>(mStyle.get());
    const int layerColumns = multi ? multi->GetLayerCount() : (mStyle ? 1 : 0);
    mPriorityModel->setColumnCount(2 + layerColumns);
    mPriorityModel->setHorizontalHeaderItem(0, new QStandardItem(tr("Symbol")));
    mPriorityModel->setHorizontalHeaderItem(1, new QStandardItem(tr("Symbol name")));
    if (multi) {
        for (int i = 0; i < layerColumns; ++i)
            mPriorityModel->setHorizontalHeaderItem(2 + i, new QStandardItem(QStringLiteral("-%1-").arg(i + 1)));
    } else if (mStyle) {
        mPriorityModel->setHorizontalHeaderItem(2, new QStandardItem(tr("-1-")));
    }

    if (!mUi->checkBox->isChecked()) {
        mPriorityModel->removeRows(0, mPriorityModel->rowCount());
        return;
    }
    if (!mStyle) {
        mPriorityModel->removeRows(0, mPriorityModel->rowCount());
        return;
    }

    mPriorityModel->setRowCount(1);
    auto* symbolItem = new QStandardItem(TZSymbolUtils::symbolPreviewIcon(mStyle.get(), PriorityIconSize), QString());
    symbolItem->setEditable(false);
    mPriorityModel->setItem(0, 0, symbolItem);
    auto* nameItem = new QStandardItem(mStyle->GetName().toQString());
    nameItem->setEditable(false);
    mPriorityModel->setItem(0, 1, nameItem);
    if (multi) {
        for (int i = 0; i < layerColumns; ++i) {
            TEStyle* layer = multi->GetLayer(i);
            mPriorityModel->setItem(0, 2 + i,
                                    new QStandardItem(TZSymbolUtils::symbolPreviewIcon(layer, PriorityIconSize),
                                                      QStringLiteral("%1").arg(layer ? layer->GetPriority() : 0)));
        }
    } else {
        mPriorityModel->setItem(0, 2,
                                new QStandardItem(TZSymbolUtils::symbolPreviewIcon(mStyle.get(), PriorityIconSize),
                                                  QStringLiteral("%1").arg(mStyle->GetPriority())));
    }
}

void TZRenderPanelSingleSymbol::onModelDatachanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                                   const QVector<int>&)
{
    if (topLeft.row() != bottomRight.row() || topLeft.column() != bottomRight.column())
        return;
    if (topLeft.column() < 2 || !mStyle)
        return;
    const int priority = topLeft.data(Qt::DisplayRole).toString().toInt(nullptr, 10);
    if (auto* multi = dynamic_cast<TEStyleMultiLayer*>(mStyle.get())) {
        const int layerIndex = topLeft.column() - 2;
        if (layerIndex < multi->GetLayerCount())
            multi->GetLayer(layerIndex)->SetPriority(priority);
    } else {
        mStyle->SetPriority(priority);
    }
}

void TZRenderPanelSingleSymbol::on_checkBox_clicked()
{
    RefreshTableView();
}

void TZRenderPanelSingleSymbol::updateSymbolPreview()
{
}

void TZRenderPanelSingleSymbol::mousePressEvent(QMouseEvent* event)
{
    const QRect area = mUi->mLabelCurrentSymbol->geometry();
    const QPoint pos = event->pos();
    if (pos.x() >= area.x() && pos.x() <= area.x() + area.width() && pos.y() >= area.y()
        && pos.y() <= area.y() + area.height()) {
        onMoreDetail();
        return;
    }
    TZRenderPanel::mousePressEvent(event);
}

bool TZRenderPanelSingleSymbol::onApply()
{
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer)
        return false;
    const TERefPtr<TEFeatureLayer> held(layer);

    cancelActiveDrawing();

    const auto render = MakeRef<TESingleSymbolRender>(mStyle);
    render->EnablePriorityRender(mUi->checkBox->isChecked());
    render->SetStyleLabel(TEString(mUi->mlineEditLabel->text()));
    render->SetIsRotateByClockWise(mRotation.clockwise);
    render->SetIsMemorySymbol(mMemorySymbol);
    render->SetSymbolDB(TEString(mSymbolDBName));
    mRotation.writeFieldAndRange(*render);
    layer->SetSymbolRender(render);
    return true;
}
