#pragma once

#include <QString>

// Writes sample.tzmap next to the sample data: every sample layer in a
// sensible order, the vector layers drawn by category (regions by land use,
// roads by class, places by type) over a grey elevation, so that the first
// start shows renders at work. Rasters that would hide the others are
// listed but switched off.
class TZSampleProjectWriter
{
public:
    static constexpr const char* ProjectName = "sample.tzmap";

    // folder holds the data written by TZSampleDataGenerator. False with a
    // message when a layer cannot be opened or the file cannot be written.
    static bool write(const QString& folder, QString* error);
};
