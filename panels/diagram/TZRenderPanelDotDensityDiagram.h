#pragma once

#include "TZRenderPanel.h"

#include "core/TERefPtr.h"
#include "renders/TEFeatureRender.h"

#include <memory>

namespace Ui {
class TZRenderPanelDotDensityDiagram;
}

// The "Dot density diagram" page: polygons filled with dots, one dot per
// given quantity of a numeric field, drawn over the symbology the layer had
// before (kept as the diagram's background render).
class TZRenderPanelDotDensityDiagram : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TZRenderPanelDotDensityDiagram(QWidget* parent = nullptr);
    ~TZRenderPanelDotDensityDiagram() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

private:
    std::unique_ptr<Ui::TZRenderPanelDotDensityDiagram> mUi;
    TZObjects::TERefPtr<TZObjects::TEFeatureRender> mBackgroundRender;
};
