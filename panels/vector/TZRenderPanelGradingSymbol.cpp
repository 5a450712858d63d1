#include "TZRenderPanelGradingSymbol.h"

#include "TZGradingValues.h"
#include "TZModelGradingSymbol.h"

#include "ui_TZRenderPanelGradingSymbol.h"

#include "renders/TEGradingSymbolRender.h"
#include "symbology/TEStyleFill.h"
#include "symbology/TEStyleSimpleLine.h"

using namespace TZObjects;

TZRenderPanelGradingSymbol::TZRenderPanelGradingSymbol(QWidget* parent)
    : TZRenderPanelGradingBase(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelGradingSymbol>())
{
    mUi->setupUi(this);
    initGradingWidgets(new TZModelGradingSymbol(this));
}

TZRenderPanelGradingSymbol::~TZRenderPanelGradingSymbol() = default;

QString TZRenderPanelGradingSymbol::name() const
{
    return QStringLiteral("GradingSymbol");
}

QString TZRenderPanelGradingSymbol::title() const
{
    return tr("Grading symbol");
}

bool TZRenderPanelGradingSymbol::onApply()
{
    cancelActiveDrawing();
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer || !mModel || mModel->field().isEmpty())
        return false;
    const TERefPtr<TEFeatureLayer> held(layer);
    const bool polygons = layer->GetLayerType() == TELayer::LT_Polygon;
    copyOutlineToModel();

    const auto render = MakeRef<TEGradingSymbolRender>(TEString(mModel->field()));
    render->SetLevel(mModel->level());
    bool intersectionAccepted = false;
    double previousUpper = 0.0;
    for (int row = 0; row < mModel->rowCount(); ++row) {
        const GradingSymbolItem& item = mModel->item(row);
        const QString range = withAsciiComma(item.range);
        const QString label = withAsciiComma(item.label);
        if (row > 0) {
            double lower = 0.0;
            double upper = 0.0;
            if (!TZGradingValues::parseRange(range, lower, upper)) {
                warnIncorrectItem();
                return false;
            }
            // Bounds shared by neighbouring classes do not count as overlap.
            if (row >= 2 && previousUpper > lower && !intersectionAccepted) {
                if (!confirmIntersection())
                    return false;
                intersectionAccepted = true;
            }
            previousUpper = upper;
        }

        TERefPtr<TEStyle> style = item.style ? item.style->Clone() : nullptr;
        if (polygons) {
            if (auto* fill = dynamic_cast<TEStyleFill*>(style.get())) {
                auto outline = MakeRef<TEStyleSimpleLine>();
                outline->SetWidth(mModel->outlineWidth());
                outline->SetUnits(mModel->outlineUnit());
                outline->SetColor(mModel->outlineColor());
                fill->SetOutline(outline);
            }
        }
        const QString value = row == 0 ? TZModelGradingSymbol::AllOtherValues : range;
        render->AddCategory(TEString(value), TEString(label), style);
    }
    render->SetIsShowOtherValue(mModel->checkState() == Qt::Checked);
    TECategorizedSymbolRender::OutLineInfo outline;
    outline.color = mModel->outlineColor();
    outline.width = mModel->outlineWidth();
    outline.unit = mModel->outlineUnit();
    render->SetOutLineInfo(outline);

    layer->SetSymbolRender(render);
    return true;
}

void TZRenderPanelGradingSymbol::onReset()
{
    TEFeatureLayer* layer = startReset();
    if (!layer)
        return;
    const TERefPtr<TEFeatureLayer> held(layer);

    const TERefPtr<TEFeatureRender> current = layer->GetSymbolRender();
    const TERefPtr<TEGradingSymbolRender> render = current && current->GetType() == TEString(L"GradingSymbol")
        ? current.cast<TEGradingSymbolRender>()
        : nullptr;
    if (!render) {
        setupFromBoxes();
        return;
    }

    const TECategorizedSymbolRender::OutLineInfo outline = render->GetOutLineInfo();
    showOutline(outline.width, outline.unit, outline.color);
    showFieldAndLevel(layer, render->GetExpression().toQString(), render->GetLevel());
    mModel->prepareRanges(this);
    mModel->setCheckState(render->IsShowOtherValue() ? Qt::Checked : Qt::Unchecked);

    for (int i = 0; i < render->GetItemCount(); ++i) {
        const TERefPtr<TECategoryRenderItem> category = render->GetCategoryRenderItem(i);
        if (!category)
            continue;
        const QString value = category->GetValue().toQString();
        if (value == TZModelGradingSymbol::AllOtherValues) {
            // The catch-all category gives the catch-all row its symbol.
            mModel->setItemStyle(0, category->GetStyle());
            continue;
        }
        double lower = 0.0;
        double upper = 0.0;
        if (!TZGradingValues::parseRange(value, lower, upper))
            continue;
        mModel->addItem({category->GetStyle(), value, category->GetLabel().toQString(), mModel->countInRange(value)});
    }
}
