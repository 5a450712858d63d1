#pragma once

#include "TZRenderExport.h"

#include <QLocale>
#include <QString>

// Loads the translation of TZRender's texts (the dock, its panels and
// dialogs, the host widgets and tzmap) that matches a locale, from the
// translations compiled into the library. TZControlRender::instance() loads
// the one of the default locale before it builds the dock unless one is
// installed already, so a host that wants another language calls install()
// (or QLocale::setDefault) first.
class TZRENDER_EXPORT TZRenderTranslation
{
public:
    // Installs the translation for locale into the application, replacing
    // one installed before; returns false (and leaves the texts in English)
    // when there is none for the locale's languages. Needs a
    // QCoreApplication and runs on the GUI thread.
    static bool install(const QLocale& locale = QLocale());
    // Removes the installed translation, if any.
    static void remove();
    // The file name of the installed translation ("tzrender_de.qm"), empty
    // when the texts are in English.
    static QString installedFile();
};
