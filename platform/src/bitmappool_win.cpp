#include "zxhost/bitmappool.h"

#include <mutex>
#include <string>
#include <vector>

namespace {
struct Entry {
    std::wstring name;
    HMODULE module;
    HBITMAP bitmap;
    SIZE size;
};
std::mutex g_lock;
std::vector<Entry>& Pool()
{
    static std::vector<Entry> pool;
    return pool;
}
} // namespace

HMODULE ZX_GetBaseResourceModule()
{
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ZX_GetBaseResourceModule), &self);
    return self;
}

int CZxBitmapPool::Add(const wchar_t* name, HMODULE module)
{
    if (!name)
        return -1;
    if (!module)
        module = ZX_GetBaseResourceModule();
    const std::lock_guard<std::mutex> lock(g_lock);
    std::vector<Entry>& pool = Pool();
    for (size_t i = 0; i < pool.size(); ++i)
        if (pool[i].module == module && pool[i].name == name)
            return int(i);
    // Light grey in the image becomes the button face of the current scheme.
    HBITMAP bmp = static_cast<HBITMAP>(LoadImageW(module, name, IMAGE_BITMAP, 0, 0, LR_LOADMAP3DCOLORS));
    if (!bmp)
        return -1;
    BITMAP info{};
    GetObjectW(bmp, sizeof(info), &info);
    pool.push_back({name, module, bmp, {info.bmWidth, info.bmHeight}});
    return int(pool.size() - 1);
}

HBITMAP CZxBitmapPool::Get(int handle)
{
    const std::lock_guard<std::mutex> lock(g_lock);
    return handle >= 0 && size_t(handle) < Pool().size() ? Pool()[size_t(handle)].bitmap : nullptr;
}

bool CZxBitmapPool::GetSize(int handle, SIZE* size)
{
    const std::lock_guard<std::mutex> lock(g_lock);
    if (handle < 0 || size_t(handle) >= Pool().size())
        return false;
    if (size)
        *size = Pool()[size_t(handle)].size;
    return true;
}

bool CZxBitmapPool::Draw(int handle, HDC dc, int x, int y)
{
    SIZE size;
    HBITMAP bmp = Get(handle);
    if (!bmp || !dc || !GetSize(handle, &size))
        return false;
    HDC mem = CreateCompatibleDC(dc);
    HGDIOBJ old = SelectObject(mem, bmp);
    const BOOL ok = BitBlt(dc, x, y, size.cx, size.cy, mem, 0, 0, SRCCOPY);
    SelectObject(mem, old);
    DeleteDC(mem);
    return ok != FALSE;
}
