#pragma once

#include "TZRenderExport.h"

#include <QString>
#include <QStringList>

class QIODevice;

// The text forms of graded classes: a class range "lo,hi", and the values
// file that holds one range per line (what Export writes and Import reads).
// Free of widgets, so that anything reading outside files can use it.
class TZRENDER_EXPORT TZGradingValues
{
public:
    enum class ReadResult { Read, Empty, TooManyLines, CannotOpen };

    // "lo,hi" with five decimals, as the classes and the values file write it.
    static QString formatRange(double lower, double upper);
    // Reads "lo,hi" into two numbers; false unless the text splits at ","
    // into exactly two numbers.
    static bool parseRange(const QString& range, double& lower, double& upper);

    // Reads the lines of a values file (UTF-8) into lines. A file with more
    // lines than maxLines is refused whatever follows, so reading stops at
    // the first line too many.
    static ReadResult readLines(QIODevice& device, int maxLines, QStringList& lines);
    static ReadResult readFile(const QString& path, int maxLines, QStringList& lines);
};
