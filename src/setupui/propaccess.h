// Typed reads and writes of one provider property by name, shared by the
// wrappers and the advanced setup. A read that fails gives the type's zero; a
// write goes as a record whose single member "Value" holds the value.
#pragma once
#include <cstdint>

#include "zx/property.h"
#include "zxhost/provider.h"

namespace zx {

bool ReadProp(CZxGenProvider_Low* provider, uint32_t mode, const wchar_t* name, CZxVariant& value);
void WriteProp(CZxGenProvider_Low* provider, uint32_t mode, const wchar_t* name, const CZxVariant& value);

template <class Typed, class T, T Typed::*member>
T ReadTyped(CZxGenProvider_Low* provider, uint32_t mode, const wchar_t* name)
{
    CZxVariant v;
    Typed pv;
    return ReadProp(provider, mode, name, v) && pv.Set(v) ? pv.*member : T();
}

inline bool GetPropBool(CZxGenProvider_Low* p, uint32_t mode, const wchar_t* name)
{
    return ReadTyped<CZxBoolPropertyValue, bool, &CZxBoolPropertyValue::m_bValue>(p, mode, name);
}
inline int32_t GetPropInt32(CZxGenProvider_Low* p, uint32_t mode, const wchar_t* name)
{
    return ReadTyped<CZxInt32PropertyValue, int32_t, &CZxInt32PropertyValue::m_iValue>(p, mode, name);
}
inline double GetPropDouble(CZxGenProvider_Low* p, uint32_t mode, const wchar_t* name)
{
    return ReadTyped<CZxDoublePropertyValue, double, &CZxDoublePropertyValue::m_dValue>(p, mode, name);
}
inline CZxStringW GetPropStringW(CZxGenProvider_Low* p, uint32_t mode, const wchar_t* name)
{
    return ReadTyped<CZxStringWPropertyValue, CZxStringW, &CZxStringWPropertyValue::m_wstrText>(p, mode, name);
}

} // namespace zx
