#include "widgets/TZColorBtn.h"

#include "widgets/TZSymbolUtils.h"

#include <QAction>
#include <QColorDialog>
#include <QPainter>
#include <QStyleOptionToolButton>
#include <QStylePainter>

TZColorBtn::TZColorBtn(QWidget* parent)
    : QToolButton(parent)
{
    // The signal's argument type is spelled QRgb; queued connections and
    // signal spies need that name registered.
    qRegisterMetaType<QRgb>("QRgb");
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setToolTip(tr("No color"));

    auto* noColor = new QAction(tr("No color"), this);
    noColor->setObjectName(QStringLiteral("mActionNoColor"));
    connect(noColor, &QAction::triggered, this, [this] { setColor(0); });
    addAction(noColor);
    setContextMenuPolicy(Qt::ActionsContextMenu);

    connect(this, &QToolButton::clicked, this, &TZColorBtn::chooseColor);
}

void TZColorBtn::setColor(QRgb color)
{
    if (color == mColor)
        return;
    mColor = color;
    setToolTip(color == 0 ? tr("No color") : QColor::fromRgba(color).name(QColor::HexArgb).toUpper());
    update();
    emit colorChanged(mColor);
}

QSize TZColorBtn::sizeHint() const
{
    return QSize(59, 23);
}

QSize TZColorBtn::minimumSizeHint() const
{
    return QSize(24, 16);
}

void TZColorBtn::chooseColor()
{
    // Starting from "no colour" would offer a fully transparent black.
    const QColor initial = mColor == 0 ? QColor(Qt::white) : QColor::fromRgba(mColor);
    const QColor chosen = QColorDialog::getColor(initial, this, tr("Select color"),
                                                 QColorDialog::ShowAlphaChannel);
    if (chosen.isValid())
        setColor(chosen.rgba());
}

void TZColorBtn::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.icon = QIcon();
    option.text.clear();
    painter.drawComplexControl(QStyle::CC_ToolButton, option);

    const QRect swatch = rect().adjusted(4, 4, -4, -4);
    if (swatch.width() <= 0 || swatch.height() <= 0)
        return;

    painter.setRenderHint(QPainter::Antialiasing, false);
    if (mColor == 0) {
        painter.fillRect(swatch, Qt::white);
        painter.setRenderHint(QPainter::Antialiasing, true);
        painter.setPen(QPen(QColor(200, 0, 0), 1.5));
        painter.drawLine(swatch.bottomLeft(), swatch.topRight());
    } else {
        const QColor color = QColor::fromRgba(mColor);
        if (color.alpha() < 255)
            TZSymbolUtils::drawStippledBackground(&painter, swatch);
        painter.fillRect(swatch, color);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(isEnabled() ? QColor(90, 90, 90) : QColor(170, 170, 170));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(swatch.adjusted(0, 0, -1, -1));
}
