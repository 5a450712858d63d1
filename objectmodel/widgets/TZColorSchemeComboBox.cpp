#include "widgets/TZColorSchemeComboBox.h"

#include "symbology/TEColorRamp.h"
#include "symbology/TEColorRampCatalog.h"

#include <QPainter>
#include <QStandardItemModel>
#include <QStyleOptionComboBox>
#include <QStylePainter>

using namespace TZObjects;

namespace {

constexpr int RampRole = Qt::UserRole + 1; // index into mRamps, -1 for headers
constexpr int GroupRole = Qt::UserRole + 2;
const QSize PreviewSize(96, 14);

QIcon rampIcon(const TEColorRamp& ramp)
{
    QPixmap pixmap(PreviewSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    ramp.DrawPreview(&painter, QRectF(0, 0, PreviewSize.width(), PreviewSize.height()));
    painter.setPen(QColor(120, 120, 120));
    painter.drawRect(0, 0, PreviewSize.width() - 1, PreviewSize.height() - 1);
    return QIcon(pixmap);
}

} // namespace

TZColorSchemeComboBox::TZColorSchemeComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setModel(new QStandardItemModel(this));
    setIconSize(PreviewSize);
    setMaxVisibleItems(20);
    fillFromCatalog();
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &TZColorSchemeComboBox::onCurrentIndexChanged);
}

TZColorSchemeComboBox::~TZColorSchemeComboBox() = default;

void TZColorSchemeComboBox::fillFromCatalog()
{
    const QSignalBlocker blocker(this);
    TEColorRampCatalog* catalog = TEColorRampCatalog::Instance();
    for (const TEString& group : catalog->groups()) {
        addGroupHeader(group.toQString());
        for (const TERefPtr<TEColorRamp>& ramp : catalog->ramps(group))
            addRamp(ramp);
    }
    // Start on the first ramp, not on a header.
    for (int row = 0; row < count(); ++row) {
        if (itemData(row, RampRole).toInt() >= 0) {
            setCurrentIndex(row);
            break;
        }
    }
}

void TZColorSchemeComboBox::addGroupHeader(const QString& group, int row)
{
    auto* item = new QStandardItem(group);
    item->setFlags(Qt::NoItemFlags);
    QFont font = item->font();
    font.setBold(true);
    item->setFont(font);
    item->setData(-1, RampRole);
    item->setData(group, GroupRole);
    auto* items = static_cast<QStandardItemModel*>(model());
    if (row < 0)
        items->appendRow(item);
    else
        items->insertRow(row, item);
}

void TZColorSchemeComboBox::addRamp(const TERefPtr<TEColorRamp>& ramp, int row)
{
    if (!ramp)
        return;
    auto* item = new QStandardItem(rampIcon(*ramp), ramp->getName().toQString());
    item->setData(int(mRamps.size()), RampRole);
    item->setData(ramp->getGroup().toQString(), GroupRole);
    mRamps.push_back(ramp);
    auto* items = static_cast<QStandardItemModel*>(model());
    if (row < 0)
        items->appendRow(item);
    else
        items->insertRow(row, item);
}

int TZColorSchemeComboBox::rowOf(const QString& group, const QString& name) const
{
    for (int row = 0; row < count(); ++row) {
        if (row == mCustomRampRow || itemData(row, RampRole).toInt() < 0)
            continue;
        if (itemData(row, GroupRole).toString() == group && itemText(row) == name)
            return row;
    }
    return -1;
}

TEColorRamp* TZColorSchemeComboBox::currentColorRamp() const
{
    const int index = currentIndex() < 0 ? -1 : itemData(currentIndex(), RampRole).toInt();
    return index < 0 || index >= int(mRamps.size()) ? nullptr : mRamps[size_t(index)].get();
}

void TZColorSchemeComboBox::setColorRamp(TEColorRamp* ramp)
{
    if (!ramp)
        return;
    const int row = rowOf(ramp->getGroup().toQString(), ramp->getName().toQString());
    if (row >= 0) {
        setCurrentIndex(row);
        return;
    }
    const TERefPtr<TEColorRamp> copy = ramp->clone();
    if (mCustomRampRow >= 0) {
        // Only the latest foreign ramp is kept; its header stays.
        mRamps[size_t(itemData(mCustomRampRow, RampRole).toInt())] = copy;
        setItemIcon(mCustomRampRow, rampIcon(*copy));
        setItemText(mCustomRampRow, copy->getName().IsEmpty() ? tr("Custom") : copy->getName().toQString());
        if (currentIndex() == mCustomRampRow)
            emit currentRampChanged();
        else
            setCurrentIndex(mCustomRampRow);
        update();
        return;
    }
    {
        const QSignalBlocker blocker(this);
        addGroupHeader(tr("Current"), 0);
        addRamp(copy, 1);
        if (copy->getName().IsEmpty())
            setItemText(1, tr("Custom"));
    }
    mCustomRampRow = 1;
    setCurrentIndex(mCustomRampRow);
}

void TZColorSchemeComboBox::setDefaultGroup(const QString& group, const QString& name, int index)
{
    int row = rowOf(group, name);
    if (row < 0) {
        int position = 0;
        for (int r = 0; r < count() && row < 0; ++r) {
            if (r == mCustomRampRow || itemData(r, RampRole).toInt() < 0
                || itemData(r, GroupRole).toString() != group)
                continue;
            if (position++ == index)
                row = r;
        }
    }
    if (row >= 0)
        setCurrentIndex(row);
}

QSize TZColorSchemeComboBox::sizeHint() const
{
    const QSize base = QComboBox::sizeHint();
    return QSize(qMax(base.width(), 140), base.height());
}

void TZColorSchemeComboBox::onCurrentIndexChanged(int index)
{
    if (index >= 0 && itemData(index, RampRole).toInt() >= 0)
        emit currentRampChanged();
}

void TZColorSchemeComboBox::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText.clear();
    option.currentIcon = QIcon();
    painter.drawComplexControl(QStyle::CC_ComboBox, option);

    const TEColorRamp* ramp = currentColorRamp();
    if (!ramp)
        return;
    const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this)
                            .adjusted(2, 3, -2, -3);
    if (field.width() <= 0 || field.height() <= 0)
        return;
    ramp->DrawPreview(&painter, QRectF(field));
    painter.setPen(QColor(120, 120, 120));
    painter.drawRect(field.adjusted(0, 0, -1, -1));
}
