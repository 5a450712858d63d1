#pragma once

#include "widgets/TZHostWidgetsExport.h"

#include "core/TERefPtr.h"
#include "symbology/TEStyle.h"

#include <QDialog>

#include <memory>
#include <vector>

namespace Ui {
class TZStyleSelectorDialog;
}
namespace TZObjects {
class TEStyleDB;
}

// The style selector: lists the symbols of one kind from every style
// database with their previews, and lets the user adjust the chosen one
// (colour, size or width, outline, angle) before taking it. The result is a
// copy; the databases are never changed.
class TZHOSTWIDGETS_EXPORT TZStyleSelectorDialog : public QDialog
{
    Q_OBJECT
public:
    // Starts from a copy of initial when given (its kind decides the list),
    // else from the first listed symbol of type.
    TZStyleSelectorDialog(TZObjects::TEStyle::StyleType type, const TZObjects::TEStyle* initial,
                          QWidget* parent = nullptr);
    ~TZStyleSelectorDialog() override;

    // The symbol as the user left it; empty when there is none.
    TZObjects::TERefPtr<TZObjects::TEStyle> style() const { return mStyle; }
    // The database the symbol was taken from; null when it was edited or did
    // not come from a database.
    TZObjects::TEStyleDB* styleDB() const { return mEdited ? nullptr : mStyleDB; }

public Q_SLOTS:
    void accept() override;

private Q_SLOTS:
    void onStyleDBChanged(int index);
    void onStyleChosen();
    void onEdited();

private:
    struct Entry
    {
        TZObjects::TEStyle* style;
        TZObjects::TEStyleDB* db;
    };

    void listStyles();
    void loadEditors();
    void updatePreview();

    std::unique_ptr<Ui::TZStyleSelectorDialog> mUi;
    TZObjects::TEStyle::StyleType mType = TZObjects::TEStyle::PointStyle;
    std::vector<Entry> mEntries;
    TZObjects::TERefPtr<TZObjects::TEStyle> mStyle;
    TZObjects::TEStyleDB* mStyleDB = nullptr;
    bool mEdited = false;
};

// Modal style selection. Each returns a new symbol, or null when the user
// cancelled. The selector keeps the returned symbol alive until its next
// call; a caller keeps it by taking a reference (TERefPtr). The forms with a
// database reference set it to the database the symbol came from, or to null
// when the user adjusted it.
TZHOSTWIDGETS_EXPORT TZObjects::TEStyle* selectStyle(TZObjects::TEStyle::StyleType type);
TZHOSTWIDGETS_EXPORT TZObjects::TEStyle* selectStyle(TZObjects::TEStyle::StyleType type,
                                                     TZObjects::TEStyleDB*& db);
TZHOSTWIDGETS_EXPORT TZObjects::TEStyle* selectStyle(TZObjects::TEStyle* style);
TZHOSTWIDGETS_EXPORT TZObjects::TEStyle* selectStyle(TZObjects::TEStyle* style, TZObjects::TEStyleDB*& db);
