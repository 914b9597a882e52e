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
class ZX_API CZxBoolPropertyValue {
public:
    bool m_bValue = false;
    CZxStringW m_wstrText;

    bool Set(const CZxVariant& v);
};

/// From "zx_int32", or any "CZxStringW" read as a decimal number unchecked.
class ZX_API CZxInt32PropertyValue {
public:
    int32_t m_iValue = 0;
    CZxStringW m_wstrText;

    bool Set(const CZxVariant& v);
};

/// From "double", or any "CZxStringW" read as a number unchecked (no number gives 0.0).
class ZX_API CZxDoublePropertyValue {
public:
    double m_dValue = 0.0;
    CZxStringW m_wstrText;

    bool Set(const CZxVariant& v);
};

/// From "CZxStringW" only; the text is the value.
class ZX_API CZxStringWPropertyValue {
public:
    CZxStringW m_wstrText;

    bool Set(const CZxVariant& v);
};

/// Clamped to "m_iMin".."m_iMax" of an "RZxRangeInt32" definition; the text is
/// always the clamped value.
class ZX_API CZxRangeInt32PropertyValue {
public:
    int32_t m_iValue = 0;
    CZxStringW m_wstrText;

    bool Set(const SZxGrabberPropertyDesc01& desc, const CZxVariant& v);
};

/// Clamped to "m_dMin".."m_dMax" of an "RZxRangeDouble" definition (or its list
/// and exposure variants). Set from text, the text is kept as given even when
/// the value was clamped.
class ZX_API CZxRangeDoublePropertyValue {
public:
    double m_dValue = 0.0;
    CZxStringW m_wstrText;

    bool Set(const SZxGrabberPropertyDesc01& desc, const CZxVariant& v);
};

/// A member of the "m_list" of an "RZxList" definition. A value that is not in
/// the list is kept all the same, and Set returns false.
class ZX_API CZxListInt32PropertyValue {
public:
    int32_t m_iValue = 0;
    CZxStringW m_wstrText;

    bool Set(const SZxGrabberPropertyDesc01& desc, const CZxVariant& v);
};

/// An entry of an "RZxList" whose elements are records of "m_iValue" and
/// "m_wstrText": set by value (the text becomes the label) or by label (the
/// value becomes the entry's). A number that is no label is parsed into the
/// value and Set returns false.
class ZX_API CZxListTextInt32PropertyValue {
public:
    int32_t m_iValue = 0;
    CZxStringW m_wstrText;

    bool Set(const SZxGrabberPropertyDesc01& desc, const CZxVariant& v);
};
