#include "widgets/TZStyleSelectorDialog.h"

#include "ui_TZStyleSelectorDialog.h"

#include "widgets/TZSymbolUtils.h"

#include "symbology/TEStyleDB.h"
#include "symbology/TEStyleFill.h"
#include "symbology/TEStyleLine.h"
#include "symbology/TEStylePoint.h"
#include "symbology/TEStyleSimplePoint.h"
#include "symbology/TEStyleSystem.h"

#include <QApplication>
#include <QMessageBox>
#include <QSignalBlocker>

using namespace TZObjects;

namespace {

QString unitSuffix(int units)
{
    switch (units) {
    case TEStyle::Millimeter: return QStringLiteral(" mm");
    case TEStyle::Centimeter: return QStringLiteral(" cm");
    case TEStyle::Inch: return QStringLiteral(" in");
    case TEStyle::Point:
    case TEStyle::TypographicPoint: return QStringLiteral(" pt");
    default: return QStringLiteral(" px");
    }
}

QString displayName(const TEStyle& style)
{
    const TEString& alias = style.GetAliasName();
    return (alias.IsEmpty() ? style.GetName() : alias).toQString();
}

} // namespace

TZStyleSelectorDialog::TZStyleSelectorDialog(TEStyle::StyleType type, const TEStyle* initial, QWidget* parent)
    : QDialog(parent)
    , mUi(std::make_unique<Ui::TZStyleSelectorDialog>())
    , mType(initial ? initial->GetStyleType() : type)
{
    mUi->setupUi(this);

    mUi->mComboBoxStyleDB->addItem(tr("All"));
    for (TEStyleDB* db : TEStyleSystem::GetInstance()->GetStyleDBs())
        mUi->mComboBoxStyleDB->addItem(db->GetName().toQString(), QVariant::fromValue<void*>(db));
    listStyles();

    if (initial) {
        mStyle = initial->Clone();
        loadEditors();
    } else if (mUi->mListStyles->count() > 0) {
        mUi->mListStyles->setCurrentRow(0);
        onStyleChosen();
    } else {
        loadEditors();
    }

    connect(mUi->mComboBoxStyleDB, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &TZStyleSelectorDialog::onStyleDBChanged);
    connect(mUi->mListStyles, &QListWidget::itemSelectionChanged, this, &TZStyleSelectorDialog::onStyleChosen);
    connect(mUi->mListStyles, &QListWidget::itemDoubleClicked, this, &TZStyleSelectorDialog::accept);
    connect(mUi->mColorBtn, &TZColorBtn::colorChanged, this, &TZStyleSelectorDialog::onEdited);
    connect(mUi->mOutlineColorBtn, &TZColorBtn::colorChanged, this, &TZStyleSelectorDialog::onEdited);
    const auto spinChanged = QOverload<double>::of(&QDoubleSpinBox::valueChanged);
    connect(mUi->mSpinBoxSize, spinChanged, this, &TZStyleSelectorDialog::onEdited);
    connect(mUi->mSpinBoxOutlineWidth, spinChanged, this, &TZStyleSelectorDialog::onEdited);
    connect(mUi->mSpinBoxAngle, spinChanged, this, &TZStyleSelectorDialog::onEdited);
}

TZStyleSelectorDialog::~TZStyleSelectorDialog() = default;

void TZStyleSelectorDialog::listStyles()
{
    const QSignalBlocker blocker(mUi->mListStyles);
    mUi->mListStyles->clear();
    mEntries.clear();
    auto* only = static_cast<TEStyleDB*>(mUi->mComboBoxStyleDB->currentData().value<void*>());
    for (TEStyleDB* db : TEStyleSystem::GetInstance()->GetStyleDBs()) {
        if (only && db != only)
            continue;
        for (TEStyle* style : db->GetStyles(mType)) {
            auto* item = new QListWidgetItem(TZSymbolUtils::symbolPreviewIcon(style, mUi->mListStyles->iconSize()),
                                             displayName(*style), mUi->mListStyles);
            item->setToolTip(QStringLiteral("%1: %2").arg(db->GetName().toQString(), displayName(*style)));
            item->setData(Qt::UserRole, int(mEntries.size()));
            mEntries.push_back({style, db});
        }
    }
}

void TZStyleSelectorDialog::onStyleDBChanged(int)
{
    listStyles();
}

void TZStyleSelectorDialog::onStyleChosen()
{
    QListWidgetItem* item = mUi->mListStyles->currentItem();
    if (!item || !item->isSelected())
        return;
    const Entry& entry = mEntries[size_t(item->data(Qt::UserRole).toInt())];
    mStyle = entry.style->Clone();
    mStyleDB = entry.db;
    mEdited = false;
    loadEditors();
}

void TZStyleSelectorDialog::loadEditors()
{
    const QSignalBlocker b1(mUi->mColorBtn);
    const QSignalBlocker b2(mUi->mOutlineColorBtn);
    const QSignalBlocker b3(mUi->mSpinBoxSize);
    const QSignalBlocker b4(mUi->mSpinBoxOutlineWidth);
    const QSignalBlocker b5(mUi->mSpinBoxAngle);

    auto* point = dynamic_cast<TEStylePoint*>(mStyle.get());
    auto* line = dynamic_cast<TEStyleLine*>(mStyle.get());
    auto* fill = dynamic_cast<TEStyleFill*>(mStyle.get());
    auto* simplePoint = dynamic_cast<TEStyleSimplePoint*>(mStyle.get());
    TEStyleLine* outline = fill ? fill->GetOutline() : nullptr;

    mUi->mGroupBoxEdit->setEnabled(bool(mStyle));
    if (mStyle)
        mUi->mColorBtn->setColor(mStyle->GetColor().GetColor());

    const bool hasSize = point || line;
    mUi->mLabelSize->setVisible(hasSize);
    mUi->mSpinBoxSize->setVisible(hasSize);
    mUi->mLabelSize->setText(line ? tr("Width:") : tr("Size:"));
    if (point)
        mUi->mSpinBoxSize->setValue(point->GetWidth());
    else if (line)
        mUi->mSpinBoxSize->setValue(line->GetWidth());
    if (mStyle)
        mUi->mSpinBoxSize->setSuffix(unitSuffix(mStyle->GetUnits()));

    const bool hasOutline = simplePoint || outline;
    for (QWidget* w : {static_cast<QWidget*>(mUi->mLabelOutlineColor), static_cast<QWidget*>(mUi->mOutlineColorBtn),
                       static_cast<QWidget*>(mUi->mLabelOutlineWidth), static_cast<QWidget*>(mUi->mSpinBoxOutlineWidth)})
        w->setVisible(hasOutline);
    if (simplePoint) {
        mUi->mOutlineColorBtn->setColor(simplePoint->GetOutlineColor().GetColor());
        mUi->mSpinBoxOutlineWidth->setValue(simplePoint->GetOutlineWidth());
    } else if (outline) {
        mUi->mOutlineColorBtn->setColor(outline->GetColor().GetColor());
        mUi->mSpinBoxOutlineWidth->setValue(outline->GetWidth());
    }

    mUi->mLabelAngle->setVisible(point);
    mUi->mSpinBoxAngle->setVisible(point);
    if (point)
        mUi->mSpinBoxAngle->setValue(point->GetAngle());

    updatePreview();
}

void TZStyleSelectorDialog::onEdited()
{
    if (!mStyle)
        return;
    TEColor color;
    color = uint32_t(mUi->mColorBtn->getColor());
    mStyle->SetColor(color);
    if (auto* point = dynamic_cast<TEStylePoint*>(mStyle.get())) {
        point->SetSize(mUi->mSpinBoxSize->value());
        point->SetAngle(mUi->mSpinBoxAngle->value());
    } else if (auto* line = dynamic_cast<TEStyleLine*>(mStyle.get())) {
        line->SetWidth(mUi->mSpinBoxSize->value());
    }
    TEColor outlineColor;
    outlineColor = uint32_t(mUi->mOutlineColorBtn->getColor());
    if (auto* simplePoint = dynamic_cast<TEStyleSimplePoint*>(mStyle.get())) {
        simplePoint->SetOutlineColor(outlineColor);
        simplePoint->SetOutlineWidth(mUi->mSpinBoxOutlineWidth->value());
    } else if (auto* fill = dynamic_cast<TEStyleFill*>(mStyle.get())) {
        if (TEStyleLine* outline = fill->GetOutline()) {
            outline->SetColor(outlineColor);
            outline->SetWidth(mUi->mSpinBoxOutlineWidth->value());
        }
    }
    mEdited = true;
    updatePreview();
}

void TZStyleSelectorDialog::updatePreview()
{
    const QSize size = mUi->mLabelPreview->minimumSize() - QSize(8, 8);
    mUi->mLabelPreview->setPixmap(TZSymbolUtils::symbolPreviewPixmap(mStyle.get(), size));
    mUi->mLabelStyleName->setText(mStyle ? displayName(*mStyle) : QString());
}

void TZStyleSelectorDialog::accept()
{
    if (!mStyle) {
        QMessageBox::information(this, tr("Information"), tr("Please choose a symbol."));
        return;
    }
    QDialog::accept();
}

namespace {

TEStyle* runSelector(TEStyle::StyleType type, const TEStyle* initial, TEStyleDB** db)
{
    // Holds the last result for callers that take it as a raw pointer.
    static TERefPtr<TEStyle> lastResult;
    try {
        TZStyleSelectorDialog dialog(type, initial, QApplication::activeWindow());
        if (dialog.exec() != QDialog::Accepted)
            return nullptr;
        lastResult = dialog.style();
        if (db)
            *db = dialog.styleDB();
        return lastResult.get();
    } catch (const std::exception& e) {
        QMessageBox::critical(QApplication::activeWindow(), TZStyleSelectorDialog::tr("Error!"),
                              QString::fromLocal8Bit(e.what()));
        return nullptr;
    }
}

} // namespace

TEStyle* selectStyle(TEStyle::StyleType type)
{
    return runSelector(type, nullptr, nullptr);
}

TEStyle* selectStyle(TEStyle::StyleType type, TEStyleDB*& db)
{
    db = nullptr;
    return runSelector(type, nullptr, &db);
}

TEStyle* selectStyle(TEStyle* style)
{
    return runSelector(style ? style->GetStyleType() : TEStyle::PointStyle, style, nullptr);
}

TEStyle* selectStyle(TEStyle* style, TEStyleDB*& db)
{
    db = nullptr;
    return runSelector(style ? style->GetStyleType() : TEStyle::PointStyle, style, &db);
}
