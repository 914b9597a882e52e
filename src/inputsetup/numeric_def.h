// Reading the numeric controls' definitions: ranges, positions and the reports of
// definitions a control cannot use.
#pragma once
#include <cstdint>
#include "zxhost/string.h"
#include "zxhost/variant.h"

namespace zxis {

/// Reports an unusable definition of property `name` (source "inputsetupcontrols").
void ReportDefinition(const wchar_t* condition, const CZxStringW& name, int line);
/// A finite number held in member `key` (bool, integer or double); false when missing or not one.
bool Number(const CZxVariant& def, const wchar_t* key, double& out);
/// min, max and step from the three members; reports and returns false for a
/// missing or non-finite member, a step of 0 or below, or min above max.
bool ReadRange(const CZxVariant& def, const wchar_t* minKey, const wchar_t* maxKey, const wchar_t* stepKey,
               const CZxStringW& name, double& min, double& max, double& step);
/// trunc(x + 0.5) limited to 0 .. limit (NaN gives 0), so a position never
/// overflows whatever the value.
int32_t Position(double x, int32_t limit = INT32_MAX);
/// Half away from zero, saturated to 32 bits (NaN gives 0).
int32_t RoundInt(double x);
/// The value of a linear position: min + position * step, at most max. A maximum
/// off the step grid is reached by the last position (whose range was rounded
/// up to it), so no position writes above the definition's limit.
double StepValue(int32_t position, double min, double step, double max);

} // namespace zxis
