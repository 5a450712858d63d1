#include "UserDelegate.h"

#include <QComboBox>

UserDelegate::UserDelegate(int bandCount, QObject* parent) : QItemDelegate(parent), mBandCount(bandCount)
{
}

QWidget* UserDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const
{
    if (index.column() != 1)
        return QItemDelegate::createEditor(parent, option, index);
    auto* combo = new QComboBox(parent);
    for (int band = 1; band <= mBandCount; ++band)
        combo->addItem(QStringLiteral("Band_%1").arg(band));
    return combo;
}

void UserDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* combo = qobject_cast<QComboBox*>(editor); combo && index.column() == 1) {
        combo->setCurrentIndex(combo->findText(index.data(Qt::EditRole).toString()));
        return;
    }
    QItemDelegate::setEditorData(editor, index);
}

void UserDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    if (auto* combo = qobject_cast<QComboBox*>(editor); combo && index.column() == 1) {
        model->setData(index, combo->currentText(), Qt::EditRole);
        return;
    }
    QItemDelegate::setModelData(editor, model, index);
}
