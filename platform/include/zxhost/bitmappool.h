// The base-UI library's bitmap pool: bitmaps loaded once per process and
// addressed by a small handle. Windows only.
#pragma once
#include <windows.h>

#include "zxhost/export.h"

/// Process-wide store of bitmaps. Handles are indices from 0; -1 means "not
/// loaded". Bitmaps stay until the process ends. Thread-safe.
class ZX_HOST_API CZxBitmapPool {
public:
    /// Loads the bitmap resource `name` from `module` (null: the base-resources
    /// module, ZX_GetBaseResourceModule) and returns its handle, or -1 when it
    /// does not exist. Adding the same name and module again returns the first handle.
    static int Add(const wchar_t* name, HMODULE module = nullptr);
    /// The bitmap of a handle, or null for -1 and unknown handles.
    static HBITMAP Get(int handle);
    /// Size in pixels; false for unknown handles.
    static bool GetSize(int handle, SIZE* size);
    /// Draws the bitmap with its top-left corner at (x, y); false for unknown handles.
    static bool Draw(int handle, HDC dc, int x, int y);
};

/// The module that holds the host's shared images (this stand-in library itself).
ZX_HOST_API HMODULE ZX_GetBaseResourceModule();
