#include "zxhost/string.h"

#include <cwchar>
#include <vector>

std::wstring ZX_PortableWideFormat(const wchar_t* fmt)
{
    std::wstring out;
    if (!fmt)
        return out;
    for (const wchar_t* p = fmt; *p; ++p) {
        out += *p;
        if (*p != L'%')
            continue;
        if (p[1] == L'%') {
            out += *++p;
            continue;
        }
        // Copy flags, width, precision and length up to the conversion letter.
        ++p;
        bool hasLength = false, narrow = false;
        while (*p && !std::wcschr(L"diouxXeEfFgGaAcspn", *p)) {
            if (*p == L'h' && (p[1] == L's' || p[1] == L'c')) {
                narrow = true;
                ++p;
                continue;
            }
            if (std::wcschr(L"lLqjzt", *p) || *p == L'I')
                hasLength = true;
            out += *p++;
        }
        if (!*p)
            break;
        if ((*p == L's' || *p == L'c') && !hasLength && !narrow)
            out += L'l';
        else if ((*p == L's' || *p == L'c') && narrow)
            out += L'h';
        out += *p;
    }
    return out;
}

int CZxStringW::FormatV(const wchar_t* fmt, va_list args)
{
    const std::wstring f = ZX_PortableWideFormat(fmt);
    std::vector<wchar_t> buf(256);
    for (;;) {
        va_list copy;
        va_copy(copy, args);
        const int n = std::vswprintf(buf.data(), buf.size(), f.c_str(), copy);
        va_end(copy);
        if (n >= 0 && static_cast<size_t>(n) < buf.size()) {
            m_str.assign(buf.data(), static_cast<size_t>(n));
            return n;
        }
        // vswprintf reports truncation as a negative result; grow and retry, with a ceiling
        // so that an unformattable argument cannot grow without bound.
        if (buf.size() >= (1u << 24)) {
            m_str.clear();
            return -1;
        }
        buf.resize(buf.size() * 4);
    }
}

int CZxStringW::Format(const wchar_t* fmt, ...)
{
    va_list args;
    va_start(args, fmt);
    const int n = FormatV(fmt, args);
    va_end(args);
    return n;
}

CZxStringW CZxStringW::Formatted(const wchar_t* fmt, ...)
{
    CZxStringW s;
    va_list args;
    va_start(args, fmt);
    s.FormatV(fmt, args);
    va_end(args);
    return s;
}

int CZxStringW::Compare(const wchar_t* other) const
{
    return m_str.compare(other ? other : L"");
}

void CZxStringW::CopyTo(wchar_t* dest, size_t cchDest) const
{
    if (!dest || cchDest == 0)
        return;
    const size_t n = m_str.size() < cchDest - 1 ? m_str.size() : cchDest - 1;
    m_str.copy(dest, n);
    dest[n] = L'\0';
}
