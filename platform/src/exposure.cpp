// Exposure times as the user reads and types them: µs, ms or s by size, and
// "1 frame" for the one-frame exposure.
#include "zxhost/exposure.h"

#include <cmath>
#include <cwchar>
#include <cwctype>
#include <string>

namespace {

const wchar_t kFrame[] = L"frame";

// "%.3f" without trailing zeros (and without a trailing point).
std::wstring Trimmed3(double v)
{
    std::wstring s = CZxStringW::Formatted(L"%.3f", v).Std();
    if (s.find(L'.') != std::wstring::npos) {
        while (!s.empty() && s.back() == L'0')
            s.pop_back();
        if (!s.empty() && s.back() == L'.')
            s.pop_back();
    }
    if (s == L"-0")
        s = L"0";
    return s;
}

bool IsOneFrame(double value, double oneFrameExposure)
{
    return oneFrameExposure > 0.0 &&
           std::fabs(value - oneFrameExposure) <= 1e-9 * (oneFrameExposure > 1.0 ? oneFrameExposure : 1.0);
}

std::wstring Lower(std::wstring s)
{
    for (auto& c : s)
        c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    return s;
}

// Parses a time in milliseconds; false when the text is no time.
bool ParseExposure(const wchar_t* text, double oneFrameExposure, double& ms)
{
    if (!text)
        return false;
    std::wstring s(text);
    for (auto& c : s)
        if (c == L',')
            c = L'.';
    const wchar_t* begin = s.c_str();
    wchar_t* end = nullptr;
    const double n = std::wcstod(begin, &end);
    if (end == begin || !std::isfinite(n))
        return false;
    std::wstring unit(end);
    while (!unit.empty() && std::iswspace(static_cast<wint_t>(unit.back())))
        unit.pop_back();
    size_t lead = 0;
    while (lead < unit.size() && std::iswspace(static_cast<wint_t>(unit[lead])))
        ++lead;
    unit = Lower(unit.substr(lead));

    if (unit.empty() || unit == L"ms")
        ms = n;
    else if (unit == L"us" || unit == L"\u00b5s" || unit == L"\u03bcs")
        ms = n / 1000.0;
    else if (unit == L"s")
        ms = n * 1000.0;
    else if ((unit == kFrame || unit == L"frames") && oneFrameExposure > 0.0)
        ms = n * oneFrameExposure;
    else
        return false;
    return std::isfinite(ms);
}

} // namespace

void ZX_ExposureToText(CZxStringW& text, double value, double oneFrameExposure)
{
    text = ZX_ExposureToText(value, oneFrameExposure);
}

CZxStringW ZX_ExposureToText(double value, double oneFrameExposure)
{
    if (IsOneFrame(value, oneFrameExposure))
        return CZxStringW(std::wstring(L"1 ") + kFrame);
    // The unit is chosen after rounding, so 999.9996 µs reads "1 ms", not "1000 µs".
    std::wstring n = Trimmed3(value * 1000.0);
    if (std::fabs(std::wcstod(n.c_str(), nullptr)) < 1000.0)
        return CZxStringW(n + L" \u00b5s");
    n = Trimmed3(value);
    if (std::fabs(std::wcstod(n.c_str(), nullptr)) < 1000.0)
        return CZxStringW(n + L" ms");
    return CZxStringW(Trimmed3(value / 1000.0) + L" s");
}

double ZX_TextToExposure(const wchar_t* text, double oneFrameExposure, double minimum, double maximum, bool* ok)
{
    double ms = 0.0;
    const bool parsed = ParseExposure(text, oneFrameExposure, ms);
    if (ok)
        *ok = parsed;
    if (!parsed)
        return minimum;
    if (ms < minimum)
        ms = minimum;
    if (ms > maximum)
        ms = maximum;
    return ms;
}
