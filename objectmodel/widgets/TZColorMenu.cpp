#include "widgets/TZColorMenu.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QPainter>
#include <QToolButton>
#include <QWidgetAction>

namespace {

// The classic 5 x 8 office palette: dark shades on top, pastels at the bottom.
const QRgb CommonColors[] = {
    0x000000, 0x993300, 0x333300, 0x003300, 0x003366, 0x000080, 0x333399, 0x333333,
    0x800000, 0xFF6600, 0x808000, 0x008000, 0x008080, 0x0000FF, 0x666699, 0x808080,
    0xFF0000, 0xFF9900, 0x99CC00, 0x339966, 0x33CCCC, 0x3366FF, 0x800080, 0x969696,
    0xFF00FF, 0xFFCC00, 0xFFFF00, 0x00FF00, 0x00FFFF, 0x00CCFF, 0x993366, 0xC0C0C0,
    0xFF99CC, 0xFFCC99, 0xFFFF99, 0xCCFFCC, 0xCCFFFF, 0x99CCFF, 0xCC99FF, 0xFFFFFF,
};
constexpr int PaletteColumns = 8;
constexpr int SwatchSize = 16;

QIcon swatchIcon(const QColor& color)
{
    QPixmap pixmap(SwatchSize, SwatchSize);
    pixmap.fill(color);
    QPainter painter(&pixmap);
    painter.setPen(QColor(110, 110, 110));
    painter.drawRect(0, 0, SwatchSize - 1, SwatchSize - 1);
    return QIcon(pixmap);
}

} // namespace

TZColorMenu::TZColorMenu(QWidget* parent)
    : QMenu(parent)
{
    auto* palette = new QWidget(this);
    palette->setObjectName(QStringLiteral("mPalette"));
    auto* grid = new QGridLayout(palette);
    grid->setContentsMargins(4, 4, 4, 4);
    grid->setSpacing(2);

    int index = 0;
    for (QRgb rgb : CommonColors) {
        const QColor color = QColor::fromRgb(rgb);
        auto* swatch = new QToolButton(palette);
        swatch->setObjectName(QStringLiteral("mSwatch%1").arg(index));
        swatch->setAutoRaise(true);
        swatch->setCheckable(true);
        swatch->setIconSize(QSize(SwatchSize, SwatchSize));
        swatch->setIcon(swatchIcon(color));
        swatch->setToolTip(color.name().toUpper());
        connect(swatch, &QToolButton::clicked, this, [this, color] { pick(color); });
        grid->addWidget(swatch, index / PaletteColumns, index % PaletteColumns);
        mSwatches.append(swatch);
        ++index;
    }

    auto* paletteAction = new QWidgetAction(this);
    paletteAction->setDefaultWidget(palette);
    addAction(paletteAction);
    addSeparator();
    QAction* more = addAction(tr("More colors..."));
    more->setObjectName(QStringLiteral("mActionMoreColors"));
    connect(more, &QAction::triggered, this, &TZColorMenu::chooseMoreColors);

    markCurrentSwatch();
}

void TZColorMenu::setColor(const QColor& color)
{
    mColor = color;
    markCurrentSwatch();
}

void TZColorMenu::pick(const QColor& color)
{
    mColor = color;
    markCurrentSwatch();
    emit colorSelected(mColor);
    close();
}

void TZColorMenu::chooseMoreColors()
{
    const QColor chosen = QColorDialog::getColor(mColor, parentWidget(), tr("Select color"),
                                                 QColorDialog::ShowAlphaChannel);
    if (chosen.isValid()) {
        mColor = chosen;
        markCurrentSwatch();
        emit colorSelected(mColor);
    }
}

void TZColorMenu::markCurrentSwatch()
{
    for (int i = 0; i < mSwatches.size(); ++i)
        mSwatches[i]->setChecked(mColor.rgba() == (CommonColors[i] | 0xFF000000u));
}
