#include "renders/TEImageUniqueRenderInfo.h"

#include "data/TERasterProps.h"
#include "renders/TEFileFunc.h"

#include <QColor>
#include <QJsonArray>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <unordered_set>

#include <gdal.h>

namespace TZObjects {

TERefPtr<TEImageRenderInfo> TEImageUniqueRenderInfo::Clone() const
{
    return MakeRef<TEImageUniqueRenderInfo>(*this);
}

namespace {

// Rows read at once: whole rows of blocks, about a million pixels, so that
// each read takes blocks GDAL holds (or fetches) as they are and the band is
// never in memory as a whole.
int rowsPerRead(TERasterProps* raster, int band)
{
    const int blockHeight = std::max(1, raster->GetBlockSize(band).height());
    const int blockRows = std::max(1, (1 << 20) / std::max(1, raster->GetWidth() * blockHeight));
    return blockHeight * blockRows;
}

// 8- and 16-bit integer bands: a flag per possible value, so that each pixel
// costs one store; the band's own type is read, never converted to double.
template <class T>
bool collectSmallIntegers(TERasterProps* raster, int band, int bufferType, std::vector<double>& values,
                          const std::function<void(const QString&)>& fail)
{
    const int offset = -int(std::numeric_limits<T>::min());
    std::vector<unsigned char> seen(size_t(std::numeric_limits<T>::max()) + size_t(offset) + 1, 0);
    const int width = raster->GetWidth();
    const int height = raster->GetHeight();
    const int rows = rowsPerRead(raster, band);
    std::vector<T> buffer(size_t(width) * size_t(std::min(rows, height)));
    for (int y = 0; y < height; y += rows) {
        const int count = std::min(rows, height - y);
        QString text;
        if (!raster->ReadRawWindow(band, QRect(0, y, width, count), bufferType, buffer.data(), &text)) {
            fail(text);
            return false;
        }
        const T* pixel = buffer.data();
        const T* end = pixel + size_t(width) * size_t(count);
        for (; pixel != end; ++pixel)
            seen[size_t(int(*pixel) + offset)] = 1;
    }
    bool hasNoData = false;
    const double noData = raster->GetNoDataValue(band, &hasNoData);
    for (size_t i = 0; i < seen.size(); ++i) {
        const double value = double(int(i) - offset);
        if (seen[i] && !(hasNoData && value == noData))
            values.push_back(value);
    }
    return true;
}

} // namespace

bool TEImageUniqueRenderInfo::CollectValues(TERasterProps* raster, int band, std::vector<double>& values,
                                            bool& complete, TEString* error)
{
    values.clear();
    complete = true;
    if (!raster || band < 1 || band > raster->GetBandCount()) {
        SetError(error, QStringLiteral("The raster has no band %1").arg(band));
        return false;
    }
    const auto fail = [error, band](const QString& text) {
        SetError(error, text.isEmpty() ? QStringLiteral("Band %1 does not read").arg(band) : text);
    };
    switch (raster->GetBandDataType(band)) {
    case GDT_Byte:
        return collectSmallIntegers<uint8_t>(raster, band, GDT_Byte, values, fail);
    case GDT_UInt16:
        return collectSmallIntegers<uint16_t>(raster, band, GDT_UInt16, values, fail);
    case GDT_Int16:
        return collectSmallIntegers<int16_t>(raster, band, GDT_Int16, values, fail);
    default:
        break;
    }

    // Wider and floating-point bands: a hash set of the values met, which
    // stops growing past MaxValueCount.
    bool hasNoData = false;
    const double noData = raster->GetNoDataValue(band, &hasNoData);
    std::unordered_set<double> found;
    found.reserve(1024);
    const int width = raster->GetWidth();
    const int height = raster->GetHeight();
    const int rows = rowsPerRead(raster, band);
    std::vector<double> buffer(size_t(width) * size_t(std::min(rows, height)));
    bool haveLast = false;
    double last = 0.0;
    for (int y = 0; y < height && complete; y += rows) {
        const int count = std::min(rows, height - y);
        QString text;
        if (!raster->ReadRawWindow(band, QRect(0, y, width, count), GDT_Float64, buffer.data(), &text)) {
            fail(text);
            return false;
        }
        const size_t n = size_t(width) * size_t(count);
        for (size_t i = 0; i < n; ++i) {
            const double value = buffer[i];
            // Neighbouring pixels mostly share a value: skip the lookup then.
            if ((haveLast && value == last) || std::isnan(value) || (hasNoData && value == noData))
                continue;
            haveLast = true;
            last = value;
            if (found.count(value))
                continue;
            if (int(found.size()) >= MaxValueCount) {
                complete = false;
                break;
            }
            found.insert(value);
        }
    }
    values.assign(found.begin(), found.end());
    std::sort(values.begin(), values.end());
    return true;
}

bool TEImageUniqueRenderInfo::AddFromRaster(TERasterProps* raster, int band, TEString* error)
{
    std::vector<double> values;
    bool complete = true;
    if (!CollectValues(raster, band, values, complete, error))
        return false;
    mItems.clear();
    mItems.reserve(values.size());
    int i = 0;
    for (double value : values) {
        // Hues spread round the colour wheel, so neighbouring values differ.
        const QColor color = QColor::fromHsvF(std::fmod(i * 0.618033988749895, 1.0), 0.65, 0.9);
        mItems.push_back(Item{value, TEColor(color.red(), color.green(), color.blue())});
        ++i;
    }
    mComplete = complete;
    Reindex();
    return true;
}

QRgb TEImageUniqueRenderInfo::ColorOf(double value) const
{
    const auto found = mIndexByValue.find(value);
    return found == mIndexByValue.end() ? 0 : mItems[size_t(found->second)].color.GetColor();
}

void TEImageUniqueRenderInfo::AddValue(double value, const TEColor& color)
{
    mItems.push_back(Item{value, color});
    mIndexByValue.emplace(value, int(mItems.size()) - 1);
}

bool TEImageUniqueRenderInfo::GetItemColr(int index, TEColor* color) const
{
    if (!color || index < 0 || index >= GetItemCount())
        return false;
    *color = mItems[size_t(index)].color;
    return true;
}

bool TEImageUniqueRenderInfo::GetValue(int index, double& value) const
{
    if (index < 0 || index >= GetItemCount())
        return false;
    value = mItems[size_t(index)].value;
    return true;
}

void TEImageUniqueRenderInfo::SetColorInfo(int index, int r, int g, int b)
{
    if (index >= 0 && index < GetItemCount())
        mItems[size_t(index)].color = TEColor(r, g, b);
}

void TEImageUniqueRenderInfo::Reindex()
{
    mIndexByValue.clear();
    for (size_t i = 0; i < mItems.size(); ++i)
        mIndexByValue.emplace(mItems[i].value, int(i));
}

void TEImageUniqueRenderInfo::save(QJsonObject& json) const
{
    QJsonArray items;
    for (const Item& item : mItems) {
        QJsonObject itemJson;
        itemJson[QStringLiteral("value")] = item.value;
        itemJson[QStringLiteral("color")] = TEFileFunc::SaveColor(item.color);
        items.append(itemJson);
    }
    json[QStringLiteral("values")] = items;
}

bool TEImageUniqueRenderInfo::open(const QJsonObject& json, TEString* error)
{
    mItems.clear();
    mComplete = true;
    if (!TEFileFunc::IsListOrMissing(json, "values", error))
        return false;
    for (const QJsonValue& value : json.value(QStringLiteral("values")).toArray()) {
        const QJsonObject itemJson = value.toObject();
        mItems.push_back(Item{itemJson.value(QStringLiteral("value")).toDouble(),
                              TEFileFunc::OpenColor(itemJson.value(QStringLiteral("color")))});
    }
    Reindex();
    return true;
}

} // namespace TZObjects
