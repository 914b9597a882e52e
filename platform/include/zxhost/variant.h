// Self-describing variant of the host's system library.
#pragma once
#include <cstdint>
#include <string>
#include <vector>
#include "zxhost/export.h"
#include "zxhost/string.h"

/// Builds a wide name literal for run types and member names.
#define n20(s) L##s

/// The integer type of the "zx_int32" run type.
typedef int32_t zx_int32;

/// The type name a variant carries ("bool", "zx_int32", "RZxRangeDouble", ...).
class ZX_HOST_API CZxVariantRunType {
public:
    /// The empty run type.
    CZxVariantRunType() = default;
    /// The run type named `name` (null: empty).
    explicit CZxVariantRunType(const wchar_t* name) : m_name(name ? name : L"") {}
    /// The run type's name.
    const wchar_t* GetName() const { return m_name.c_str(); }
    /// Same name.
    bool operator==(const CZxVariantRunType& o) const { return m_name == o.m_name; }
    /// Different name.
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
    /// What a variant holds: Null (nothing), Bool, Int32 ("zx_int32"), Double,
    /// String ("CZxStringW"), Record (named members under a run-type name), Array.
    enum class EKind {
        Null /**< nothing */, Bool /**< "bool" */, Int32 /**< "zx_int32" */, Double /**< "double" */,
        String /**< "CZxStringW" */, Record /**< named members */, Array /**< elements by index */ };

    /// A null variant.
    CZxVariant() = default;
    /// A "bool".
    CZxVariant(bool b) : m_kind(EKind::Bool), m_b(b) {}
    /// A "zx_int32".
    CZxVariant(int i) : m_kind(EKind::Int32), m_i(i) {}
    /// A "double".
    CZxVariant(double d) : m_kind(EKind::Double), m_d(d) {}
    /// A "CZxStringW" (null gives the empty string).
    CZxVariant(const wchar_t* s) : m_kind(EKind::String), m_s(s ? s : L"") {}
    /// A "CZxStringW".
    CZxVariant(const CZxStringW& s) : m_kind(EKind::String), m_s(s.Std()) {}

    /// An empty record with the given run-type name (e.g. "RZxRangeDouble").
    static CZxVariant MakeRecord(const wchar_t* runType);
    /// An empty array.
    static CZxVariant MakeArray();

    /// What the variant holds.
    EKind GetKind() const { return m_kind; }
    /// "bool", "zx_int32", "double", "CZxStringW", a record's own name; empty for
    /// null and arrays.
    CZxVariantRunType GetRunType() const;
    /// True for a null variant.
    bool IsNull() const { return m_kind == EKind::Null; }
    /// True for an array.
    bool IsArray() const { return m_kind == EKind::Array; }
    /// True for a record.
    bool IsRecord() const { return m_kind == EKind::Record; }

    /// The value as bool (numbers: non-zero); false otherwise.
    bool GetBool() const;
    /// The value as zx_int32 (bool 0/1, double truncated); 0 otherwise.
    zx_int32 GetZx_int32() const;
    /// The value as double (bool and integers converted); 0.0 otherwise.
    double GetDouble() const;
    /// The string of a "CZxStringW" variant; empty otherwise.
    CZxStringW GetCZxStringW() const;

    // Records.
    /// Member by name; creates it (null) when missing. A null variant becomes a record.
    CZxVariant& operator[](const wchar_t* name);
    /// Member by name; a shared null variant when missing.
    const CZxVariant& operator[](const wchar_t* name) const;
    /// Member by name, or null when missing or not a record.
    CZxVariant* Search(const wchar_t* name);
    /// Member by name, or null when missing or not a record.
    const CZxVariant* Search(const wchar_t* name) const;
    /// Number of members of a record; 0 for anything else.
    int GetMemberCount() const { return m_kind == EKind::Record ? static_cast<int>(m_items.size()) : 0; }
    /// Name of member `i`, or null out of range.
    const wchar_t* GetMemberName(int i) const;
    /// Removes a member; false when there was none.
    bool RemoveMember(const wchar_t* name);

    // Arrays.
    /// Element count of an array; 0 for anything else.
    int GetCount() const { return m_kind == EKind::Array ? static_cast<int>(m_items.size()) : 0; }
    /// Element by index; a shared null variant when out of range or not an array.
    const CZxVariant& operator[](int i) const;
    /// Same; declared for non-const variants so that v[0] does not read as a member name.
    const CZxVariant& operator[](int i) { return static_cast<const CZxVariant&>(*this)[i]; }
    /// Element by index, as operator[](int).
    const CZxVariant& GetAt(int i) const { return (*this)[i]; }
    /// Element by index for writing; null when out of range or not an array.
    CZxVariant* GetAtPtr(int i);
    /// Appends an element; a null variant becomes an array first.
    CZxVariant& Add(const CZxVariant& v);

    /// Whether a writer may replace this value with one of another run type.
    bool IsTypeChangeAllowed() const { return m_bTypeChangeAllowed; }
    /// Lets (or forbids) a writer replace the value with one of another run type.
    void SetTypeChangeAllowed(bool b) { m_bTypeChangeAllowed = b; }

    /// Deep equality of kind, run type and content (the type-change flag is ignored).
    bool operator==(const CZxVariant& o) const;
    /// Not deeply equal.
    bool operator!=(const CZxVariant& o) const { return !(*this == o); }

    /// The shared null variant.
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
