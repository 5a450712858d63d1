#pragma once

#include "TZRenderExport.h"

#include <QDialog>
#include <QStringList>

#include <memory>

namespace Ui {
class TZDialogAddValueToUniqueValue;
}
class QStringListModel;

// Lets the user pick some of the collected values, and type new ones, to
// add to a category table. New values typed by the user are placed by the
// number before their first comma; for "MatchToSymbols" none can be typed.
class TZRENDER_EXPORT TZDialogAddValueToUniqueValue : public QDialog
{
    Q_OBJECT
public:
    TZDialogAddValueToUniqueValue(const QStringList& values, const QString& renderType, QWidget* parent = nullptr);
    ~TZDialogAddValueToUniqueValue() override;

    // The texts of the rows selected when the dialog was accepted.
    QStringList selectedValues() const { return mSelectedValues; }

public Q_SLOTS:
    void onOK();
    void addNewValueToList();

private:
    std::unique_ptr<Ui::TZDialogAddValueToUniqueValue> mUi;
    QString mRenderType;
    QStringListModel* mModel = nullptr;
    QStringList mSelectedValues;
};
