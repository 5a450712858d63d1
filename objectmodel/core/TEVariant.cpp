#include "TEVariant.h"

#include <charconv>
#include <cmath>

namespace TZObjects {

TEVariant::Type TEVariant::GetType() const
{
    switch (mValue.index()) {
    case 1: return Type::Integer;
    case 2: return Type::Real;
    case 3: return Type::String;
    case 4: return mTemporal;
    case 5: return Type::Binary;
    default: return Type::Null;
    }
}

int64_t TEVariant::GetInt() const
{
    if (auto i = std::get_if<int64_t>(&mValue))
        return *i;
    const double d = GetDouble();
    return std::isfinite(d) ? int64_t(d) : 0;
}

double TEVariant::GetDouble() const
{
    if (auto i = std::get_if<int64_t>(&mValue))
        return double(*i);
    if (auto d = std::get_if<double>(&mValue))
        return *d;
    if (auto s = std::get_if<TEString>(&mValue))
        return s->ToDouble();
    return 0.0;
}

QDateTime TEVariant::GetDateTime() const
{
    if (auto dt = std::get_if<QDateTime>(&mValue))
        return *dt;
    return QDateTime();
}

QByteArray TEVariant::GetBinary() const
{
    if (auto b = std::get_if<QByteArray>(&mValue))
        return *b;
    return QByteArray();
}

TEString TEVariant::RealToString(double value)
{
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return TEString(std::string(buffer, result.ptr).c_str());
}

TEString TEVariant::ToString() const
{
    switch (mValue.index()) {
    case 1:
        return TEString(std::to_string(std::get<int64_t>(mValue)).c_str());
    case 2:
        return RealToString(std::get<double>(mValue));
    case 3:
        return std::get<TEString>(mValue);
    case 4: {
        const QDateTime& dt = std::get<QDateTime>(mValue);
        const bool millis = dt.time().msec() != 0;
        switch (mTemporal) {
        case Type::Date:
            return TEString(dt.date().toString(QStringLiteral("yyyy-MM-dd")));
        case Type::Time:
            return TEString(dt.time().toString(millis ? QStringLiteral("hh:mm:ss.zzz") : QStringLiteral("hh:mm:ss")));
        default:
            return TEString(dt.toString(millis ? QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz")
                                               : QStringLiteral("yyyy-MM-dd hh:mm:ss")));
        }
    }
    case 5:
        return TEString(QString::fromLatin1(std::get<QByteArray>(mValue).toHex().toUpper()));
    default:
        return TEString();
    }
}

bool TEVariant::operator==(const TEVariant& other) const
{
    return mValue == other.mValue && mTemporal == other.mTemporal;
}

} // namespace TZObjects
