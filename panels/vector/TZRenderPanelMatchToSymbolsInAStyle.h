#pragma once

#include "TZRenderPanel.h"
#include "TZRotationSettings.h"

#include <QModelIndex>

#include <memory>

namespace Ui {
class TZRenderPanelMatchToSymbolsInAStyle;
}
class TZModelMatchToSymbols;

// The "Match to symbols in a style" page: each value of a field that names
// a style in the chosen style database is drawn with that style. Rows carry
// a scale filter and range. Apply sets a TEMatchToSymbolsRender that
// remembers the database's name; the matched styles are used as stored, so
// no outline is written.
class TZRENDER_EXPORT TZRenderPanelMatchToSymbolsInAStyle : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TZRenderPanelMatchToSymbolsInAStyle(QWidget* parent = nullptr);
    ~TZRenderPanelMatchToSymbolsInAStyle() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

    // Created by the first load; null before.
    TZModelMatchToSymbols* model() const { return mModel; }
    // The layer's field index the field combo's index was mapped to, -1
    // before any choice.
    int chosenFieldIndex() const { return mFieldIndex; }

public Q_SLOTS:
    void onSymbolDBSelectChanged(int index);
    void onFieldChanged(int index);
    void onItemDoubleClicked(const QModelIndex& index);
    void onMoreDetail();
    void onAddAllValues();
    void onDeleteAllValues();
    void onDeleteValue();
    void onAddValue();
    void onSymbolPriority();
    void onSetupRotation();

private:
    void createModel();
    void fillFieldCombo(TZObjects::TEFeatureLayer* layer);
    // Hands the chosen database's styles to the model; false when there are
    // none to match.
    bool prepareStyles();

    std::unique_ptr<Ui::TZRenderPanelMatchToSymbolsInAStyle> mUi;
    TZModelMatchToSymbols* mModel = nullptr;
    TZRotationSettings mRotation;
    int mSymbolDBIndex = 0;
    int mFieldIndex = -1;
};
