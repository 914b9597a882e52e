// The translation tables built from the gettext catalogs (generated at build
// time by tools/i18n/catalog_cpp.py).
#pragma once
#include <cstddef>
#include <cstdint>

namespace zxhost {

struct SCatalogEntry {
    const wchar_t* context;
    const wchar_t* text;
    const wchar_t* translation;
};

/// One language's runtime texts, sorted by (context, text).
struct SCatalogLanguage {
    uint16_t primaryLanguage;   // the low 10 bits of a Windows language id
    const SCatalogEntry* entries;
    size_t count;
};

extern const SCatalogLanguage kCatalogLanguages[];
extern const size_t kCatalogLanguageCount;

} // namespace zxhost
