#include "TZRenderPanelDiagramBase.h"

#include "TZModelPanelPieDiagram.h"
#include "TZWidgetFieldItem.h"

#include "data/TEFeatureLayer.h"
#include "data/TEFields.h"
#include "renders/TEDiagramRender.h"
#include "widgets/TZColorSchemeComboBox.h"
#include "widgets/TZStyleSelectorDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QTableView>

using namespace TZObjects;

TZRenderPanelDiagramBase::TZRenderPanelDiagramBase(QWidget* parent)
    : TZRenderPanel(parent)
{
}

TZRenderPanelDiagramBase::~TZRenderPanelDiagramBase() = default;

void TZRenderPanelDiagramBase::setDiagramWidgets(QComboBox* fields, TZColorSchemeComboBox* ramp, QTableView* table,
                                                 QCheckBox* showLabel)
{
    mShowLabel = showLabel;
    mFieldsCombo = fields;
    mRampCombo = ramp;
    mTable = table;
}

TEFeatureLayer* TZRenderPanelDiagramBase::resetFields()
{
    if (!mModel) {
        mModel = createModel();
        mFieldList = new QListWidget(this);
        mFieldsCombo->setModel(mFieldList->model());
        mFieldsCombo->setView(mFieldList);
        mFieldsCombo->setEditable(true);
        mModel->setHeaderData(0, Qt::Horizontal, tr("Symbols"));
        mModel->setHeaderData(1, Qt::Horizontal, tr("Field"));
        mTable->setModel(mModel);
        mTable->setAlternatingRowColors(true);
        mTable->setColumnWidth(0, 100);
        mTable->setColumnWidth(1, 180);
        mTable->horizontalHeader()->setFixedHeight(25);
        mTable->setSelectionBehavior(QAbstractItemView::SelectRows);
        mTable->setIconSize(mModel->previewSize());
        mTable->verticalHeader()->setDefaultSectionSize(mModel->previewSize().height() + 4);
        mRampCombo->setDefaultGroup(QStringLiteral("Graph"), QStringLiteral("Default"));
        connect(mRampCombo, SIGNAL(currentRampChanged()), this, SLOT(onColorRampChanged()));
        connect(mTable, SIGNAL(doubleClicked(QModelIndex)), this, SLOT(onItemDoubleClicked(QModelIndex)));
    }

    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer || !layer->IsValid())
        return nullptr;
    mFieldsCombo->clear();
    TERefPtr<TEFields> fields = layer->GetFields();
    if (!fields)
        return nullptr;
    mFieldList->clear();
    for (int i = 2; i < fields->GetFieldCount(); ++i) {
        TERefPtr<TEField> field = fields->GetField(i);
        if (!field || field->GetFieldType() > TEField::FT_Double)
            continue;
        auto* entry = new QListWidgetItem(mFieldList);
        TZWidgetFieldItem* item = createFieldItem(field->GetName().toQString());
        entry->setSizeHint(item->sizeHint());
        mFieldList->setItemWidget(entry, item);
        connect(item, SIGNAL(itemStatusChanged()), this, SLOT(onFieldsSelectChanged()));
    }
    mFieldsCombo->setEditText(QString());

    mModel->clear();
    mModel->setRampSize(mFieldList->count());
    mModel->setLayer(layer);
    mModel->setColorCombo(mRampCombo);
    return layer;
}

void TZRenderPanelDiagramBase::readItems(const TEDiagramRender* render)
{
    // The page's own render carries its background: held from another
    // layer, it would be set under this layer's diagram on the next apply.
    mBackground = render->GetBackgroundRender();
    QStringList names;
    for (const TERefPtr<TEDiagramRenderItem>& item : render->GetItems()) {
        const QString field = item->GetField().toQString();
        mModel->addRow(field, item->GetStyle());
        names << field;
        for (int i = 0; i < mFieldList->count(); ++i) {
            auto* entry = qobject_cast<TZWidgetFieldItem*>(mFieldList->itemWidget(mFieldList->item(i)));
            if (entry && entry->fieldName() == field)
                entry->setSelected(true);
        }
    }
    mFieldsCombo->setEditText(names.join(QLatin1Char(',')));
}

void TZRenderPanelDiagramBase::takeBackground(const TERefPtr<TEFeatureRender>& current)
{
    const QString type = current ? current->GetType().toQString() : QString();
    if (type == QLatin1String("PieDiagram") || type == QLatin1String("HistogramDiagram")
        || type == QLatin1String("StackDiagram")) {
        if (auto* diagram = dynamic_cast<TEDiagramRender*>(current.get()))
            mBackground = diagram->GetBackgroundRender();
        else
            mBackground = nullptr;
    } else {
        mBackground = current;
    }
}

TEFeatureLayer* TZRenderPanelDiagramBase::beginApply()
{
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer || !layer->IsValid())
        return nullptr;
    cancelActiveDrawing();
    return layer;
}

void TZRenderPanelDiagramBase::writeItems(TEDiagramRender* render) const
{
    render->RemoveAllItems();
    if (!mModel)
        return;
    for (int i = 0; i < mModel->rowCount(); ++i) {
        const TEString field(mModel->row(i).field);
        render->AddItem(field, field, mModel->row(i).style);
    }
}

void TZRenderPanelDiagramBase::writeBackground(TEDiagramRender* render) const
{
    if (mBackground)
        render->SetBackgroundRender(mBackground.get());
}

void TZRenderPanelDiagramBase::onFieldsSelectChanged()
{
    if (!mModel || !mFieldList)
        return;
    QStringList chosen;
    for (int i = 0; i < mFieldList->count(); ++i) {
        auto* entry = qobject_cast<TZWidgetFieldItem*>(mFieldList->itemWidget(mFieldList->item(i)));
        if (entry && entry->isSelected())
            chosen << entry->fieldName();
    }
    mFieldsCombo->setEditText(chosen.join(QLatin1Char(',')));

    TEFeatureLayer* layer = currentFeatureLayer();
    TERefPtr<TEFields> fields = layer ? layer->GetFields() : TERefPtr<TEFields>();
    for (int i = 0; i < mFieldList->count(); ++i) {
        auto* entry = qobject_cast<TZWidgetFieldItem*>(mFieldList->itemWidget(mFieldList->item(i)));
        if (!entry)
            continue;
        if (!entry->isSelected()) {
            mModel->removeField(entry->fieldName());
            continue;
        }
        const int at = fields ? fields->FindField(TEString(entry->fieldName())) : -1;
        if (at >= 0)
            mModel->addField(fields->GetField(at).get());
    }
}

void TZRenderPanelDiagramBase::onColorRampChanged()
{
    if (mModel)
        mModel->recolor();
}

void TZRenderPanelDiagramBase::onItemDoubleClicked(QModelIndex index)
{
    if (!mModel || !index.isValid() || index.column() != 0 || index.row() >= mModel->rowCount())
        return;
    TEStyle* chosen = selectStyle(mModel->row(index.row()).style.get());
    if (chosen)
        mModel->setRowStyle(index.row(), TERefPtr<TEStyle>(chosen));
}

void TZRenderPanelDiagramBase::on_mCheckBoxShowLabel_clicked()
{
    if (mShowLabel && mShowLabel->isChecked())
        mShowLabel->setChecked(true);
}
