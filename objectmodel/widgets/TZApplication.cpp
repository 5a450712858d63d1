#include "widgets/TZApplication.h"

#include <QFile>

#include <cmath>

TZApplication::TZApplication(int& argc, char** argv)
    : QApplication(argc, argv)
{
}

QIcon TZApplication::getThemeIcon(const QString& name)
{
    QString path = QStringLiteral(":/themes/default");
    if (!name.startsWith(QLatin1Char('/')))
        path += QLatin1Char('/');
    path += name;
    return QFile::exists(path) ? QIcon(path) : QIcon();
}

QString TZApplication::doubleToQString(double value, int decimals)
{
    if (!std::isfinite(value))
        return QString::number(value);
    QString text = QString::number(value, 'f', qMax(0, decimals));
    if (text.contains(QLatin1Char('.'))) {
        while (text.endsWith(QLatin1Char('0')))
            text.chop(1);
        if (text.endsWith(QLatin1Char('.')))
            text.chop(1);
    }
    if (text == QLatin1String("-0"))
        text = QStringLiteral("0");
    return text;
}
