#include "TZMapWindow.h"

#include "TZLayerOpener.h"
#include "TZLayerTree.h"
#include "TZMapCanvas.h"
#include "TZMapIcons.h"
#include "TZMapProject.h"
#include "TZPostgisDialog.h"
#include "TZPostgisLogin.h"

#include "TZControlRender.h"
#include "data/TEPostgresSource.h"
#include "widgets/TZWaitDialog.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QHash>
#include <QInputDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressBar>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>

#include <cstdio>

using namespace TZObjects;

namespace {

const char* const DataFileFilter =
    "GIS data (*.gpkg *.shp *.geojson *.json *.topojson *.csv *.kml *.gml *.sqlite *.fgb *.gdb "
    "*.tif *.tiff *.img *.vrt *.asc *.jp2 *.png *.jpg *.nc);;All files (*)";

// Layers added later lie higher in the list.
int drawingRank(const TELayer* layer)
{
    switch (layer->GetLayerType()) {
    case TELayer::LT_Polygon:
        return 1;
    case TELayer::LT_Line:
        return 2;
    case TELayer::LT_Point:
    case TELayer::LT_MultiPoint:
        return 3;
    default:
        return layer->IsRasterLayer() ? 0 : 1;
    }
}

} // namespace

TZMapWindow::TZMapWindow(QWidget* parent)
    : QMainWindow(parent)
{
    setObjectName(QStringLiteral("TZMapWindow"));
    resize(1280, 800);

    mCanvas = new TZMapCanvas(this);
    setCentralWidget(mCanvas);

    auto* layersDock = new QDockWidget(tr("Layers"), this);
    layersDock->setObjectName(QStringLiteral("layersDock"));
    layersDock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    mLayerTree = new TZLayerTree(layersDock);
    layersDock->setWidget(mLayerTree);
    addDockWidget(Qt::LeftDockWidgetArea, layersDock);

    mRenderDock = TZControlRender::instance(this);
    addDockWidget(Qt::RightDockWidgetArea, mRenderDock);
    mRenderDock->hide();
    resizeDocks({layersDock}, {260}, Qt::Horizontal);

    createActions();
    createMenus();
    createToolBar();
    createStatusBar();

    connect(mLayerTree, &TZLayerTree::layersChanged, this, &TZMapWindow::onLayersChanged);
    connect(mLayerTree, &TZLayerTree::currentLayerChanged, this, &TZMapWindow::onCurrentLayerChanged);
    connect(mLayerTree, &QAbstractItemView::doubleClicked, this, &TZMapWindow::onShowSymbology);
    connect(this, &TZMapWindow::layerWillBeRemoved, mRenderDock, &TZControlRender::onLayerWillBeRemove);
    connect(mRenderDock, &TZControlRender::refreshMap, mCanvas, &TZMapCanvas::refresh);
    connect(mRenderDock, &TZControlRender::symbolChanged, this, &TZMapWindow::onSymbolChanged);
    connect(mCanvas, &TZMapCanvas::scaleChanged, this, &TZMapWindow::onScaleChanged);
    connect(mCanvas, &TZMapCanvas::mouseMapPosition, this, &TZMapWindow::onMouseMapPosition);
    connect(mCanvas, &TZMapCanvas::drawingStarted, mDrawingBar, &QWidget::show);
    connect(mCanvas, &TZMapCanvas::drawingProgress, this, [this](int done, int count) {
        mDrawingBar->setRange(0, count);
        mDrawingBar->setValue(done);
    });
    connect(mCanvas, &TZMapCanvas::drawingFinished, this, &TZMapWindow::onDrawingFinished);

    setProjectPath(QString());
    setInteractive(true);
}

TZMapWindow::~TZMapWindow()
{
    TZPostgisLogin::setPrompt({});
    // The dock is shared; it must not keep this window's layer alive.
    mRenderDock->setLayer(nullptr);
}

void TZMapWindow::createActions()
{
    QStyle* style = QApplication::style();
    mActionOpenData = new QAction(style->standardIcon(QStyle::SP_DialogOpenButton), tr("&Open Data..."), this);
    mActionOpenData->setShortcut(QKeySequence::Open);
    mActionOpenData->setToolTip(tr("Add vector or raster layers from files"));
    connect(mActionOpenData, &QAction::triggered, this, &TZMapWindow::onOpenData);

    mActionOpenRasterFolder = new QAction(style->standardIcon(QStyle::SP_DirOpenIcon), tr("Open Raster &Folder..."), this);
    mActionOpenRasterFolder->setToolTip(tr("Add a folder of rasters as one mosaic layer"));
    connect(mActionOpenRasterFolder, &QAction::triggered, this, &TZMapWindow::onOpenRasterFolder);

    mActionOpenSourceName = new QAction(tr("Open Data &Source..."), this);
    mActionOpenSourceName->setToolTip(tr("Add layers from a data source name, such as a PostGIS connection"));
    connect(mActionOpenSourceName, &QAction::triggered, this, &TZMapWindow::onOpenDataSourceName);

    mActionAddPostgis = new QAction(tr("Add &PostGIS Layer..."), this);
    mActionAddPostgis->setObjectName(QStringLiteral("actionAddPostgisLayer"));
    mActionAddPostgis->setToolTip(tr("Connect to a PostGIS database and add some of its spatial tables"));
    connect(mActionAddPostgis, &QAction::triggered, this, &TZMapWindow::onAddPostgisLayer);

    mActionOpenProject = new QAction(tr("Open &Project..."), this);
    mActionOpenProject->setShortcut(QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_O));
    connect(mActionOpenProject, &QAction::triggered, this, &TZMapWindow::onOpenProject);

    mActionSaveProject = new QAction(style->standardIcon(QStyle::SP_DialogSaveButton), tr("&Save Project"), this);
    mActionSaveProject->setShortcut(QKeySequence::Save);
    connect(mActionSaveProject, &QAction::triggered, this, &TZMapWindow::onSaveProject);

    mActionSaveProjectAs = new QAction(tr("Save Project &As..."), this);
    mActionSaveProjectAs->setShortcut(QKeySequence::SaveAs);
    connect(mActionSaveProjectAs, &QAction::triggered, this, &TZMapWindow::onSaveProjectAs);

    mActionQuit = new QAction(tr("&Quit"), this);
    mActionQuit->setShortcut(QKeySequence::Quit);
    connect(mActionQuit, &QAction::triggered, this, &QWidget::close);

    mActionZoomIn = new QAction(TZMapIcons::icon(TZMapIcons::ZoomIn), tr("Zoom &In"), this);
    mActionZoomIn->setShortcut(QKeySequence::ZoomIn);
    connect(mActionZoomIn, &QAction::triggered, mCanvas, &TZMapCanvas::zoomIn);

    mActionZoomOut = new QAction(TZMapIcons::icon(TZMapIcons::ZoomOut), tr("Zoom &Out"), this);
    mActionZoomOut->setShortcut(QKeySequence::ZoomOut);
    connect(mActionZoomOut, &QAction::triggered, mCanvas, &TZMapCanvas::zoomOut);

    mActionZoomAll = new QAction(TZMapIcons::icon(TZMapIcons::ZoomAll), tr("Zoom to &All"), this);
    mActionZoomAll->setShortcut(QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_F));
    connect(mActionZoomAll, &QAction::triggered, mCanvas, &TZMapCanvas::zoomToAll);

    mActionZoomLayer = new QAction(TZMapIcons::icon(TZMapIcons::ZoomLayer), tr("Zoom to &Layer"), this);
    connect(mActionZoomLayer, &QAction::triggered, this, &TZMapWindow::onZoomToLayer);

    mActionRefresh = new QAction(TZMapIcons::icon(TZMapIcons::Refresh), tr("&Refresh"), this);
    mActionRefresh->setObjectName(QStringLiteral("actionRefresh"));
    mActionRefresh->setShortcut(QKeySequence::Refresh);
    connect(mActionRefresh, &QAction::triggered, mCanvas, &TZMapCanvas::refresh);

    mActionSymbology = new QAction(TZMapIcons::icon(TZMapIcons::Symbology), tr("&Symbology..."), this);
    mActionSymbology->setToolTip(tr("Show the symbol rendering of the selected layer"));
    connect(mActionSymbology, &QAction::triggered, this, &TZMapWindow::onShowSymbology);

    mActionRemoveLayer = new QAction(style->standardIcon(QStyle::SP_TrashIcon), tr("&Remove Layer"), this);
    mActionRemoveLayer->setShortcut(QKeySequence::Delete);
    mActionRemoveLayer->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(mActionRemoveLayer, &QAction::triggered, this, &TZMapWindow::onRemoveLayer);

    mActionAbout = new QAction(tr("&About tzmap"), this);
    connect(mActionAbout, &QAction::triggered, this, &TZMapWindow::onAbout);

    // The layer list's context menu and its Delete key.
    mLayerTree->addAction(mActionZoomLayer);
    mLayerTree->addAction(mActionSymbology);
    mLayerTree->addAction(mActionRemoveLayer);
    mLayerTree->setContextMenuPolicy(Qt::ActionsContextMenu);
    for (QAction* action : {mActionZoomLayer, mActionSymbology, mActionRemoveLayer})
        action->setEnabled(false);
}

void TZMapWindow::createMenus()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(mActionOpenData);
    file->addAction(mActionOpenRasterFolder);
    file->addAction(mActionOpenSourceName);
    file->addAction(mActionAddPostgis);
    file->addSeparator();
    file->addAction(mActionOpenProject);
    file->addAction(mActionSaveProject);
    file->addAction(mActionSaveProjectAs);
    file->addSeparator();
    file->addAction(mActionQuit);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    view->addAction(mActionZoomIn);
    view->addAction(mActionZoomOut);
    view->addAction(mActionZoomAll);
    view->addAction(mActionZoomLayer);
    view->addSeparator();
    view->addAction(mActionRefresh);

    QMenu* layer = menuBar()->addMenu(tr("&Layer"));
    layer->addAction(mActionSymbology);
    layer->addAction(mActionZoomLayer);
    layer->addAction(mActionRemoveLayer);

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(mActionAbout);
}

void TZMapWindow::createToolBar()
{
    QToolBar* bar = addToolBar(tr("Map"));
    bar->setObjectName(QStringLiteral("mapToolBar"));
    bar->setIconSize(QSize(24, 24));
    bar->addAction(mActionOpenData);
    bar->addAction(mActionOpenRasterFolder);
    bar->addAction(mActionSaveProject);
    bar->addSeparator();
    bar->addAction(mActionZoomIn);
    bar->addAction(mActionZoomOut);
    bar->addAction(mActionZoomAll);
    bar->addAction(mActionZoomLayer);
    bar->addAction(mActionRefresh);
    bar->addSeparator();
    bar->addAction(mActionSymbology);
    bar->addAction(mActionRemoveLayer);
}

void TZMapWindow::createStatusBar()
{
    mCoordinateLabel = new QLabel(this);
    mCoordinateLabel->setMinimumWidth(220);
    mScaleLabel = new QLabel(this);
    mScaleLabel->setMinimumWidth(130);
    mDrawingBar = new QProgressBar(this);
    mDrawingBar->setMaximumWidth(140);
    mDrawingBar->setMaximumHeight(16);
    mDrawingBar->setTextVisible(false);
    mDrawingBar->hide();
    statusBar()->addPermanentWidget(mDrawingBar);
    statusBar()->addPermanentWidget(mCoordinateLabel);
    statusBar()->addPermanentWidget(mScaleLabel);
}

void TZMapWindow::setInteractive(bool interactive)
{
    mInteractive = interactive;
    // A server that wants a password asks the user, never a snapshot run.
    TZPostgisLogin::setPrompt(interactive ? TZPostgisLogin::dialogPrompt(this) : TZPostgisLogin::Prompt());
}

int TZMapWindow::addLayers(std::vector<TERefPtr<TELayer>> layers)
{
    // Within one source, points end up over lines over polygons over rasters.
    std::stable_sort(layers.begin(), layers.end(), [](const TERefPtr<TELayer>& a, const TERefPtr<TELayer>& b) {
        return drawingRank(a.get()) < drawingRank(b.get());
    });
    for (const TERefPtr<TELayer>& layer : layers)
        mLayerTree->addLayer(layer);
    return int(layers.size());
}

int TZMapWindow::openPaths(const QStringList& paths)
{
    // A server that does not answer (or a large folder of rasters) takes a
    // while: the sources are opened on a worker thread while the window
    // keeps painting, and the layers are added here afterwards.
    std::vector<std::vector<TERefPtr<TELayer>>> found(size_t(paths.size()));
    QStringList problems;
    TZWaitDialog wait(tr("Opening the data..."), this);
    if (!wait.WaitFor([&] {
            for (int i = 0; i < paths.size(); ++i) {
                QString error;
                found[size_t(i)] = TZLayerOpener::open(paths[i], &error);
                if (found[size_t(i)].empty())
                    problems << error;
            }
        }))
        problems << wait.errorText();
    int opened = 0;
    for (int i = 0; i < paths.size(); ++i) {
        const QString& path = paths[i];
        if (found[size_t(i)].empty())
            continue;
        opened += addLayers(std::move(found[size_t(i)]));
        if (TEPostgresSource::IsPostgres(path))
            mLastPostgisSource = TEPostgresSource::WithoutPassword(path);
        else
            mLastFolder = QFileInfo(path).absolutePath();
    }
    if (!problems.isEmpty())
        report(tr("Error!"), problems.join(QLatin1Char('\n')), true);
    return opened;
}

bool TZMapWindow::openProject(const QString& path)
{
    std::vector<TZMapProject::LayerState> layers;
    TZMapViewport view;
    QStringList warnings;
    QString error;
    // Reading a large project takes a while: the window keeps painting
    // while it is read on a worker thread.
    bool opened = false;
    TZWaitDialog wait(tr("Opening the project..."), this);
    if (!wait.WaitFor([&] { opened = TZMapProject::open(path, layers, view, &warnings, &error); }))
        error = wait.errorText();
    if (!opened) {
        report(tr("Error!"), error, true);
        return false;
    }
    mLoading = true;
    clearLayers();
    // The file lists the top layer first; each layer added goes on top.
    for (auto it = layers.rbegin(); it != layers.rend(); ++it)
        mLayerTree->addLayer(it->layer, it->visible);
    mLoading = false;
    onLayersChanged();
    mProjectView = view;
    if (view.isValid())
        mCanvas->setViewport(TZMapViewport(mCanvas->size(), view.centre(), view.unitsPerPixel()));
    else
        mCanvas->zoomToAll();
    setProjectPath(path);
    if (!warnings.isEmpty())
        report(tr("Warning"), warnings.join(QLatin1Char('\n')), false);
    return true;
}

bool TZMapWindow::saveProject(const QString& path)
{
    std::vector<TZMapProject::LayerState> layers;
    for (const TERefPtr<TELayer>& layer : mLayerTree->layers())
        layers.push_back({layer, mLayerTree->isLayerVisible(layer->GetGuidStr().toQString())});
    QString error;
    bool saved = false;
    const TZMapViewport view = mCanvas->viewport();
    TZWaitDialog wait(tr("Saving the project..."), this);
    if (!wait.WaitFor([&] { saved = TZMapProject::save(path, layers, view, &error); }))
        error = wait.errorText();
    if (!saved) {
        report(tr("Error!"), error, true);
        return false;
    }
    setProjectPath(path);
    return true;
}

void TZMapWindow::selectLayer(const QString& guid)
{
    const QModelIndex index = mLayerTree->indexOf(guid);
    if (index.isValid())
        mLayerTree->setCurrentIndex(index);
}

void TZMapWindow::closeEvent(QCloseEvent* event)
{
    if (maybeSave())
        event->accept();
    else
        event->ignore();
}

void TZMapWindow::onOpenData()
{
    const QStringList files = QFileDialog::getOpenFileNames(this, tr("Open Data"), dataFolder(), tr(DataFileFilter));
    if (!files.isEmpty())
        openPaths(files);
}

void TZMapWindow::onOpenRasterFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Open Raster Folder"), dataFolder());
    if (!folder.isEmpty())
        openPaths({folder});
}

void TZMapWindow::onOpenDataSourceName()
{
    bool ok = false;
    const QString name = QInputDialog::getText(this, tr("Open Data Source"),
                                               tr("Data source (a path, or a connection such as PG:dbname=gis):"),
                                               QLineEdit::Normal, QString(), &ok);
    if (ok && !name.trimmed().isEmpty())
        openPaths({name.trimmed()});
}

void TZMapWindow::onAddPostgisLayer()
{
    TZPostgisDialog dialog(this);
    if (!mLastPostgisSource.isEmpty())
        dialog.setSource(mLastPostgisSource);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString source = dialog.source();
    const QStringList names = dialog.selectedLayers();
    std::vector<TERefPtr<TELayer>> layers;
    QStringList problems;
    // Each table opens its own connection: off the GUI thread.
    TZWaitDialog wait(tr("Opening the data..."), this);
    if (!wait.WaitFor([&] {
            for (const QString& name : names) {
                QString error;
                if (TERefPtr<TELayer> layer =
                        TZLayerOpener::openLayer(QLatin1String(TZLayerOpener::FeatureKind), source, name, &error))
                    layers.push_back(layer);
                else
                    problems << error;
            }
        }))
        problems << wait.errorText();
    mLastPostgisSource = TEPostgresSource::WithoutPassword(source);
    addLayers(std::move(layers));
    if (!problems.isEmpty())
        report(tr("Error!"), problems.join(QLatin1Char('\n')), true);
}

void TZMapWindow::onOpenProject()
{
    if (!maybeSave())
        return;
    const QString path = QFileDialog::getOpenFileName(this, tr("Open Project"), dataFolder(), tr(TZMapProject::FileFilter));
    if (!path.isEmpty())
        openProject(path);
}

bool TZMapWindow::onSaveProject()
{
    return mProjectPath.isEmpty() ? onSaveProjectAs() : saveProject(mProjectPath);
}

bool TZMapWindow::onSaveProjectAs()
{
    QString path = QFileDialog::getSaveFileName(this, tr("Save Project"),
                                                mProjectPath.isEmpty() ? dataFolder() : mProjectPath,
                                                tr(TZMapProject::FileFilter));
    if (path.isEmpty())
        return false;
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".tzmap");
    return saveProject(path);
}

void TZMapWindow::onRemoveLayer()
{
    TELayer* layer = mLayerTree->currentLayer();
    if (!layer)
        return;
    const TERefPtr<TELayer> keep(layer);
    const QString guid = layer->GetGuidStr().toQString();
    Q_EMIT layerWillBeRemoved(guid);
    mLayerTree->removeLayer(guid);
}

void TZMapWindow::onZoomToLayer()
{
    QRectF extent;
    if (TELayer* layer = mLayerTree->currentLayer(); layer && layer->GetExtent(extent))
        mCanvas->zoomToExtent(extent);
}

void TZMapWindow::onShowSymbology()
{
    TELayer* layer = mLayerTree->currentLayer();
    if (!layer)
        return;
    // Shown first: a hidden panel ignores the reset that loads the render.
    mRenderDock->show();
    mRenderDock->raise();
    if (mRenderDock->layer() != layer) {
        mRenderDock->setLayer(layer);
        mRenderDock->showLayerStyle();
    }
}

void TZMapWindow::onAbout()
{
    QMessageBox::about(this, tr("About tzmap"),
                       tr("<h3>tzmap</h3><p>The reference desktop host of the TZRender symbology library: "
                          "open vector and raster data, choose how each layer is drawn in the "
                          "<i>Symbol rendering</i> dock, and save the result as a project.</p>"));
}

void TZMapWindow::onLayersChanged()
{
    const bool hasLayer = mLayerTree->currentLayer() != nullptr;
    for (QAction* action : {mActionZoomLayer, mActionSymbology, mActionRemoveLayer})
        action->setEnabled(hasLayer);
    if (mLoading)
        return;
    mCanvas->setLayers(mLayerTree->visibleLayersBottomUp());
    setWindowModified(true);
}

void TZMapWindow::onCurrentLayerChanged(TELayer* layer)
{
    for (QAction* action : {mActionZoomLayer, mActionSymbology, mActionRemoveLayer})
        action->setEnabled(layer != nullptr);
    if (layer)
        onShowSymbology();
}

void TZMapWindow::onSymbolChanged(const QString& guid)
{
    mLayerTree->refreshLegend(guid);
    setWindowModified(true);
}

void TZMapWindow::onScaleChanged(double scale)
{
    mScaleLabel->setText(tr("Scale 1:%L1").arg(qRound64(scale)));
}

void TZMapWindow::onMouseMapPosition(const QPointF& map)
{
    mCoordinateLabel->setText(tr("X %L1  Y %L2").arg(map.x(), 0, 'f', 1).arg(map.y(), 0, 'f', 1));
}

void TZMapWindow::onDrawingFinished(bool complete, const QStringList& errors)
{
    if (!mCanvas->isDrawing())
        mDrawingBar->hide();
    if (!complete)
        return;
    // The message stays until a drawing succeeds: a layer whose server is
    // gone draws nothing until the user refreshes once it is back.
    if (errors.isEmpty()) {
        statusBar()->clearMessage();
        statusBar()->setToolTip(QString());
        return;
    }
    // Layers that failed for one reason (all the layers of a server that
    // went away) are named together: "roads, rivers: reason".
    QStringList reasons;
    QHash<QString, QStringList> layersByReason;
    for (const QString& error : errors) {
        const int colon = error.indexOf(QLatin1String(": "));
        const QString reason = colon < 0 ? error : error.mid(colon + 2);
        if (!layersByReason.contains(reason))
            reasons << reason;
        QStringList& names = layersByReason[reason];
        if (colon >= 0)
            names << error.left(colon);
    }
    QStringList lines;
    for (const QString& reason : reasons) {
        const QStringList& names = layersByReason[reason];
        lines << (names.isEmpty() ? reason : names.join(QStringLiteral(", ")) + QStringLiteral(": ") + reason);
    }
    const QString message = tr("Not every layer could be drawn: %1").arg(lines.join(QStringLiteral("; ")));
    statusBar()->showMessage(message);
    // The whole text, for when the bar is too narrow to show it.
    statusBar()->setToolTip(message);
}

void TZMapWindow::setProjectPath(const QString& path)
{
    mProjectPath = path;
    const QString name = path.isEmpty() ? tr("Untitled") : QFileInfo(path).completeBaseName();
    setWindowTitle(tr("%1[*] - tzmap").arg(name));
    setWindowModified(false);
}

void TZMapWindow::clearLayers()
{
    for (const TERefPtr<TELayer>& layer : mLayerTree->layers())
        Q_EMIT layerWillBeRemoved(layer->GetGuidStr().toQString());
    mLayerTree->clearLayers();
}

bool TZMapWindow::maybeSave()
{
    if (!isWindowModified() || !mInteractive)
        return true;
    const QMessageBox::StandardButton answer = QMessageBox::question(
        this, tr("tzmap"), tr("The project has unsaved changes.\nDo you want to save them?"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save)
        return onSaveProject();
    return answer == QMessageBox::Discard;
}

void TZMapWindow::report(const QString& title, const QString& text, bool isError)
{
    if (!mInteractive) {
        std::fprintf(stderr, "tzmap: %s\n", qPrintable(text));
        return;
    }
    if (isError)
        QMessageBox::critical(this, title, text);
    else
        QMessageBox::warning(this, title, text);
}

QString TZMapWindow::dataFolder() const
{
    return mLastFolder.isEmpty() ? QDir::currentPath() : mLastFolder;
}
