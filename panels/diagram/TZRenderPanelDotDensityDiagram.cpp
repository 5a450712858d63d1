#include "TZRenderPanelDotDensityDiagram.h"

#include "ui_TZRenderPanelDotDensityDiagram.h"

#include "data/TEFeatureLayer.h"
#include "data/TEFeatureTable.h"
#include "data/TEFields.h"
#include "renders/TEDotDensityDiagramRender.h"

#include <QDateTime>
#include <QMessageBox>

using namespace TZObjects;

TZRenderPanelDotDensityDiagram::TZRenderPanelDotDensityDiagram(QWidget* parent)
    : TZRenderPanel(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelDotDensityDiagram>())
{
    mUi->setupUi(this);
    // Dots start black, which reads over any fill.
    mUi->mColorBtnDot->setColor(qRgb(0, 0, 0));
    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Polygon;
}

TZRenderPanelDotDensityDiagram::~TZRenderPanelDotDensityDiagram() = default;

QString TZRenderPanelDotDensityDiagram::name() const
{
    return QStringLiteral("DotDensityDiagram");
}

QString TZRenderPanelDotDensityDiagram::title() const
{
    return tr("Dot density diagram");
}

void TZRenderPanelDotDensityDiagram::onReset()
{
    if (!isVisible())
        return;
    const TERefPtr<TEFeatureLayer> layer(currentFeatureLayer());
    if (!layer || !layer->IsValid())
        return;
    const TERefPtr<TEFeatureRender> render = layer->GetSymbolRender();
    // The symbology the dots are drawn over. A dot density render is never
    // its own background: its background stays the one it already has.
    if (const TERefPtr<TEDotDensityDiagramRender> own = render.cast<TEDotDensityDiagramRender>())
        mBackgroundRender = own->GetBackgroundRender();
    else
        mBackgroundRender = render;

    mUi->mComboBoxField->clear();
    const TERefPtr<TEFeatureTable> table = layer->GetDatasource();
    TEFields* fields = table ? table->GetFields() : nullptr;
    if (!fields)
        return;
    for (int i = 0; i < fields->GetFieldCount(); ++i) {
        if (const TERefPtr<TEField> field = fields->GetField(i))
            mUi->mComboBoxField->addItem(field->GetName().toQString());
    }
}

bool TZRenderPanelDotDensityDiagram::onApply()
{
    const TERefPtr<TEFeatureLayer> layer(currentFeatureLayer());
    if (!layer || !layer->IsValid())
        return false;
    cancelActiveDrawing();

    TERefPtr<TEDotDensityDiagramRender> render = layer->GetSymbolRender().cast<TEDotDensityDiagramRender>();
    if (!render)
        render = MakeRef<TEDotDensityDiagramRender>();
    if (mUi->mComboBoxField->count() == 0 || mUi->mComboBoxField->currentText().isEmpty())
        return false;

    const QString fieldName = mUi->mComboBoxField->currentText();
    const TEString name = TEString::fromUtf8(fieldName.toUtf8().constData());
    const TERefPtr<TEFeatureTable> table = layer->GetDatasource();
    TEFields* fields = table ? table->GetFields() : nullptr;
    const int index = fields ? fields->FindField(name) : -1;
    if (index >= 0) {
        const TERefPtr<TEField> field = fields->GetField(index);
        const int type = field ? int(field->GetFieldType()) : -1;
        if (type != TEField::FT_Integer && type != TEField::FT_Double) {
            QMessageBox::information(this, tr("Information"), tr("Please select value type field"));
            return false;
        }
    }

    const QRgb color = mUi->mColorBtnDot->getColor();
    render->setDotColor(TEColor(qRed(color), qGreen(color), qBlue(color), 255));
    render->setTimestamp(static_cast<unsigned int>(QDateTime::currentSecsSinceEpoch()));
    render->setFieldName(name);
    render->setNumberPerDot(mUi->mSpinBoxNumberPerDot->value());
    render->SetBackgroundRender(mBackgroundRender.get());
    layer->SetSymbolRender(render);
    return true;
}
