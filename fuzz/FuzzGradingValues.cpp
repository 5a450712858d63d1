// The graded-classes values file: whatever a file holds, reading it gives at
// most one line more than the class count allows, and every line that reads
// as a class range survives its own text form.
#include "FuzzSupport.h"

#include "TZGradingValues.h"

#include <QBuffer>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

// A bound written with five decimals reads back within half a unit of the
// last decimal (or exactly, for numbers too large to have decimals).
bool sameBound(double written, double read)
{
    if (std::isinf(written))
        return written == read;
    return std::abs(written - read) <= 0.5e-5 + 1e-15 * std::abs(written);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    tzFuzzInit();
    QByteArray bytes = tzFuzzBytes(data, size);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    // The number of classes the panel allows at most.
    const int maxLines = 32;
    QStringList lines;
    switch (TZGradingValues::readLines(buffer, maxLines, lines)) {
    case TZGradingValues::ReadResult::Read:
        if (lines.isEmpty() || lines.size() > maxLines)
            abort();
        break;
    case TZGradingValues::ReadResult::TooManyLines:
        if (lines.size() != maxLines + 1)
            abort();
        return 0;
    case TZGradingValues::ReadResult::Empty:
        if (!lines.isEmpty())
            abort();
        return 0;
    case TZGradingValues::ReadResult::CannotOpen:
        abort(); // an open buffer can always be read
    }
    for (const QString& line : qAsConst(lines)) {
        double lower = 0.0;
        double upper = 0.0;
        if (!TZGradingValues::parseRange(line, lower, upper))
            continue;
        if (std::isnan(lower) || std::isnan(upper))
            abort();
        double lowerAgain = 0.0;
        double upperAgain = 0.0;
        if (!TZGradingValues::parseRange(TZGradingValues::formatRange(lower, upper), lowerAgain, upperAgain))
            abort();
        if (!sameBound(lower, lowerAgain) || !sameBound(upper, upperAgain))
            abort();
    }
    return 0;
}
