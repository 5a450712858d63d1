#include "widgets/TZQueryBuilder.h"

#include "ui_TZQueryBuilder.h"

#include "widgets/TZWaitDialog.h"

#include "data/TEFeatureCursor.h"
#include "data/TEFeatureLayer.h"
#include "data/TEFeatureTable.h"
#include "data/TEWhereClause.h"

#include <QMessageBox>
#include <QSet>

#include <cpl_error.h>
#include <ogr_api.h>

using namespace TZObjects;

namespace {

OGRFieldType ogrTypeOf(TEField::FieldType type)
{
    switch (type) {
    case TEField::FT_Int16:
    case TEField::FT_Integer: return OFTInteger64;
    case TEField::FT_Float:
    case TEField::FT_Double: return OFTReal;
    case TEField::FT_DateTime: return OFTDateTime;
    case TEField::FT_Binary: return OFTBinary;
    default: return OFTString;
    }
}

QString quotedIdentifier(const QString& name)
{
    QString escaped = name;
    escaped.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

QString quotedLiteral(const QString& value)
{
    QString escaped = value;
    escaped.replace(QLatin1Char('\''), QStringLiteral("''"));
    return QLatin1Char('\'') + escaped + QLatin1Char('\'');
}

} // namespace

TZQueryBuilder::TZQueryBuilder(TEFeatureLayer* layer, bool allowTest, QWidget* parent, Qt::WindowFlags flags)
    : QDialog(parent, flags)
    , mUi(std::make_unique<Ui::TZQueryBuilder>())
    , mLayer(layer)
{
    mUi->setupUi(this);
    mUi->mButtonTest->setVisible(allowTest);

    if (mLayer) {
        setWindowTitle(tr("Query builder - %1").arg(mLayer->GetLayerName().toQString()));
        const TERefPtr<TEFields> fields = mLayer->GetFields();
        for (int i = 0; fields && i < fields->GetFieldCount(); ++i) {
            const TERefPtr<TEField> field = fields->GetField(i);
            if (!field || field->IsGeoField() || field->IsSystemField())
                continue;
            auto* item = new QListWidgetItem(field->GetName().toQString(), mUi->mListFields);
            item->setData(Qt::UserRole, int(field->GetFieldType()));
        }
    }
    if (mUi->mListFields->count() > 0)
        mUi->mListFields->setCurrentRow(0);

    const std::pair<QPushButton*, QString> operators[] = {
        {mUi->mButtonEqual, QStringLiteral(" = ")}, {mUi->mButtonLess, QStringLiteral(" < ")},
        {mUi->mButtonGreater, QStringLiteral(" > ")}, {mUi->mButtonLike, QStringLiteral(" LIKE ")},
        {mUi->mButtonPercent, QStringLiteral("%")}, {mUi->mButtonIn, QStringLiteral(" IN ")},
        {mUi->mButtonNotEqual, QStringLiteral(" <> ")}, {mUi->mButtonLessEqual, QStringLiteral(" <= ")},
        {mUi->mButtonGreaterEqual, QStringLiteral(" >= ")}, {mUi->mButtonAnd, QStringLiteral(" AND ")},
        {mUi->mButtonOr, QStringLiteral(" OR ")}, {mUi->mButtonNot, QStringLiteral(" NOT ")},
        {mUi->mButtonIsNull, QStringLiteral(" IS NULL")}, {mUi->mButtonOpen, QStringLiteral("(")},
        {mUi->mButtonClose, QStringLiteral(")")},
    };
    for (const auto& op : operators) {
        const QString text = op.second;
        connect(op.first, &QPushButton::clicked, this, [this, text] { insertText(text); });
    }
    connect(mUi->mListFields, &QListWidget::itemDoubleClicked, this, &TZQueryBuilder::onFieldDoubleClicked);
    connect(mUi->mListFields, &QListWidget::currentRowChanged, mUi->mListValues, &QListWidget::clear);
    connect(mUi->mListValues, &QListWidget::itemDoubleClicked, this, &TZQueryBuilder::onValueDoubleClicked);
    connect(mUi->mButtonSample, &QPushButton::clicked, this, &TZQueryBuilder::onSample);
    connect(mUi->mButtonAll, &QPushButton::clicked, this, &TZQueryBuilder::onAllValues);
    connect(mUi->mButtonTest, &QPushButton::clicked, this, &TZQueryBuilder::onTest);
    connect(mUi->mButtonClear, &QPushButton::clicked, mUi->mTextExpression, &QPlainTextEdit::clear);
    connect(mUi->mTextExpression, &QPlainTextEdit::textChanged, mUi->mLabelStatus, &QLabel::clear);
}

TZQueryBuilder::~TZQueryBuilder() = default;

QString TZQueryBuilder::expression() const
{
    return mUi->mTextExpression->toPlainText().trimmed();
}

void TZQueryBuilder::setExpression(const QString& expression)
{
    mUi->mTextExpression->setPlainText(expression);
}

bool TZQueryBuilder::isExpressionValid(QString* error) const
{
    if (!mLayer) {
        if (error)
            *error = tr("There is no layer to query.");
        return false;
    }
    // A definition with the layer's attribute fields is all OGR's parser
    // needs; nothing is read from the data source.
    OGRFeatureDefnH definition = OGR_FD_Create("query");
    OGR_FD_Reference(definition);
    for (int i = 0; i < mUi->mListFields->count(); ++i) {
        const QListWidgetItem* item = mUi->mListFields->item(i);
        OGRFieldDefnH field = OGR_Fld_Create(item->text().toUtf8().constData(),
                                             ogrTypeOf(TEField::FieldType(item->data(Qt::UserRole).toInt())));
        OGR_FD_AddFieldDefn(definition, field);
        OGR_Fld_Destroy(field);
    }
    TEWhereClause clause;
    const bool valid = clause.Compile(definition, TEString(expression()), error);
    OGR_FD_Release(definition);
    return valid;
}

int TZQueryBuilder::countSelected(QString* error)
{
    if (!isExpressionValid(error))
        return -1;
    const TERefPtr<TEFeatureLayer> layer = mLayer;
    TEQueryFilter filter{TEString(expression())};
    filter.SetGeometryNeeded(false);
    if (mUi->mListFields->count() > 0)
        filter.AddSubField(TEString(mUi->mListFields->item(0)->text()));

    int count = 0;
    QString searchError;
    TZWaitDialog wait(tr("Counting features..."), this);
    const bool finished = wait.WaitFor([&] {
        const TERefPtr<TEFeatureCursor> cursor = layer->Search(filter, &searchError);
        if (!cursor) {
            count = -1;
            return;
        }
        // A source that evaluates the clause itself (SQLite, PostGIS) may
        // accept it and fail only on the first read; the read then simply
        // ends, so the error is what tells a failure from no match.
        CPLErrorReset();
        while (OGRFeatureH feature = cursor->NextOgrFeature()) {
            OGR_F_Destroy(feature);
            ++count;
        }
        if (CPLGetLastErrorType() >= CE_Failure) {
            searchError = QString::fromUtf8(CPLGetLastErrorMsg());
            count = -1;
        }
    });
    if (!finished) {
        searchError = wait.errorText();
        count = -1;
    }
    if (count < 0 && error)
        *error = searchError;
    return count;
}

void TZQueryBuilder::accept()
{
    QString error;
    if (!expression().isEmpty() && !isExpressionValid(&error)) {
        QMessageBox::warning(this, tr("Warning"), tr("The expression is not valid:\n%1").arg(error));
        return;
    }
    QDialog::accept();
}

void TZQueryBuilder::insertText(const QString& text)
{
    mUi->mTextExpression->insertPlainText(text);
    mUi->mTextExpression->setFocus();
}

QString TZQueryBuilder::currentFieldName() const
{
    const QListWidgetItem* item = mUi->mListFields->currentItem();
    return item ? item->text() : QString();
}

void TZQueryBuilder::onFieldDoubleClicked()
{
    if (!currentFieldName().isEmpty())
        insertText(quotedIdentifier(currentFieldName()));
}

void TZQueryBuilder::onValueDoubleClicked()
{
    const QListWidgetItem* field = mUi->mListFields->currentItem();
    const QListWidgetItem* value = mUi->mListValues->currentItem();
    if (!field || !value)
        return;
    const auto type = TEField::FieldType(field->data(Qt::UserRole).toInt());
    const bool numeric = type == TEField::FT_Int16 || type == TEField::FT_Integer || type == TEField::FT_Float
                         || type == TEField::FT_Double;
    insertText(numeric ? value->text() : quotedLiteral(value->text()));
}

void TZQueryBuilder::onSample()
{
    readValues(SampleSize);
}

void TZQueryBuilder::onAllValues()
{
    readValues(-1);
}

void TZQueryBuilder::readValues(int limit)
{
    const QString fieldName = currentFieldName();
    if (!mLayer || fieldName.isEmpty())
        return;
    const TERefPtr<TEFeatureLayer> layer = mLayer;
    const TEString field(fieldName);
    std::vector<TEString> values;
    QString error;
    bool read = false;
    TZWaitDialog wait(tr("Reading values..."), this);
    const bool finished = wait.WaitFor([&] {
        if (limit < 0) {
            const TERefPtr<TEFeatureTable> table = layer->GetDatasource();
            read = table && table->GetDistinctValues(field, values, &error);
            return;
        }
        // A sample stops at the first limit distinct values instead of
        // reading the whole layer.
        TEQueryFilter filter;
        filter.SetGeometryNeeded(false);
        filter.AddSubField(field);
        const TERefPtr<TEFeatureCursor> cursor = layer->Search(filter, &error);
        read = bool(cursor);
        QSet<QString> seen;
        while (cursor && int(values.size()) < limit) {
            const TERefPtr<TEFeature> feature = cursor->NextFeature();
            if (!feature)
                break;
            const TEString value = feature->GetValue(field).ToString();
            if (!seen.contains(value.toQString())) {
                seen.insert(value.toQString());
                values.push_back(value);
            }
        }
    });
    if (!finished || !read) {
        QMessageBox::warning(this, tr("Warning"),
                             tr("The values of %1 could not be read:\n%2")
                                 .arg(fieldName, finished ? error : wait.errorText()));
        return;
    }
    mUi->mListValues->clear();
    for (const TEString& value : values)
        mUi->mListValues->addItem(value.toQString());
}

void TZQueryBuilder::onTest()
{
    QString error;
    const int count = countSelected(&error);
    if (count < 0)
        mUi->mLabelStatus->setText(tr("The expression is not valid: %1").arg(error));
    else
        mUi->mLabelStatus->setText(tr("The expression selects %n feature(s).", nullptr, count));
}
