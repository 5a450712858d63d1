#include "TZDialogRotateByField.h"

#include "ui_TZDialogRotateByField.h"

#include <QButtonGroup>
#include <QMessageBox>

using namespace TZObjects;

namespace {

const QString NoneText = QStringLiteral("<none>");
const QString RandomText = QStringLiteral("<random>");

} // namespace

TZDialogRotateByField::TZDialogRotateByField(TEFeatureLayer* layer, QWidget* parent)
    : QDialog(parent)
    , mUi(std::make_unique<Ui::TZDialogRotateByField>())
    , mLayer(layer)
{
    mUi->setupUi(this);

    if (!mLayer || (mLayer->GetLayerType() != TELayer::LT_Point && mLayer->GetLayerType() != TELayer::LT_MultiPoint)) {
        QMessageBox::warning(this, tr("Error!"), tr("Bad layer type"), QMessageBox::Ok);
        return;
    }

    const TERefPtr<TERender> render = mLayer->GetRender();
    if (!render)
        return;

    setRangeEnabled(false);
    mDirectionGroup = new QButtonGroup(this);
    mDirectionGroup->addButton(mUi->mRadioButtonGeo);
    mDirectionGroup->addButton(mUi->mRadioButtonArithmetic);

    mUi->mComboBoxFields->addItem(tr("<none>"), -1);
    mUi->mComboBoxFields->addItem(tr("<random>"), -2);
    const TERefPtr<TEFields> fields = mLayer->GetFields();
    if (!fields)
        return;
    for (int i = 0; i < fields->GetFieldCount(); ++i) {
        const TERefPtr<TEField> field = fields->GetField(i);
        if (!field || field->IsGeoField() || field->IsSystemField())
            continue;
        const int type = field->GetFieldType();
        if (type >= TEField::FT_Int16 && type <= TEField::FT_Double)
            mUi->mComboBoxFields->addItem(field->GetName().toQString());
    }

    if (const TERefPtr<TEFeatureRender> featureRender = render.cast<TEFeatureRender>()) {
        const QString rotateField = featureRender->GetRotateField().toQString();
        if (featureRender->IsRotateByClockWise())
            mUi->mRadioButtonGeo->setChecked(true);
        else
            mUi->mRadioButtonArithmetic->setChecked(true);
        if (featureRender->IsRotateByField()) {
            if (rotateField == RandomText) {
                mUi->mComboBoxFields->setCurrentText(tr("<random>"));
                featureRender->GetRotateRandomRange(mRandomMinimum, mRandomMaximum);
                mUi->mDoubleSpinBoxMinimum->setValue(mRandomMinimum);
                mUi->mDoubleSpinBoxMaximum->setValue(mRandomMaximum);
                setRangeEnabled(true);
                mMode = RandomRotation;
            } else {
                mUi->mComboBoxFields->setCurrentText(rotateField);
                mMode = FieldRotation;
            }
        } else {
            mUi->mComboBoxFields->setCurrentText(tr("<none>"));
            mMode = NoRotation;
        }
        mField = rotateField;
    }

    connect(mUi->mComboBoxFields, SIGNAL(currentIndexChanged(QString)), this, SLOT(onFieldSelectChanged(QString)));
    connect(mUi->mDoubleSpinBoxMinimum, SIGNAL(valueChanged(double)), this, SLOT(onRandomRangeValueChanged()));
    connect(mUi->mDoubleSpinBoxMaximum, SIGNAL(valueChanged(double)), this, SLOT(onRandomRangeValueChanged()));
}

TZDialogRotateByField::~TZDialogRotateByField() = default;

bool TZDialogRotateByField::isClockwise() const
{
    return mUi->mRadioButtonGeo->isChecked();
}

void TZDialogRotateByField::onFieldSelectChanged(const QString& text)
{
    mField = text;
    if (text == NoneText) {
        setRangeEnabled(false);
        mMode = NoRotation;
    } else if (text == RandomText) {
        setRangeEnabled(true);
        mMode = RandomRotation;
    } else {
        setRangeEnabled(false);
        mMode = FieldRotation;
    }
}

void TZDialogRotateByField::onRandomRangeValueChanged()
{
    mRandomMinimum = mUi->mDoubleSpinBoxMinimum->value();
    mRandomMaximum = mUi->mDoubleSpinBoxMaximum->value();
}

void TZDialogRotateByField::setRangeEnabled(bool enabled)
{
    mUi->mDoubleSpinBoxMinimum->setEnabled(enabled);
    mUi->mDoubleSpinBoxMaximum->setEnabled(enabled);
}
