#pragma once

#include "TZRenderPanelDiagramBase.h"

#include <memory>

namespace Ui {
class TZRenderPanelHistogramDiagram;
}

// The "Histogram Diagram" page: bars side by side over every feature, one
// per chosen numeric field, vertical or horizontal, drawn over the layer's
// previous symbology. Apply sets a TEHistogramDiagramRender.
class TZRENDER_EXPORT TZRenderPanelHistogramDiagram : public TZRenderPanelDiagramBase
{
    Q_OBJECT
public:
    explicit TZRenderPanelHistogramDiagram(QWidget* parent = nullptr);
    ~TZRenderPanelHistogramDiagram() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

public Q_SLOTS:
    // Expresses the width in the newly chosen unit.
    void onWidthUnitChanged();
    void on_mRadioButtonVertical_clicked();
    void on_mRadioButtonHorizontal_clicked();

protected:
    TZModelPanelPieDiagram* createModel() override;
    TZWidgetFieldItem* createFieldItem(const QString& fieldName) override;

private:
    std::unique_ptr<Ui::TZRenderPanelHistogramDiagram> mUi;
    // The unit the width box currently counts in.
    int mWidthUnit = 0;
};
