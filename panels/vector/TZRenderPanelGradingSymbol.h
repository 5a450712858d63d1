#pragma once

#include "TZRenderPanelGradingBase.h"

#include <memory>

namespace Ui {
class TZRenderPanelGradingSymbol;
}

// The "Grading symbol" page: the features of a layer fall into
// equal-interval classes of a numeric field, each class with its own
// symbol coloured from a ramp. Apply sets a TEGradingSymbolRender.
class TZRENDER_EXPORT TZRenderPanelGradingSymbol : public TZRenderPanelGradingBase
{
    Q_OBJECT
public:
    explicit TZRenderPanelGradingSymbol(QWidget* parent = nullptr);
    ~TZRenderPanelGradingSymbol() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

private:
    std::unique_ptr<Ui::TZRenderPanelGradingSymbol> mUi;
};
