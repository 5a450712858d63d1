#include "TestRegistry.h"

#include "TZStyleMemo.h"

#include "symbology/QuickStyle.h"

#include <string>
#include <vector>

using namespace TZObjects;

// The memo a drawing keeps of the style chosen for each set of values.
class TestStyleMemo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void remembersEachKeyUpToItsLimit_data()
    {
        QTest::addColumn<int>("keys");
        QTest::addColumn<int>("limit");
        QTest::newRow("a few") << 3 << 100;
        QTest::newRow("grown many times") << 5000 << 100000;
        QTest::newRow("past the limit") << 500 << 200;
    }

    void remembersEachKeyUpToItsLimit()
    {
        QFETCH(int, keys);
        QFETCH(int, limit);
        // Keys as a drawing makes them: a marker, a length and the value's
        // bytes, some of them sharing all but their last byte, and an
        // empty one; every seventh key's features are not drawn (no style).
        std::vector<std::string> made;
        for (int i = 0; i < keys; ++i)
            made.push_back(i == 0 ? std::string() : std::string("\1\x09\0\0\0class ", 10) + std::to_string(i));
        std::vector<TERefPtr<TEStyle>> styles;
        TZStyleMemo memo{size_t(limit)};
        for (int i = 0; i < keys; ++i) {
            styles.push_back(i % 7 == 3 ? TERefPtr<TEStyle>()
                                        : QuickStyle::MakeDefaultStyle(TEStyle::PointStyle, TEColor(i % 256, 0, 0)));
            memo.Insert(made[size_t(i)], styles.back());
        }
        for (int i = 0; i < keys; ++i) {
            const TERefPtr<TEStyle>* found = memo.Find(made[size_t(i)]);
            if (i >= limit) {
                QVERIFY(!found);
                continue;
            }
            QVERIFY2(found, qPrintable(QString::number(i)));
            QCOMPARE(found->get(), styles[size_t(i)].get());
        }
        QVERIFY(!memo.Find("class"));
        // A key inserted again takes its new style.
        const TERefPtr<TEStyle> other = QuickStyle::MakeDefaultStyle(TEStyle::LineStyle, TEColor(0, 0, 255));
        memo.Insert(made[1], other);
        QCOMPARE(memo.Find(made[1])->get(), other.get());
    }
};

TZ_REGISTER_TEST(TestStyleMemo)
#include "TestStyleMemo.moc"
