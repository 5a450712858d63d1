#include "TZRuleBasedModel.h"

#include "symbology/TEStylePoint.h"
#include "widgets/TZSymbolUtils.h"

#include <algorithm>
#include <utility>

using namespace TZObjects;

TZRuleBasedModel::TZRuleBasedModel(QObject* parent)
    : QAbstractListModel(parent)
{
}

TZRuleBasedModel::~TZRuleBasedModel() = default;

int TZRuleBasedModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(mRules.size());
}

int TZRuleBasedModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : mColumnCount;
}

void TZRuleBasedModel::setColumnCount(int count)
{
    if (count < 0 || count == mColumnCount)
        return;
    beginResetModel();
    mColumnCount = count;
    endResetModel();
}

bool TZRuleBasedModel::isCellIndex(const QModelIndex& index) const
{
    return index.isValid() && !index.parent().isValid() && index.row() >= 0 && index.row() < int(mRules.size())
        && index.column() >= 0 && index.column() < mColumnCount;
}

TZRuleBasedModel::RulePtr TZRuleBasedModel::rule(int row) const
{
    if (row < 0 || row >= int(mRules.size()))
        return {};
    return mRules[size_t(row)];
}

QVariant TZRuleBasedModel::symbolIcon(const Rule& rule) const
{
    const TERefPtr<TEStyle> style = rule.Style();
    if (!style)
        return QVariant();
    QSize size = mDefaultIconSize;
    // Point symbols show at four times their own size, so that small
    // markers stay recognisable next to the line and fill previews.
    if (const auto* point = dynamic_cast<const TEStylePoint*>(style.get()))
        size = QSize(int(point->GetWidth()) * 4, int(point->GetHeight()) * 4);
    return TZSymbolUtils::symbolPreviewIcon(style.get(), size);
}

QVariant TZRuleBasedModel::data(const QModelIndex& index, int role) const
{
    if (!isCellIndex(index))
        return QVariant();
    const RulePtr& rule = mRules[size_t(index.row())];
    if (!rule)
        return QVariant();
    switch (index.column()) {
    case SymbolColumn:
        return role == Qt::DecorationRole ? symbolIcon(*rule) : QVariant();
    case LabelColumn:
        if (role == Qt::DisplayRole)
            return rule->Label().toQString();
        // The label column answers the edit role with true whatever the
        // label; nothing edits labels in place, the rule dialog does.
        if (role == Qt::EditRole)
            return true;
        return QVariant();
    case RuleColumn:
        return role == Qt::DisplayRole ? QVariant(rule->Expression().toQString()) : QVariant();
    case ScaleFilterColumn:
        if (role == Qt::CheckStateRole)
            return rule->IsScaleFilter() ? Qt::Checked : Qt::Unchecked;
        return QVariant();
    case MinimumScaleColumn:
        return role == Qt::DisplayRole ? QVariant(rule->MinimumScale()) : QVariant();
    case MaximumScaleColumn:
        return role == Qt::DisplayRole ? QVariant(rule->MaximumScale()) : QVariant();
    default:
        return QVariant();
    }
}

QVariant TZRuleBasedModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= mColumnCount)
        return QAbstractListModel::headerData(section, orientation, role);
    switch (section) {
    case SymbolColumn: return tr("Symbols");
    case LabelColumn: return tr("Label");
    case RuleColumn: return tr("Rule");
    case ScaleFilterColumn: return tr("Scale filter");
    case MinimumScaleColumn: return tr("Minimum scale");
    case MaximumScaleColumn: return tr("Maximum scale");
    default: return QVariant();
    }
}

void TZRuleBasedModel::setRules(std::vector<RulePtr> rules)
{
    beginResetModel();
    mRules = std::move(rules);
    endResetModel();
}

bool TZRuleBasedModel::appendRule(const RulePtr& rule)
{
    if (!rule)
        return false;
    beginResetModel();
    mRules.push_back(rule);
    endResetModel();
    return true;
}

void TZRuleBasedModel::resetModel()
{
    beginResetModel();
    endResetModel();
}

bool TZRuleBasedModel::swapRows(int first, int second)
{
    const int count = int(mRules.size());
    if (first < 0 || second < 0 || first >= count || second >= count)
        return false;
    if (first == second)
        return true;
    std::swap(mRules[size_t(first)], mRules[size_t(second)]);
    const int top = std::min(first, second);
    const int bottom = std::max(first, second);
    if (mColumnCount > 0)
        Q_EMIT dataChanged(index(top, 0), index(bottom, mColumnCount - 1));
    return true;
}

bool TZRuleBasedModel::removeRule(int row)
{
    if (row < 0 || row >= int(mRules.size()))
        return false;
    beginRemoveRows(QModelIndex(), row, row);
    mRules.erase(mRules.begin() + row);
    endRemoveRows();
    return true;
}

bool TZRuleBasedModel::replaceRule(int row, const RulePtr& rule)
{
    if (row < 0 || row >= int(mRules.size()) || !rule)
        return false;
    mRules[size_t(row)] = rule;
    if (mColumnCount > 0)
        Q_EMIT dataChanged(index(row, 0), index(row, mColumnCount - 1));
    return true;
}

bool TZRuleBasedModel::setRuleStyle(int row, const TERefPtr<TEStyle>& style)
{
    const RulePtr target = rule(row);
    if (!target)
        return false;
    target->SetStyle(style);
    if (mColumnCount > SymbolColumn)
        Q_EMIT dataChanged(index(row, SymbolColumn), index(row, SymbolColumn), {Qt::DecorationRole});
    return true;
}
