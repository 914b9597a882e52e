// Temperature texts of the free-entry temperature combo.
#include <cmath>
#include <cwchar>
#include "zx/iscontrols_freecombo.h"

void ZX_TemperatureToText(CZxStringW& text, double value, int32_t decimals)
{
    if (decimals >= 0)
        text.Format(L"%.*f", static_cast<int>(decimals), value);
    else
        text.Format(L"%g \u00b0C", value);
}

double ZX_TextToTemperature(const wchar_t* text, double minimum, double maximum)
{
    double value = text ? std::wcstod(text, nullptr) : 0.0;
    // NaN would pass both clamps and reach the driver: it counts as no number.
    if (std::isnan(value))
        value = 0.0;
    if (value < minimum)
        value = minimum;
    if (value > maximum)
        value = maximum;
    return value;
}
