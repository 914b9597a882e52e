// Wide string of the host's system library.
#pragma once
#include <cstdarg>
#include <string>
#include "zxhost/export.h"

/// A wide string that owns its text. `Format` takes Windows-convention printf
/// formats: in them %s and %c take wide arguments on every toolchain.
class ZX_HOST_API CZxStringW {
public:
    /// An empty string.
    CZxStringW() = default;
    /// A copy of `s` (null gives the empty string).
    CZxStringW(const wchar_t* s) : m_str(s ? s : L"") {}
    /// A copy of `s`.
    CZxStringW(const std::wstring& s) : m_str(s) {}

    /// Replaces the text with a copy of `s` (null gives the empty string).
    CZxStringW& operator=(const wchar_t* s) { m_str = s ? s : L""; return *this; }
    /// Appends `s`.
    CZxStringW& operator+=(const CZxStringW& s) { m_str += s.m_str; return *this; }

    /// Replaces the text with the formatted result; returns the new length.
    int Format(const wchar_t* fmt, ...);
    /// Format with a va_list.
    int FormatV(const wchar_t* fmt, va_list args);
    /// Formats into a new string.
    static CZxStringW Formatted(const wchar_t* fmt, ...);

    /// Case-sensitive comparison: <0, 0 or >0.
    int Compare(const wchar_t* other) const;
    /// Case-sensitive comparison with `other`: <0, 0 or >0.
    int Compare(const CZxStringW& other) const { return Compare(other.GetString()); }

    /// The terminated text; valid until the string changes.
    const wchar_t* GetString() const { return m_str.c_str(); }
    /// The terminated text, as GetString.
    operator const wchar_t*() const { return m_str.c_str(); }
    /// Number of characters.
    int GetLength() const { return static_cast<int>(m_str.size()); }
    /// True for the empty string.
    bool IsEmpty() const { return m_str.empty(); }
    /// Makes the string empty.
    void Empty() { m_str.clear(); }
    /// The text as a standard string.
    const std::wstring& Std() const { return m_str; }

    /// Copies at most cchDest-1 characters and always terminates (cchDest > 0).
    void CopyTo(wchar_t* dest, size_t cchDest) const;

    /// Same text.
    bool operator==(const CZxStringW& o) const { return m_str == o.m_str; }
    /// Different text.
    bool operator!=(const CZxStringW& o) const { return m_str != o.m_str; }
    /// Lexicographic order (for sorted containers).
    bool operator<(const CZxStringW& o) const { return m_str < o.m_str; }

private:
    std::wstring m_str;
};

/// Rewrites a Windows-convention wide format for the C library's wide printf:
/// plain %s / %c become %ls / %lc, %hs / %hc become narrow. Exposed for tests.
ZX_HOST_API std::wstring ZX_PortableWideFormat(const wchar_t* fmt);
