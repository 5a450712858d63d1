#pragma once

#include "widgets/TZHostWidgetsExport.h"

#include <QApplication>
#include <QIcon>

// The host's application object and its shared helpers: themed icons from the
// compiled-in resources and the number format used in tables.
class TZHOSTWIDGETS_EXPORT TZApplication : public QApplication
{
    Q_OBJECT
public:
    TZApplication(int& argc, char** argv);

    // The icon of the default theme called name ("/select.png" or
    // "select.png"); an empty icon when the theme has no such file.
    static QIcon getThemeIcon(const QString& name);
    // value with at most decimals digits after the point, without trailing
    // zeros, in the C locale (so it reads back with QString::toDouble).
    static QString doubleToQString(double value, int decimals);
};
