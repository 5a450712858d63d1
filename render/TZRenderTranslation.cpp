#include "TZRenderTranslation.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>
#include <QTranslator>

namespace {

QPointer<QTranslator>& installed()
{
    static QPointer<QTranslator> translator;
    return translator;
}

} // namespace

bool TZRenderTranslation::install(const QLocale& locale)
{
    QCoreApplication* app = QCoreApplication::instance();
    if (!app)
        return false;
    remove();
    // As with gettext, the language list (LANGUAGE) does not count while the
    // locale is plain C.
    if (locale.language() == QLocale::C)
        return false;
    auto* translator = new QTranslator(app);
    // Tries the locale's UI languages in turn (for the system locale the
    // LANGUAGE list first), each from the most to the least specific name
    // (tzrender_de_AT, tzrender_de); English needs none.
    if (!translator->load(locale, QStringLiteral("tzrender"), QStringLiteral("_"), QStringLiteral(":/i18n"))) {
        delete translator;
        return false;
    }
    QCoreApplication::installTranslator(translator);
    installed() = translator;
    return true;
}

void TZRenderTranslation::remove()
{
    if (QTranslator* translator = installed()) {
        QCoreApplication::removeTranslator(translator);
        delete translator;
    }
    installed() = nullptr;
}

QString TZRenderTranslation::installedFile()
{
    const QTranslator* translator = installed();
    return translator ? QFileInfo(translator->filePath()).fileName() : QString();
}
