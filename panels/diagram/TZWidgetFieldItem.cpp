#include "TZWidgetFieldItem.h"

#include "widgets/TZApplication.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QToolButton>

TZWidgetFieldItem::TZWidgetFieldItem(const QString& fieldName, QWidget* parent)
    : QWidget(parent)
    , mFieldName(fieldName)
{
    mLabel = new QLabel(fieldName, this);
    mButton = new QToolButton(this);
    mButton->setIconSize(QSize(12, 12));
    mButton->setStyleSheet(QStringLiteral("background:transparent;"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(5, 2, 5, 2);
    layout->setSpacing(5);
    layout->addWidget(mLabel);
    layout->addStretch();
    layout->addWidget(mButton);
    connect(mButton, SIGNAL(clicked(bool)), this, SLOT(onClick()));
}

void TZWidgetFieldItem::setSelected(bool selected)
{
    mSelected = selected;
    showSelection();
}

void TZWidgetFieldItem::onClick()
{
    mSelected = !mSelected;
    showSelection();
    emit itemStatusChanged();
}

void TZWidgetFieldItem::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        onClick();
        event->accept();
        return;
    }
    QWidget::mouseReleaseEvent(event);
}

void TZWidgetFieldItem::showSelection()
{
    mButton->setIcon(mSelected ? TZApplication::getThemeIcon(QStringLiteral("/select.png")) : QIcon());
}
