#include "TestRegistry.h"

#include "view/TEMapView.h"
#include "view/TEMapViewManager.h"

#include <atomic>
#include <memory>
#include <thread>

using namespace TZObjects;

namespace {

// A view showing one layer. Layers are only compared by address here, so
// the test uses addresses of its own objects for them.
class OneLayerView : public TEMapView
{
public:
    explicit OneLayerView(const TELayer* layer) : mLayer(layer) {}
    bool ContainsLayer(const TELayer* layer) const override { return layer == mLayer; }

private:
    const TELayer* mLayer = nullptr;
};

const TELayer* fakeLayer(const int& storage)
{
    return reinterpret_cast<const TELayer*>(&storage);
}

} // namespace

// Map views register themselves; cancelling reaches a drawing thread.
class TestMapViews : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cancelStopsADrawingOnAnotherThread()
    {
        TETrackCancel cancel;
        std::atomic<bool> started{false};
        std::atomic<long> features{0};
        std::thread drawing([&] {
            started = true;
            while (!cancel.IsCancelled())
                ++features;
        });
        while (!started)
            std::this_thread::yield();
        cancel.Cancel();
        drawing.join();
        QVERIFY(cancel.IsCancelled());
        cancel.Reset();
        QVERIFY(!cancel.IsCancelled());
    }

    void viewsAreFoundByTheirLayers()
    {
        TEMapViewManager* manager = TEMapViewManager::GetInstance();
        const int roads = 0, rivers = 0, towns = 0;
        auto first = std::make_unique<OneLayerView>(fakeLayer(roads));
        auto second = std::make_unique<OneLayerView>(fakeLayer(rivers));
        QCOMPARE(manager->GetMapViewByLayer(fakeLayer(rivers)), second.get());
        QCOMPARE(manager->GetMapViewByLayer(fakeLayer(roads)), first.get());
        QVERIFY(!manager->GetMapViewByLayer(fakeLayer(towns)));
        QVERIFY(!manager->GetMapViewByLayer(nullptr));

        second.reset();
        QVERIFY(!manager->GetMapViewByLayer(fakeLayer(rivers)));
        QCOMPARE(manager->GetMapViews().size(), size_t(1));
    }

    void activeViewIsClearedWhenItGoesAway()
    {
        TEMapViewManager* manager = TEMapViewManager::GetInstance();
        const int layer = 0;
        auto view = std::make_unique<OneLayerView>(fakeLayer(layer));
        manager->RegisterMapView(view.get());
        QCOMPARE(manager->GetMapViews().size(), size_t(1));
        QVERIFY(manager->SetActivedMapView(view.get()));
        QCOMPARE(manager->GetActivedMapView(), view.get());
        QCOMPARE(manager->GetActivedMapView()->GetTrackCancel(), view->GetTrackCancel());

        view.reset();
        QVERIFY(!manager->GetActivedMapView());

        OneLayerView unregistered(fakeLayer(layer));
        manager->UnregisterMapView(&unregistered);
        QVERIFY(!manager->SetActivedMapView(&unregistered));
        QVERIFY(manager->SetActivedMapView(nullptr));
    }
};

TZ_REGISTER_TEST(TestMapViews)
#include "TestMapViews.moc"
