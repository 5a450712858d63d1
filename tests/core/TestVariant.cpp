#include "TestRegistry.h"

#include "core/TEColor.h"
#include "core/TEVariant.h"

using namespace TZObjects;

Q_DECLARE_METATYPE(TZObjects::TEVariant)

class TestVariant : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void textOfEachKind_data()
    {
        QTest::addColumn<TEVariant>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("null") << TEVariant() << QString();
        QTest::newRow("int") << TEVariant(42) << QStringLiteral("42");
        QTest::newRow("negative int64") << TEVariant(int64_t(-9007199254740993LL)) << QStringLiteral("-9007199254740993");
        QTest::newRow("real") << TEVariant(2.5) << QStringLiteral("2.5");
        QTest::newRow("integral real") << TEVariant(3.0) << QStringLiteral("3");
        QTest::newRow("shortest real") << TEVariant(0.1) << QStringLiteral("0.1");
        QTest::newRow("string") << TEVariant(TEString(L"Forest")) << QStringLiteral("Forest");
        QTest::newRow("empty string") << TEVariant(TEString()) << QString();
        QTest::newRow("date") << TEVariant(QDate(2024, 2, 29)) << QStringLiteral("2024-02-29");
        QTest::newRow("datetime") << TEVariant(QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5)))
                                  << QStringLiteral("2024-01-02 03:04:05");
        QTest::newRow("time") << TEVariant(QTime(23, 59, 1)) << QStringLiteral("23:59:01");
    }
    void textOfEachKind()
    {
        QFETCH(TEVariant, value);
        QFETCH(QString, text);
        QCOMPARE(value.ToString().toQString(), text);
    }

    void nullnessAndNumbers()
    {
        QVERIFY(TEVariant().IsNull());
        QVERIFY(!TEVariant(TEString()).IsNull());
        QCOMPARE(TEVariant(7).GetDouble(), 7.0);
        QCOMPARE(TEVariant(TEString(L"4.25")).GetDouble(), 4.25);
        QCOMPARE(TEVariant(TEString(L"n/a")).GetDouble(), 0.0);
        QCOMPARE(TEVariant().GetDouble(), 0.0);
        QVERIFY(TEVariant(1) != TEVariant(1.0));
        QVERIFY(TEVariant(QDate(2020, 1, 1)) != TEVariant(QDateTime(QDate(2020, 1, 1), QTime(0, 0))));
    }

    void colourPacking()
    {
        TEColor c(0xFFB9B9B9u, 128);
        QCOMPARE(c.getR(), 0xB9);
        QCOMPARE(c.getA(), 128);
        QCOMPARE(c.GetColor(), 0x80B9B9B9u);
        TEColor d;
        d = 0xFF102030u;
        QCOMPARE(d, TEColor(0x10, 0x20, 0x30));
        QCOMPARE(d.GetColor(), qRgb(0x10, 0x20, 0x30));
    }
};

TZ_REGISTER_TEST(TestVariant)
#include "TestVariant.moc"
