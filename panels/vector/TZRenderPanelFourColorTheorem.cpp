#include "TZRenderPanelFourColorTheorem.h"

#include "TZFourColorJob.h"

#include "ui_TZRenderPanelFourColorTheorem.h"

#include "data/TEFeatureLayer.h"
#include "renders/TEFourColorTheoremRender.h"
#include "symbology/TEColorRamp.h"
#include "widgets/TZWaitDialog.h"

#include <QMessageBox>

using namespace TZObjects;

TZRenderPanelFourColorTheorem::TZRenderPanelFourColorTheorem(QWidget* parent)
    : TZRenderPanel(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelFourColorTheorem>())
{
    mUi->setupUi(this);
    mUi->mComboBoxColorScheme->setDefaultGroup(QStringLiteral("Default"), QStringLiteral("Unique"));

    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Polygon;
}

TZRenderPanelFourColorTheorem::~TZRenderPanelFourColorTheorem() = default;

QString TZRenderPanelFourColorTheorem::name() const
{
    return QStringLiteral("FourColorTheorem");
}

QString TZRenderPanelFourColorTheorem::title() const
{
    return tr("Four color themorem");
}

void TZRenderPanelFourColorTheorem::onReset()
{
    // The page keeps nothing but its two settings, which stay as the user
    // left them.
}

bool TZRenderPanelFourColorTheorem::onApply()
{
    const TEColorRamp* ramp = mUi->mComboBoxColorScheme->currentColorRamp();
    const int colorCount = mUi->mSpinBoxColors->value();
    if (colorCount < 4 || !ramp || !ramp->isValid())
        return false;
    const TERefPtr<TEFeatureLayer> layer(currentFeatureLayer());
    if (!layer || !layer->IsValid())
        return false;

    const TERefPtr<TEColorRamp> colors = ramp->clone();
    colors->setLevel(colorCount);
    std::vector<TEColor> palette;
    for (int i = 0; i < colorCount; ++i)
        palette.push_back(colors->getColor(i).toTEColor(255));

    cancelActiveDrawing();
    TZFourColorJob job(std::move(palette));
    TZFourColorJob::Result result = TZFourColorJob::Result::ReadError;
    TZWaitDialog wait(tr("configuring colors..."), this);
    wait.setCancelHandler([&job] { job.cancel(); });
    const bool ran = wait.WaitFor([&job, &layer, &result] { result = job.run(layer.get()); });
    if (!ran) {
        QMessageBox::warning(this, tr("Error!"), wait.errorText());
        return false;
    }
    if (result == TZFourColorJob::Result::Cancelled)
        return false;
    if (result == TZFourColorJob::Result::ReadError) {
        QMessageBox::warning(this, tr("Error!"),
                             tr("The features of the layer could not be read.") + QLatin1Char('\n') + job.errorText());
        return false;
    }

    // A failed colouring is still set: uncoloured features keep the default
    // style.
    auto render = MakeRef<TEFourColorTheoremRender>();
    render->setDefaultStyle(job.defaultStyle());
    render->setColorMap(job.colorMap());
    layer->SetSymbolRender(render);

    if (result == TZFourColorJob::Result::Failed)
        QMessageBox::information(this, tr("Information"),
                                 tr("Failed to configure color,please increase the number of colors"));
    return true;
}
