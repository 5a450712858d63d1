#pragma once

#include "TZRenderExport.h"

#include "data/TELayer.h"
#include "renders/TERuleBasedSymbolRender.h"

#include <QDialog>

#include <memory>

namespace Ui {
class TZRuleBasedDialog;
}

// The "Rule setting" dialog: the symbol, label, filter and scale range of
// one rule. It edits a copy of the rule it is given (or a new rule), so a
// cancelled dialog changes nothing; the caller reads rule() after exec()
// returned Accepted.
class TZRENDER_EXPORT TZRuleBasedDialog : public QDialog
{
    Q_OBJECT
public:
    using Rule = TZObjects::TERuleBasedSymbolRender::Rule;

    TZRuleBasedDialog(TZObjects::TELayer* layer, TZObjects::TERefPtr<Rule> rule, QWidget* parent = nullptr);
    ~TZRuleBasedDialog() override;

    // The edited rule.
    TZObjects::TERefPtr<Rule> rule() const { return mRule; }
    // The kind of symbol the layer's features take.
    TZObjects::TEStyle::StyleType styleType() const { return mStyleType; }

public Q_SLOTS:
    // Refuses a rule without a symbol; otherwise writes the form into the
    // rule and closes.
    void accept() override;

private Q_SLOTS:
    void onChooseSymbol();
    void onBuildFilter();

private:
    void loadRule();
    void showSymbol();

    std::unique_ptr<Ui::TZRuleBasedDialog> mUi;
    TZObjects::TERefPtr<TZObjects::TELayer> mLayer;
    TZObjects::TERefPtr<Rule> mRule;
    TZObjects::TEStyle::StyleType mStyleType = TZObjects::TEStyle::FillStyle;
};
