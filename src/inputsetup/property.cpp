#include "zx/property.h"

#include <cerrno>
#include <climits>
#include <cmath>
#include <cwchar>

#include "zxhost/system.h"

namespace {

bool IsType(const CZxVariant& v, const wchar_t* runType)
{
    return v.GetRunType() == CZxVariantRunType(runType);
}

// Reads one decimal integer after optional blanks and sign (trailing text is
// ignored, as a one-item scan does). Out-of-range numbers saturate.
bool ScanInt32(const wchar_t* text, int32_t& out)
{
    if (!text)
        return false;
    wchar_t* end = nullptr;
    errno = 0;
    const long long n = std::wcstoll(text, &end, 10);
    if (end == text)
        return false;
    out = n > INT32_MAX ? INT32_MAX : (n < INT32_MIN ? INT32_MIN : static_cast<int32_t>(n));
    return true;
}

// Reads one floating-point number the way a one-item scan does.
bool ScanDouble(const wchar_t* text, double& out)
{
    if (!text)
        return false;
    wchar_t* end = nullptr;
    const double d = std::wcstod(text, &end);
    if (end == text)
        return false;
    out = d;
    return true;
}

// Unchecked conversion: text that is no number gives 0.
int32_t ToInt32Unchecked(const wchar_t* text)
{
    int32_t v = 0;
    return ScanInt32(text, v) ? v : 0;
}

double ToDoubleUnchecked(const wchar_t* text)
{
    return text ? std::wcstod(text, nullptr) : 0.0;
}

double ClampDouble(double x, double min, double max)
{
    return min > x ? min : (x > max ? max : x);
}

int32_t ClampInt32(int32_t x, int32_t min, int32_t max)
{
    if (min <= x && x <= max)
        return x;
    return x < min ? min : max;
}

} // namespace

bool CZxBoolPropertyValue::Set(const CZxVariant& v)
{
    if (IsType(v, n20("bool")) || IsType(v, n20("zx_int32"))) {
        m_bValue = IsType(v, n20("bool")) ? v.GetBool() : v.GetZx_int32() != 0;
        m_wstrText = m_bValue ? L"true" : L"false";
        return true;
    }
    if (IsType(v, n20("CZxStringW"))) {
        m_wstrText = v.GetCZxStringW();
        if (m_wstrText.Compare(L"true") == 0 || m_wstrText.Compare(L"1") == 0) {
            m_bValue = true;
            return true;
        }
        if (m_wstrText.Compare(L"false") == 0 || m_wstrText.Compare(L"0") == 0) {
            m_bValue = false;
            return true;
        }
        ZX_DIAG_UNEXPECTED(L"property");
        return false;
    }
    ZX_DIAG_UNEXPECTED(L"property");
    return false;
}

bool CZxInt32PropertyValue::Set(const CZxVariant& v)
{
    if (IsType(v, n20("zx_int32"))) {
        m_iValue = v.GetZx_int32();
        m_wstrText.Format(L"%d", m_iValue);
        return true;
    }
    if (IsType(v, n20("CZxStringW"))) {
        m_wstrText = v.GetCZxStringW();
        m_iValue = ToInt32Unchecked(m_wstrText);
        return true;
    }
    ZX_DIAG_UNEXPECTED(L"property");
    return false;
}

bool CZxDoublePropertyValue::Set(const CZxVariant& v)
{
    if (IsType(v, n20("double"))) {
        m_dValue = v.GetDouble();
        m_wstrText.Format(L"%f", m_dValue);
        return true;
    }
    if (IsType(v, n20("CZxStringW"))) {
        m_wstrText = v.GetCZxStringW();
        m_dValue = ToDoubleUnchecked(m_wstrText);
        return true;
    }
    ZX_DIAG_UNEXPECTED(L"property");
    return false;
}

bool CZxStringWPropertyValue::Set(const CZxVariant& v)
{
    if (IsType(v, n20("CZxStringW"))) {
        m_wstrText = v.GetCZxStringW();
        return true;
    }
    ZX_DIAG_UNEXPECTED(L"property");
    return false;
}

bool CZxRangeDoublePropertyValue::Set(const SZxGrabberPropertyDesc01& desc, const CZxVariant& v)
{
    if (ZX_DIAG_FAIL_IF(desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20("RZxRangeDouble")) && desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20("RZxRangeDoubleList")) && desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20("RZxRangeDoubleExposure")), L"property"))
        return false;
    // A definition without its limits (or with a NaN one) would clamp every value
    // to a silent 0 or not at all: refuse it.
    const CZxVariant* varMin = desc.varValDefinition.Search(n20("m_dMin"));
    const CZxVariant* varMax = desc.varValDefinition.Search(n20("m_dMax"));
    if (ZX_DIAG_FAIL_IF(varMin==NULL || varMax==NULL, L"property") ||
        ZX_DIAG_FAIL_IF(std::isnan(varMin->GetDouble()) || std::isnan(varMax->GetDouble()), L"property"))
        return false;
    const double min = varMin->GetDouble();
    const double max = varMax->GetDouble();

    if (IsType(v, n20("double"))) {
        const double x = v.GetDouble();
        // NaN passes every comparison of the clamp; refuse it instead of storing it.
        if (std::isnan(x)) {
            ZX_DIAG_UNEXPECTED(L"property");
            return false;
        }
        m_dValue = ClampDouble(x, min, max);
        m_wstrText.Format(L"%f", m_dValue);
        return true;
    }
    if (IsType(v, n20("CZxStringW"))) {
        m_wstrText = v.GetCZxStringW();
        double x = 0.0;
        if (!ScanDouble(m_wstrText, x) || std::isnan(x)) {
            ZX_DIAG_UNEXPECTED(L"property");
            return false;
        }
        // Deliberate: only the number is clamped; the text stays as the user typed it.
        m_dValue = ClampDouble(x, min, max);
        return true;
    }
    ZX_DIAG_UNEXPECTED(L"property");
    return false;
}

bool CZxRangeInt32PropertyValue::Set(const SZxGrabberPropertyDesc01& desc, const CZxVariant& v)
{
    if (ZX_DIAG_FAIL_IF(desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20("RZxRangeInt32")), L"property"))
        return false;
    const CZxVariant* varMin = desc.varValDefinition.Search(n20("m_iMin"));
    const CZxVariant* varMax = desc.varValDefinition.Search(n20("m_iMax"));
    if (ZX_DIAG_FAIL_IF(varMin==NULL || varMax==NULL, L"property"))
        return false;
    const int32_t min = varMin->GetZx_int32();
    const int32_t max = varMax->GetZx_int32();

    int32_t x = 0;
    if (IsType(v, n20("zx_int32"))) {
        x = v.GetZx_int32();
    } else if (IsType(v, n20("CZxStringW"))) {
        m_wstrText = v.GetCZxStringW();
        if (!ScanInt32(m_wstrText, x)) {
            ZX_DIAG_UNEXPECTED(L"property");
            return false;
        }
    } else {
        ZX_DIAG_UNEXPECTED(L"property");
        return false;
    }
    m_iValue = ClampInt32(x, min, max);
    m_wstrText.Format(L"%d", m_iValue);
    return true;
}

bool CZxListInt32PropertyValue::Set(const SZxGrabberPropertyDesc01& desc, const CZxVariant& v)
{
    if (ZX_DIAG_FAIL_IF(desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20("RZxList")), L"property"))
        return false;
    const CZxVariant* varList = &desc.varValDefinition[n20("m_list")];
    if (ZX_DIAG_FAIL_IF(varList->IsNull(), L"property"))
        return false;

    if (IsType(v, n20("zx_int32"))) {
        m_iValue = v.GetZx_int32();
        m_wstrText.Format(L"%d", m_iValue);
    } else if (IsType(v, n20("CZxStringW"))) {
        m_wstrText = v.GetCZxStringW();
        if (!ScanInt32(m_wstrText, m_iValue)) {
            ZX_DIAG_UNEXPECTED(L"property");
            return false;
        }
    } else {
        ZX_DIAG_UNEXPECTED(L"property");
        return false;
    }
    // Deliberate: a value outside the list is kept; only the result says so.
    for (int i = 0; i < varList->GetCount(); ++i)
        if ((*varList)[i].GetZx_int32() == m_iValue)
            return true;
    return false;
}

bool CZxListTextInt32PropertyValue::Set(const SZxGrabberPropertyDesc01& desc, const CZxVariant& v)
{
    if (ZX_DIAG_FAIL_IF(desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20("RZxList")), L"property"))
        return false;
    const CZxVariant* varList = &desc.varValDefinition[n20("m_list")];
    if (ZX_DIAG_FAIL_IF(varList->IsNull(), L"property"))
        return false;

    if (IsType(v, n20("zx_int32"))) {
        m_iValue = v.GetZx_int32();
        for (int i = 0; i < varList->GetCount(); ++i) {
            const CZxVariant* varValue = (*varList)[i].Search(n20("m_iValue"));
            if (ZX_DIAG_FAIL_IF(varValue==NULL, L"property"))
                return false;
            if (varValue->GetZx_int32() != m_iValue)
                continue;
            const CZxVariant* varText = (*varList)[i].Search(n20("m_wstrText"));
            if (ZX_DIAG_FAIL_IF(varText==NULL, L"property"))
                return false;
            m_wstrText = varText->GetCZxStringW();
            return true;
        }
        m_wstrText.Format(L"%d", m_iValue);
        return false;
    }
    if (IsType(v, n20("CZxStringW"))) {
        m_wstrText = v.GetCZxStringW();
        for (int i = 0; i < varList->GetCount(); ++i) {
            const CZxVariant* varText = (*varList)[i].Search(n20("m_wstrText"));
            if (ZX_DIAG_FAIL_IF(varText==NULL, L"property"))
                return false;
            if (varText->GetCZxStringW() != m_wstrText)
                continue;
            const CZxVariant* varValue = (*varList)[i].Search(n20("m_iValue"));
            if (ZX_DIAG_FAIL_IF(varValue==NULL, L"property"))
                return false;
            m_iValue = varValue->GetZx_int32();
            return true;
        }
        // Deliberate: a number that is no label is still taken as the value, but
        // the result says it is not one of the list's entries.
        if (!ScanInt32(m_wstrText, m_iValue))
            ZX_DIAG_UNEXPECTED(L"property");
        return false;
    }
    ZX_DIAG_UNEXPECTED(L"property");
    return false;
}
