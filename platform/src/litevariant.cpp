#include "zxhost/litevariant.h"

#include <algorithm>
#include <cstring>
#include <cwchar>

namespace {

enum : uint8_t { TAG_LEVEL = 1, TAG_END = 2, TAG_BOOL = 3, TAG_INT = 4, TAG_STRING = 5 };
const uint8_t kMagic[4] = {'Z', 'X', 'L', 'V'};
const uint8_t kVersion = 1;
const size_t kHeader = 9;   // magic, version, payload length
const size_t kTrailer = 4;  // CRC-32

uint32_t Crc32(const uint8_t* p, size_t n)
{
    static uint32_t table[256];
    static const bool ready = [] {
        for (uint32_t i = 0; i < 256; ++i) {
            uint32_t c = i;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            table[i] = c;
        }
        return true;
    }();
    (void)ready;
    uint32_t c = 0xFFFFFFFFu;
    for (size_t i = 0; i < n; ++i)
        c = table[(c ^ p[i]) & 0xFF] ^ (c >> 8);
    return c ^ 0xFFFFFFFFu;
}

void PutU32(std::vector<uint8_t>& out, uint32_t v)
{
    for (int k = 0; k < 4; ++k)
        out.push_back(uint8_t(v >> (8 * k)));
}

uint32_t GetU32(const uint8_t* p)
{
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

// wchar_t is UTF-16 on Windows and UTF-32 elsewhere; the bytes are UTF-16 on both.
std::vector<uint16_t> ToUnits(const wchar_t* s)
{
    std::vector<uint16_t> u;
    for (; s && *s; ++s) {
        const uint32_t c = uint32_t(*s);
        if (sizeof(wchar_t) > 2 && c > 0xFFFF && c <= 0x10FFFF) {
            u.push_back(uint16_t(0xD800 + ((c - 0x10000) >> 10)));
            u.push_back(uint16_t(0xDC00 + ((c - 0x10000) & 0x3FF)));
        } else {
            u.push_back(uint16_t(c));
        }
    }
    return u;
}

std::wstring FromUnits(const uint8_t* p, size_t units)
{
    std::wstring s;
    s.reserve(units);
    for (size_t i = 0; i < units; ++i) {
        uint32_t c = uint32_t(p[2 * i]) | uint32_t(p[2 * i + 1]) << 8;
        if (sizeof(wchar_t) > 2 && c >= 0xD800 && c < 0xDC00 && i + 1 < units) {
            const uint32_t lo = uint32_t(p[2 * i + 2]) | uint32_t(p[2 * i + 3]) << 8;
            if (lo >= 0xDC00 && lo < 0xE000) {
                c = 0x10000 + ((c - 0xD800) << 10) + (lo - 0xDC00);
                ++i;
            }
        }
        s += wchar_t(c);
    }
    return s;
}

bool PutText(std::vector<uint8_t>& out, const wchar_t* s, size_t maxUnits)
{
    const std::vector<uint16_t> u = ToUnits(s);
    if (u.size() > maxUnits)
        return false;
    PutU32(out, uint32_t(u.size()));
    for (uint16_t c : u) {
        out.push_back(uint8_t(c));
        out.push_back(uint8_t(c >> 8));
    }
    return true;
}

// Bounds-checked cursor over the payload.
struct Cursor {
    const uint8_t* p;
    size_t left;
    bool Byte(uint8_t& v)
    {
        if (left < 1)
            return false;
        v = *p++;
        --left;
        return true;
    }
    bool U32(uint32_t& v)
    {
        if (left < 4)
            return false;
        v = GetU32(p);
        p += 4;
        left -= 4;
        return true;
    }
    bool Text(std::wstring& s, size_t maxUnits)
    {
        uint32_t n = 0;
        if (!U32(n) || n > maxUnits || size_t(n) > left / 2)
            return false;
        s = FromUnits(p, n);
        p += size_t(n) * 2;
        left -= size_t(n) * 2;
        return true;
    }
};

bool ValidKey(const wchar_t* key) { return key && *key; }

} // namespace

// ---- Writer ------------------------------------------------------------------------

CZxLiteVariantW::CZxLiteVariantW() = default;

bool CZxLiteVariantW::PutKey(uint8_t tag, const wchar_t* key)
{
    if (!ValidKey(key))
        return false;
    const size_t mark = m_payload.size();
    m_payload.push_back(tag);
    if (!PutText(m_payload, key, MAX_KEY_UNITS)) {
        m_payload.resize(mark);
        return false;
    }
    return true;
}

int CZxLiteVariantW::LevelBegin(const wchar_t* name)
{
    if (!PutKey(TAG_LEVEL, name))
        return -9;
    ++m_depth;
    return 0;
}

int CZxLiteVariantW::LevelEnd()
{
    if (m_depth == 0)
        return -9;
    m_payload.push_back(TAG_END);
    --m_depth;
    return 0;
}

int CZxLiteVariantW::Set(bool value, const wchar_t* key)
{
    if (!PutKey(TAG_BOOL, key))
        return -9;
    m_payload.push_back(value ? 1 : 0);
    return 0;
}

int CZxLiteVariantW::Set(int value, const wchar_t* key)
{
    if (!PutKey(TAG_INT, key))
        return -9;
    PutU32(m_payload, uint32_t(value));
    return 0;
}

int CZxLiteVariantW::Set(const wchar_t* value, const wchar_t* key)
{
    const size_t mark = m_payload.size();
    if (!PutKey(TAG_STRING, key))
        return -9;
    if (!PutText(m_payload, value, MAX_TEXT_UNITS)) {
        m_payload.resize(mark);
        return -9;
    }
    return 0;
}

std::vector<uint8_t> CZxLiteVariantW::GetBytes() const
{
    if (m_depth != 0)
        return {};
    const size_t n = m_payload.size();
    std::vector<uint8_t> out(kHeader + n + kTrailer);
    auto put32 = [&out](size_t at, uint32_t v) {
        for (int k = 0; k < 4; ++k)
            out[at + size_t(k)] = uint8_t(v >> (8 * k));
    };
    std::copy(kMagic, kMagic + 4, out.begin());
    out[4] = kVersion;
    put32(5, uint32_t(n));
    std::copy(m_payload.begin(), m_payload.end(), out.begin() + kHeader);
    put32(kHeader + n, Crc32(m_payload.data(), n));
    return out;
}

// ---- Reader ------------------------------------------------------------------------

CZxLiteVariantR::CZxLiteVariantR() { Load(nullptr, 0); }

CZxLiteVariantR::CZxLiteVariantR(const void* data, size_t size) { Load(data, size); }

int CZxLiteVariantR::Load(const void* data, size_t size)
{
    m_nodes.assign(1, SNode{TAG_LEVEL, L"", 0, L"", -1});
    m_current = 0;
    m_loaded = false;
    const uint8_t* b = static_cast<const uint8_t*>(data);
    if (!b || size < kHeader + kTrailer || std::memcmp(b, kMagic, 4) != 0 || b[4] != kVersion)
        return -9;
    const uint32_t length = GetU32(b + 5);
    if (size_t(length) != size - kHeader - kTrailer || GetU32(b + kHeader + length) != Crc32(b + kHeader, length))
        return -9;

    std::vector<SNode> nodes(1, m_nodes[0]);
    Cursor c{b + kHeader, length};
    int level = 0, depth = 0;
    while (c.left > 0) {
        uint8_t tag = 0;
        c.Byte(tag);
        if (tag == TAG_END) {
            if (depth == 0)
                return -9;
            level = nodes[size_t(level)].parent;
            --depth;
            continue;
        }
        SNode n{tag, L"", 0, L"", level};
        if (tag < TAG_LEVEL || tag > TAG_STRING || !c.Text(n.key, CZxLiteVariantW::MAX_KEY_UNITS) || n.key.empty())
            return -9;
        uint8_t bv = 0;
        uint32_t iv = 0;
        switch (tag) {
        case TAG_LEVEL:
            if (++depth > MAX_DEPTH)
                return -9;
            level = int(nodes.size());
            break;
        case TAG_BOOL:
            if (!c.Byte(bv) || bv > 1)
                return -9;
            n.i = bv;
            break;
        case TAG_INT:
            if (!c.U32(iv))
                return -9;
            n.i = int32_t(iv);
            break;
        default:
            if (!c.Text(n.s, CZxLiteVariantW::MAX_TEXT_UNITS))
                return -9;
        }
        nodes.push_back(std::move(n));
    }
    if (depth != 0)
        return -9;
    m_nodes.swap(nodes);
    m_loaded = true;
    return 0;
}

int CZxLiteVariantR::LevelBegin(const wchar_t* name)
{
    if (const SNode* n = Find(name, TAG_LEVEL)) {
        m_current = int(n - m_nodes.data());
        return 0;
    }
    return -9;
}

int CZxLiteVariantR::LevelEnd()
{
    if (m_current == 0)
        return -9;
    m_current = m_nodes[size_t(m_current)].parent;
    return 0;
}

const CZxLiteVariantR::SNode* CZxLiteVariantR::Find(const wchar_t* key, uint8_t tag) const
{
    if (!ValidKey(key))
        return nullptr;
    for (const SNode& n : m_nodes)
        if (n.parent == m_current && n.key == key)
            return n.tag == tag ? &n : nullptr;
    return nullptr;
}

bool CZxLiteVariantR::Get(const wchar_t* key, bool def) const
{
    const SNode* n = Find(key, TAG_BOOL);
    return n ? n->i != 0 : def;
}

int CZxLiteVariantR::Get(const wchar_t* key, int def) const
{
    const SNode* n = Find(key, TAG_INT);
    return n ? n->i : def;
}

CZxStringW CZxLiteVariantR::Get(const wchar_t* key, const wchar_t* def) const
{
    const SNode* n = Find(key, TAG_STRING);
    return n ? CZxStringW(n->s) : CZxStringW(def);
}

int CZxLiteVariantR::GetKeyCount() const
{
    int count = 0;
    for (const SNode& n : m_nodes)
        count += n.parent == m_current && n.tag != TAG_LEVEL;
    return count;
}

CZxStringW CZxLiteVariantR::GetKeyAt(int index) const
{
    for (const SNode& n : m_nodes)
        if (n.parent == m_current && n.tag != TAG_LEVEL && index-- == 0)
            return CZxStringW(n.key);
    return CZxStringW();
}
