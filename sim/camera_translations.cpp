// The simulated camera's translation table: a German dialog, so that tests and
// screenshots can tell translated labels from untranslated ones.
#include <cwchar>
#include <string>

#include "camera_internal.h"

CZxStringW CZxSimCamera::Translate(const wchar_t* text, const wchar_t*)
{
    static const struct {
        const wchar_t* from;
        const wchar_t* to;
    } kTable[] = {
        {L"Free Run", L"Freilauf"},          {L"Software", L"Softwaretrigger"},
        {L"Hardware", L"Hardwaretrigger"},   {L"Low Noise", L"Rauscharm"},
        {L"Standard", L"Normal"},            {L"High Speed", L"Schnell"},
        {L"Full Sensor", L"Ganzer Sensor"},  {L"Center Half", L"Mittlere H\u00e4lfte"},
        {L"LED", L"Leuchtdiode"},            {L"Halogen", L"Halogenlampe"},
        {L"Daylight", L"Tageslicht"},        {L"Open", L"Offen"},
        {L"Red", L"Rot"},                    {L"Green", L"Gr\u00fcn"},
        {L"Blue", L"Blau"},                  {L"Closed", L"Geschlossen"},
        {L"No Binning", L"Ohne Binning"},    {L"Binning %dx%d", L"%dx%d-Binning"},
        {L"Cancel", L"Abbrechen"},
    };
    if (!text)
        return CZxStringW();
    for (const auto& e : kTable)
        if (std::wcscmp(e.from, text) == 0)
            return e.to;
    // A plain decimal number is written with a decimal comma.
    const wchar_t* p = text + (*text == L'-');
    const wchar_t* digits = p;
    while (*p >= L'0' && *p <= L'9')
        ++p;
    if (p > digits && *p == L'.' && p[1] >= L'0' && p[1] <= L'9') {
        const wchar_t* q = p + 1;
        while (*q >= L'0' && *q <= L'9')
            ++q;
        if (*q == 0) {
            std::wstring german(text);
            german[size_t(p - text)] = L',';
            return german;
        }
    }
    return text;
}
