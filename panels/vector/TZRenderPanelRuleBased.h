#pragma once

#include "TZRenderPanel.h"

#include <QModelIndex>

#include <memory>

namespace Ui {
class TZRenderPanelRuleBased;
}
class TZRuleBasedModel;
class TZRotationSettings;

// The "Rule-based" page: the layer is drawn with an ordered list of rules,
// each a symbol, a label, a filter expression and an optional scale range.
// The rules are added, edited (in the "Rule setting" dialog, or the symbol
// alone by double-clicking it), deleted and reordered in a table; point
// symbols may be rotated as on the single symbol page. Apply sets a
// TERuleBasedSymbolRender holding the rules in table order.
class TZRENDER_EXPORT TZRenderPanelRuleBased : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TZRenderPanelRuleBased(QWidget* parent = nullptr);
    ~TZRenderPanelRuleBased() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

public Q_SLOTS:
    // Move down.
    void on_toolButton_clicked();
    // Add a rule.
    void on_toolButton_2_clicked();
    // Delete the selected rules.
    void on_toolButton_5_clicked();
    // Move up.
    void on_toolButton_6_clicked();
    void on_tableView_doubleClicked(const QModelIndex& index);
    void onSetupRotation();

private:
    void createModel();
    // The row of the first selected index, -1 when nothing is selected.
    int firstSelectedRow() const;
    void selectRow(int row);

    std::unique_ptr<Ui::TZRenderPanelRuleBased> mUi;
    TZRuleBasedModel* mModel = nullptr;
    std::unique_ptr<TZRotationSettings> mRotation;
};
