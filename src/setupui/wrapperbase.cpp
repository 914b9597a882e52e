#include "zx/grabberuiwrapper.h"

#include "setupui/propaccess.h"

IZxGrabberUI_Wrapper::~IZxGrabberUI_Wrapper() = default;
IZxGrabberCore01::~IZxGrabberCore01() = default;
IZxGrabberDriver01::~IZxGrabberDriver01() = default;

namespace zx {

bool ReadProp(CZxGenProvider_Low* provider, uint32_t mode, const wchar_t* name, CZxVariant& value)
{
    if (!provider || !name)
        return false;
    SZxGrabberPropertyValue pv(name);
    if (provider->PropGetSingle_WRP(mode, pv) != 0)
        return false;
    value = pv.m_varValue;
    return true;
}

void WriteProp(CZxGenProvider_Low* provider, uint32_t mode, const wchar_t* name, const CZxVariant& value)
{
    if (!provider || !name)
        return;
    CZxVariant wrapped;
    wrapped[L"Value"] = value;
    CZxVector_SZxGrabberPropertyValue values(128);
    values.Add(SZxGrabberPropertyValue(name, wrapped));
    provider->PropSet_WRP(mode, values, nullptr, false);
}

} // namespace zx

bool CZxGrabberUI_WrapperBase::ReadProp(uint32_t id, const wchar_t* name, CZxVariant& value) const
{
    return zx::ReadProp(GetGeneric(), id, name, value);
}

void CZxGrabberUI_WrapperBase::WriteProp(uint32_t id, const wchar_t* name, const CZxVariant& value) const
{
    zx::WriteProp(GetGeneric(), id, name, value);
}

bool CZxGrabberUI_WrapperBase::GetPropBool(uint32_t id, const wchar_t* name)
{
    return zx::GetPropBool(GetGeneric(), id, name);
}

void CZxGrabberUI_WrapperBase::SetPropBool(uint32_t id, const wchar_t* name, bool value)
{
    WriteProp(id, name, CZxVariant(value));
}

int32_t CZxGrabberUI_WrapperBase::GetPropInt32(uint32_t id, const wchar_t* name)
{
    return zx::GetPropInt32(GetGeneric(), id, name);
}

void CZxGrabberUI_WrapperBase::SetPropInt32(uint32_t id, const wchar_t* name, int32_t value)
{
    WriteProp(id, name, CZxVariant(static_cast<int>(value)));
}

double CZxGrabberUI_WrapperBase::GetPropDouble(uint32_t id, const wchar_t* name)
{
    return zx::GetPropDouble(GetGeneric(), id, name);
}

void CZxGrabberUI_WrapperBase::SetPropDouble(uint32_t id, const wchar_t* name, double value)
{
    WriteProp(id, name, CZxVariant(value));
}

CZxStringW CZxGrabberUI_WrapperBase::GetPropStringW(uint32_t id, const wchar_t* name)
{
    return zx::GetPropStringW(GetGeneric(), id, name);
}

void CZxGrabberUI_WrapperBase::SetPropStringW(uint32_t id, const wchar_t* name, CZxStringW value)
{
    WriteProp(id, name, CZxVariant(value));
}
