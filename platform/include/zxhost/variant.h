// Self-describing variant of the host's system library.
#pragma once
#include <cstdint>
#include <string>
#include <vector>
#include "zxhost/export.h"
#include "zxhost/string.h"

/// Builds a wide name literal for run types and member names.
#define n20(s) L##s

typedef int32_t zx_int32;

/// The type name a variant carries ("bool", "zx_int32", "RZxRangeDouble", ...).
class ZX_HOST_API CZxVariantRunType {
public:
    CZxVariantRunType() = default;
    explicit CZxVariantRunType(const wchar_t* name) : m_name(name ? name : L"") {}
    const wchar_t* GetName() const { return m_name.c_str(); }
    bool operator==(const CZxVariantRunType& o) const { return m_name == o.m_name; }
    bool operator!=(const CZxVariantRunType& o) const { return m_name != o.m_name; }

private:
    std::wstring m_name;
};

/// A value with a run type: null, bool, zx_int32, double, wide string, a record of
/// named members carrying its own run-type name, or an array.
///
/// Reading never fails: a getter of the wrong kind gives the type's zero value
/// (numbers convert between bool, zx_int32 and double; double to integer truncates),
/// and a missing member read through the const `operator[]` is a null variant.
class ZX_HOST_API CZxVariant {
public:
    enum class EKind { Null, Bool, Int32, Double, String, Record, Array };

    CZxVariant() = default;
    CZxVariant(bool b) : m_kind(EKind::Bool), m_b(b) {}
    CZxVariant(int i) : m_kind(EKind::Int32), m_i(i) {}
    CZxVariant(double d) : m_kind(EKind::Double), m_d(d) {}
    CZxVariant(const wchar_t* s) : m_kind(EKind::String), m_s(s ? s : L"") {}
    CZxVariant(const CZxStringW& s) : m_kind(EKind::String), m_s(s.Std()) {}

    /// An empty record with the given run-type name (e.g. "RZxRangeDouble").
    static CZxVariant MakeRecord(const wchar_t* runType);
    /// An empty array.
    static CZxVariant MakeArray();

    EKind GetKind() const { return m_kind; }
    CZxVariantRunType GetRunType() const;
    bool IsNull() const { return m_kind == EKind::Null; }
    bool IsArray() const { return m_kind == EKind::Array; }
    bool IsRecord() const { return m_kind == EKind::Record; }

    bool GetBool() const;
    zx_int32 GetZx_int32() const;
    double GetDouble() const;
    CZxStringW GetCZxStringW() const;

    // Records.
    /// Member by name; creates it (null) when missing. A null variant becomes a record.
    CZxVariant& operator[](const wchar_t* name);
    /// Member by name; a shared null variant when missing.
    const CZxVariant& operator[](const wchar_t* name) const;
    CZxVariant* Search(const wchar_t* name);
    const CZxVariant* Search(const wchar_t* name) const;
    int GetMemberCount() const { return m_kind == EKind::Record ? static_cast<int>(m_items.size()) : 0; }
    const wchar_t* GetMemberName(int i) const;
    bool RemoveMember(const wchar_t* name);

    // Arrays.
    /// Element count of an array; 0 for anything else.
    int GetCount() const { return m_kind == EKind::Array ? static_cast<int>(m_items.size()) : 0; }
    /// Element by index; a shared null variant when out of range or not an array.
    const CZxVariant& operator[](int i) const;
    /// Same; declared for non-const variants so that v[0] does not read as a member name.
    const CZxVariant& operator[](int i) { return static_cast<const CZxVariant&>(*this)[i]; }
    const CZxVariant& GetAt(int i) const { return (*this)[i]; }
    CZxVariant* GetAtPtr(int i);
    /// Appends an element; a null variant becomes an array first.
    CZxVariant& Add(const CZxVariant& v);

    /// Whether a writer may replace this value with one of another run type.
    bool IsTypeChangeAllowed() const { return m_bTypeChangeAllowed; }
    void SetTypeChangeAllowed(bool b) { m_bTypeChangeAllowed = b; }

    /// Deep equality of kind, run type and content (the type-change flag is ignored).
    bool operator==(const CZxVariant& o) const;
    bool operator!=(const CZxVariant& o) const { return !(*this == o); }

    static const CZxVariant& Null();

private:
    EKind m_kind = EKind::Null;
    bool m_b = false;
    zx_int32 m_i = 0;
    double m_d = 0.0;
    std::wstring m_s;                  // string value, or a record's run-type name
    std::vector<std::wstring> m_names; // record member names, parallel to m_items
    std::vector<CZxVariant> m_items;   // record members or array elements
    bool m_bTypeChangeAllowed = false;
};
