// Device selection: the entry points that let the user pick a hardware unit and
// a camera, and the generic chooser elements they host. Windows only.
#pragma once
#include <windows.h>

#include <commctrl.h>

#include <cstdint>

#include "zx/export.h"
#include "zxhost/grabber.h"
#include "zxhost/guielement.h"
#include "zxhost/rect.h"

/// Messages between a selection element and its host dialog.
enum : UINT {
    WM_ZX_SEL_NOTIFY = WM_USER + 1,   ///< element -> host: lParam 1..4 unit accepted, 5 camera, -2 failed;
                                      ///< host -> camera element: fill for the unit in wParam (null: current)
    WM_ZX_SEL_TAKEOVER = WM_USER + 2, ///< host -> element: write the selection into the caller's record;
                                      ///< unit element -> host: the selected unit changed (wParam = the unit)
};

/// Static entry points. Results: 0 accepted, -8 the unit dialog was cancelled,
/// -9 any other failure (no grabber, no element, another end of the dialog).
class ZX_API CZxGrabberSupport {
public:
    static int HWUnitSelect(HWND parent, CZxGenericProviderGrabber* grabber, SZxGrabberHWUnit& unit, bool flag);
    /// `camera` is first set to the current camera's name and holds the choice on 0.
    static int CameraSelect(HWND parent, CZxGenericProviderGrabber* grabber, CZxStringW& camera);
    static int HWUnitAndCameraSelect(HWND parent, CZxGenericProviderGrabber* grabber, SZxGrabberHWUnit& unit,
                                     CZxStringW& camera, bool flag);
    /// A preview pad for a tab of the caller's window (the caller creates, destroys
    /// and deletes it), or null without a grabber or previews.
    static IZxGUIElement* HWUnitPreviewTab(HWND parent, CZxGenericProviderGrabber* grabber);

    /// Hands element events to a further handler and turns the accept event
    /// (code 20) into OK of the dialog. `context` is an SZxElementForward.
    struct SZxElementForward {
        HWND hDlg;
        PFN_ZxGUIElementHandler pfnHandler;
        void* pHandlerContext;
    };
    static int ElementEventForwarder(void* context, SZxGUIElementEvent* event);
};

/// The generic hardware-unit chooser: a child dialog ("SHOW_HWUNITS") with a
/// report list of the grabber's units (at most 32).
class ZX_API CZxHWUnitSelectionUI : public CZxGUIControlElement {
public:
    enum { MAX_UNITS = 32, TITLE_CCH = 324 };
    /// With `flag` set the element never decides on its own at start.
    CZxHWUnitSelectionUI(CZxGenericProviderGrabber* grabber, SZxGrabberHWUnit& unit, bool flag);
    ~CZxHWUnitSelectionUI() override;
    ZxHWnd CreateUI(const wchar_t* name, int32_t style, ZxHWnd parent, IZxGUIElement* owner, void* reserved) override;
    void DestroyUI() override;
    static INT_PTR CALLBACK dlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);

protected:
    /// Whether the list has the "Connection String" column.
    virtual bool HasConnectionColumn() const { return true; }
    static INT_PTR Proc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);
    ZxHWnd CreateFrom(DLGPROC proc, const wchar_t* name, ZxHWnd parent);

public:
    wchar_t m_wszTitle[TITLE_CCH];
    HWND m_hDlg;
    CZxRect m_rect;
    CZxGenericProviderGrabber* m_pGrabber;
    SZxGrabberHWUnit* m_pUnit;
    bool m_bFlag;
};

/// The unit chooser without the connection-string column. Its two counters
/// report the last list: units listed and the row taken over (both 0 before).
class ZX_API CZxSimpleHWUnitSelectionUI : public CZxHWUnitSelectionUI {
public:
    CZxSimpleHWUnitSelectionUI(CZxGenericProviderGrabber* grabber, SZxGrabberHWUnit& unit);
    ZxHWnd CreateUI(const wchar_t* name, int32_t style, ZxHWnd parent, IZxGUIElement* owner, void* reserved) override;
    static INT_PTR CALLBACK dlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);

    int32_t m_iListedUnits;
    int32_t m_iTakenRow;

protected:
    bool HasConnectionColumn() const override { return false; }
};

/// The generic camera chooser: a child dialog ("SHOW_CAMERAS") listing the
/// cameras of one unit (at most 15); the choice is a camera name.
class ZX_API CZxCameraSelectionUI : public CZxGUIControlElement {
public:
    enum { MAX_CAMERAS = 15 };
    CZxCameraSelectionUI(CZxGenericProviderGrabber* grabber, CZxStringW& camera);
    ~CZxCameraSelectionUI() override;
    ZxHWnd CreateUI(const wchar_t* name, int32_t style, ZxHWnd parent, IZxGUIElement* owner, void* reserved) override;
    void DestroyUI() override;
    static INT_PTR CALLBACK dlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);

    CZxGenericProviderGrabber* m_pGrabber;
    CZxStringW& m_rCamera;
    HWND m_hDlg;
};

/// The preview pad: a thumbnail list of the grabber's units. The unit the
/// provider's camera runs on shows it live: a reading thread snaps a frame
/// about five times a second (through the provider's "Snap" command) and the
/// window's thread draws the newest one; the thread stops, and the last unshown
/// frame is freed, when the list is refilled and in DestroyUI. The other units
/// show an empty frame. A double click accepts.
class ZX_API CZxHWUnitPreviewPad : public CZxGUIElement {
public:
    enum { THUMB_W = 96, THUMB_H = 72 };
    /// The selection is written into `unit` (on WM_USER + 2 and on a double click).
    CZxHWUnitPreviewPad(CZxGenericProviderGrabber* grabber, CZxGenProvider_Low* provider, SZxGrabberHWUnit& unit);
    /// A pad that keeps its own unit record, starting as `start` (for a tab of the caller's window).
    static CZxHWUnitPreviewPad* CreateOwning(CZxGenericProviderGrabber* grabber, CZxGenProvider_Low* provider,
                                             const SZxGrabberHWUnit& start);
    /// The unit record the pad writes.
    const SZxGrabberHWUnit& GetUnit() const { return *m_pUnit; }
    ~CZxHWUnitPreviewPad() override;
    ZxHWnd CreateUI(const wchar_t* name, int32_t style, ZxHWnd parent, IZxGUIElement* owner, void* reserved) override;
    void DestroyUI() override;

    /// Appends a unit to the items (shown at once when the window exists).
    void AddItem(const SZxGrabberHWUnit& unit);
    int GetItemCount() const;
    /// The selected item, or -1.
    int GetSelectedIndex() const;
    HWND GetListWindow() const { return m_hList; }
    /// Live frames drawn into the thumbnail since the window was created.
    int GetFramesShown() const;
    /// Whether the reading thread runs.
    bool IsReading() const;

private:
    static LRESULT CALLBACK WndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
    void Fill();
    int AddThumbnail(bool withFrame);
    void StartReading(int image);
    void StopReading();
    void ShowNewFrame();

    CZxGenericProviderGrabber* m_pGrabber;
    CZxGenProvider_Low* m_pProvider;
    SZxGrabberHWUnit* m_pUnit;
    SZxGrabberHWUnit* m_pOwnedUnit = nullptr;
    struct SItems;
    SItems* m_pItems;
    HWND m_hList = nullptr;
    HIMAGELIST m_hImages = nullptr;
};
