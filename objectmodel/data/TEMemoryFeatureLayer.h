#pragma once

#include "data/TEFeatureLayer.h"

#include <utility>
#include <vector>

namespace TZObjects {

// A feature layer held in memory through GDAL's Memory driver, built in
// code: fields, then features with WKT geometries. Its data source reports
// the class name "TEMemoryFeatureLayer". Searches walk a copy taken under
// the layer's lock, so they too may run on any thread.
class TZOBJECTS_EXPORT TEMemoryFeatureLayer : public TEFeatureLayer
{
public:
    using FieldDef = std::pair<QString, TEField::FieldType>;

    // A layer of the given type with the given attribute fields, drawn with a
    // single symbol of its default style; crs is anything OGR accepts
    // ("EPSG:4326", WKT), empty for none.
    static TERefPtr<TEMemoryFeatureLayer> Create(const QString& name, LayerType type,
                                                 const std::vector<FieldDef>& fields, const QString& crs = {},
                                                 QString* error = nullptr);

    // Stores a feature straight into the layer (not through the edit
    // buffer): a WKT geometry (empty for none) and the attribute values in
    // field order (missing ones stay null). Returns the new FID, -1 on error.
    int AppendFeature(const QString& wkt, const std::vector<TEVariant>& values, QString* error = nullptr);

    TERefPtr<TEFeatureCursor> Search(const TEQueryFilter& filter, QString* error = nullptr) const override;
    TEString GetDatasourceClassName() const override { return TEString(L"TEMemoryFeatureLayer"); }

protected:
    GDALDatasetH OpenReadDataset(QString* error) const override;
    bool WriteEdits(QString* error) override;

private:
    TEMemoryFeatureLayer(const QString& name, GDALDatasetH dataset, OGRLayerH layer, LayerType type);
};

} // namespace TZObjects
