// tzmap: the reference desktop host of TZRender.
//   tzmap [--select LAYER] [--snapshot FILE] [DATA|PROJECT.tzmap ...]
#include "TZLayerTree.h"
#include "TZMapCanvas.h"
#include "TZMapWindow.h"
#include "TZRenderTranslation.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QTranslator>

#include <gdal.h>

#include <cstdio>

namespace {

// Lets the window settle and the map finish drawing; false on time-out.
bool waitForDrawing(TZMapWindow& window, int timeoutMs)
{
    QDeadlineTimer deadline(timeoutMs);
    // Two quiet passes in a row: a finished drawing may schedule another
    // one (a resize that arrived meanwhile).
    int quiet = 0;
    while (quiet < 2) {
        if (deadline.hasExpired())
            return false;
        QApplication::processEvents(QEventLoop::AllEvents, 50);
        quiet = window.canvas()->isDrawing() ? 0 : quiet + 1;
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tzmap"));
    QApplication::setOrganizationName(QStringLiteral("TZRender"));
    GDALAllRegister();

    // tzmap's and the library's texts in the user's language where a
    // translation exists, and Qt's own (standard dialogs) where installed.
    TZRenderTranslation::install();
    auto* qtTranslator = new QTranslator(&app);
    if (qtTranslator->load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                           QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(qtTranslator);

    QCommandLineParser parser;
    parser.setApplicationDescription(QApplication::translate("main", "Desktop map viewer and symbology editor."));
    parser.addHelpOption();
    const QCommandLineOption snapshot(QStringLiteral("snapshot"),
                                      QApplication::translate("main", "Draw the window, save it as a PNG image and exit."),
                                      QStringLiteral("FILE"));
    const QCommandLineOption select(QStringLiteral("select"),
                                    QApplication::translate("main", "Select the named layer and show its symbology."),
                                    QStringLiteral("LAYER"));
    parser.addOption(snapshot);
    parser.addOption(select);
    parser.addPositionalArgument(QStringLiteral("files"),
                                 QApplication::translate("main", "Data sources, raster folders or a .tzmap project."));
    parser.process(app);

    TZMapWindow window;
    const bool snapshotMode = parser.isSet(snapshot);
    window.setInteractive(!snapshotMode);
    window.show();

    QStringList data;
    for (const QString& argument : parser.positionalArguments()) {
        if (QFileInfo(argument).suffix().compare(QLatin1String("tzmap"), Qt::CaseInsensitive) == 0)
            window.openProject(argument);
        else
            data << argument;
    }
    if (!data.isEmpty())
        window.openPaths(data);
    if (parser.isSet(select)) {
        for (const auto& layer : window.layerTree()->layers()) {
            if (layer->GetLayerName().toQString() == parser.value(select))
                window.selectLayer(layer->GetGuidStr().toQString());
        }
    }
    if (!snapshotMode)
        return app.exec();

    // Zoom once the docks have taken their room, then let the map draw. A
    // project's saved view is kept: centre and scale, in the canvas's size.
    waitForDrawing(window, 120000);
    const TZMapViewport saved = window.projectView();
    if (saved.isValid() && data.isEmpty())
        window.canvas()->setViewport(TZMapViewport(window.canvas()->size(), saved.centre(), saved.unitsPerPixel()));
    else
        window.canvas()->zoomToAll();
    if (!waitForDrawing(window, 120000)) {
        std::fprintf(stderr, "tzmap: the map did not finish drawing in time\n");
        return 1;
    }
    const QString file = parser.value(snapshot);
    if (!window.grab().save(file, "PNG")) {
        std::fprintf(stderr, "tzmap: cannot write %s\n", qPrintable(file));
        return 1;
    }
    std::printf("Snapshot written to %s\n", qPrintable(file));
    return 0;
}
