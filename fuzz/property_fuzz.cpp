// Any value against any definition, however malformed: every typed Set must
// answer (true, false or an assertion) without crashing, and exposure texts of
// any shape must parse to a number inside the given bounds.
#include <cmath>
#include <string>

#include "fuzz_input.h"
#include "zx/property.h"
#include "zxhost/exposure.h"
#include "zxhost/system.h"

namespace {

const wchar_t* const kRunTypes[] = {L"RZxRangeInt32", L"RZxRangeDouble", L"RZxRangeDoubleList",
                                    L"RZxRangeDoubleExposure", L"RZxList", L"", L"x"};
const wchar_t* const kMembers[] = {L"m_iMin", L"m_iMax", L"m_iStep", L"m_dMin", L"m_dMax", L"m_dStep",
                                   L"m_list", L"m_iValue", L"m_wstrText", L"m_dValue", L"m_wstrValue"};
const wchar_t* const kTexts[] = {L"", L"true", L"1", L"0", L"false", L"TRUE", L"12", L"-7", L"5e9",
                                 L"abc", L"1e400", L"nan", L" 3", L"2147483648", L"0x10", L"1,5 ms", L"250 \u00b5s"};
const double kDoubles[] = {0.0, -1.0, 10.0, 5e9, -5e9, 1e308, -1e308, NAN, INFINITY, 0.5};

CZxVariant MakeVariant(FuzzInput& in, int depth)
{
    switch (in.Take<uint8_t>() % (depth > 3 ? 5 : 7)) {
    case 0: return CZxVariant();
    case 1: return CZxVariant(bool(in.Take<uint8_t>() & 1));
    case 2: return CZxVariant(int(in.Take<int32_t>()));
    case 3: return CZxVariant(kDoubles[in.Take<uint8_t>() % 10]);
    case 4: return CZxVariant(kTexts[in.Take<uint8_t>() % 17]);
    case 5: {
        CZxVariant r = CZxVariant::MakeRecord(kRunTypes[in.Take<uint8_t>() % 7]);
        for (int n = in.Take<uint8_t>() % 5; n > 0; --n)
            r[kMembers[in.Take<uint8_t>() % 11]] = MakeVariant(in, depth + 1);
        return r;
    }
    default: {
        CZxVariant a = CZxVariant::MakeArray();
        for (int n = in.Take<uint8_t>() % 5; n > 0; --n)
            a.Add(MakeVariant(in, depth + 1));
        return a;
    }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const bool quiet = (ZX_SetDiagSink([](const wchar_t*, const wchar_t*, int, const wchar_t*, int) {}), true);
    (void)quiet;
    FuzzInput in(data, size);
    SZxGrabberPropertyDesc01 desc(L"fuzzed");
    desc.varValDefinition = MakeVariant(in, 0);
    const CZxVariant value = MakeVariant(in, 2);

    CZxBoolPropertyValue().Set(value);
    CZxInt32PropertyValue().Set(value);
    CZxDoublePropertyValue().Set(value);
    CZxStringWPropertyValue().Set(value);
    CZxRangeInt32PropertyValue().Set(desc, value);
    CZxRangeDoublePropertyValue().Set(desc, value);
    CZxListInt32PropertyValue().Set(desc, value);
    CZxListTextInt32PropertyValue().Set(desc, value);

    // Free-form exposure text from the remaining bytes.
    std::wstring text;
    for (size_t i = 0; i < in.RestSize() && i < 64; ++i)
        text += wchar_t(in.Rest()[i]);
    bool ok = false;
    const double e = ZX_TextToExposure(text.c_str(), 40.0, 0.01, 1000.0, &ok);
    if (!(e >= 0.01 && e <= 1000.0))
        __builtin_trap();
    ZX_ExposureToText(kDoubles[size % 10], -1.0);
    return 0;
}
