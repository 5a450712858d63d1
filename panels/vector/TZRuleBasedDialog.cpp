#include "TZRuleBasedDialog.h"

#include "ui_TZRuleBasedDialog.h"

#include "data/TEFeatureLayer.h"
#include "widgets/TZQueryBuilder.h"
#include "widgets/TZStyleSelectorDialog.h"
#include "widgets/TZSymbolUtils.h"

#include <QMessageBox>

using namespace TZObjects;

namespace {

// Style kind by layer type: 1 and 2 take point symbols, 3 line symbols,
// anything below 1 or above 3 fill symbols.
TEStyle::StyleType styleTypeOf(const TELayer* layer)
{
    const int type = layer ? int(layer->GetLayerType()) : 0;
    if (type == 1 || type == 2)
        return TEStyle::PointStyle;
    if (type == 3)
        return TEStyle::LineStyle;
    return TEStyle::FillStyle;
}

// A scale entry as a base-10 integer; anything else (a fraction, a word)
// counts as 0.
double scaleOf(const QString& text)
{
    bool ok = false;
    const qlonglong value = text.trimmed().toLongLong(&ok, 10);
    return ok ? double(value) : 0.0;
}

QString scaleText(double scale)
{
    return QString::number(qlonglong(scale));
}

} // namespace

TZRuleBasedDialog::TZRuleBasedDialog(TELayer* layer, TERefPtr<Rule> rule, QWidget* parent)
    : QDialog(parent)
    , mUi(std::make_unique<Ui::TZRuleBasedDialog>())
    , mLayer(layer)
    , mStyleType(styleTypeOf(layer))
{
    mUi->setupUi(this);
    connect(mUi->mButtonSymbol, SIGNAL(clicked(bool)), this, SLOT(onChooseSymbol()));
    connect(mUi->mButtonFilter, SIGNAL(clicked(bool)), this, SLOT(onBuildFilter()));
    // The query builder needs the layer's fields.
    mUi->mButtonFilter->setEnabled(dynamic_cast<TEFeatureLayer*>(layer) != nullptr);

    mRule = rule ? rule->Clone() : MakeRef<Rule>();
    if (rule)
        loadRule();
    showSymbol();
}

TZRuleBasedDialog::~TZRuleBasedDialog() = default;

void TZRuleBasedDialog::loadRule()
{
    mUi->mLineEditLabel->setText(mRule->Label().toQString());
    mUi->mLineEditFilter->setText(mRule->Expression().toQString());
    mUi->mGroupBoxScale->setChecked(mRule->IsScaleFilter());
    mUi->mLineEditMinimumScale->setText(scaleText(mRule->MinimumScale()));
    mUi->mLineEditMaximumScale->setText(scaleText(mRule->MaximumScale()));
}

void TZRuleBasedDialog::showSymbol()
{
    const TERefPtr<TEStyle> style = mRule->Style();
    if (!style) {
        mUi->mLabelSymbol->setPixmap(QPixmap());
        mUi->mLabelSymbol->setText(tr("No symbol"));
        return;
    }
    mUi->mLabelSymbol->setText(QString());
    mUi->mLabelSymbol->setPixmap(TZSymbolUtils::symbolPreviewPixmap(style.get(), mUi->mLabelSymbol->minimumSize()));
}

void TZRuleBasedDialog::onChooseSymbol()
{
    // The selector keeps its result alive only until its next call; the
    // rule takes its own reference.
    TEStyle* chosen = selectStyle(mStyleType);
    if (!chosen)
        return;
    mRule->SetStyle(TERefPtr<TEStyle>(chosen));
    showSymbol();
}

void TZRuleBasedDialog::onBuildFilter()
{
    auto* features = dynamic_cast<TEFeatureLayer*>(mLayer.get());
    if (!features)
        return;
    TZQueryBuilder builder(features, true, this);
    builder.setExpression(mUi->mLineEditFilter->text());
    if (builder.exec() != QDialog::Accepted)
        return;
    const QString expression = builder.expression();
    mUi->mLineEditFilter->setText(expression);
    mRule->SetExpression(TEString(expression));
}

void TZRuleBasedDialog::accept()
{
    if (!mRule->Style()) {
        QMessageBox::information(nullptr, tr("Information"), tr("Symbol can not be null"), QMessageBox::Ok);
        return;
    }
    mRule->SetLabel(TEString(mUi->mLineEditLabel->text()));
    mRule->SetExpression(TEString(mUi->mLineEditFilter->text()));
    mRule->SetScaleFilter(mUi->mGroupBoxScale->isChecked());
    mRule->SetMaximumScale(scaleOf(mUi->mLineEditMaximumScale->text()));
    mRule->SetMinimumScale(scaleOf(mUi->mLineEditMinimumScale->text()));
    QDialog::accept();
}
