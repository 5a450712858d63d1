#pragma once

#include "TZRenderPanel.h"
#include "TZRotationSettings.h"

#include "data/TEFeatureLayer.h"
#include "renders/TEFeatureRender.h"
#include "symbology/TEStyle.h"

#include <QModelIndex>
#include <QVector>

#include <memory>

namespace Ui {
class TZRenderPanelSingleSymbol;
}
class QStandardItemModel;

// The "Single symbol" page: every feature of the layer is drawn with one
// symbol chosen in the style selector, with an optional legend label, symbol
// priority per symbol layer and rotation of point symbols. Apply sets a
// TESingleSymbolRender on the layer.
class TZRENDER_EXPORT TZRenderPanelSingleSymbol : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TZRenderPanelSingleSymbol(QWidget* parent = nullptr);
    ~TZRenderPanelSingleSymbol() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

    // The current layer's render, empty without a layer or for a raster one.
    TZObjects::TERefPtr<TZObjects::TEFeatureRender> GetRender();
    // The style of the layer's single-symbol render (no reference is kept
    // for the caller), or null.
    TZObjects::TEStyle* getCurrentLayerStyle();
    bool getStyleType(TZObjects::TEStyle::StyleType& type);

public Q_SLOTS:
    void onMoreDetail();
    void onSetupRotation();
    void RefreshTableView();
    void onModelDatachanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QVector<int>& roles);
    void on_checkBox_clicked();
    // Part of the panel's slot interface; the preview is redrawn wherever the
    // symbol changes, so there is nothing left to do here.
    void updateSymbolPreview();

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    // Shows the held symbol in the preview label at its own size (points) or
    // the label's size; fallback is used when a point cannot be measured.
    void drawSymbolPreview(const QSize& fallback);
    void showPreview(const QSize& size);

    std::unique_ptr<Ui::TZRenderPanelSingleSymbol> mUi;
    TZObjects::TERefPtr<TZObjects::TEStyle> mStyle;
    QString mSymbolDBName;
    bool mMemorySymbol = false;
    QStandardItemModel* mPriorityModel = nullptr;
    TZRotationSettings mRotation;
};
