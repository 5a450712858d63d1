#include "DataFixtures.h"
#include "TestRegistry.h"

#include "data/TEFeatureLayer.h"
#include "data/TEFeatureTable.h"
#include "data/TEFeaturesCountEvent.h"
#include "data/TEMemoryFeatureLayer.h"

#include <QTemporaryDir>

#include <atomic>
#include <future>

using namespace TZObjects;

namespace {

TERefPtr<TEMemoryFeatureLayer> makeLayer()
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("parcels"), TELayer::LT_Point,
        {{QStringLiteral("use"), TEField::FT_String}, {QStringLiteral("area"), TEField::FT_Double}});
    layer->AppendFeature(QStringLiteral("POINT (0 0)"), {"farm", 10.0});
    layer->AppendFeature(QStringLiteral("POINT (1 1)"), {"wood", 20.0});
    layer->AppendFeature(QStringLiteral("POINT (2 2)"), {"farm", 30.0});
    return layer;
}

TERefPtr<TEFeature> featureOf(TEFeatureLayer& layer, const char* use, double area)
{
    TERefPtr<TEFeature> feature = layer.CreateFeature();
    feature->SetValue(TEString(L"use"), TEVariant(use));
    feature->SetValue(TEString(L"area"), TEVariant(area));
    feature->SetGeometry(TEGeometry::FromWkt(QStringLiteral("POINT (5 5)")));
    return feature;
}

} // namespace

class TestEditBuffer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void editsAreHeldAndQueriedWithTheFilter()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = makeLayer();
        QVERIFY(!layer->HasBeEdited());
        const int added = layer->AddFeature(featureOf(*layer, "farm", 40.0));
        QVERIFY(added < 0);

        TERefPtr<TEFeature> wood = layer->GetFeature(1);
        QVERIFY(wood);
        wood->SetValue(TEString(L"use"), TEVariant("farm"));
        QVERIFY(layer->UpdateFeature(wood));
        QVERIFY(layer->DeleteFeature(2));
        QVERIFY(!layer->DeleteFeature(2));
        QVERIFY(!layer->DeleteFeature(99));
        QVERIFY(layer->HasBeEdited());

        TELayerEditBuffer* buffer = layer->layer_edit_buffer();
        QCOMPARE(buffer->Query(TEQueryFilter()), std::vector<int>({added, 1, 2}));
        QCOMPARE(buffer->Query(TEQueryFilter(TEString(L"use = 'farm'"))), std::vector<int>({added, 1, 2}));
        QCOMPARE(buffer->Query(TEQueryFilter(TEString(L"area > 25"))), std::vector<int>({added, 2}));
        QString error;
        QVERIFY(buffer->Query(TEQueryFilter(TEString(L"area >")), &error).empty());
        QVERIFY(!error.isEmpty());

        QCOMPARE(buffer->GetActiveEditFeatureByFeatureId(added)->edit_operation(), int(TEFeatureEditBuffer::EO_Added));
        QCOMPARE(buffer->GetActiveEditFeatureByFeatureId(1)->edit_operation(), int(TEFeatureEditBuffer::EO_Modified));
        QCOMPARE(buffer->GetActiveEditFeatureByFeatureId(2)->edit_operation(), 3);
        QCOMPARE(buffer->GetActiveEditFeatureByFeatureId(2)->GetFeature()->GetValue(TEString(L"area")).GetDouble(), 30.0);
        QVERIFY(!buffer->GetActiveEditFeatureByFeatureId(0));

        // Searches read the saved data; the count includes the edits.
        QCOMPARE(layer->Search(TEQueryFilter(TEString(L"use = 'farm'")))->NextFeature()->GetId(), 0);
        QCOMPARE(layer->GetFeatureCount(), 3);
    }

    void editingAnAddedFeatureKeepsItAnAdd()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = makeLayer();
        const int id = layer->AddFeature(featureOf(*layer, "farm", 1.0));
        TERefPtr<TEFeature> edited = layer->layer_edit_buffer()->GetActiveEditFeatureByFeatureId(id)->GetFeature()->Clone();
        edited->SetValue(TEString(L"area"), TEVariant(2.0));
        QVERIFY(layer->UpdateFeature(edited));
        QCOMPARE(layer->layer_edit_buffer()->GetActiveEditFeatureByFeatureId(id)->edit_operation(),
                 int(TEFeatureEditBuffer::EO_Added));
        QVERIFY(layer->DeleteFeature(id));
        QVERIFY(!layer->HasBeEdited());
        QCOMPARE(layer->GetFeatureCount(), 3);
    }

    // A model keeps the pointer GetActiveEditFeatureByFeatureId gave while the
    // user edits on: it must stay the feature's entry, not a freed one.
    void editPointerStaysValidUntilTheEditsAreSaved()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = makeLayer();
        TELayerEditBuffer* buffer = layer->layer_edit_buffer();
        TERefPtr<TEFeature> wood = layer->GetFeature(1);
        QVERIFY(layer->UpdateFeature(wood));
        TEFeatureEditBuffer* edit = buffer->GetActiveEditFeatureByFeatureId(1);
        QVERIFY(edit);

        wood->SetValue(TEString(L"area"), TEVariant(21.0));
        QVERIFY(layer->UpdateFeature(wood));
        QCOMPARE(buffer->GetActiveEditFeatureByFeatureId(1), edit);
        QCOMPARE(edit->GetFeature()->GetValue(TEString(L"area")).GetDouble(), 21.0);
        QVERIFY(layer->DeleteFeature(1));
        QCOMPARE(buffer->GetActiveEditFeatureByFeatureId(1), edit);
        QCOMPARE(edit->edit_operation(), int(TEFeatureEditBuffer::EO_Deleted));

        // An added feature deleted again leaves the buffer, but a pointer to
        // its entry still reads it, as deleted.
        const int added = layer->AddFeature(featureOf(*layer, "farm", 1.0));
        TEFeatureEditBuffer* addedEdit = buffer->GetActiveEditFeatureByFeatureId(added);
        QVERIFY(layer->DeleteFeature(added));
        QVERIFY(!buffer->GetActiveEditFeatureByFeatureId(added));
        QCOMPARE(addedEdit->edit_operation(), int(TEFeatureEditBuffer::EO_Deleted));
        QCOMPARE(addedEdit->GetFeature()->GetValue(TEString(L"area")).GetDouble(), 1.0);
    }

    // Value collection reads the buffer on a worker thread while the layer
    // may record edits; every read sees one whole edit.
    void editsReadOnAWorkerWhileRecorded()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = makeLayer();
        TERefPtr<TEFeature> wood = layer->GetFeature(1);
        QVERIFY(layer->UpdateFeature(wood));
        TEFeatureEditBuffer* edit = layer->layer_edit_buffer()->GetActiveEditFeatureByFeatureId(1);
        std::atomic<bool> done{false};
        auto reader = std::async(std::launch::async, [&] {
            int wrong = 0;
            while (!done) {
                const double area = edit->GetFeature()->GetValue(TEString(L"area")).GetDouble();
                wrong += area < 20.0 || area > 520.0;
            }
            return wrong;
        });
        for (int i = 0; i <= 500; ++i) {
            TERefPtr<TEFeature> changed = wood->Clone();
            changed->SetValue(TEString(L"area"), TEVariant(20.0 + i));
            layer->UpdateFeature(changed);
        }
        done = true;
        QCOMPARE(reader.get(), 0);
        QCOMPARE(edit->GetFeature()->GetValue(TEString(L"area")).GetDouble(), 520.0);
    }

    void countEventsReachBoundHandlersUntilUnbound()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = makeLayer();
        std::vector<int> addedIds, deletedIds;
        void* sender = nullptr;
        const TEString key = TEString().Format("%x %x", 0x1234, 0xabcd);
        layer->features_added().bind(key, [&](void* s, TEEvent* event) {
            sender = s;
            auto* countEvent = dynamic_cast<TEFeaturesCountEvent*>(event);
            QVERIFY(countEvent);
            addedIds.push_back(countEvent->GetId());
        });
        layer->features_deleted().bind(key, [&](void*, TEEvent* event) {
            for (int id : event->GetIds())
                deletedIds.push_back(id);
        });
        const int id = layer->AddFeature(featureOf(*layer, "wood", 5.0));
        layer->DeleteFeature(0);
        QCOMPARE(addedIds, std::vector<int>({id}));
        QCOMPARE(deletedIds, std::vector<int>({0}));
        QCOMPARE(sender, static_cast<void*>(static_cast<TEFeatureLayer*>(layer.get())));

        layer->features_added().unbind(key);
        QVERIFY(!layer->features_added().isBound(key));
        layer->AddFeature(featureOf(*layer, "wood", 6.0));
        QCOMPARE(addedIds.size(), size_t(1));
    }

    void handlerMayUnbindItselfWhileCalled()
    {
        TEEventSignal signal;
        int calls = 0;
        signal.bind(TEString(L"once"), [&](void*, TEEvent*) {
            ++calls;
            signal.unbind(TEString(L"once"));
        });
        TEFeaturesCountEvent event({1, 2});
        signal.raise(nullptr, &event);
        signal.raise(nullptr, &event);
        QCOMPARE(calls, 1);
        QCOMPARE(event.GetIds(), std::vector<int>({1, 2}));
    }

    void savedEditsReachTheGeoPackage()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("edit.gpkg"));
        QCOMPARE(DataFixtures::writeVector(path, "GPKG", QStringLiteral("edit"), wkbPoint,
                                           {{QStringLiteral("use"), OFTString}, {QStringLiteral("area"), OFTReal}},
                                           {{QStringLiteral("POINT (0 0)"), {"farm", 1.0}},
                                            {QStringLiteral("POINT (1 1)"), {"wood", 2.0}}}),
                 QString());
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(path);
        layer->AddFeature(featureOf(*layer, "lake", 3.0));
        QVERIFY(layer->DeleteFeature(1));
        TERefPtr<TEFeature> wood = layer->GetFeature(2);
        wood->SetValue(TEString(L"use"), TEVariant("farm"));
        QVERIFY(layer->UpdateFeature(wood));
        QString error;
        QVERIFY2(layer->SaveEdits(&error), qPrintable(error));
        QVERIFY(!layer->HasBeEdited());
        QCOMPARE(layer->GetFeatureCount(), 2);
        // The layer keeps editing after a save.
        const int again = layer->AddFeature(featureOf(*layer, "wood", 4.0));
        QCOMPARE(layer->layer_edit_buffer()->Query(TEQueryFilter(TEString(L"use = 'wood'"))), std::vector<int>({again}));
        layer->DiscardEdits();

        std::vector<TEFeatureTable::ValueCount> counts;
        QVERIFY(TEFeatureLayer::Open(path)->GetDatasource()->GetValueCounts(TEString(L"use"), TEQueryFilter(), counts));
        QCOMPARE(counts.size(), size_t(2));
        QCOMPARE(counts[0].value, TEString(L"farm"));
        QCOMPARE(counts[1].value, TEString(L"lake"));
    }

    void discardDropsEverything()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = makeLayer();
        layer->DeleteFeature(0);
        layer->DiscardEdits();
        QVERIFY(!layer->HasBeEdited());
        QVERIFY(layer->layer_edit_buffer()->Query(TEQueryFilter()).empty());
        QCOMPARE(layer->GetFeatureCount(), 3);
    }
};

TZ_REGISTER_TEST(TestEditBuffer)
#include "TestEditBuffer.moc"
