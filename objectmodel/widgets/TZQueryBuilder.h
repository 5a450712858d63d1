#pragma once

#include "widgets/TZHostWidgetsExport.h"

#include "core/TERefPtr.h"

#include <QDialog>

#include <memory>

namespace Ui {
class TZQueryBuilder;
}
namespace TZObjects {
class TEFeatureLayer;
}

// Editor of a filter expression (an OGR SQL where clause) for one layer: the
// fields, a sample or all of a field's values, the operators, the text, a
// check of the clause against the layer's fields by OGR's own parser, and
// how many features it selects. Value reads and counts run behind the wait
// dialog, off the GUI thread.
class TZHOSTWIDGETS_EXPORT TZQueryBuilder : public QDialog
{
    Q_OBJECT
public:
    // allowTest shows the "Test" button that counts the selected features.
    TZQueryBuilder(TZObjects::TEFeatureLayer* layer, bool allowTest = true, QWidget* parent = nullptr,
                   Qt::WindowFlags flags = Qt::WindowFlags());
    ~TZQueryBuilder() override;

    QString expression() const;
    void setExpression(const QString& expression);

    // Whether the clause parses against the layer's fields (an empty clause
    // selects everything); error gets the parser's message.
    bool isExpressionValid(QString* error = nullptr) const;
    // The number of features the clause selects, or -1 with error set.
    int countSelected(QString* error = nullptr);

public Q_SLOTS:
    // Refuses a clause that does not parse, telling the user why.
    void accept() override;

private Q_SLOTS:
    void onFieldDoubleClicked();
    void onValueDoubleClicked();
    void onSample();
    void onAllValues();
    void onTest();

private:
    static constexpr int SampleSize = 25;

    void insertText(const QString& text);
    // Lists the current field's first limit distinct values (all of them
    // when limit < 0), read behind the wait dialog.
    void readValues(int limit);
    QString currentFieldName() const;

    std::unique_ptr<Ui::TZQueryBuilder> mUi;
    TZObjects::TERefPtr<TZObjects::TEFeatureLayer> mLayer;
};
