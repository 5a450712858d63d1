#include "TZScaleItemDelegate.h"

#include <QLocale>

QString TZScaleItemDelegate::displayText(const QVariant& value, const QLocale& locale) const
{
    if (value.type() == QVariant::Double)
        return locale.toString(value.toDouble(), 'f', QLocale::FloatingPointShortest);
    return QStyledItemDelegate::displayText(value, locale);
}
