// The user-interface languages the library ships, by the short codes the tools
// take (zxsetup --lang de, zxshow --lang ja SCENE).
#pragma once
#include <cstdint>
#include <cwchar>

/// A shipped language: its code and its Windows language id.
struct SZxSimLanguage {
    const wchar_t* code;   ///< "en", "de", ..., "zh"
    uint16_t langId;       ///< e.g. 0x0407 for German
};

/// The eleven languages, English (United States) first.
inline const SZxSimLanguage* ZxSimLanguages(size_t& count)
{
    static const SZxSimLanguage kLanguages[] = {
        {L"en", 0x0409}, {L"de", 0x0407}, {L"fr", 0x040C}, {L"es", 0x0C0A}, {L"it", 0x0410}, {L"pt", 0x0416},
        {L"ru", 0x0419}, {L"pl", 0x0415}, {L"ja", 0x0411}, {L"ko", 0x0412}, {L"zh", 0x0804},
    };
    count = sizeof kLanguages / sizeof kLanguages[0];
    return kLanguages;
}

/// The language id of `code`; 0 when the code is unknown or null.
inline uint16_t ZxSimLanguageId(const wchar_t* code)
{
    size_t n = 0;
    const SZxSimLanguage* all = ZxSimLanguages(n);
    for (size_t i = 0; code && i < n; ++i)
        if (std::wcscmp(all[i].code, code) == 0)
            return all[i].langId;
    return 0;
}
