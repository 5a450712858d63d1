#include "TZDialogAddValueToUniqueValue.h"

#include "ui_TZDialogAddValueToUniqueValue.h"

#include <QStringListModel>

namespace {

// The number before the first comma; 0 when that part is not a number.
double leadingNumber(const QString& text)
{
    return text.section(QLatin1Char(','), 0, 0).toDouble();
}

} // namespace

TZDialogAddValueToUniqueValue::TZDialogAddValueToUniqueValue(const QStringList& values, const QString& renderType,
                                                             QWidget* parent)
    : QDialog(parent)
    , mUi(std::make_unique<Ui::TZDialogAddValueToUniqueValue>())
    , mRenderType(renderType)
{
    mUi->setupUi(this);
    mModel = new QStringListModel(values, this);
    mUi->mListViewValues->setModel(mModel);
    mUi->mListViewValues->setSelectionBehavior(QAbstractItemView::SelectRows);
    mUi->mListViewValues->setSelectionMode(QAbstractItemView::ExtendedSelection);
    mUi->mListViewValues->setEditTriggers(QAbstractItemView::NoEditTriggers);
    if (mRenderType == QLatin1String("MatchToSymbols"))
        mUi->mGroupBoxNewValue->hide();

    connect(mUi->mButtonAddNewValue, SIGNAL(clicked(bool)), this, SLOT(addNewValueToList()));
    connect(mUi->mButtonOk, SIGNAL(clicked(bool)), this, SLOT(onOK()));
}

TZDialogAddValueToUniqueValue::~TZDialogAddValueToUniqueValue() = default;

void TZDialogAddValueToUniqueValue::addNewValueToList()
{
    const QString text = mUi->mLineEditNewValue->text();
    if (text.isEmpty())
        return;

    QStringList list = mModel->stringList();
    if (mRenderType == QLatin1String("UniqueValues") || mRenderType == QLatin1String("UniqueValuesByManyFields")
        || mRenderType == QLatin1String("GradingSymbol")) {
        if (list.isEmpty()) {
            list.append(text);
        } else {
            const double number = leadingNumber(text);
            int position = list.size();
            for (int i = 0; i < list.size(); ++i) {
                if (leadingNumber(list[i]) > number) {
                    position = i;
                    break;
                }
            }
            list.insert(position, text);
        }
    }
    mModel->setStringList(list);
    mUi->mListViewValues->update();
    mUi->mLineEditNewValue->clear();
}

void TZDialogAddValueToUniqueValue::onOK()
{
    mSelectedValues.clear();
    const QModelIndexList selected = mUi->mListViewValues->selectionModel()->selectedIndexes();
    for (const QModelIndex& index : selected)
        mSelectedValues.append(index.data(Qt::DisplayRole).toString());
    accept();
}
