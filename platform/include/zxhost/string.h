// Wide string of the host's system library.
#pragma once
#include <cstdarg>
#include <string>
#include "zxhost/export.h"

/// A wide string that owns its text. `Format` takes Windows-convention printf
/// formats: in them %s and %c take wide arguments on every toolchain.
class ZX_HOST_API CZxStringW {
public:
    CZxStringW() = default;
    CZxStringW(const wchar_t* s) : m_str(s ? s : L"") {}
    CZxStringW(const std::wstring& s) : m_str(s) {}

    CZxStringW& operator=(const wchar_t* s) { m_str = s ? s : L""; return *this; }
    CZxStringW& operator+=(const CZxStringW& s) { m_str += s.m_str; return *this; }

    /// Replaces the text with the formatted result; returns the new length.
    int Format(const wchar_t* fmt, ...);
    int FormatV(const wchar_t* fmt, va_list args);
    /// Formats into a new string.
    static CZxStringW Formatted(const wchar_t* fmt, ...);

    /// Case-sensitive comparison: <0, 0 or >0.
    int Compare(const wchar_t* other) const;
    int Compare(const CZxStringW& other) const { return Compare(other.GetString()); }

    const wchar_t* GetString() const { return m_str.c_str(); }
    operator const wchar_t*() const { return m_str.c_str(); }
    int GetLength() const { return static_cast<int>(m_str.size()); }
    bool IsEmpty() const { return m_str.empty(); }
    void Empty() { m_str.clear(); }
    const std::wstring& Std() const { return m_str; }

    /// Copies at most cchDest-1 characters and always terminates (cchDest > 0).
    void CopyTo(wchar_t* dest, size_t cchDest) const;

    bool operator==(const CZxStringW& o) const { return m_str == o.m_str; }
    bool operator!=(const CZxStringW& o) const { return m_str != o.m_str; }
    bool operator<(const CZxStringW& o) const { return m_str < o.m_str; }

private:
    std::wstring m_str;
};

/// Rewrites a Windows-convention wide format for the C library's wide printf:
/// plain %s / %c become %ls / %lc, %hs / %hc become narrow. Exposed for tests.
ZX_HOST_API std::wstring ZX_PortableWideFormat(const wchar_t* fmt);
