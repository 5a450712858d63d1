#pragma once

#include "core/TEColor.h"
#include "data/TEFeature.h"
#include "renders/TEFeatureRender.h"
#include "symbology/TEStyle.h"

#include <QString>

#include <vector>

// Features and styles built in code for the render tests: an OGR feature
// definition with the fields kind (text), pop (real), code (integer) and
// angle (real), and simple point styles of a given colour.
namespace RenderFixtures {

struct Attributes
{
    int id = 0;
    const char* kind = nullptr;  // null leaves the field unset
    double pop = 0.0;
    bool popSet = true;
    int code = 0;
    double angle = 0.0;
};

TZObjects::TERefPtr<TZObjects::TEFeature> MakeFeature(const Attributes& attributes);
TZObjects::TERefPtr<TZObjects::TEStyle> PointStyle(int r, int g, int b);

// Colour of a style, as "#rrggbb" (or "null" for no style), so failures read well.
QString ColorName(const TZObjects::TERefPtr<TZObjects::TEStyle>& style);

// Every render class, each with non-default settings in every member and at
// least one style, so a member dropped by save, open or Clone shows.
std::vector<TZObjects::TERefPtr<TZObjects::TERender>> FullyPopulatedRenders();

// Writes a GeoTIFF of width x height pixels whose bands hold the given
// values (row by row), with the no-data value on band 1 when hasNoData and
// a colour table on band 1 when colors is not empty. Returns the path.
QString WriteGeoTiff(const QString& folder, const QString& name, int width, int height,
                     const std::vector<std::vector<double>>& bands, bool hasNoData, double noData,
                     const std::vector<TZObjects::TEColor>& colors = {});

} // namespace RenderFixtures
