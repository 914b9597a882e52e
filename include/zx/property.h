// Typed property values: one variant (and, for ranges and lists, the property's
// definition) turned into a plain value plus its display text.
#pragma once
#include <cstdint>
#include "zx/export.h"
#include "zxhost/provider.h"
#include "zxhost/string.h"
#include "zxhost/variant.h"

// Every Set returns true when the value was taken and is valid. On false the
// fields may already hold what was parsed (each class says what); a refusal is
// reported as a diagnostic assertion of source "property". Callers read the
// fields directly.

/// From "bool", "zx_int32" (non-zero is true) or "CZxStringW" ("true"/"1",
/// "false"/"0", compared case-sensitively).
/// @note Plain copyable records, usable from any thread; one object is not
///       shared between threads while Set runs.
class ZX_API CZxBoolPropertyValue {
public:
    /// The value read by the last Set (false by default).
    bool m_bValue = false;
    /// "true" or "false" after a typed set; the given string after a text set.
    CZxStringW m_wstrText;

    /// Reads `v`. True when the value was taken; false (value unchanged, text keeps
    /// a given string) for an unknown text or any other run type, with an assertion.
    bool Set(const CZxVariant& v);
};

/// From "zx_int32", or any "CZxStringW" read as a decimal number unchecked.
class ZX_API CZxInt32PropertyValue {
public:
    /// The value read by the last Set (0 by default).
    int32_t m_iValue = 0;
    /// "%d" of the value after a "zx_int32" set; the given string after a text set.
    CZxStringW m_wstrText;

    /// Reads `v`. True for "zx_int32" and for any "CZxStringW" (read as a decimal
    /// integer, unchecked: no number gives 0); false with an assertion otherwise.
    bool Set(const CZxVariant& v);
};

/// From "double", or any "CZxStringW" read as a number unchecked (no number gives 0.0).
class ZX_API CZxDoublePropertyValue {
public:
    /// The value read by the last Set (0.0 by default).
    double m_dValue = 0.0;
    /// "%f" of the value after a "double" set; the given string after a text set.
    CZxStringW m_wstrText;

    /// Reads `v`. True for "double" and for any "CZxStringW" (read as a number,
    /// unchecked); false with an assertion for other run types.
    bool Set(const CZxVariant& v);
};

/// From "CZxStringW" only; the text is the value.
class ZX_API CZxStringWPropertyValue {
public:
    /// The string itself, which is the value.
    CZxStringW m_wstrText;

    /// Takes the string of a "CZxStringW" variant and returns true; false with an
    /// assertion for any other run type (text unchanged).
    bool Set(const CZxVariant& v);
};

/// Clamped to "m_iMin".."m_iMax" of an "RZxRangeInt32" definition; the text is
/// always the clamped value.
class ZX_API CZxRangeInt32PropertyValue {
public:
    /// The value, clamped to the definition's range.
    int32_t m_iValue = 0;
    /// "%d" of the clamped value, whichever run type the value came in.
    CZxStringW m_wstrText;

    /// Reads `v` ("zx_int32", or "CZxStringW" holding one decimal integer) and
    /// clamps it to "m_iMin".."m_iMax" of `desc`'s definition. False with an
    /// assertion when the definition is no "RZxRangeInt32", the text holds no
    /// integer, or `v` has another run type.
    bool Set(const SZxGrabberPropertyDesc01& desc, const CZxVariant& v);
};

/// Clamped to "m_dMin".."m_dMax" of an "RZxRangeDouble" definition (or its list
/// and exposure variants). Set from text, the text is kept as given even when
/// the value was clamped.
class ZX_API CZxRangeDoublePropertyValue {
public:
    /// The value, clamped to the definition's range.
    double m_dValue = 0.0;
    /// "%f" of the clamped value after a "double" set; the given string (unclamped)
    /// after a text set.
    CZxStringW m_wstrText;

    /// Reads `v` ("double", or "CZxStringW" holding one number) and clamps it to
    /// "m_dMin".."m_dMax" of `desc`'s definition. False with an assertion when the
    /// definition is no double range, the text holds no number, or `v` has another
    /// run type.
    bool Set(const SZxGrabberPropertyDesc01& desc, const CZxVariant& v);
};

/// A member of the "m_list" of an "RZxList" definition. A value that is not in
/// the list is kept all the same, and Set returns false.
class ZX_API CZxListInt32PropertyValue {
public:
    /// The value as given, also when it is not in the list.
    int32_t m_iValue = 0;
    /// "%d" of the value after a "zx_int32" set; the given string after a text set.
    CZxStringW m_wstrText;

    /// Reads `v` ("zx_int32" or a decimal "CZxStringW") and looks it up in the
    /// "m_list" of `desc`'s "RZxList" definition. True when a list element equals
    /// it; false when none does (value kept), and false with an assertion for a
    /// definition that is no list, a missing list, an unreadable text or another
    /// run type.
    bool Set(const SZxGrabberPropertyDesc01& desc, const CZxVariant& v);
};

/// An entry of an "RZxList" whose elements are records of "m_iValue" and
/// "m_wstrText": set by value (the text becomes the label) or by label (the
/// value becomes the entry's). A number that is no label is parsed into the
/// value and Set returns false.
class ZX_API CZxListTextInt32PropertyValue {
public:
    /// The entry's "m_iValue", or the number parsed from a text that is no label.
    int32_t m_iValue = 0;
    /// The entry's label ("m_wstrText"); "%d" of the value when no entry has it; the
    /// given string after a text set.
    CZxStringW m_wstrText;

    /// Reads `v` by value ("zx_int32") or by label ("CZxStringW"). True when an
    /// entry matched; false when none did, and false with an assertion for a
    /// definition that is no list, an entry without "m_iValue" or "m_wstrText", or
    /// another run type.
    bool Set(const SZxGrabberPropertyDesc01& desc, const CZxVariant& v);
};
