#include "TEString.h"

#include <cstdarg>
#include <cstdio>
#include <cwctype>

namespace TZObjects {

TEString::TEString(const char* utf8)
    : std::wstring(utf8 ? QString::fromUtf8(utf8).toStdWString() : std::wstring())
{
}

TEString::TEString(const wchar_t* text)
    : std::wstring(text ? text : L"")
{
}

TEString::TEString(const QString& text)
    : std::wstring(text.toStdWString())
{
}

std::string TEString::toUTF8() const
{
    return toQString().toStdString();
}

QString TEString::toQString() const
{
    return QString::fromStdWString(*this);
}

TEString TEString::fromUtf8(const char* utf8)
{
    return TEString(utf8);
}

TEString TEString::fromUtf8(const std::string& utf8)
{
    return TEString(QString::fromUtf8(utf8.data(), int(utf8.size())));
}

TEString& TEString::Format(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    va_list copy;
    va_copy(copy, args);
    const int length = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    std::string buffer(length > 0 ? size_t(length) : 0, '\0');
    if (length > 0)
        std::vsnprintf(buffer.data(), buffer.size() + 1, format, args);
    va_end(args);
    *this = fromUtf8(buffer);
    return *this;
}

TEString TEString::Left(int count) const
{
    if (count <= 0)
        return TEString();
    return TEString(substr(0, size_t(count)));
}

TEString TEString::Mid(int first) const
{
    if (first < 0)
        first = 0;
    if (size_t(first) >= size())
        return TEString();
    return TEString(substr(size_t(first)));
}

TEString TEString::Mid(int first, int count) const
{
    if (first < 0)
        first = 0;
    if (count <= 0 || size_t(first) >= size())
        return TEString();
    return TEString(substr(size_t(first), size_t(count)));
}

int TEString::ReverseFind(wchar_t ch) const
{
    const size_t pos = rfind(ch);
    return pos == npos ? -1 : int(pos);
}

int TEString::Replace(const TEString& from, const TEString& to)
{
    if (from.empty())
        return 0;
    int replaced = 0;
    size_t pos = 0;
    while ((pos = find(from, pos)) != npos) {
        replace(pos, from.size(), to);
        pos += to.size();
        ++replaced;
    }
    return replaced;
}

bool TEString::Contains(const TEString& part) const
{
    return find(part) != npos;
}

bool TEString::startsWith(const TEString& prefix) const
{
    return compare(0, prefix.size(), prefix) == 0;
}

bool TEString::endsWith(const TEString& suffix) const
{
    return size() >= suffix.size() && compare(size() - suffix.size(), suffix.size(), suffix) == 0;
}

std::vector<TEString> TEString::split(const TEString& separator) const
{
    std::vector<TEString> parts;
    if (separator.empty()) {
        parts.push_back(*this);
        return parts;
    }
    size_t start = 0;
    size_t pos;
    while ((pos = find(separator, start)) != npos) {
        parts.emplace_back(substr(start, pos - start));
        start = pos + separator.size();
    }
    parts.emplace_back(substr(start));
    return parts;
}

int TEString::CompareNoCase(const TEString& other) const
{
    return toQString().compare(other.toQString(), Qt::CaseInsensitive);
}

int TEString::compareTo(const TEString& other) const
{
    const int c = compare(other);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

double TEString::ToDouble(bool* ok) const
{
    bool parsed = false;
    const double value = toQString().trimmed().toDouble(&parsed);
    if (ok)
        *ok = parsed;
    return parsed ? value : 0.0;
}

} // namespace TZObjects
