#pragma once

#include "TZModelUniqueValues.h"

#include <QStringList>

// The category table of unique values over several fields: a category is the
// chosen fields' value texts joined by "," in the order the fields were
// chosen. Collecting always counts, and asks first on a large layer.
class TZRENDER_EXPORT TZModelUniqueValuesByManyFields : public TZModelUniqueValues
{
    Q_OBJECT
public:
    // At this many features and more, collecting asks the user first.
    static constexpr int LargeLayerFeatures = 10000;

    explicit TZModelUniqueValuesByManyFields(QObject* parent = nullptr);

    // Binds the layer and the chosen fields, in order; the table goes back
    // to the catch-all row.
    void setLayerAndFields(TZObjects::TEFeatureLayer* layer, const QStringList& fields);
    // Follows a new choice of fields without touching the rows.
    void setFields(const QStringList& fields) { mFields = fields; }
    QStringList fields() const { return mFields; }
    // The layer's feature count as read at the last collection.
    int featureCount() const { return mFeatureCount; }

    // Clears the table, asks on a layer of LargeLayerFeatures or more
    // (Cancel leaves it cleared), then counts every combination and adds a
    // row coloured from the ramp for each. Nothing without a layer or field.
    void addAllCombinations(const TZObjects::TEColorRamp* ramp, QWidget* dialogParent);

    // The key of a feature: its values of the chosen fields joined by ",".
    QString keyOf(const TZObjects::TEFeature& feature) const;

protected:
    void collectValues(bool count) override;
    void collectRenderValues(const QString& fields) override;
    QString featureValue(const TZObjects::TEFeature& feature) const override { return keyOf(feature); }
    bool hasCollectionKey() const override { return !mFields.isEmpty(); }

private:
    void collectKeys(const QStringList& fields);

    QStringList mFields;
    int mFeatureCount = 0;
};
