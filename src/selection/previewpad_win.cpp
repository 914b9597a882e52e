// The preview pad: the grabber's units as a thumbnail list.
#include <windows.h>

#include <commctrl.h>

#include <cwchar>
#include <memory>
#include <mutex>
#include <vector>

#include "common/framereader.h"
#include "zx/grabbersupport.h"
#include "zx/status.h"
#include "zxhost/picbuf.h"

struct CZxHWUnitPreviewPad::SItems {
    std::vector<SZxGrabberHWUnit> units;
    // The live thumbnail: the reader hands its newest frame over in `pending`
    // (an older unshown one is dropped); the window's thread draws it into
    // image `liveImage` of the list.
    std::unique_ptr<zxcommon::CFrameReader> reader;
    std::mutex lock;
    CZxGrabberSample01* pending = nullptr;
    int liveImage = -1;
    int shown = 0;
};

namespace {
const wchar_t kClass[] = L"ZxHWUnitPreviewPad";
const int kListId = 1601;
const UINT kNewFrame = WM_APP + 1;
const int kReadPeriodMs = 200;   // five frames a second: a preview, not the live view

CZxGrabberSample01* SnapFrom(CZxGenProvider_Low* provider)
{
    CZxGrabberSample01* sample = nullptr;
    SZxGrabberCommandValue snap(L"Snap");
    if (provider && provider->Command_WRP(snap, false, nullptr, false, &sample) != ZX_OK) {
        delete sample;
        sample = nullptr;
    }
    return sample;
}

bool SameUnit(const SZxGrabberHWUnit& a, const SZxGrabberHWUnit& b)
{
    return std::wcscmp(a.m_wszName, b.m_wszName) == 0 &&
           std::wcscmp(a.m_wszConnectionString, b.m_wszConnectionString) == 0;
}

// A grey thumbnail of the frame (nearest sample, top 8 bits), or an empty dark frame.
HBITMAP Thumbnail(const CZxGrabberSample01* sample)
{
    const int w = CZxHWUnitPreviewPad::THUMB_W, h = CZxHWUnitPreviewPad::THUMB_H;
    BITMAPINFO bi{};
    bi.bmiHeader.biSize = sizeof(bi.bmiHeader);
    bi.bmiHeader.biWidth = w;
    bi.bmiHeader.biHeight = -h;
    bi.bmiHeader.biPlanes = 1;
    bi.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HBITMAP bmp = CreateDIBSection(nullptr, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (!bmp || !bits)
        return bmp;
    auto* px = static_cast<uint32_t*>(bits);
    SZxPicBuf pb;
    const bool frame = sample && sample->GetPicBuf(&pb) && pb.pData && pb.uiWidth && pb.uiHeight;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            uint32_t v = 0x30;
            const bool border = x == 0 || y == 0 || x == w - 1 || y == h - 1;
            if (border) {
                v = 0x80;
            } else if (frame) {
                const uint32_t sx = uint32_t(uint64_t(x) * pb.uiWidth / w), sy = uint32_t(uint64_t(y) * pb.uiHeight / h);
                const uint8_t* row = static_cast<const uint8_t*>(pb.pData) + uint64_t(sy) * pb.uiRowBytes;
                const uint32_t bps = ZX_BytesPerSample(pb.uiBits);
                const uint8_t* s = row + uint64_t(sx) * pb.uiComp * bps;
                uint32_t val = bps == 2 ? uint32_t(s[0] | s[1] << 8) : s[0];
                v = pb.uiBits > 8 ? val >> (pb.uiBits - 8) : val;
                v = v > 255 ? 255 : v;
            }
            px[y * w + x] = v | v << 8 | v << 16;
        }
    return bmp;
}
} // namespace

CZxHWUnitPreviewPad::CZxHWUnitPreviewPad(CZxGenericProviderGrabber* grabber, CZxGenProvider_Low* provider,
                                         SZxGrabberHWUnit& unit)
    : m_pGrabber(grabber), m_pProvider(provider), m_pUnit(&unit), m_pItems(new SItems)
{
    SZxGrabberHWUnit* next = new SZxGrabberHWUnit();
    while (m_pGrabber && m_pGrabber->HWUnitNext_UNI_WRP(*next) == ZX_OK)
        m_pItems->units.push_back(*next);
    delete next;
}

CZxHWUnitPreviewPad* CZxHWUnitPreviewPad::CreateOwning(CZxGenericProviderGrabber* grabber,
                                                       CZxGenProvider_Low* provider, const SZxGrabberHWUnit& start)
{
    auto* unit = new SZxGrabberHWUnit(start);
    auto* pad = new CZxHWUnitPreviewPad(grabber, provider, *unit);
    pad->m_pOwnedUnit = unit;
    return pad;
}

CZxHWUnitPreviewPad::~CZxHWUnitPreviewPad()
{
    CZxHWUnitPreviewPad::DestroyUI();
    delete m_pItems;
    delete m_pOwnedUnit;
}

ZxHWnd CZxHWUnitPreviewPad::CreateUI(const wchar_t* name, int32_t, ZxHWnd parent, IZxGUIElement*, void*)
{
    static const ATOM registered = [] {
        WNDCLASSW wc{};
        wc.lpfnWndProc = &WndProc;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        wc.lpszClassName = kClass;
        return RegisterClassW(&wc);
    }();
    (void)registered;
    m_wstrName = name;
    HWND w = CreateWindowExW(0, kClass, name, WS_CHILD | WS_CLIPCHILDREN, 0, 0, 300, 200,
                             reinterpret_cast<HWND>(parent), nullptr, GetModuleHandleW(nullptr), this);
    m_hWnd = reinterpret_cast<ZxHWnd>(w);
    if (!w)
        return nullptr;
    m_hList = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
                              WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_ICON | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                                  LVS_AUTOARRANGE,
                              0, 0, 300, 200, w, reinterpret_cast<HMENU>(INT_PTR(kListId)), GetModuleHandleW(nullptr),
                              nullptr);
    SendMessageW(m_hList, WM_SETFONT, SendMessageW(reinterpret_cast<HWND>(parent), WM_GETFONT, 0, 0), 0);
    m_hImages = ImageList_Create(THUMB_W, THUMB_H, ILC_COLOR32, 8, 8);
    ListView_SetImageList(m_hList, m_hImages, LVSIL_NORMAL);
    Fill();
    return m_hWnd;
}

void CZxHWUnitPreviewPad::DestroyUI()
{
    // No frame is read or posted once the window starts to go.
    StopReading();
    CZxGUIElement::DestroyUI();   // the list goes with its parent
    m_hList = nullptr;
    if (m_hImages)
        ImageList_Destroy(m_hImages);
    m_hImages = nullptr;
}

int CZxHWUnitPreviewPad::AddThumbnail(bool withFrame)
{
    CZxGrabberSample01* sample = withFrame ? SnapFrom(m_pProvider) : nullptr;
    HBITMAP bmp = Thumbnail(sample);
    delete sample;
    const int image = bmp ? ImageList_Add(m_hImages, bmp, nullptr) : -1;
    if (bmp)
        DeleteObject(bmp);
    return image;
}

void CZxHWUnitPreviewPad::Fill()
{
    if (!m_hList)
        return;
    StopReading();
    ListView_DeleteAllItems(m_hList);
    ImageList_RemoveAll(m_hImages);
    SZxGrabberHWUnit* current = new SZxGrabberHWUnit();
    const bool haveCurrent = m_pGrabber && m_pGrabber->HWUnitGet_UNI_WRP(*current) == ZX_OK;
    const int emptyImage = AddThumbnail(false);
    int select = 0, liveImage = -1;
    for (size_t i = 0; i < m_pItems->units.size(); ++i) {
        const SZxGrabberHWUnit& u = m_pItems->units[i];
        const bool live = haveCurrent && SameUnit(u, *current);
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE;
        item.iItem = int(i);
        item.pszText = const_cast<wchar_t*>(u.m_wszName);
        item.iImage = live ? AddThumbnail(true) : emptyImage;
        if (live)
            liveImage = item.iImage;
        SendMessageW(m_hList, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        if (m_pUnit && SameUnit(u, *m_pUnit))
            select = int(i);
    }
    delete current;
    if (!m_pItems->units.empty())
        ListView_SetItemState(m_hList, select, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    if (liveImage >= 0 && m_pProvider)
        StartReading(liveImage);
}

void CZxHWUnitPreviewPad::StartReading(int image)
{
    SItems& items = *m_pItems;
    items.liveImage = image;
    HWND w = reinterpret_cast<HWND>(m_hWnd);
    CZxGenProvider_Low* provider = m_pProvider;
    items.reader = std::make_unique<zxcommon::CFrameReader>(kReadPeriodMs, [&items, w, provider] {
        CZxGrabberSample01* sample = SnapFrom(provider);
        if (!sample)
            return;
        {
            const std::lock_guard<std::mutex> lock(items.lock);
            delete items.pending;
            items.pending = sample;
        }
        PostMessageW(w, kNewFrame, 0, 0);
    });
    items.reader->Start();
}

void CZxHWUnitPreviewPad::StopReading()
{
    SItems& items = *m_pItems;
    items.reader.reset();   // joins
    const std::lock_guard<std::mutex> lock(items.lock);
    delete items.pending;
    items.pending = nullptr;
    items.liveImage = -1;
}

void CZxHWUnitPreviewPad::ShowNewFrame()
{
    SItems& items = *m_pItems;
    CZxGrabberSample01* sample = nullptr;
    {
        const std::lock_guard<std::mutex> lock(items.lock);
        sample = items.pending;
        items.pending = nullptr;
    }
    // A frame posted before a refill or stop has nowhere to go.
    if (sample && m_hList && m_hImages && items.liveImage >= 0) {
        if (HBITMAP bmp = Thumbnail(sample)) {
            ImageList_Replace(m_hImages, items.liveImage, bmp, nullptr);
            DeleteObject(bmp);
            InvalidateRect(m_hList, nullptr, FALSE);
            ++items.shown;
        }
    }
    delete sample;
}

int CZxHWUnitPreviewPad::GetFramesShown() const { return m_pItems->shown; }
bool CZxHWUnitPreviewPad::IsReading() const { return m_pItems->reader && m_pItems->reader->Running(); }

void CZxHWUnitPreviewPad::AddItem(const SZxGrabberHWUnit& unit)
{
    m_pItems->units.push_back(unit);
    Fill();
    if (m_hList) {
        const int last = int(m_pItems->units.size()) - 1;
        ListView_SetItemState(m_hList, -1, 0, LVIS_SELECTED);
        ListView_SetItemState(m_hList, last, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    }
}

int CZxHWUnitPreviewPad::GetItemCount() const { return int(m_pItems->units.size()); }

int CZxHWUnitPreviewPad::GetSelectedIndex() const
{
    return m_hList ? int(ListView_GetNextItem(m_hList, -1, LVNI_SELECTED)) : -1;
}

LRESULT CALLBACK CZxHWUnitPreviewPad::WndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_NCCREATE)
        SetWindowLongPtrW(hwnd, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    auto* pad = reinterpret_cast<CZxHWUnitPreviewPad*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (!pad)
        return DefWindowProcW(hwnd, msg, wParam, lParam);
    switch (msg) {
    case WM_SIZE:
        if (pad->m_hList)
            SetWindowPos(pad->m_hList, nullptr, 0, 0, LOWORD(lParam), HIWORD(lParam), SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    case kNewFrame:
        pad->ShowNewFrame();
        return 0;
    case WM_ZX_SEL_TAKEOVER: {
        const int sel = pad->GetSelectedIndex();
        if (sel >= 0 && pad->m_pUnit)
            *pad->m_pUnit = pad->m_pItems->units[size_t(sel)];
        return sel >= 0;
    }
    case WM_NOTIFY: {
        const auto* nm = reinterpret_cast<const NMHDR*>(lParam);
        if (nm->idFrom == kListId && nm->code == NM_DBLCLK && pad->GetSelectedIndex() >= 0) {
            // A host that registered a handler hears it as the accept event; otherwise the parent gets 1025.
            if (!pad->FireEvent(ZX_GUIEVENT_ACCEPT, WM_NOTIFY, wParam, lParam)) {
                SendMessageW(hwnd, WM_ZX_SEL_TAKEOVER, 0, 0);
                SendMessageW(GetParent(hwnd), WM_ZX_SEL_NOTIFY, WPARAM(hwnd), 1);
            }
            return 0;
        }
        break;
    }
    case WM_NCDESTROY:
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
        break;
    }
    return DefWindowProcW(hwnd, msg, wParam, lParam);
}
