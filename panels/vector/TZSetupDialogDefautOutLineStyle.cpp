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
    width = mUi->mDoubleSpinBoxWidth->text().toDouble();
    unit = mUi->mComboBoxUnit->currentData().toInt();
    color = uint32_t(mUi->mColorBtn->getColor());
}
