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

/// Static entry points. Results: ZX_OK accepted, ZX_E_CANCELLED the unit dialog was cancelled,
/// ZX_E_FAIL any other failure (no grabber, no element, another end of the dialog).
/// Each runs a modal dialog on the calling (UI) thread.
class ZX_API CZxGrabberSupport {
public:
    /// Lets the user pick a hardware unit of `grabber` in a dialog over `parent`
    /// (the preview pad when the grabber has previews, else the grabber's own
    /// chooser or the generic list); on ZX_OK the unit is in `unit`. With `flag`
    /// the generic list never decides on its own when it has a single unit.
    /// OK, and the element's answers 1 to 4, end the dialog accepted (ZX_OK); its -2
    /// outside OK and Cancel end it cancelled (ZX_E_CANCELLED). The user-defined row
    /// first offers the grabber's connection dialog; when the user declines it, or
    /// presses OK with no row selected, `unit` keeps the unit it held (the caller
    /// goes on with its unit rather than seeing a failure).
    static int HWUnitSelect(HWND parent, CZxGenericProviderGrabber* grabber, SZxGrabberHWUnit& unit, bool flag);
    /// Lets the user pick a camera; `camera` is first set to the current camera's
    /// name and holds the choice on ZX_OK. A cancel gives ZX_E_FAIL.
    static int CameraSelect(HWND parent, CZxGenericProviderGrabber* grabber, CZxStringW& camera);
    /// Unit and camera in one dialog; on ZX_OK both records hold the choice. A
    /// cancel gives ZX_E_FAIL here. `flag` is handed to the dialog.
    static int HWUnitAndCameraSelect(HWND parent, CZxGenericProviderGrabber* grabber, SZxGrabberHWUnit& unit,
                                     CZxStringW& camera, bool flag);
    /// A preview pad for a tab of the caller's window (the caller creates, destroys
    /// and deletes it), or null without a grabber or previews.
    static IZxGUIElement* HWUnitPreviewTab(HWND parent, CZxGenericProviderGrabber* grabber);

    /// Hands element events to a further handler and turns the accept event
    /// (code 20) into OK of the dialog. `context` is an SZxElementForward.
    struct SZxElementForward {
        /// The dialog the element lives in.
        HWND hDlg;
        /// The further handler (may be null).
        PFN_ZxGUIElementHandler pfnHandler;
        /// Its context.
        void* pHandlerContext;
    };
    /// An element handler: passes `event` to the further handler and turns code 20
    /// into OK of the dialog; the further handler's answer (0 without one).
    static int ElementEventForwarder(void* context, SZxGUIElementEvent* event);
};

/// The generic hardware-unit chooser: a child dialog ("SHOW_HWUNITS") with a
/// report list of the grabber's units (at most 32).
/// @note UI thread only; created, positioned and destroyed by the selection dialogs.
class ZX_API CZxHWUnitSelectionUI : public CZxGUIControlElement {
public:
    /// Most units listed (MAX_UNITS) and characters of the title (TITLE_CCH).
    enum { MAX_UNITS = 32 /**< most units listed */, TITLE_CCH = 324 /**< characters of the title */ };
    /// With `flag` set the element never decides on its own at start.
    CZxHWUnitSelectionUI(CZxGenericProviderGrabber* grabber, SZxGrabberHWUnit& unit, bool flag);
    /// Destroys the window when it still exists.
    ~CZxHWUnitSelectionUI() override;
    ZxHWnd CreateUI(const wchar_t* name, int32_t style, ZxHWnd parent, IZxGUIElement* owner, void* reserved) override;
    void DestroyUI() override;
    /// Dialog procedure of the "SHOW_HWUNITS" child (the element in its user data).
    static INT_PTR CALLBACK dlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);

protected:
    /// Whether the list has the "Connection String" column.
    virtual bool HasConnectionColumn() const { return true; }
    /// The shared body of the unit choosers' dialog procedures.
    static INT_PTR Proc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);
    /// Creates the child dialog `name` of the library with `proc` under `parent`.
    ZxHWnd CreateFrom(DLGPROC proc, const wchar_t* name, ZxHWnd parent);

public:
    /// The window title.
    wchar_t m_wszTitle[TITLE_CCH];
    /// The child dialog (null before CreateUI).
    HWND m_hDlg;
    /// The element's rectangle in its parent.
    CZxRect m_rect;
    /// The grabber whose units are listed (not owned).
    CZxGenericProviderGrabber* m_pGrabber;
    /// The caller's record the choice is written to.
    SZxGrabberHWUnit* m_pUnit;
    /// Never decide on its own at start.
    bool m_bFlag;
};

/// The unit chooser without the connection-string column. Its two counters
/// report the last list: units listed and the row taken over (both 0 before).
class ZX_API CZxSimpleHWUnitSelectionUI : public CZxHWUnitSelectionUI {
public:
    /// Lists `grabber`'s units and writes the choice into `unit`; decides on its
    /// own when there is a single unit.
    CZxSimpleHWUnitSelectionUI(CZxGenericProviderGrabber* grabber, SZxGrabberHWUnit& unit);
    ZxHWnd CreateUI(const wchar_t* name, int32_t style, ZxHWnd parent, IZxGUIElement* owner, void* reserved) override;
    /// Dialog procedure of the simple chooser's child dialog.
    static INT_PTR CALLBACK dlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);

    /// Units in the last list.
    int32_t m_iListedUnits;
    /// Row whose unit was last taken over.
    int32_t m_iTakenRow;

protected:
    bool HasConnectionColumn() const override { return false; }
};

/// The generic camera chooser: a child dialog ("SHOW_CAMERAS") listing the
/// cameras of one unit (at most 15); the choice is a camera name. The caller's
/// camera is pre-selected on the last row of that name: names are identities,
/// so rows of one name are the same choice.
class ZX_API CZxCameraSelectionUI : public CZxGUIControlElement {
public:
    /// Most cameras listed per unit.
    enum { MAX_CAMERAS = 15 /**< most cameras listed per unit */ };
    /// Lists `grabber`'s cameras and writes the chosen name into `camera`.
    CZxCameraSelectionUI(CZxGenericProviderGrabber* grabber, CZxStringW& camera);
    /// Destroys the window when it still exists.
    ~CZxCameraSelectionUI() override;
    ZxHWnd CreateUI(const wchar_t* name, int32_t style, ZxHWnd parent, IZxGUIElement* owner, void* reserved) override;
    void DestroyUI() override;
    /// Dialog procedure of the "SHOW_CAMERAS" child (the element in its user data).
    static INT_PTR CALLBACK dlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);

    /// The grabber whose cameras are listed (not owned).
    CZxGenericProviderGrabber* m_pGrabber;
    /// The caller's camera name, written on take-over.
    CZxStringW& m_rCamera;
    /// The child dialog (null before CreateUI).
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
    /// Thumbnail size in pixels.
    enum { THUMB_W = 96 /**< thumbnail width in pixels */, THUMB_H = 72 /**< thumbnail height in pixels */ };
    /// The selection is written into `unit` (on WM_USER + 2 and on a double click).
    CZxHWUnitPreviewPad(CZxGenericProviderGrabber* grabber, CZxGenProvider_Low* provider, SZxGrabberHWUnit& unit);
    /// A pad that keeps its own unit record, starting as `start` (for a tab of the caller's window).
    static CZxHWUnitPreviewPad* CreateOwning(CZxGenericProviderGrabber* grabber, CZxGenProvider_Low* provider,
                                             const SZxGrabberHWUnit& start);
    /// The unit record the pad writes.
    const SZxGrabberHWUnit& GetUnit() const { return *m_pUnit; }
    /// Destroys the window and the thumbnails (and an owned unit record).
    ~CZxHWUnitPreviewPad() override;
    ZxHWnd CreateUI(const wchar_t* name, int32_t style, ZxHWnd parent, IZxGUIElement* owner, void* reserved) override;
    void DestroyUI() override;

    /// Appends a unit to the items (shown at once when the window exists).
    void AddItem(const SZxGrabberHWUnit& unit);
    /// Number of units listed.
    int GetItemCount() const;
    /// The selected item, or -1.
    int GetSelectedIndex() const;
    /// The thumbnail list view (null before CreateUI).
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
