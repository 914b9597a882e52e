// Helpers shared by the choice controls' Windows sources.
#pragma once
#include <windows.h>

#include "inputsetup/wincontrols.h"
#include "zx/iscontrols_choice.h"

namespace zxchoice {

/// Source name of the controls' texts and assertions.
extern const char kSource[];
extern const wchar_t kSourceW[];

using zxwin::H;
using zxwin::Z;

/// Whether a WM_COMMAND comes from item `id` with notification `code`.
inline bool IsCommand(uint32_t message, ZxWParam wParam, int32_t id, WORD code)
{
    return message == WM_COMMAND && LOWORD(wParam) == static_cast<WORD>(id) && HIWORD(wParam) == code;
}

inline void SetResult(ZxLResult* result)
{
    if (result)
        *result = 0;
}

/// A value as the text a list compares it with: strings as they are, numbers
/// "%d" / "%f", booleans "true" / "false".
CZxStringW ValueText(const CZxVariant& v);

/// The list member `member` of the definition as an array; null (reported) when
/// it is missing, no array or empty.
const CZxVariant* DefinitionList(const CZxVariant& def, const wchar_t* member);

/// Any list element as an entry: a text, a number or a record with "m_wstrText"
/// and one of "m_iValue", "m_dValue", "m_wstrValue" (its value). False (reported)
/// for anything else.
bool AnyEntry(const CZxVariant& element, SZxISChoiceEntry& entry);

/// Reads the control's definition and turns the elements of `member` into
/// entries with AnyEntry. The provider's status, or -9 for a bad list.
int32_t ReadAnyEntries(CZxISControl& control, CZxISChoiceEntries& entries);

/// The index of the driver's value among the control's list entries, -1 when it
/// is none of them or cannot be read; `status` is the provider's or ReadAnyEntries'.
int32_t CurrentEntry(CZxISControl& control, int32_t& status);

/// The last entry whose value equals `value` (as a variant, or as text), -1 for none.
int32_t FindLastEntry(const CZxISChoiceEntries& entries, const CZxVariant& value);

/// EnableWindow / ShowWindow on the items `ids` (count of them) of `dialog`.
void EnableItems(ZxHWnd dialog, const int32_t* ids, int count, bool enable);
void ShowItems(ZxHWnd dialog, const int32_t* ids, int count, bool show);

} // namespace zxchoice
