#include "zxhost/system.h"

#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <mutex>
#include <string>
#include <utility>
#ifdef _WIN32
#include <windows.h>
#endif

#include "catalog.h"
#include "zxhost/locale.h"

namespace {

// UTF-8 of a wide text: UTF-16 on Windows (pairs of surrogates), UTF-32 elsewhere.
std::string ToUtf8(const std::wstring& w)
{
    std::string out;
    for (size_t i = 0; i < w.size(); ++i) {
        uint32_t c = uint32_t(w[i]);
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < w.size() && uint32_t(w[i + 1]) >= 0xDC00 && uint32_t(w[i + 1]) < 0xE000)
            c = 0x10000 + ((c - 0xD800) << 10) + (uint32_t(w[++i]) - 0xDC00);
        else if ((c >= 0xD800 && c < 0xE000) || c > 0x10FFFF)
            c = 0xFFFD;  // a lone surrogate or no character at all
        if (c < 0x80) {
            out += char(c);
        } else if (c < 0x800) {
            out += char(0xC0 | (c >> 6));
            out += char(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += char(0xE0 | (c >> 12));
            out += char(0x80 | ((c >> 6) & 0x3F));
            out += char(0x80 | (c & 0x3F));
        } else {
            out += char(0xF0 | (c >> 18));
            out += char(0x80 | ((c >> 12) & 0x3F));
            out += char(0x80 | ((c >> 6) & 0x3F));
            out += char(0x80 | (c & 0x3F));
        }
    }
    return out;
}

// The default sinks' output. A plug-in runs inside a GUI application whose
// stderr goes nowhere, so on Windows every line also goes to the debugger
// (OutputDebugStringW: a debugger's output pane or a debug-output viewer), and
// when ZX_LOG_FILE names a file the line is appended to it. The variable is
// read at every line, so it can be set while the application runs.
void WriteDiagLine(const std::wstring& line)
{
    static std::mutex s_mutex;
    std::lock_guard<std::mutex> lock(s_mutex);
    std::fprintf(stderr, "%ls\n", line.c_str());
#ifdef _WIN32
    OutputDebugStringW((line + L"\n").c_str());
    wchar_t path[MAX_PATH];
    const DWORD n = GetEnvironmentVariableW(L"ZX_LOG_FILE", path, MAX_PATH);
    FILE* f = n > 0 && n < MAX_PATH ? _wfopen(path, L"ab") : nullptr;
#else
    const char* path = std::getenv("ZX_LOG_FILE");
    FILE* f = path && *path ? std::fopen(path, "ab") : nullptr;
#endif
    if (f) {
        const std::string text = ToUtf8(line) + "\n";
        std::fwrite(text.data(), 1, text.size(), f);
        std::fclose(f);
    }
}

void DefaultDiagSink(const wchar_t* condition, const wchar_t* text, int, const wchar_t* file, int line)
{
    WriteDiagLine(std::wstring(L"assertion: ") + (condition ? condition : L"") + L" (" + (text ? text : L"") +
                  L") in " + (file ? file : L"") + L":" + std::to_wstring(line));
}

void DefaultLogSink(int level, const wchar_t* text)
{
    WriteDiagLine(L"log[" + std::to_wstring(level) + L"]: " + (text ? text : L""));
}

// The catalog's text for the current language, else the text as written, less
// a translator's note such as "Mono (camera type <- !don't_translate!)", which
// keys a word that has several meanings.
CZxStringW CatalogTranslation(const wchar_t* text, const wchar_t* context)
{
    const uint16_t primary = ZX_GetLanguageId() & 0x3FF;
    for (size_t l = 0; l < zxhost::kCatalogLanguageCount; ++l) {
        const zxhost::SCatalogLanguage& lang = zxhost::kCatalogLanguages[l];
        if (lang.primaryLanguage != primary)
            continue;
        auto less = [](const zxhost::SCatalogEntry& e, std::pair<const wchar_t*, const wchar_t*> key) {
            const int c = std::wcscmp(e.context, key.first);
            return c < 0 || (c == 0 && std::wcscmp(e.text, key.second) < 0);
        };
        const zxhost::SCatalogEntry* end = lang.entries + lang.count;
        const zxhost::SCatalogEntry* e = std::lower_bound(lang.entries, end, std::make_pair(context, text), less);
        if (e != end && std::wcscmp(e->context, context) == 0 && std::wcscmp(e->text, text) == 0)
            return CZxStringW(e->translation);
    }
    std::wstring t(text);
    const std::wstring note = L" <- !don't_translate!)";
    if (t.size() > note.size() && t.compare(t.size() - note.size(), note.size(), note) == 0) {
        const size_t open = t.rfind(L" (");
        if (open != std::wstring::npos)
            t.resize(open);
    }
    return CZxStringW(t);
}

std::atomic<PFN_ZxDiagSink> g_diagSink{&DefaultDiagSink};
std::atomic<PFN_ZxLogSink> g_logSink{&DefaultLogSink};
std::atomic<PFN_ZxTranslate> g_translate{&CatalogTranslation};
std::atomic<int> g_logDetail{0};
std::atomic<long long> g_outstanding{0};

} // namespace

void DiagAssertW(const wchar_t* condition, const wchar_t* text, int flags, const wchar_t* sourceFile, int line)
{
    g_diagSink.load()(condition, text, flags, sourceFile, line);
}

PFN_ZxDiagSink ZX_SetDiagSink(PFN_ZxDiagSink sink)
{
    return g_diagSink.exchange(sink ? sink : &DefaultDiagSink);
}

int ZX_GetLogDetail() { return g_logDetail.load(); }
void ZX_SetLogDetail(int level) { g_logDetail.store(level); }

PFN_ZxLogSink ZX_SetLogSink(PFN_ZxLogSink sink)
{
    return g_logSink.exchange(sink ? sink : &DefaultLogSink);
}

void ZX_LogW(int level, const wchar_t* fmt, ...)
{
    if (g_logDetail.load() < level)
        return;
    CZxStringW s;
    va_list args;
    va_start(args, fmt);
    s.FormatV(fmt, args);
    va_end(args);
    g_logSink.load()(level, s.GetString());
}

void* CZxAlloc::Alloc(size_t bytes)
{
    if (bytes == 0)
        return nullptr;
    void* p = std::malloc(bytes);
    if (p)
        ++g_outstanding;
    return p;
}

void* CZxAlloc::ReAlloc(void* p, size_t bytes)
{
    if (!p)
        return Alloc(bytes);
    if (bytes == 0) {
        Free(p);
        return nullptr;
    }
    return std::realloc(p, bytes);
}

void CZxAlloc::Free(void* p)
{
    if (!p)
        return;
    --g_outstanding;
    std::free(p);
}

long long CZxAlloc::Outstanding() { return g_outstanding.load(); }

CZxStringW ZX_GetTranslation(const wchar_t* text, const wchar_t* sourceContext)
{
    return g_translate.load()(text ? text : L"", sourceContext ? sourceContext : L"");
}

PFN_ZxTranslate ZX_SetTranslationHook(PFN_ZxTranslate hook)
{
    return g_translate.exchange(hook ? hook : &CatalogTranslation);
}
