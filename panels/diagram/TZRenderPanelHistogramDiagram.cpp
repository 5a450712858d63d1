#include "TZRenderPanelHistogramDiagram.h"

#include "TZModelPanelHistogramDiagram.h"
#include "TZWidgetHistogramFieldItem.h"

#include "ui_TZRenderPanelHistogramDiagram.h"

#include "data/TEFeatureLayer.h"
#include "renders/TEHistogramDiagramRender.h"

using namespace TZObjects;

namespace {

// The width unit codes: the combo's index is the code.
int unitCode(int index)
{
    return index >= 1 && index <= 3 ? index : 0;
}

// A width from one unit to another by the page's own conversion factors.
// They are not all exact inverses of each other (points to millimetres and
// back does not quite return the start); the page has always converted so.
double convertWidth(double value, int from, int to)
{
    if (from == to)
        return value;
    switch (from) {
    case 0:
        switch (to) {
        case 1: return value * 0.0353 * 10.0;
        case 2: return value * 0.0353;
        default: return value * 0.0353 * 0.3937;
        }
    case 1:
        switch (to) {
        case 0: return value / 0.353;
        case 2: return value / 10.0;
        default: return value * 0.03937;
        }
    case 2:
        switch (to) {
        case 0: return value / 0.0353;
        case 1: return value * 10.0;
        default: return value * 0.3937;
        }
    default:
        switch (to) {
        case 0: return value / 0.01389761;
        case 1: return value / 0.03937;
        default: return value / 0.3937;
        }
    }
}

} // namespace

TZRenderPanelHistogramDiagram::TZRenderPanelHistogramDiagram(QWidget* parent)
    : TZRenderPanelDiagramBase(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelHistogramDiagram>())
{
    mUi->setupUi(this);
    // Translated texts, the unit code as each entry's data.
    const QStringList units{tr("Point"), tr("MM"), tr("CM"), tr("Inch")};
    for (int i = 0; i < units.size(); ++i) {
        mUi->mComboBoxWidthUnit->setItemText(i, units[i]);
        mUi->mComboBoxWidthUnit->setItemData(i, i);
    }
    mUi->mComboBoxWidthUnit->setCurrentIndex(0);
    setDiagramWidgets(mUi->mComboBoxValueFields, mUi->mComboBoxRamp, mUi->mTableViewValues,
                      mUi->mCheckBoxShowLabel);
    connect(mUi->mComboBoxWidthUnit, SIGNAL(currentIndexChanged(int)), this, SLOT(onWidthUnitChanged()));
    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Point << TELayer::LT_MultiPoint << TELayer::LT_Line << TELayer::LT_Polygon;
}

TZRenderPanelHistogramDiagram::~TZRenderPanelHistogramDiagram() = default;

QString TZRenderPanelHistogramDiagram::name() const
{
    return QStringLiteral("HistogramDiagram");
}

QString TZRenderPanelHistogramDiagram::title() const
{
    return tr("Histogram Diagram");
}

TZModelPanelPieDiagram* TZRenderPanelHistogramDiagram::createModel()
{
    return new TZModelPanelHistogramDiagram(this);
}

TZWidgetFieldItem* TZRenderPanelHistogramDiagram::createFieldItem(const QString& fieldName)
{
    return new TZWidgetHistogramFieldItem(fieldName);
}

void TZRenderPanelHistogramDiagram::onWidthUnitChanged()
{
    const int unit = unitCode(mUi->mComboBoxWidthUnit->currentIndex());
    const double value = convertWidth(mUi->mDoubleSpinBoxWidth->value(), mWidthUnit, unit);
    mWidthUnit = unit;
    mUi->mDoubleSpinBoxWidth->setValue(value);
}

void TZRenderPanelHistogramDiagram::on_mRadioButtonVertical_clicked()
{
    mUi->mRadioButtonVertical->setChecked(true);
    mUi->mRadioButtonHorizontal->setChecked(false);
}

void TZRenderPanelHistogramDiagram::on_mRadioButtonHorizontal_clicked()
{
    mUi->mRadioButtonHorizontal->setChecked(true);
    mUi->mRadioButtonVertical->setChecked(false);
}

void TZRenderPanelHistogramDiagram::onReset()
{
    if (!isVisible())
        return;
    TEFeatureLayer* layer = resetFields();
    if (!layer)
        return;
    mUi->mDoubleSpinBoxWidth->setValue(10);
    mUi->mDoubleSpinBoxMaxHeight->setValue(100);
    const TERefPtr<TEFeatureRender> current = layer->GetRender().cast<TEFeatureRender>();
    if (auto* histogram = dynamic_cast<TEHistogramDiagramRender*>(current.get())) {
        // Selecting the unit converts the box; the render's width is then
        // written over it, so the unit is settled first.
        mUi->mComboBoxWidthUnit->setCurrentIndex(unitCode(histogram->getUnitType()));
        mUi->mDoubleSpinBoxWidth->setValue(int(histogram->GetWidth()));
        mUi->mDoubleSpinBoxMaxHeight->setValue(histogram->GetMaxHeight());
        readItems(histogram);
    } else {
        takeBackground(current);
    }
}

bool TZRenderPanelHistogramDiagram::onApply()
{
    TEFeatureLayer* layer = beginApply();
    if (!layer)
        return false;
    TERefPtr<TEHistogramDiagramRender> render = layer->GetRender().cast<TEHistogramDiagramRender>();
    if (!render)
        render = MakeRef<TEHistogramDiagramRender>();
    writeItems(render.get());
    render->SetShowLabel(mUi->mCheckBoxShowLabel->isChecked());
    render->SetVerticalDirection(mUi->mRadioButtonVertical->isChecked());
    render->SetWidth(mUi->mDoubleSpinBoxWidth->value());
    render->setMaxHeight(int(mUi->mDoubleSpinBoxMaxHeight->value()));
    render->setUnitType(unitCode(mUi->mComboBoxWidthUnit->currentIndex()));
    writeBackground(render.get());
    layer->SetSymbolRender(render);
    return true;
}
