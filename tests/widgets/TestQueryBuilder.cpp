#include "TestRegistry.h"
#include "ModalAnswer.h"

#include "widgets/TZQueryBuilder.h"

#include "data/TEMemoryFeatureLayer.h"

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace TZObjects;

class TestQueryBuilder : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QString error;
        mLayer = TEMemoryFeatureLayer::Create(
            QStringLiteral("towns"), TELayer::LT_Point,
            {{QStringLiteral("name"), TEField::FT_String}, {QStringLiteral("pop"), TEField::FT_Integer}}, {}, &error);
        QVERIFY2(mLayer, qPrintable(error));
        const char* names[] = {"Alton", "Bexley", "Crewe", "Dover", "Alton"};
        for (int i = 0; i < 5; ++i)
            QVERIFY(mLayer->AppendFeature(QStringLiteral("POINT (%1 0)").arg(i),
                                          {TEVariant(TEString(names[i])), TEVariant(1000 * (i + 1))}) >= 0);
    }

    void validityIsCheckedAgainstTheLayersFields_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<int>("count");
        QTest::newRow("empty selects all") << QString() << true << 5;
        QTest::newRow("string equality") << "\"name\" = 'Alton'" << true << 2;
        QTest::newRow("numeric range") << "pop >= 2000 AND pop < 4000" << true << 2;
        QTest::newRow("like") << "name LIKE 'B%'" << true << 1;
        QTest::newRow("unknown field") << "area > 3" << false << -1;
        QTest::newRow("syntax error") << "pop >" << false << -1;
    }
    void validityIsCheckedAgainstTheLayersFields()
    {
        QFETCH(QString, expression);
        QFETCH(bool, valid);
        QFETCH(int, count);
        TZQueryBuilder builder(mLayer.get(), true, nullptr);
        builder.setExpression(expression);
        QString error;
        QCOMPARE(builder.isExpressionValid(&error), valid);
        QCOMPARE(error.isEmpty(), valid);
        QCOMPARE(builder.countSelected(), count);
    }

    void acceptRefusesAnInvalidExpression()
    {
        TZQueryBuilder builder(mLayer.get(), true, nullptr);
        builder.setExpression(QStringLiteral("pop >"));
        builder.show();
        ModalAnswer answer("QDialog", ModalAnswer::click(QDialogButtonBox::Ok));
        builder.accept();
        QVERIFY(answer.answered());
        QCOMPARE(answer.dialogClass(), QStringLiteral("QMessageBox"));
        QVERIFY(builder.isVisible());
        QCOMPARE(builder.result(), int(QDialog::Rejected));

        builder.setExpression(QStringLiteral("pop > 1"));
        builder.accept();
        QCOMPARE(builder.result(), int(QDialog::Accepted));
    }

    void fieldsOperatorsAndValuesBuildTheExpression()
    {
        TZQueryBuilder builder(mLayer.get(), true, nullptr);
        auto* fields = builder.findChild<QListWidget*>(QStringLiteral("mListFields"));
        QCOMPARE(fields->count(), 2);
        fields->setCurrentRow(0);
        emit fields->itemDoubleClicked(fields->currentItem());
        builder.findChild<QPushButton*>(QStringLiteral("mButtonEqual"))->click();
        builder.findChild<QPushButton*>(QStringLiteral("mButtonAll"))->click();
        auto* values = builder.findChild<QListWidget*>(QStringLiteral("mListValues"));
        QCOMPARE(values->count(), 4);
        values->setCurrentRow(0);
        emit values->itemDoubleClicked(values->currentItem());
        QCOMPARE(builder.expression(), QStringLiteral("\"name\" = 'Alton'"));

        builder.findChild<QPushButton*>(QStringLiteral("mButtonTest"))->click();
        QVERIFY(builder.findChild<QLabel*>(QStringLiteral("mLabelStatus"))->text().contains(QLatin1String("2")));
    }

    void sampleStopsAtTwentyFiveDistinctValuesAllListsEvery()
    {
        QString error;
        TERefPtr<TEMemoryFeatureLayer> codes = TEMemoryFeatureLayer::Create(
            QStringLiteral("codes"), TELayer::LT_Point, {{QStringLiteral("code"), TEField::FT_String}}, {}, &error);
        QVERIFY2(codes, qPrintable(error));
        for (int i = 0; i < 80; ++i) {
            const QString code = QStringLiteral("c%1").arg(i % 40, 2, 10, QLatin1Char('0'));
            QVERIFY(codes->AppendFeature(QStringLiteral("POINT (%1 0)").arg(i), {TEVariant(TEString(code))}) >= 0);
        }
        TZQueryBuilder builder(codes.get(), true, nullptr);
        auto* values = builder.findChild<QListWidget*>(QStringLiteral("mListValues"));
        builder.findChild<QPushButton*>(QStringLiteral("mButtonSample"))->click();
        QCOMPARE(values->count(), 25);
        QCOMPARE(values->item(0)->text(), QStringLiteral("c00"));
        QCOMPARE(values->item(24)->text(), QStringLiteral("c24"));
        builder.findChild<QPushButton*>(QStringLiteral("mButtonAll"))->click();
        QCOMPARE(values->count(), 40);
    }

private:
    TERefPtr<TEMemoryFeatureLayer> mLayer;
};

TZ_REGISTER_TEST(TestQueryBuilder)
#include "TestQueryBuilder.moc"
