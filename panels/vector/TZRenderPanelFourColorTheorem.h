#pragma once

#include "TZRenderPanel.h"

#include <memory>

namespace Ui {
class TZRenderPanelFourColorTheorem;
}

// The four-colour page: colours a polygon layer so that no two neighbouring
// polygons share a colour, with the chosen number of colours (at least four)
// taken from a colour ramp. Apply runs the colouring under the wait dialog
// and sets a TEFourColorTheoremRender on the layer; when the colours do not
// suffice the user is told so and the partial colouring is still set.
class TZRENDER_EXPORT TZRenderPanelFourColorTheorem : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TZRenderPanelFourColorTheorem(QWidget* parent = nullptr);
    ~TZRenderPanelFourColorTheorem() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

private:
    std::unique_ptr<Ui::TZRenderPanelFourColorTheorem> mUi;
};
