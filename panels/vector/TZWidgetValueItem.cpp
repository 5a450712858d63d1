#include "TZWidgetValueItem.h"

#include <QCheckBox>
#include <QHBoxLayout>

TZWidgetValueItem::TZWidgetValueItem(const QString& fieldName, QWidget* parent)
    : QWidget(parent)
    , mCheckBox(new QCheckBox(fieldName, this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->addWidget(mCheckBox);
    mCheckBox->setChecked(false);
    setMinimumHeight(14);
    connect(mCheckBox, SIGNAL(clicked(bool)), this, SLOT(onClick()));
}

QString TZWidgetValueItem::fieldName() const
{
    return mCheckBox->text();
}

bool TZWidgetValueItem::isChecked() const
{
    return mCheckBox->isChecked();
}

void TZWidgetValueItem::setChecked(bool checked)
{
    mCheckBox->setChecked(checked);
}

void TZWidgetValueItem::onClick()
{
    Q_EMIT itemStatusChanged();
}
