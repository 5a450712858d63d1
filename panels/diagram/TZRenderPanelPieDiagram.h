#pragma once

#include "TZRenderPanelDiagramBase.h"

#include <memory>

namespace Ui {
class TZRenderPanelPieDiagram;
}

// The "Pie Diagram" page: a pie over every feature, one slice per chosen
// numeric field, drawn over the layer's previous symbology. Apply sets a
// TEPieDiagramRender (the layer's own one, edited, when it has one).
class TZRENDER_EXPORT TZRenderPanelPieDiagram : public TZRenderPanelDiagramBase
{
    Q_OBJECT
public:
    explicit TZRenderPanelPieDiagram(QWidget* parent = nullptr);
    ~TZRenderPanelPieDiagram() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

protected:
    TZModelPanelPieDiagram* createModel() override;
    TZWidgetFieldItem* createFieldItem(const QString& fieldName) override;

private:
    std::unique_ptr<Ui::TZRenderPanelPieDiagram> mUi;
};
