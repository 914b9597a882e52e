// Lite variants of the host's system library: a compact keyed serialisation of
// nested levels holding bool, int and wide-string values, which drivers use to
// keep small records in their settings.
//
// Byte format (all numbers little-endian):
//   "ZXLV", version byte 1, payload length (u32), payload, CRC-32 of the payload (u32)
// The payload is a sequence of entries, each a tag byte followed by its fields:
//   1 level begin: name          2 level end
//   3 bool: key, byte 0 or 1     4 int: key, int32
//   5 wide string: key, text
// A name, key or text is a u32 count of UTF-16 code units followed by the units.
// Levels must balance and every field must lie inside the payload; the reader
// refuses anything else as a whole before it answers a single Get.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "zxhost/export.h"
#include "zxhost/string.h"

/// Writes a lite variant. Operations return ZX_OK, or ZX_E_FAIL for a null or empty key or
/// name, a key longer than the format allows, or a LevelEnd without a level.
class ZX_HOST_API CZxLiteVariantW {
public:
    /// An empty writer at the top level. One thread at a time.
    CZxLiteVariantW();

    /// Opens a level `name` below the current one.
    int LevelBegin(const wchar_t* name);
    /// Closes the innermost open level.
    int LevelEnd();
    /// Stores a bool under `key` in the current level.
    int Set(bool value, const wchar_t* key);
    /// Stores an int under `key` in the current level.
    int Set(int value, const wchar_t* key);
    /// A null text is stored as empty.
    int Set(const wchar_t* value, const wchar_t* key);

    /// Levels still open.
    int GetLevelDepth() const { return m_depth; }
    /// The complete serialised bytes; empty while a level is open.
    std::vector<uint8_t> GetBytes() const;

    /// Longest name, key or text in code units.
    enum { MAX_KEY_UNITS = 1024 /**< longest name or key */, MAX_TEXT_UNITS = 1 << 20 /**< longest text */ };

private:
    bool PutKey(uint8_t tag, const wchar_t* key);
    std::vector<uint8_t> m_payload;
    int m_depth = 0;
};

/// Reads a lite variant. After a successful Load the reader stands at the top
/// level; LevelBegin enters a level of that name below the current one.
class ZX_HOST_API CZxLiteVariantR {
public:
    /// An empty reader (IsLoaded() false). One thread at a time.
    CZxLiteVariantR();
    /// Same as Load; check IsLoaded().
    CZxLiteVariantR(const void* data, size_t size);

    /// Parses and checks the bytes: ZX_OK, or ZX_E_FAIL for truncated, corrupt or
    /// unbalanced input (the reader is then empty).
    int Load(const void* data, size_t size);
    /// True after a successful Load.
    bool IsLoaded() const { return m_loaded; }

    /// Enters the first level of that name below the current one: ZX_OK, or ZX_E_FAIL when
    /// there is none (the current level stays).
    int LevelBegin(const wchar_t* name);
    /// Returns to the enclosing level: ZX_OK, or ZX_E_FAIL at the top.
    int LevelEnd();

    /// The value of that key in the current level, or `def` when the key is
    /// missing or holds another type.
    bool Get(const wchar_t* key, bool def) const;
    /// The int of `key`, or `def`.
    int Get(const wchar_t* key, int def) const;
    /// The text of `key`, or `def`.
    CZxStringW Get(const wchar_t* key, const wchar_t* def) const;

    /// Value keys of the current level in stored order (levels are not listed).
    int GetKeyCount() const;
    /// The key at `index` of GetKeyCount(); empty out of range.
    CZxStringW GetKeyAt(int index) const;

    /// Deepest nesting the reader accepts.
    enum { MAX_DEPTH = 64 /**< deepest nesting of levels */ };

private:
    struct SNode {
        uint8_t tag;
        std::wstring key;
        int32_t i;
        std::wstring s;
        int parent;
    };
    const SNode* Find(const wchar_t* key, uint8_t tag) const;

    std::vector<SNode> m_nodes;   // node 0 is the top level
    int m_current = 0;
    bool m_loaded = false;
};
