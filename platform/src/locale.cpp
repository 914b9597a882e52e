#include "zxhost/locale.h"

#include <atomic>

namespace {
std::atomic<uint16_t> g_language{0x0409};
} // namespace

uint16_t ZX_GetLanguageId() { return g_language.load(); }
uint16_t ZX_SetLanguageId(uint16_t langId) { return g_language.exchange(langId); }
