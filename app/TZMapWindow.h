#pragma once

#include "core/TERefPtr.h"
#include "data/TELayer.h"
#include "TZMapViewport.h"

#include <QMainWindow>
#include <QStringList>

#include <vector>

class QAction;
class QLabel;
class QProgressBar;
class TZControlRender;
class TZLayerTree;
class TZMapCanvas;

// tzmap's main window: the layer list on the left, the map canvas in the
// middle and the "Symbol rendering" dock on the right. Selecting a layer
// hands it to the dock; the dock's Apply redraws the map and refreshes the
// layer's legend. It opens data and projects, saves projects, and asks
// before closing with unsaved changes.
class TZMapWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit TZMapWindow(QWidget* parent = nullptr);
    ~TZMapWindow() override;

    // Opens files, folders or data source names as layers. Problems are
    // reported in a message box, or only on the error output when the
    // window is not interactive. Returns the number of layers opened.
    int openPaths(const QStringList& paths);
    bool openProject(const QString& path);
    // The view the last opened project saved (invalid when it saved none).
    TZMapViewport projectView() const { return mProjectView; }
    bool saveProject(const QString& path);

    // Without interaction no message box is shown (for --snapshot).
    void setInteractive(bool interactive);

    TZMapCanvas* canvas() const { return mCanvas; }
    TZLayerTree* layerTree() const { return mLayerTree; }
    // Selects a layer in the list, which hands it to the dock.
    void selectLayer(const QString& guid);

Q_SIGNALS:
    void layerWillBeRemoved(const QString& guid);

protected:
    void closeEvent(QCloseEvent* event) override;

private Q_SLOTS:
    void onOpenData();
    void onOpenRasterFolder();
    void onOpenDataSourceName();
    void onAddPostgisLayer();
    void onOpenProject();
    bool onSaveProject();
    bool onSaveProjectAs();
    void onRemoveLayer();
    void onZoomToLayer();
    void onShowSymbology();
    void onAbout();
    void onLayersChanged();
    void onCurrentLayerChanged(TZObjects::TELayer* layer);
    void onSymbolChanged(const QString& guid);
    void onScaleChanged(double scale);
    void onMouseMapPosition(const QPointF& map);
    void onDrawingFinished(bool complete, const QStringList& errors);

private:
    void createActions();
    void createMenus();
    void createToolBar();
    void createStatusBar();
    void setProjectPath(const QString& path);
    void clearLayers();
    bool maybeSave();
    void report(const QString& title, const QString& text, bool isError);
    // Adds opened layers: points over lines over polygons over rasters.
    int addLayers(std::vector<TZObjects::TERefPtr<TZObjects::TELayer>> layers);
    QString dataFolder() const;

    TZMapCanvas* mCanvas = nullptr;
    TZLayerTree* mLayerTree = nullptr;
    TZControlRender* mRenderDock = nullptr;
    QLabel* mCoordinateLabel = nullptr;
    QLabel* mScaleLabel = nullptr;
    QProgressBar* mDrawingBar = nullptr;
    QString mProjectPath;
    QString mLastFolder;
    QString mLastPostgisSource;  // without its password
    bool mInteractive = true;
    bool mLoading = false;
    TZMapViewport mProjectView;

    QAction* mActionOpenData = nullptr;
    QAction* mActionOpenRasterFolder = nullptr;
    QAction* mActionOpenSourceName = nullptr;
    QAction* mActionAddPostgis = nullptr;
    QAction* mActionOpenProject = nullptr;
    QAction* mActionSaveProject = nullptr;
    QAction* mActionSaveProjectAs = nullptr;
    QAction* mActionQuit = nullptr;
    QAction* mActionZoomIn = nullptr;
    QAction* mActionZoomOut = nullptr;
    QAction* mActionZoomAll = nullptr;
    QAction* mActionZoomLayer = nullptr;
    QAction* mActionRefresh = nullptr;
    QAction* mActionSymbology = nullptr;
    QAction* mActionRemoveLayer = nullptr;
    QAction* mActionAbout = nullptr;
};
