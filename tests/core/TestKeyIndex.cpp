#include "TestRegistry.h"

#include "core/TEKeyIndex.h"

#include <string>
#include <vector>

using namespace TZObjects;

// The index that numbers the value keys of large layers.
class TestKeyIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersKeysInTheOrderFirstAdded_data()
    {
        QTest::addColumn<int>("keys");
        QTest::newRow("a few") << 3;
        QTest::newRow("grown many times") << 20000;
    }

    void numbersKeysInTheOrderFirstAdded()
    {
        QFETCH(int, keys);
        // Keys as the drawing and the value counts make them: a marker and
        // a length before the bytes, some sharing all but their last byte,
        // short ones held in the slots and long ones beside them, an empty
        // one and one with zero bytes inside.
        std::vector<std::string> made;
        for (int i = 0; i < keys; ++i) {
            std::string key = i == 0 ? std::string() : std::string("\1\x09\0\0\0class ", 10) + std::to_string(i);
            if (i % 3 == 1)
                key += " a value long enough to be kept beside its slot";
            made.push_back(key);
        }
        made[1 % keys] = std::string("\0\0\0", 3);
        TEKeyIndex index;
        for (int i = 0; i < keys; ++i) {
            bool added = false;
            QCOMPARE(index.Add(made[size_t(i)], &added), size_t(i));
            QVERIFY(added);
        }
        QCOMPARE(index.Size(), size_t(keys));
        for (int i = keys - 1; i >= 0; --i) {
            QCOMPARE(index.Find(made[size_t(i)]), size_t(i));
            QCOMPARE(index.Key(size_t(i)), made[size_t(i)]);
            // Adding again gives the same number and adds nothing.
            bool added = true;
            QCOMPARE(index.Add(made[size_t(i)], &added), size_t(i));
            QVERIFY(!added);
        }
        QCOMPARE(index.Size(), size_t(keys));
        // Keys that differ from one held only in length or padding.
        QCOMPARE(index.Find(std::string("\0\0", 2)), TEKeyIndex::None);
        QCOMPARE(index.Find(std::string("\0\0\0\0", 4)), TEKeyIndex::None);
        QCOMPARE(index.Find("class"), TEKeyIndex::None);
        QCOMPARE(TEKeyIndex().Find(""), TEKeyIndex::None);
    }

    void tellsKeysApartByEveryByte()
    {
        // Keys of every length up to 20 that differ in one byte only: a
        // short key is read in overlapping words, and no byte may be lost.
        TEKeyIndex index;
        std::vector<std::string> made;
        for (size_t size = 1; size <= 20; ++size) {
            made.push_back(std::string(size, 'x'));
            for (size_t at = 0; at < size; ++at) {
                std::string key(size, 'x');
                key[at] = 'y';
                made.push_back(key);
            }
        }
        for (const std::string& key : made)
            index.Add(key);
        QCOMPARE(index.Size(), made.size());
        for (size_t i = 0; i < made.size(); ++i)
            QCOMPARE(index.Find(made[i]), i);
    }
};

TZ_REGISTER_TEST(TestKeyIndex)
#include "TestKeyIndex.moc"
