#pragma once

#include "TZObjectsExport.h"

#include <QString>

#include <string>
#include <vector>

namespace TZObjects {

// The object model's wide string. It is a std::wstring with the helpers the
// host code uses; conversions to and from QString and UTF-8 are lossless.
class TZOBJECTS_EXPORT TEString : public std::wstring
{
public:
    TEString() = default;
    TEString(const char* utf8);
    TEString(const wchar_t* text);
    TEString(const std::wstring& text) : std::wstring(text) {}
    TEString(std::wstring&& text) : std::wstring(std::move(text)) {}
    TEString(const QString& text);

    std::wstring toStdWString() const { return *this; }
    std::string toStdString() const { return toUTF8(); }
    std::string toUTF8() const;
    QString toQString() const;

    static TEString fromUtf8(const char* utf8);
    static TEString fromUtf8(const std::string& utf8);
    static TEString fromQString(const QString& text) { return TEString(text); }

    // printf-style formatting (narrow format, as in C); replaces the content
    // and returns the string itself.
    TEString& Format(const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;

    bool IsEmpty() const { return empty(); }
    int GetLength() const { return int(size()); }
    TEString Left(int count) const;
    TEString Mid(int first) const;
    TEString Mid(int first, int count) const;
    // Index of the last occurrence of ch, or -1.
    int ReverseFind(wchar_t ch) const;
    // Replaces every occurrence of from with to; returns the number replaced.
    int Replace(const TEString& from, const TEString& to);
    bool Contains(const TEString& part) const;
    bool startsWith(const TEString& prefix) const;
    bool endsWith(const TEString& suffix) const;
    std::vector<TEString> split(const TEString& separator) const;
    // Case-insensitive comparison: <0, 0 or >0.
    int CompareNoCase(const TEString& other) const;
    int compareTo(const TEString& other) const;
    // Parses a number (leading and trailing blanks allowed); 0 when the text
    // is not a number. ok, when given, tells which.
    double ToDouble(bool* ok = nullptr) const;
};

} // namespace TZObjects

template <>
struct std::hash<TZObjects::TEString>
{
    size_t operator()(const TZObjects::TEString& s) const noexcept
    {
        return std::hash<std::wstring>()(s);
    }
};
