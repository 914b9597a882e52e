#include "zx/grabberuiwrapper.h"

#include "zx/property.h"

IZxGrabberUI_Wrapper::~IZxGrabberUI_Wrapper() = default;
IZxGrabberCore01::~IZxGrabberCore01() = default;
IZxGrabberDriver01::~IZxGrabberDriver01() = default;

bool CZxGrabberUI_WrapperBase::ReadProp(uint32_t id, const wchar_t* name, CZxVariant& value) const
{
    CZxGenProvider_Low* provider = GetGeneric();
    if (!provider || !name)
        return false;
    SZxGrabberPropertyValue pv(name);
    if (provider->PropGetSingle_WRP(id, pv) != 0)
        return false;
    value = pv.m_varValue;
    return true;
}

void CZxGrabberUI_WrapperBase::WriteProp(uint32_t id, const wchar_t* name, const CZxVariant& value) const
{
    CZxGenProvider_Low* provider = GetGeneric();
    if (!provider || !name)
        return;
    // Writes travel as a record whose single member "Value" holds the value.
    CZxVariant wrapped;
    wrapped[L"Value"] = value;
    CZxVector_SZxGrabberPropertyValue values(128);
    values.Add(SZxGrabberPropertyValue(name, wrapped));
    provider->PropSet_WRP(id, values, nullptr, false);
}

bool CZxGrabberUI_WrapperBase::GetPropBool(uint32_t id, const wchar_t* name)
{
    CZxVariant v;
    CZxBoolPropertyValue pv;
    return ReadProp(id, name, v) && pv.Set(v) ? pv.m_bValue : false;
}

void CZxGrabberUI_WrapperBase::SetPropBool(uint32_t id, const wchar_t* name, bool value)
{
    WriteProp(id, name, CZxVariant(value));
}

int32_t CZxGrabberUI_WrapperBase::GetPropInt32(uint32_t id, const wchar_t* name)
{
    CZxVariant v;
    CZxInt32PropertyValue pv;
    return ReadProp(id, name, v) && pv.Set(v) ? pv.m_iValue : 0;
}

void CZxGrabberUI_WrapperBase::SetPropInt32(uint32_t id, const wchar_t* name, int32_t value)
{
    WriteProp(id, name, CZxVariant(static_cast<int>(value)));
}

double CZxGrabberUI_WrapperBase::GetPropDouble(uint32_t id, const wchar_t* name)
{
    CZxVariant v;
    CZxDoublePropertyValue pv;
    return ReadProp(id, name, v) && pv.Set(v) ? pv.m_dValue : 0.0;
}

void CZxGrabberUI_WrapperBase::SetPropDouble(uint32_t id, const wchar_t* name, double value)
{
    WriteProp(id, name, CZxVariant(value));
}

CZxStringW CZxGrabberUI_WrapperBase::GetPropStringW(uint32_t id, const wchar_t* name)
{
    CZxVariant v;
    CZxStringWPropertyValue pv;
    return ReadProp(id, name, v) && pv.Set(v) ? pv.m_wstrText : CZxStringW();
}

void CZxGrabberUI_WrapperBase::SetPropStringW(uint32_t id, const wchar_t* name, CZxStringW value)
{
    WriteProp(id, name, CZxVariant(value));
}
