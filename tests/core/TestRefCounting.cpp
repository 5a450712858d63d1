#include "TestRegistry.h"

#include "core/TERefBase.h"
#include "core/TERefPtr.h"

#include <thread>
#include <vector>

using namespace TZObjects;

namespace {

// Counts live instances so the tests can see exactly when one is destroyed.
struct Tracked : TERefBase
{
    static int alive;
    Tracked() { ++alive; }
    ~Tracked() override { --alive; }
};
int Tracked::alive = 0;

struct Derived : Tracked
{
};

} // namespace

class TestRefCounting : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { Tracked::alive = 0; }

    void releaseReportsDestructionOnlyOnLastReference()
    {
        auto* object = new Tracked;
        object->AddRef();
        object->AddRef();
        QCOMPARE(object->RefCount(), 2);
        QVERIFY(!object->Release());
        QCOMPARE(Tracked::alive, 1);
        QVERIFY(object->Release());
        QCOMPARE(Tracked::alive, 0);
    }

    void pointerCopiesShareOneObject()
    {
        {
            TERefPtr<Tracked> a(new Tracked);
            {
                TERefPtr<Tracked> b = a;
                TERefPtr<Tracked> c;
                c = b;
                QCOMPARE(a->RefCount(), 3);
            }
            QCOMPARE(a->RefCount(), 1);
            QCOMPARE(Tracked::alive, 1);
        }
        QCOMPARE(Tracked::alive, 0);
    }

    void moveTransfersWithoutCounting()
    {
        TERefPtr<Derived> source(new Derived);
        TERefPtr<Tracked> target(std::move(source));
        QVERIFY(!source);
        QCOMPARE(target->RefCount(), 1);
        target = nullptr;
        QCOMPARE(Tracked::alive, 0);
    }

    void selfAssignmentKeepsTheObject()
    {
        TERefPtr<Tracked> a(new Tracked);
        a = a;
        QCOMPARE(a->RefCount(), 1);
        QCOMPARE(Tracked::alive, 1);
    }

    void castGivesEmptyPointerForWrongType()
    {
        TERefPtr<Tracked> base(new Tracked);
        QVERIFY(!base.cast<Derived>());
        TERefPtr<Tracked> derived(new Derived);
        TERefPtr<Derived> down = derived.cast<Derived>();
        QVERIFY(down);
        QCOMPARE(down->RefCount(), 2);
    }

    void countingIsSafeAcrossThreads()
    {
        TERefPtr<Tracked> shared(new Tracked);
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([shared] {
                for (int i = 0; i < 20000; ++i) {
                    TERefPtr<Tracked> copy = shared;
                }
            });
        }
        for (auto& t : threads)
            t.join();
        QCOMPARE(shared->RefCount(), 1);
        shared.reset();
        QCOMPARE(Tracked::alive, 0);
    }
};

TZ_REGISTER_TEST(TestRefCounting)
#include "TestRefCounting.moc"
