#include "TZRenderPanelGraduatedSymbolsDiagram.h"

#include "TZGradingValues.h"
#include "TZModelGraduatedSymbolsDiagram.h"

#include "ui_TZRenderPanelGraduatedSymbolsDiagram.h"

#include "renders/TEGraduatedSymbolsDiagramRender.h"
#include "symbology/TEStylePoint.h"
#include "widgets/TZStyleSelectorDialog.h"
#include "widgets/TZSymbolUtils.h"

#include <QDoubleSpinBox>

#include <vector>

using namespace TZObjects;

namespace {

// Style unit code read as device pixels.
constexpr int PixelUnits = 5;

} // namespace

TZRenderPanelGraduatedSymbolsDiagram::TZRenderPanelGraduatedSymbolsDiagram(QWidget* parent)
    : TZRenderPanelGradingBase(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelGraduatedSymbolsDiagram>())
{
    mUi->setupUi(this);
    mDiagramModel = new TZModelGraduatedSymbolsDiagram(this);
    initGradingWidgets(mDiagramModel);
    showTemplate();
    connect(mUi->mButtonTemplate, SIGNAL(clicked(bool)), this, SLOT(onButtonTemplateSelectStyle()));
    connect(mUi->mDoubleSpinBoxMin, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &TZRenderPanelGraduatedSymbolsDiagram::onSizeChanged);
    connect(mUi->mDoubleSpinBoxMax, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &TZRenderPanelGraduatedSymbolsDiagram::onSizeChanged);
    onSizeChanged();
}

void TZRenderPanelGraduatedSymbolsDiagram::onSizeChanged()
{
    mDiagramModel->setSizeRange(mUi->mDoubleSpinBoxMin->value(), mUi->mDoubleSpinBoxMax->value());
}

TZRenderPanelGraduatedSymbolsDiagram::~TZRenderPanelGraduatedSymbolsDiagram() = default;

QString TZRenderPanelGraduatedSymbolsDiagram::name() const
{
    return QStringLiteral("GradingSymbolDiagram");
}

QString TZRenderPanelGraduatedSymbolsDiagram::title() const
{
    return tr("Graduated symbols");
}

void TZRenderPanelGraduatedSymbolsDiagram::showTemplate()
{
    // A point template is shown filling the button, whatever its size.
    TERefPtr<TEStyle> preview = mDiagramModel->templateStyle();
    if (dynamic_cast<TEStylePoint*>(preview.get())) {
        preview = preview->Clone();
        auto* copy = dynamic_cast<TEStylePoint*>(preview.get());
        copy->SetUnits(PixelUnits);
        copy->SetSize(mUi->mButtonTemplate->iconSize().width() * 0.7);
    }
    mUi->mButtonTemplate->setIcon(TZSymbolUtils::symbolPreviewIcon(preview.get(), mUi->mButtonTemplate->iconSize()));
}

void TZRenderPanelGraduatedSymbolsDiagram::onButtonTemplateSelectStyle()
{
    TEStyle* chosen = selectStyle(mDiagramModel->templateStyle().get());
    if (!chosen)
        return;
    mDiagramModel->setTemplateStyle(TERefPtr<TEStyle>(chosen));
    showTemplate();
    onColorRampChanged();
}

bool TZRenderPanelGraduatedSymbolsDiagram::onApply()
{
    cancelActiveDrawing();
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer || mModel->field().isEmpty())
        return false;
    const TERefPtr<TEFeatureLayer> held(layer);

    const auto render = MakeRef<TEGraduatedSymbolsDiagramRender>(TEString(mModel->field()));
    render->setLevel(mModel->level());

    const double maximum = mUi->mDoubleSpinBoxMax->value();
    const double minimum = mUi->mDoubleSpinBoxMin->value();
    const int rows = mModel->rowCount();
    const double step = rows > 0 ? (maximum - minimum) / rows : 1.0;

    std::vector<TEGraduatedSymbolsDiagramItem> items;
    bool intersectionAccepted = false;
    bool havePrevious = false;
    double previousUpper = 0.0;
    for (int row = 0; row < rows; ++row) {
        const GradingSymbolItem& item = mModel->item(row);
        const QString range = row == 0 ? TZModelGradingSymbol::AllOtherValues : withAsciiComma(item.range);
        double lower = 0.0;
        double upper = 0.0;
        // The catch-all row and rows that are not two numbers make no class.
        if (!TZGradingValues::parseRange(range, lower, upper))
            continue;
        // The first class row is taken as it is.
        if (row != 1) {
            if (lower > upper) {
                warnIncorrectItem();
                return false;
            }
            if (havePrevious && previousUpper > lower && !intersectionAccepted) {
                if (!confirmIntersection())
                    return false;
                intersectionAccepted = true;
            }
        }
        previousUpper = upper;
        havePrevious = true;

        TERefPtr<TEStyle> style = item.style ? item.style->Clone() : nullptr;
        if (auto* point = dynamic_cast<TEStylePoint*>(style.get())) {
            const double size = (row + 1) * step + minimum;
            point->SetWidth(size);
            point->SetHeight(size);
        }
        items.emplace_back(style, lower, upper);
    }

    mModel->resetModel();
    render->setItems(items);
    if (mBackground)
        render->SetBackgroundRender(mBackground.get());
    layer->SetSymbolRender(render);
    return true;
}

void TZRenderPanelGraduatedSymbolsDiagram::onReset()
{
    TEFeatureLayer* layer = startReset();
    if (!layer)
        return;
    const TERefPtr<TEFeatureLayer> held(layer);

    const TERefPtr<TEFeatureRender> current = layer->GetSymbolRender();
    // What the layer showed before a diagram goes over it.
    const TERefPtr<TEDiagramRender> diagram = current.cast<TEDiagramRender>();
    mBackground = diagram ? diagram->GetBackgroundRender() : current;

    const TERefPtr<TEGraduatedSymbolsDiagramRender> render =
        current && current->GetType() == TEString(L"GradingSymbolDiagram")
        ? current.cast<TEGraduatedSymbolsDiagramRender>()
        : nullptr;
    if (!render) {
        setupFromBoxes();
        return;
    }

    showFieldAndLevel(layer, render->expression().toQString(), render->level());
    mModel->prepareRanges(this);
    for (const TEGraduatedSymbolsDiagramItem& item : render->items()) {
        const QString range = TZGradingValues::formatRange(item.lower(), item.upper());
        mModel->addItem({item.style(), range, range, mModel->countInRange(range)});
    }
}
