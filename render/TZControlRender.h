#pragma once

#include "TZRenderExport.h"

#include "core/TERefPtr.h"
#include "data/TELayer.h"
#include "symbology/TEStyle.h"
#include "widgets/TZDockWidget.h"

#include <QList>
#include <QMutex>
#include <QStringList>

#include <map>
#include <memory>
#include <vector>

namespace Ui {
class TZControlRender;
}
class TZRenderPanel;

// The "Symbol rendering" dock: the one window in which the user chooses how
// the current layer is drawn. It offers the catalog panels that serve the
// layer's type, selects the one that matches the layer's render, and on
// Apply lets that panel set a new render before telling the host to repaint
// (refreshMap) and that the layer's symbology changed (symbolChanged).
class TZRENDER_EXPORT TZControlRender : public TZDockWidget
{
    Q_OBJECT
public:
    // The one dock: the first call creates it with parent, later calls
    // return it and ignore the argument.
    static TZControlRender* instance(QWidget* parent = nullptr);
    ~TZControlRender() override;

    // Makes layer current and shows its name; the host then calls
    // showLayerStyle().
    void setLayer(TZObjects::TELayer* layer);
    TZObjects::TELayer* layer() const { return mLayer.get(); }

Q_SIGNALS:
    void refreshMap();
    void symbolChanged(QString layerGUID);

public Q_SLOTS:
    void onLayerWillBeRemove(const QString& lyrGUID);
    void onApply();
    void onReset();
    void showLayerStyle(int index);
    void showLayerStyle();
    void switchToTab(int index);

protected:
    explicit TZControlRender(QWidget* parent);
    void changeEvent(QEvent* event) override;

    void clear();
    void initRenderCatalog();
    // Registers a panel (taking ownership); a panel whose name is already
    // registered is deleted, except "ImageStretch".
    void addRender(TZRenderPanel* panel);
    void setupConnection();
    bool getStyleType(TZObjects::TEStyle::StyleType& type);

private:
    void nameButtons();
    void addNoRenderEntry();
    TZRenderPanel* findPanel(const QString& name) const;
    void showRasterLayerStyle();

    std::unique_ptr<Ui::TZControlRender> mUi;
    QStringList mRenderTitles;
    std::vector<TZRenderPanel*> mRenderPanels;
    std::map<int, QList<TZRenderPanel*>> mLayerTypeIndex;
    QMutex mLayerLock;
    TZObjects::TERefPtr<TZObjects::TELayer> mLayer;
};
