#pragma once

#include "TZRenderExport.h"

#include "core/TEColor.h"

#include <QDialog>

#include <memory>

namespace Ui {
class TZSetupDialogDefautOutLineStyle;
}

// Asks for the default outline of new category symbols: width, unit
// ("Point", "MM", "CM", "Inch") and colour.
class TZRENDER_EXPORT TZSetupDialogDefautOutLineStyle : public QDialog
{
    Q_OBJECT
public:
    explicit TZSetupDialogDefautOutLineStyle(QWidget* parent = nullptr);
    ~TZSetupDialogDefautOutLineStyle() override;

    // The chosen outline; the width is the box's number in the box's locale,
    // and a width text that is not a number gives 0.
    void getOutLineStyle(double& width, int& unit, TZObjects::TEColor& color) const;

private:
    std::unique_ptr<Ui::TZSetupDialogDefautOutLineStyle> mUi;
};
