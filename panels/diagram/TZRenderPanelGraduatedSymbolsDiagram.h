#pragma once

#include "TZRenderPanelGradingBase.h"

#include "renders/TEFeatureRender.h"

#include <memory>

namespace Ui {
class TZRenderPanelGraduatedSymbolsDiagram;
}
class TZModelGraduatedSymbolsDiagram;

// The "Graduated symbols" page: over the layer's existing symbology, one
// symbol per feature whose size grows with the class of a numeric field.
// The classes are made as on the grading page; their symbols are copies of
// a template, sized evenly between a minimum and a maximum. Apply sets a
// TEGraduatedSymbolsDiagramRender drawn over the layer's previous render.
class TZRENDER_EXPORT TZRenderPanelGraduatedSymbolsDiagram : public TZRenderPanelGradingBase
{
    Q_OBJECT
public:
    explicit TZRenderPanelGraduatedSymbolsDiagram(QWidget* parent = nullptr);
    ~TZRenderPanelGraduatedSymbolsDiagram() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

    TZModelGraduatedSymbolsDiagram* diagramModel() const { return mDiagramModel; }
    // The render drawn under the symbols: the layer's render before this one.
    TZObjects::TERefPtr<TZObjects::TEFeatureRender> backgroundRender() const { return mBackground; }

public Q_SLOTS:
    void onButtonTemplateSelectStyle();

private:
    void showTemplate();
    void onSizeChanged();

    std::unique_ptr<Ui::TZRenderPanelGraduatedSymbolsDiagram> mUi;
    TZModelGraduatedSymbolsDiagram* mDiagramModel = nullptr;
    TZObjects::TERefPtr<TZObjects::TEFeatureRender> mBackground;
};
