#include "TestRegistry.h"

#include "core/TEString.h"

using namespace TZObjects;

class TestStrings : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void roundTripsWithQString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("ascii") << QStringLiteral("Residential");
        QTest::newRow("accents") << QStringLiteral("Zürich – Genève");
        QTest::newRow("cjk") << QStringLiteral("北京市 道路");
        QTest::newRow("outside BMP") << QString::fromUtf8("\xF0\x9F\x97\xBA map");
        QTest::newRow("empty") << QString();
    }
    void roundTripsWithQString()
    {
        QFETCH(QString, text);
        const TEString wide(text.toStdWString());
        QCOMPARE(QString::fromStdWString(std::wstring(wide)), text);
        QCOMPARE(wide.toQString(), text);
        QCOMPARE(TEString::fromUtf8(wide.toUTF8()).toQString(), text);
        QCOMPARE(QString::fromUtf8(wide.toStdString().c_str()), text);
    }

    void formatBuildsKeys()
    {
        TEString key;
        QCOMPARE(key.Format("%x %x", 255u, 16u).toQString(), QStringLiteral("ff 10"));
        QCOMPARE(TEString().Format("%01.5lf,%01.5lf", 1.0, 2.25).toQString(),
                 QStringLiteral("1.00000,2.25000"));
        QCOMPARE(TEString().Format("%s", "Straße").toQString(), QStringLiteral("Straße"));
    }

    void substringHelpersClampTheirArguments()
    {
        const TEString s(L"abc,def");
        QCOMPARE(s.Left(3).toQString(), QStringLiteral("abc"));
        QCOMPARE(s.Left(99).toQString(), QStringLiteral("abc,def"));
        QVERIFY(s.Left(-1).IsEmpty());
        QCOMPARE(s.Mid(4).toQString(), QStringLiteral("def"));
        QVERIFY(s.Mid(7).IsEmpty());
        QCOMPARE(s.Mid(1, 2).toQString(), QStringLiteral("bc"));
        QCOMPARE(s.ReverseFind(L','), 3);
        QCOMPARE(s.ReverseFind(L'x'), -1);
        QCOMPARE(s.GetLength(), 7);
    }

    void replaceSplitAndSearch()
    {
        TEString s(L"1，5,2");
        QCOMPARE(s.Replace(TEString(L"，"), TEString(L",")), 1);
        const auto parts = s.split(TEString(L","));
        QCOMPARE(int(parts.size()), 3);
        QCOMPARE(parts[0].ToDouble(), 1.0);
        QCOMPARE(parts[2].ToDouble(), 2.0);
        QCOMPARE(int(TEString(L"a,,b,").split(TEString(L",")).size()), 4);
        QVERIFY(s.Contains(TEString(L"5,")));
        QVERIFY(s.startsWith(TEString(L"1,")));
        QVERIFY(!s.startsWith(TEString(L"1,5,2,9")));
        TEString loop(L"aaa");
        QCOMPARE(loop.Replace(TEString(L"a"), TEString(L"aa")), 3);
        QCOMPARE(loop.toQString(), QStringLiteral("aaaaaa"));
    }

    void comparisons()
    {
        QCOMPARE(TEString(L"ROAD").CompareNoCase(TEString(L"road")), 0);
        QVERIFY(TEString(L"Öl").CompareNoCase(TEString(L"öl")) == 0);
        QCOMPARE(TEString(L"a").compareTo(TEString(L"b")), -1);
        QCOMPARE(TEString(L"b").compareTo(TEString(L"a")), 1);
    }

    void toDoubleParsesOrGivesZero()
    {
        bool ok = true;
        QCOMPARE(TEString(L" 12.5 ").ToDouble(&ok), 12.5);
        QVERIFY(ok);
        QCOMPARE(TEString(L"-3e2").ToDouble(), -300.0);
        QCOMPARE(TEString(L"twelve").ToDouble(&ok), 0.0);
        QVERIFY(!ok);
    }
};

TZ_REGISTER_TEST(TestStrings)
#include "TestStrings.moc"
