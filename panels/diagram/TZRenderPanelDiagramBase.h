#pragma once

#include "TZRenderPanel.h"

#include "core/TERefPtr.h"
#include "renders/TEFeatureRender.h"

#include <QModelIndex>

class QCheckBox;
class QComboBox;
class QListWidget;
class QTableView;
class TZColorSchemeComboBox;
class TZModelPanelPieDiagram;
class TZWidgetFieldItem;

namespace TZObjects {
class TEDiagramRender;
class TEFeatureLayer;
}

// What the pie, histogram and stack pages share: a drop-down of the
// layer's numeric fields (from the third field on) made of check-mark
// entries, a table of the chosen fields with one fill symbol each coloured
// from the ramp, and the render the layer had before the diagram, kept as
// the diagram's background. A page builds its form, hands its field combo,
// ramp combo and table to setDiagramWidgets and reads and writes its own
// render parameters between the shared steps.
class TZRENDER_EXPORT TZRenderPanelDiagramBase : public TZRenderPanel
{
    Q_OBJECT
public:
    ~TZRenderPanelDiagramBase() override;

    // The render drawn beneath the diagram on the next apply; empty when
    // none has been found yet.
    TZObjects::TERefPtr<TZObjects::TEFeatureRender> backgroundRender() const { return mBackground; }

public Q_SLOTS:
    void onFieldsSelectChanged();
    void onColorRampChanged();
    void onItemDoubleClicked(QModelIndex index);
    // Sets the data check box checked again when a click left it checked;
    // it has no other effect, so the box toggles as any other does.
    void on_mCheckBoxShowLabel_clicked();

protected:
    explicit TZRenderPanelDiagramBase(QWidget* parent = nullptr);

    void setDiagramWidgets(QComboBox* fields, TZColorSchemeComboBox* ramp, QTableView* table,
                           QCheckBox* showLabel);
    virtual TZModelPanelPieDiagram* createModel() = 0;
    virtual TZWidgetFieldItem* createFieldItem(const QString& fieldName) = 0;

    // The shared first reset steps: makes the model and the field list on
    // the first call, lists the candidate fields and clears the model. The
    // current layer, or null when there is none or it is not valid (the
    // reset then stops).
    TZObjects::TEFeatureLayer* resetFields();
    // Reads a diagram render of the page's kind back: its background, one
    // row per item with its style as it is, each listed field checked
    // quietly, the combo text the names joined with ",".
    void readItems(const TZObjects::TEDiagramRender* render);
    // The layer's render is not this page's kind: another diagram hands
    // over its own background, anything else becomes the background.
    void takeBackground(const TZObjects::TERefPtr<TZObjects::TEFeatureRender>& current);
    // The shared start of an apply: the current layer (null when none or
    // not valid), the active view's drawing stopped.
    TZObjects::TEFeatureLayer* beginApply();
    // Replaces the render's items by one per model row, field as caption.
    void writeItems(TZObjects::TEDiagramRender* render) const;
    // Sets the held background render on the diagram, if one is held.
    void writeBackground(TZObjects::TEDiagramRender* render) const;

    TZModelPanelPieDiagram* model() const { return mModel; }
    QListWidget* fieldList() const { return mFieldList; }

private:
    QComboBox* mFieldsCombo = nullptr;
    TZColorSchemeComboBox* mRampCombo = nullptr;
    QTableView* mTable = nullptr;
    QCheckBox* mShowLabel = nullptr;
    TZModelPanelPieDiagram* mModel = nullptr;
    QListWidget* mFieldList = nullptr;
    TZObjects::TERefPtr<TZObjects::TEFeatureRender> mBackground;
};
