#pragma once

#include "TEString.h"

#include <QDateTime>

#include <cstdint>
#include <variant>

namespace TZObjects {

// An attribute value read from a feature: null, integer, real, text,
// date/time or binary. ToString gives the text the panels show and group by.
class TZOBJECTS_EXPORT TEVariant
{
public:
    enum class Type { Null, Integer, Real, String, Date, DateTime, Time, Binary };

    TEVariant() = default;
    TEVariant(int value) : mValue(int64_t(value)) {}
    TEVariant(long value) : mValue(int64_t(value)) {}
    TEVariant(long long value) : mValue(int64_t(value)) {}
    TEVariant(double value) : mValue(value) {}
    TEVariant(const TEString& value) : mValue(value) {}
    TEVariant(const char* utf8) : mValue(TEString(utf8)) {}
    TEVariant(const wchar_t* text) : mValue(TEString(text)) {}
    TEVariant(const QByteArray& bytes) : mValue(bytes) {}
    // A date (date only), a time of day (time only) or both.
    TEVariant(const QDate& date) : mValue(QDateTime(date, QTime(0, 0))), mTemporal(Type::Date) {}
    TEVariant(const QTime& time) : mValue(QDateTime(QDate(1970, 1, 1), time)), mTemporal(Type::Time) {}
    TEVariant(const QDateTime& dateTime) : mValue(dateTime), mTemporal(Type::DateTime) {}

    Type GetType() const;
    bool IsNull() const { return std::holds_alternative<std::monostate>(mValue); }
    bool IsNumeric() const { return GetType() == Type::Integer || GetType() == Type::Real; }

    int64_t GetInt() const;
    // The value as a number: integers and reals as they are, text parsed
    // (0 when it is not a number), anything else 0.
    double GetDouble() const;
    QDateTime GetDateTime() const;
    QByteArray GetBinary() const;

    // Text of the value: "" for null, integers in decimal, reals in the
    // shortest form that reads back to the same double ("2.5", "3",
    // "1e+20"), dates as "yyyy-MM-dd", times as "hh:mm:ss", date-times as
    // "yyyy-MM-dd hh:mm:ss" (with milliseconds when present), binary as hex.
    TEString ToString() const;

    // Text of a real number in the same form ToString uses.
    static TEString RealToString(double value);

    bool operator==(const TEVariant& other) const;
    bool operator!=(const TEVariant& other) const { return !(*this == other); }

private:
    std::variant<std::monostate, int64_t, double, TEString, QDateTime, QByteArray> mValue;
    Type mTemporal = Type::Null;
};

} // namespace TZObjects
