#pragma once

#include "TZRenderExport.h"

#include "renders/TERuleBasedSymbolRender.h"

#include <QAbstractListModel>
#include <QSize>

#include <vector>

// The rules table of the rule-based panel: one row per rule, in drawing
// order, with the columns symbol, label, filter, scale switch, minimum and
// maximum scale. The panel edits the rule list directly and resets the
// model; moves announce the two rows they swap.
class TZRENDER_EXPORT TZRuleBasedModel : public QAbstractListModel
{
    Q_OBJECT
public:
    using Rule = TZObjects::TERuleBasedSymbolRender::Rule;
    using RulePtr = TZObjects::TERefPtr<Rule>;

    enum Column {
        SymbolColumn = 0,
        LabelColumn,
        RuleColumn,
        ScaleFilterColumn,
        MinimumScaleColumn,
        MaximumScaleColumn
    };

    explicit TZRuleBasedModel(QObject* parent = nullptr);
    ~TZRuleBasedModel() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // The number of columns shown; the panel sets 6.
    void setColumnCount(int count);
    // Size of the symbol previews; point symbols are drawn at four times
    // their own size instead.
    QSize defaultIconSize() const { return mDefaultIconSize; }
    void setDefaultIconSize(const QSize& size) { mDefaultIconSize = size; }

    const std::vector<RulePtr>& rules() const { return mRules; }
    // Replaces the rule list, resetting the model.
    void setRules(std::vector<RulePtr> rules);
    // Appends a rule (an empty one is refused), resetting the model.
    bool appendRule(const RulePtr& rule);
    // The rule of a row, or empty when the row is out of range.
    RulePtr rule(int row) const;
    void resetModel();

    // Swaps two rows and announces both; false when either is out of range.
    bool swapRows(int first, int second);
    // Removes one row, announcing it; false when out of range.
    bool removeRule(int row);
    // Puts rule in place of the row's rule; false when out of range.
    bool replaceRule(int row, const RulePtr& rule);
    // Gives the row's rule a new symbol; false when out of range.
    bool setRuleStyle(int row, const TZObjects::TERefPtr<TZObjects::TEStyle>& style);

private:
    bool isCellIndex(const QModelIndex& index) const;
    QVariant symbolIcon(const Rule& rule) const;

    std::vector<RulePtr> mRules;
    QSize mDefaultIconSize = QSize(32, 16);
    int mColumnCount = 6;
};
