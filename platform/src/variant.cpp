#include "zxhost/variant.h"

#include <cmath>

const CZxVariant& CZxVariant::Null()
{
    static const CZxVariant s_null;
    return s_null;
}

CZxVariant CZxVariant::MakeRecord(const wchar_t* runType)
{
    CZxVariant v;
    v.m_kind = EKind::Record;
    v.m_s = runType ? runType : L"";
    return v;
}

CZxVariant CZxVariant::MakeArray()
{
    CZxVariant v;
    v.m_kind = EKind::Array;
    return v;
}

CZxVariantRunType CZxVariant::GetRunType() const
{
    switch (m_kind) {
    case EKind::Bool: return CZxVariantRunType(L"bool");
    case EKind::Int32: return CZxVariantRunType(L"zx_int32");
    case EKind::Double: return CZxVariantRunType(L"double");
    case EKind::String: return CZxVariantRunType(L"CZxStringW");
    case EKind::Record: return CZxVariantRunType(m_s.c_str());
    case EKind::Array: return CZxVariantRunType(L"CZxVariantArray");
    case EKind::Null: break;
    }
    return CZxVariantRunType();
}

bool CZxVariant::GetBool() const
{
    switch (m_kind) {
    case EKind::Bool: return m_b;
    case EKind::Int32: return m_i != 0;
    case EKind::Double: return m_d != 0.0;
    default: return false;
    }
}

zx_int32 CZxVariant::GetZx_int32() const
{
    switch (m_kind) {
    case EKind::Bool: return m_b ? 1 : 0;
    case EKind::Int32: return m_i;
    case EKind::Double:
        // Out-of-range and NaN doubles would be undefined behaviour to convert.
        if (!(m_d > -2147483649.0 && m_d < 2147483648.0))
            return m_d > 0 ? INT32_MAX : (m_d < 0 ? INT32_MIN : 0);
        return static_cast<zx_int32>(m_d);
    default: return 0;
    }
}

double CZxVariant::GetDouble() const
{
    switch (m_kind) {
    case EKind::Bool: return m_b ? 1.0 : 0.0;
    case EKind::Int32: return m_i;
    case EKind::Double: return m_d;
    default: return 0.0;
    }
}

CZxStringW CZxVariant::GetCZxStringW() const
{
    return m_kind == EKind::String ? CZxStringW(m_s) : CZxStringW();
}

CZxVariant& CZxVariant::operator[](const wchar_t* name)
{
    if (CZxVariant* found = Search(name))
        return *found;
    if (m_kind != EKind::Record) {
        *this = MakeRecord(L"");
    }
    m_names.emplace_back(name ? name : L"");
    m_items.emplace_back();
    return m_items.back();
}

const CZxVariant& CZxVariant::operator[](const wchar_t* name) const
{
    const CZxVariant* found = Search(name);
    return found ? *found : Null();
}

CZxVariant* CZxVariant::Search(const wchar_t* name)
{
    if (m_kind != EKind::Record || !name)
        return nullptr;
    for (size_t i = 0; i < m_names.size(); ++i)
        if (m_names[i] == name)
            return &m_items[i];
    return nullptr;
}

const CZxVariant* CZxVariant::Search(const wchar_t* name) const
{
    return const_cast<CZxVariant*>(this)->Search(name);
}

const wchar_t* CZxVariant::GetMemberName(int i) const
{
    if (m_kind != EKind::Record || i < 0 || i >= static_cast<int>(m_names.size()))
        return nullptr;
    return m_names[static_cast<size_t>(i)].c_str();
}

bool CZxVariant::RemoveMember(const wchar_t* name)
{
    if (m_kind != EKind::Record || !name)
        return false;
    for (size_t i = 0; i < m_names.size(); ++i) {
        if (m_names[i] == name) {
            m_names.erase(m_names.begin() + static_cast<std::ptrdiff_t>(i));
            m_items.erase(m_items.begin() + static_cast<std::ptrdiff_t>(i));
            return true;
        }
    }
    return false;
}

const CZxVariant& CZxVariant::operator[](int i) const
{
    if (m_kind != EKind::Array || i < 0 || i >= static_cast<int>(m_items.size()))
        return Null();
    return m_items[static_cast<size_t>(i)];
}

CZxVariant* CZxVariant::GetAtPtr(int i)
{
    if (m_kind != EKind::Array || i < 0 || i >= static_cast<int>(m_items.size()))
        return nullptr;
    return &m_items[static_cast<size_t>(i)];
}

CZxVariant& CZxVariant::Add(const CZxVariant& v)
{
    if (m_kind != EKind::Array)
        *this = MakeArray();
    m_items.push_back(v);
    return m_items.back();
}

bool CZxVariant::operator==(const CZxVariant& o) const
{
    if (m_kind != o.m_kind)
        return false;
    switch (m_kind) {
    case EKind::Null: return true;
    case EKind::Bool: return m_b == o.m_b;
    case EKind::Int32: return m_i == o.m_i;
    case EKind::Double: return m_d == o.m_d;
    case EKind::String: return m_s == o.m_s;
    case EKind::Record: return m_s == o.m_s && m_names == o.m_names && m_items == o.m_items;
    case EKind::Array: return m_items == o.m_items;
    }
    return false;
}
