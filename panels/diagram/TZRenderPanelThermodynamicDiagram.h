#pragma once

#include "TZRenderPanel.h"

#include <memory>

namespace Ui {
class TZRenderPanelThermodynamicDiagram;
}

// The "Heatmap" page: a point layer drawn as a kernel density surface.
// It edits the search radius and its unit, the density mapped to the top of
// the colour ramp (0: automatic) and the ramp of a TEHeatMapperRender;
// Apply changes the layer's heat map render in place when it has one.
class TZRENDER_EXPORT TZRenderPanelThermodynamicDiagram : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TZRenderPanelThermodynamicDiagram(QWidget* parent = nullptr);
    ~TZRenderPanelThermodynamicDiagram() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    // The dock's current layer when it is a valid point layer, else null.
    static TZObjects::TEFeatureLayer* pointLayer();
    void showDefaults();

    std::unique_ptr<Ui::TZRenderPanelThermodynamicDiagram> mUi;
};
