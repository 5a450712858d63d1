#pragma once

#include "TZRenderPanel.h"

#include "core/TERefPtr.h"
#include "renders/TEFeatureRender.h"

#include <memory>

namespace Ui {
class TZRenderPanelClusterDiagram;
}

// The "Cluster diagram" page: points gathered into clusters, each drawn as
// a marker coloured from a ramp by its count, over the symbology the layer
// had before (kept as the diagram's background render).
class TZRenderPanelClusterDiagram : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TZRenderPanelClusterDiagram(QWidget* parent = nullptr);
    ~TZRenderPanelClusterDiagram() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

private:
    std::unique_ptr<Ui::TZRenderPanelClusterDiagram> mUi;
    TZObjects::TERefPtr<TZObjects::TEFeatureRender> mBackgroundRender;
};
