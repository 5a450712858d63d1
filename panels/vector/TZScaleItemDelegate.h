#pragma once

#include <QStyledItemDelegate>

// Shows map scales as plain numbers in the user's locale ("1,000,000"
// rather than the "1e+06" a double gets by default), in the columns of a
// table that hold scale denominators.
class TZScaleItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& locale) const override;
};
