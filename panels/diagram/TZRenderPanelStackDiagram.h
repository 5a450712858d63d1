#pragma once

#include "TZRenderPanelDiagramBase.h"

#include <memory>

namespace Ui {
class TZRenderPanelStackDiagram;
}

// The "Stack Diagram" page: one stacked bar over every feature, a segment
// per chosen numeric field, drawn over the layer's previous symbology.
// Apply sets a TEStackDiagramRender.
class TZRENDER_EXPORT TZRenderPanelStackDiagram : public TZRenderPanelDiagramBase
{
    Q_OBJECT
public:
    explicit TZRenderPanelStackDiagram(QWidget* parent = nullptr);
    ~TZRenderPanelStackDiagram() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

protected:
    TZModelPanelPieDiagram* createModel() override;
    TZWidgetFieldItem* createFieldItem(const QString& fieldName) override;

private:
    std::unique_ptr<Ui::TZRenderPanelStackDiagram> mUi;
};
