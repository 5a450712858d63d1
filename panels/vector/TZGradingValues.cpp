#include "TZGradingValues.h"

#include <QFile>
#include <QTextStream>

#include <cmath>

QString TZGradingValues::formatRange(double lower, double upper)
{
    return QString::asprintf("%01.5lf,%01.5lf", lower, upper);
}

bool TZGradingValues::parseRange(const QString& range, double& lower, double& upper)
{
    const QStringList parts = range.split(QLatin1Char(','));
    if (parts.size() != 2)
        return false;
    bool lowerOk = false;
    bool upperOk = false;
    lower = parts[0].toDouble(&lowerOk);
    upper = parts[1].toDouble(&upperOk);
    return lowerOk && upperOk && !std::isnan(lower) && !std::isnan(upper);
}

TZGradingValues::ReadResult TZGradingValues::readLines(QIODevice& device, int maxLines, QStringList& lines)
{
    lines.clear();
    QTextStream in(&device);
    in.setCodec("UTF-8");
    while (!in.atEnd()) {
        lines.append(in.readLine());
        if (lines.size() > maxLines)
            return ReadResult::TooManyLines;
    }
    return lines.isEmpty() ? ReadResult::Empty : ReadResult::Read;
}

TZGradingValues::ReadResult TZGradingValues::readFile(const QString& path, int maxLines, QStringList& lines)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return ReadResult::CannotOpen;
    return readLines(file, maxLines, lines);
}
