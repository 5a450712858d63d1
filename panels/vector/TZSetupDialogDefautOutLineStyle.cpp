#include "TZSetupDialogDefautOutLineStyle.h"

#include "ui_TZSetupDialogDefautOutLineStyle.h"

using namespace TZObjects;

TZSetupDialogDefautOutLineStyle::TZSetupDialogDefautOutLineStyle(QWidget* parent)
    : QDialog(parent)
    , mUi(std::make_unique<Ui::TZSetupDialogDefautOutLineStyle>())
{
    mUi->setupUi(this);
    for (int unit = 0; unit < mUi->mComboBoxUnit->count(); ++unit)
        mUi->mComboBoxUnit->setItemData(unit, unit);
    mUi->mComboBoxUnit->setCurrentIndex(0);
    mUi->mColorBtn->setColor(0xFF000000);
}

TZSetupDialogDefautOutLineStyle::~TZSetupDialogDefautOutLineStyle() = default;

void TZSetupDialogDefautOutLineStyle::getOutLineStyle(double& width, int& unit, TEColor& color) const
{
    // The box shows its number in its own locale ("1,50" under a decimal
    // comma), so its text is read back the same way, never as a C number.
    const QDoubleSpinBox* box = mUi->mDoubleSpinBoxWidth;
    bool ok = false;
    width = box->locale().toDouble(box->cleanText(), &ok);
    if (!ok)
        width = 0.0;
    unit = mUi->mComboBoxUnit->currentData().toInt();
    color = uint32_t(mUi->mColorBtn->getColor());
}
