// The parts of the numeric controls that need no window: the decimals rule, the
// exposure text and the reading of range definitions.
#include <cmath>

#include "inputsetup/numeric_def.h"
#include "zx/iscontrols_numeric.h"
#include "zxhost/system.h"

int32_t ZX_DecimalsFromStep(double step)
{
    if (!std::isfinite(step))
        return 0;
    // Whole thousandths as a double, so a huge value cannot overflow an integer.
    const double k = std::trunc(std::fabs(step) * 1000.0 + 0.5);
    if (std::fmod(k, 10.0) != 0)
        return 3;
    if (std::fmod(k, 100.0) != 0)
        return 2;
    if (std::fmod(k, 1000.0) != 0)
        return 1;
    return 0;
}

CZxStringW ZX_ExposureMsToText(double ms)
{
    if (ms < 1)
        return CZxStringW::Formatted(L"%.0f \u00b5s", ms * 1000);
    if (ms < 10)
        return CZxStringW::Formatted(L"%.1f ms", ms);
    if (ms < 1000)
        return CZxStringW::Formatted(L"%.0f ms", ms);
    return CZxStringW::Formatted(L"%.2lf s", ms / 1000);
}

namespace zxis {

void ReportDefinition(const wchar_t* condition, const CZxStringW& name, int line)
{
    DiagAssertW(condition, name.GetString(), 0, L"inputsetupcontrols", line);
}

bool Number(const CZxVariant& def, const wchar_t* key, double& out)
{
    const CZxVariant* v = def.IsRecord() ? def.Search(key) : nullptr;
    if (!v)
        return false;
    const auto k = v->GetKind();
    if (k != CZxVariant::EKind::Int32 && k != CZxVariant::EKind::Double && k != CZxVariant::EKind::Bool)
        return false;
    out = v->GetDouble();
    return std::isfinite(out);
}

bool ReadRange(const CZxVariant& def, const wchar_t* minKey, const wchar_t* maxKey, const wchar_t* stepKey,
               const CZxStringW& name, double& min, double& max, double& step)
{
    const wchar_t* keys[] = {minKey, maxKey, stepKey};
    double* out[] = {&min, &max, &step};
    for (int i = 0; i < 3; ++i) {
        if (!Number(def, keys[i], *out[i])) {
            ReportDefinition((std::wstring(keys[i]) + L" missing or no finite number").c_str(), name, __LINE__);
            return false;
        }
    }
    if (step <= 0) {
        ReportDefinition((std::wstring(stepKey) + L"<=0").c_str(), name, __LINE__);
        return false;
    }
    if (min > max) {
        ReportDefinition((std::wstring(minKey) + L">" + maxKey).c_str(), name, __LINE__);
        return false;
    }
    return true;
}

int32_t Position(double x, int32_t limit)
{
    const double p = std::trunc(x + 0.5);
    if (!(p > 0))
        return 0;
    return p >= double(limit) ? limit : static_cast<int32_t>(p);
}

double StepValue(int32_t position, double min, double step, double max)
{
    const double v = min + double(position) * step;
    return v > max ? max : v;
}

int32_t RoundInt(double x)
{
    const double r = std::trunc(x + (x < 0 ? -0.5 : 0.5));
    if (!(r > -2147483649.0 && r < 2147483648.0))
        return r > 0 ? INT32_MAX : (r < 0 ? INT32_MIN : 0);
    return static_cast<int32_t>(r);
}

} // namespace zxis
