#pragma once

#include <QItemDelegate>

// The band chooser of the RGB composite panel's channel table: column 1 is
// edited in a combo box of the band names "Band_1" to "Band_<band count>";
// other columns get the default editor.
class UserDelegate : public QItemDelegate
{
    Q_OBJECT
public:
    explicit UserDelegate(int bandCount, QObject* parent = nullptr);

    int bandCount() const { return mBandCount; }
    void setBandCount(int count) { mBandCount = count; }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

private:
    int mBandCount = 0;
};
