// Device selection: the entry points' dialogs driven from inside their modal
// loops with list-view notifications and clicks, over the simulated grabber.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cwchar>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "zx/grabbersupport.h"
#include "zx/selectionids.h"
#include "zx/status.h"
#include "zx_dialog.h"
#include "zx_modal.h"
#include "zx_test.h"
#include "zxsim/grabber.h"

using zxtest::ClickButton;
using zxtest::DriveModal;
using zxtest::ItemText;

namespace {

// The child dialog of an element, found by its title.
HWND Element(HWND host, const wchar_t* title)
{
    for (HWND c = FindWindowExW(host, nullptr, L"#32770", nullptr); c; c = FindWindowExW(host, c, L"#32770", nullptr))
        if (ItemText(c, 0) == title)
            return c;
    return nullptr;
}
HWND UnitElement(HWND host) { return Element(host, L"Select HW Unit"); }
HWND CameraElement(HWND host) { return Element(host, L"Camera Selection"); }

HWND List(HWND element) { return GetDlgItem(element, IDC_SEL_LIST); }
int Rows(HWND element) { return int(ListView_GetItemCount(List(element))); }
int Selected(HWND element) { return int(ListView_GetNextItem(List(element), -1, LVNI_SELECTED)); }

std::wstring Cell(HWND list, int row, int column)
{
    wchar_t buf[300] = {};
    ListView_GetItemText(list, row, column, buf, 300);
    return buf;
}

// The user clicks a row: the list view itself reports LVN_ITEMCHANGED to the element.
void SelectRow(HWND list, int row)
{
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    if (row >= 0)
        ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

// A double click on a row, as the list view reports it.
void DoubleClick(HWND list, int row)
{
    SelectRow(list, row);
    NMITEMACTIVATE nm{};
    nm.hdr.hwndFrom = list;
    nm.hdr.idFrom = UINT_PTR(GetDlgCtrlID(list));
    nm.hdr.code = NM_DBLCLK;
    nm.iItem = row;
    SendMessageW(GetParent(list), WM_NOTIFY, nm.hdr.idFrom, reinterpret_cast<LPARAM>(&nm));
}

std::unique_ptr<SZxGrabberHWUnit> Unit(const wchar_t* name = L"", const wchar_t* connection = L"")
{
    return std::make_unique<SZxGrabberHWUnit>(name, connection);
}

// Every opening is over an owner, in the other place each time (see
// zxtest::OwnerWindow), so a case that opens a dialog twice meets both: the
// dialog must come up centred over it and wholly on its monitor.
int OverOwner(const std::function<int(HWND)>& open, const std::function<void(HWND)>& script, bool* ran = nullptr)
{
    static int openings = 0;
    zxtest::OwnerWindow owner(openings++ % 2);
    return DriveModal([&] { return open(owner.Hwnd()); }, [&](HWND host) {
        EXPECT_TRUE(zxtest::CentredOnOwner(host, owner.Hwnd()));
        script(host);
    }, ran);
}
int SelectUnit(CZxSimGrabber& g, SZxGrabberHWUnit& unit, const std::function<void(HWND)>& script,
               bool* ran = nullptr, bool flag = false)
{
    return OverOwner([&](HWND o) { return CZxGrabberSupport::HWUnitSelect(o, &g, unit, flag); }, script, ran);
}
int SelectCamera(CZxSimGrabber& g, CZxStringW& camera, const std::function<void(HWND)>& script)
{
    return OverOwner([&](HWND o) { return CZxGrabberSupport::CameraSelect(o, &g, camera); }, script);
}
int SelectBoth(CZxSimGrabber& g, SZxGrabberHWUnit& unit, CZxStringW& camera, const std::function<void(HWND)>& script)
{
    return OverOwner([&](HWND o) { return CZxGrabberSupport::HWUnitAndCameraSelect(o, &g, unit, camera, true); },
                     script);
}

} // namespace

TEST(Selection, WithoutGrabberEverySelectFails)
{
    auto unit = Unit();
    CZxStringW camera(L"kept");
    EXPECT_EQ(CZxGrabberSupport::HWUnitSelect(nullptr, nullptr, *unit, false), ZX_E_FAIL);
    EXPECT_EQ(CZxGrabberSupport::CameraSelect(nullptr, nullptr, camera), ZX_E_FAIL);
    EXPECT_EQ(CZxGrabberSupport::HWUnitAndCameraSelect(nullptr, nullptr, *unit, camera, false), ZX_E_FAIL);
    EXPECT_EQ(CZxGrabberSupport::HWUnitPreviewTab(nullptr, nullptr), nullptr);
    EXPECT_STREQ(camera.GetString(), L"kept");
    CZxSimGrabber g;
    EXPECT_EQ(CZxGrabberSupport::HWUnitPreviewTab(nullptr, &g), nullptr);   // no previews
}

TEST(Selection, UnitListPreselectsOnlyAnExactMatchAndCancelIsMinus8)
{
    CZxSimGrabber g;
    g.SetConnectionUiAvailable(false);
    g.AddUnit(L"SimLink 2", L"sim://link2");
    struct Case {
        const wchar_t *name, *connection;
        int selected;
    } cases[] = {{L"SimLink 1", L"sim://link1?speed=full", 1},
                 {L"SimLink 1", L"sim://link1", 0},
                 {L"SimLink 9", L"sim://link1?speed=full", 0}};
    for (const Case& c : cases) {
        auto unit = Unit(c.name, c.connection);
        EXPECT_EQ(SelectUnit(g, *unit, [&](HWND host) {
            EXPECT_EQ(ItemText(host, 0), L"Select HW Unit");
            HWND el = UnitElement(host);
            EXPECT_EQ(Rows(el), 3);
            EXPECT_EQ(Cell(List(el), 1, 1), L"sim://link1?speed=full");
            EXPECT_EQ(Selected(el), c.selected) << c.connection;
            ClickButton(host, IDCANCEL);
        }), ZX_E_CANCELLED);
        EXPECT_STREQ(unit->m_wszName, c.name);   // cancelled: the record stays
    }
}

TEST(Selection, TitleNamesTheGrabberWhenThereAreSeveralBesideTheLibrarysIcon)
{
    CZxSimGrabber g(2);
    for (int active : {0, 1}) {
        g.SecGrabber_SetActive(active);
        auto unit = Unit();
        SelectUnit(g, *unit, [&](HWND host) {
            EXPECT_EQ(ItemText(host, 0), active ? L"Select Secondary Grabber HW Unit (Simulated Camera)"
                                                : L"Select Primary Grabber HW Unit (Simulated Camera)");
            EXPECT_TRUE(SendMessageW(host, WM_GETICON, ICON_SMALL, 0));
            EXPECT_TRUE(SendMessageW(host, WM_GETICON, ICON_BIG, 0));
            ClickButton(host, IDCANCEL);
        });
    }
}

TEST(Selection, StartUpDecisionTakesTheOnlyUnitOrGivesUp)
{
    struct Case {
        int units;
        bool connectionUi, flag;
        bool dialogShown;
        int result;
        const wchar_t* chosen;
    } cases[] = {
        {1, false, false, false, ZX_OK, L"Only"},            // taken without asking
        {1, false, true, true, ZX_E_CANCELLED, L""},         // the flag keeps the dialog
        {1, true, false, true, ZX_E_CANCELLED, L""},         // two rows: the user decides
        {0, false, false, false, ZX_E_CANCELLED, L""},       // nothing to choose
        {0, true, false, false, ZX_OK, L""},                 // only the user row, connection declined: unit kept
    };
    for (const Case& c : cases) {
        CZxSimGrabber g;
        g.RemoveAllUnits();
        if (c.units)
            g.AddUnit(L"Only", L"sim://only");
        g.SetConnectionUiAvailable(c.connectionUi);
        auto unit = Unit();
        bool ran = false;
        EXPECT_EQ(SelectUnit(g, *unit, [](HWND host) { ClickButton(host, IDCANCEL); }, &ran, c.flag), c.result);
        EXPECT_EQ(ran, c.dialogShown) << c.units << c.connectionUi << c.flag;
        EXPECT_STREQ(unit->m_wszName, c.chosen);
    }
}

TEST(Selection, UnitListIsCappedAndAcceptsClicksDoubleClicksAndTheUserRow)
{
    CZxSimGrabber g;
    for (int i = 2; i < 40; ++i)
        g.AddUnit(CZxStringW::Formatted(L"Bulk %02d", i), CZxStringW::Formatted(L"sim://bulk%d", i));
    auto unit = Unit();
    // Selection by a click on row 2 (the second unit), then OK.
    EXPECT_EQ(SelectUnit(g, *unit, [&](HWND host) {
        HWND el = UnitElement(host);
        const int rows = Rows(el);
        EXPECT_EQ(rows, 33);   // the user row and 32 of 40 units
        EXPECT_EQ(Cell(List(el), 0, 0), L"User Defined Connection...");
        EXPECT_EQ(Cell(List(el), rows - 1, 0), L"Bulk 31");
        // The name column: the widest of its title and the unit names (not the user row), plus 15.
        int widest = ListView_GetStringWidth(List(el), L"HW Unit Name");
        for (int r = 1; r < rows; ++r)
            widest = std::max(widest, ListView_GetStringWidth(List(el), Cell(List(el), r, 0).c_str()));
        EXPECT_EQ(ListView_GetColumnWidth(List(el), 0), widest + 15);
        SelectRow(List(el), 2);
        ClickButton(host, IDOK);
    }), ZX_OK);
    EXPECT_STREQ(unit->m_wszName, L"SimLink 1");
    EXPECT_STREQ(unit->m_wszConnectionString, L"sim://link1?speed=full");

    // A double click accepts at once.
    EXPECT_EQ(SelectUnit(g, *unit, [](HWND host) { DoubleClick(List(UnitElement(host)), 5); }), ZX_OK);
    EXPECT_STREQ(unit->m_wszName, L"Bulk 04");   // row 0 is the user row

    // The user row opens the connection dialog; the defined unit is added and chosen.
    g.QueueConnection(SZxGrabberHWUnit(L"Lab", L"sim://lab"));
    EXPECT_EQ(SelectUnit(g, *unit, [](HWND host) { DoubleClick(List(UnitElement(host)), 0); }), ZX_OK);
    EXPECT_STREQ(unit->m_wszConnectionString, L"sim://lab");
    // OK ends the dialog accepted whatever the element answers: with nothing selected, or
    // with the user row whose connection dialog is declined (OK or a double click),
    // the unit stays as it was.
    for (int row : {-1, 0, 100}) {
        EXPECT_EQ(SelectUnit(g, *unit, [&](HWND host) {
            if (row == 100)
                return DoubleClick(List(UnitElement(host)), 0);
            SelectRow(List(UnitElement(host)), row);
            ClickButton(host, IDOK);
        }), ZX_OK);
        EXPECT_STREQ(unit->m_wszName, L"Lab") << row;
    }
}

TEST(Selection, CameraListCapsTypesStatusAndTakesTheFirstRowByDefault)
{
    CZxSimGrabber g;
    g.AddCameras(L"SimLink 0", L"Bulk", 20);
    const double oldZoom = ZX_SetGUIZoom(1.5);
    CZxStringW camera;
    EXPECT_EQ(SelectCamera(g, camera, [&](HWND host) {
        EXPECT_EQ(ItemText(host, 0), L"Select Camera");
        HWND el = CameraElement(host);
        EXPECT_EQ(Rows(el), 15);
        EXPECT_EQ(Selected(el), 0);   // the current camera is preselected
        EXPECT_EQ(ListView_GetColumnWidth(List(el), 1), 120);
        // Bulk 03: the third added camera (mono, not connected), after the unit's own two.
        const wchar_t* const row2[] = {L"Bulk 03", L"Mono", L"Unknown"};
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ(Cell(List(el), 4, c), row2[c]);
        EXPECT_EQ(ItemText(el, IDC_SEL_LABEL2), L"Simulated Camera");
        SelectRow(List(el), -1);
        ClickButton(host, IDOK);
    }), ZX_OK);
    ZX_SetGUIZoom(oldZoom);
    EXPECT_STREQ(camera.GetString(), L"SIM-M2048-0001");   // nothing selected: row 0

    EXPECT_EQ(SelectCamera(g, camera, [](HWND host) { DoubleClick(List(CameraElement(host)), 3); }), ZX_OK);
    EXPECT_STREQ(camera.GetString(), L"Bulk 02");
    EXPECT_EQ(SelectCamera(g, camera, [](HWND host) { ClickButton(host, IDCANCEL); }), ZX_E_FAIL);
}

TEST(Selection, CameraOfADuplicatedNameIsPreselectedOnItsLastRow)
{
    CZxSimGrabber g;
    SZxGrabberCameraDesc twin{};
    wcscpy(twin.m_wszName, L"SIM-M2048-0001");   // the current camera's identity, listed again
    wcscpy(twin.m_wszDisplayName, L"Twin");
    twin.m_bMono = true;
    ASSERT_TRUE(g.AddCamera(L"SimLink 0", twin));
    CZxStringW camera;
    EXPECT_EQ(SelectCamera(g, camera, [&](HWND host) {
        HWND el = CameraElement(host);
        EXPECT_EQ(Rows(el), 3);
        EXPECT_EQ(Selected(el), 2);
        EXPECT_EQ(Cell(List(el), 2, 0), L"Twin");
        ClickButton(host, IDOK);
    }), ZX_OK);
    EXPECT_STREQ(camera.GetString(), L"SIM-M2048-0001");
}

TEST(Selection, MultiHeadDriversWidenTheCameraListToTheLongNames)
{
    CZxSimGrabber g;
    g.AddCameras(L"SimLink 1", L"Scientific CMOS camera with a long model designation", 1);
    LONG width[2] = {};
    int i = 0;
    for (const wchar_t* cls : {ZXSIM_DRIVER_CLASS, L"CZxGrabberDriverHeadU3"}) {
        g.SetDriverClassName(cls);
        CZxStringW camera;
        SelectCamera(g, camera, [&](HWND host) {
            HWND el = CameraElement(host);
            // The host sizes the list to its area; the frame keeps the widened size.
            RECT r{};
            GetWindowRect(GetDlgItem(el, IDC_SEL_FRAME), &r);
            width[i] = r.right - r.left;
            EXPECT_EQ(Cell(List(el), 1, 0), i ? L"Sim C2048 (SN 0002)" : L"Sim C2048");
            ClickButton(host, IDCANCEL);
        });
        ++i;
    }
    EXPECT_GT(width[1], width[0]);
}

TEST(Selection, CombinedDialogFollowsTheUnitAndCancelIsMinus9)
{
    CZxSimGrabber g;
    g.SetConnectionUiAvailable(false);
    g.AddUnit(L"Empty", L"sim://empty");
    auto unit = Unit();
    CZxStringW camera;
    EXPECT_EQ(SelectBoth(g, *unit, camera, [&](HWND host) {
        HWND units = UnitElement(host), cams = CameraElement(host);
        SelectRow(List(units), 2);   // "Empty": the camera chooser ends
        EXPECT_FALSE(IsWindowVisible(cams));
        SelectRow(List(units), 1);
        EXPECT_TRUE(IsWindowVisible(cams));
        EXPECT_EQ(Rows(cams), 1);
        EXPECT_EQ(Cell(List(cams), 0, 0), L"Sim M1024");
        ClickButton(host, IDOK);
    }), ZX_OK);
    EXPECT_STREQ(unit->m_wszName, L"SimLink 1");
    EXPECT_STREQ(camera.GetString(), L"SIM-M1024-0003");
    EXPECT_EQ(SelectBoth(g, *unit, camera, [](HWND host) { ClickButton(host, IDCANCEL); }), ZX_E_FAIL);
}

TEST(Selection, PreviewPadListsUnitsAddsConnectionsAndAcceptsDoubleClicks)
{
    CZxSimGrabber g;
    g.SetPreviewAvailable(true);
    auto unit = Unit();
    auto padList = [](HWND host) { return FindWindowExW(FindWindowExW(host, nullptr, L"ZxHWUnitPreviewPad", nullptr),
                                                        nullptr, WC_LISTVIEWW, nullptr); };
    EXPECT_EQ(SelectUnit(g, *unit, [&](HWND host) {
        EXPECT_EQ(ItemText(host, IDC_SEL_ADD), L"Add...");
        EXPECT_EQ(ListView_GetItemCount(padList(host)), 2);
        SelectRow(padList(host), 1);
        ClickButton(host, IDOK);
    }), ZX_OK);
    EXPECT_STREQ(unit->m_wszName, L"SimLink 1");

    // "Add..." defines a unit; a double click on it accepts through the element's event.
    g.QueueConnection(SZxGrabberHWUnit(L"Lab", L"sim://lab"));
    EXPECT_EQ(SelectUnit(g, *unit, [&](HWND host) {
        ClickButton(host, IDC_SEL_ADD);
        EXPECT_EQ(ListView_GetItemCount(padList(host)), 3);
        DoubleClick(padList(host), 2);
    }), ZX_OK);
    EXPECT_STREQ(unit->m_wszConnectionString, L"sim://lab");
}

TEST(Selection, EventForwarderNeedsItsContextAndTurnsAcceptIntoOk)
{
    zxtest::DiagCapture diag;
    SZxGUIElementEvent e{};
    e.m_uiSize = sizeof(SZxGUIElementEvent);
    e.m_iCode = ZX_GUIEVENT_ACCEPT;
    EXPECT_EQ(CZxGrabberSupport::ElementEventForwarder(nullptr, &e), 0);
    EXPECT_TRUE(diag.Has(L"pParam == NULL", L"czxgrabbersupport"));

    static int seen = 0;
    static WPARAM command = 0;
    seen = 0;
    command = 0;
    HWND target = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(target, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(+[](HWND h, UINT m, WPARAM w, LPARAM l) -> LRESULT {
        if (m == WM_COMMAND)
            command = w;
        return DefWindowProcW(h, m, w, l);
    }));
    CZxGrabberSupport::SZxElementForward fwd{target, [](void*, SZxGUIElementEvent*) { return ++seen; }, nullptr};
    e.m_iCode = ZX_GUIEVENT_SELCHANGE;
    CZxGrabberSupport::ElementEventForwarder(&fwd, &e);
    EXPECT_EQ(command, 0u);
    e.m_iCode = ZX_GUIEVENT_ACCEPT;
    CZxGrabberSupport::ElementEventForwarder(&fwd, &e);
    EXPECT_EQ(command, WPARAM(0x10001));
    EXPECT_EQ(seen, 2);
    DestroyWindow(target);
}

namespace {
// The tips of the tooltip window owned by `host`, in the order added.
std::vector<std::wstring> Tooltips(HWND host)
{
    std::vector<std::wstring> tips;
    for (HWND t = FindWindowExW(nullptr, nullptr, TOOLTIPS_CLASSW, nullptr); t;
         t = FindWindowExW(nullptr, t, TOOLTIPS_CLASSW, nullptr)) {
        if (GetWindow(t, GW_OWNER) != host)
            continue;
        for (int i = 0; i < int(SendMessageW(t, TTM_GETTOOLCOUNT, 0, 0)); ++i) {
            wchar_t text[80] = {};
            TOOLINFOW ti{};
            ti.cbSize = sizeof ti;
            ti.lpszText = text;
            SendMessageW(t, TTM_ENUMTOOLSW, WPARAM(i), reinterpret_cast<LPARAM>(&ti));
            tips.push_back(text);
        }
    }
    return tips;
}

const int kOrientationIds[] = {IDC_SEL_ROTATE_LEFT, IDC_SEL_ROTATE_RIGHT, IDC_SEL_ROTATE_180,
                               IDC_SEL_FLIP_H,      IDC_SEL_FLIP_V,       IDC_SEL_FLIP_NONE};

// Handles what the dialog posted to itself.
void Pump() { zxtest::TestDialog::Pump(); }

// Which orientation button shows pressed: its id, 0 for none, -1 for more than one.
int Pressed(HWND host)
{
    int pressed = 0;
    for (int id : kOrientationIds)
        if (IsDlgButtonChecked(host, id) == BST_CHECKED)
            pressed = pressed ? -1 : id;
    return pressed;
}
} // namespace

TEST(Selection, CombinedDialogsImageButtonsOrientTheChosenCameraThroughTheGrabberAndShowItAgainOnReopening)
{
    CZxSimGrabber g;
    auto unit = Unit();
    CZxStringW camera;
    EXPECT_EQ(SelectBoth(g, *unit, camera, [&](HWND host) {
        for (int id : kOrientationIds)
            EXPECT_TRUE(SendDlgItemMessageW(host, id, BM_GETIMAGE, IMAGE_BITMAP, 0)) << id;
        EXPECT_EQ(Tooltips(host), (std::vector<std::wstring>{L"Rotate Left", L"Rotate Right", L"Rotate 180\u00b0",
                                                             L"Flip Horizontally", L"Flip Vertically",
                                                             L"No Rotation or Flip"}));
        HWND cams = CameraElement(host);
        SelectRow(List(cams), 0);
        Pump();
        EXPECT_EQ(Pressed(host), IDC_SEL_FLIP_NONE);
        ClickButton(host, IDC_SEL_ROTATE_RIGHT);
        EXPECT_EQ(Pressed(host), IDC_SEL_ROTATE_RIGHT) << "exactly the clicked one";
        SelectRow(List(cams), 1);
        ClickButton(host, IDC_SEL_FLIP_H);
        EXPECT_EQ(Pressed(host), IDC_SEL_FLIP_H);
        SelectRow(List(cams), 0);
        ClickButton(host, IDC_SEL_ROTATE_RIGHT);
        EXPECT_EQ(Pressed(host), IDC_SEL_ROTATE_RIGHT);
        ClickButton(host, IDCANCEL);
    }), ZX_E_FAIL);
    int32_t first = -1, second = -1;
    EXPECT_EQ(g.CameraOrientationGet_WRP(L"SIM-M2048-0001", first), ZX_OK);
    EXPECT_EQ(g.CameraOrientationGet_WRP(L"SIM-C2048-0002", second), ZX_OK);
    EXPECT_EQ(first, ZX_ORIENT_ROTATE_RIGHT) << "even a cancelled dialog hands a click on to the driver";
    EXPECT_EQ(second, ZX_ORIENT_FLIP_H);
    EXPECT_EQ(g.Camera(0)->GetOrientation(), ZX_ORIENT_ROTATE_RIGHT) << "the open camera turns its frames";

    // Reopened, the chosen camera's orientation shows without a click.
    SelectBoth(g, *unit, camera, [&](HWND host) {
        SelectRow(List(CameraElement(host)), 1);
        Pump();
        EXPECT_EQ(Pressed(host), IDC_SEL_FLIP_H);
        ClickButton(host, IDCANCEL);
    });
}

// The tab variant, a pad the caller places into its own window, opened and
// closed a few times: it lists the units, the live unit's thumbnail follows
// the camera while the pad is up; once closed nothing is read or drawn, and
// the window, image and frame handles are all given back.
TEST(Selection, PreviewPadReadsTheLiveUnitUntilItsWindowGoesAndLeavesNothingBehind)
{
    CZxSimGrabber g;
    g.SetPreviewAvailable(true);
    CZxSimCamera& cam = *g.Camera(0);
    HWND owner = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 400, 300, nullptr, nullptr, nullptr, nullptr);
    DWORD gdi = 0, user = 0;
    for (int round = 0; round < 4; ++round) {
        SCOPED_TRACE(round);
        auto* pad = static_cast<CZxHWUnitPreviewPad*>(CZxGrabberSupport::HWUnitPreviewTab(nullptr, &g));
        ASSERT_NE(pad, nullptr);
        ASSERT_NE(pad->CreateUI(L"HWUnitPreviewPad", 0, reinterpret_cast<ZxHWnd>(owner), nullptr, nullptr), nullptr);
        EXPECT_EQ(pad->GetItemCount(), 2);
        EXPECT_TRUE(pad->IsReading());
        EXPECT_TRUE(zxtest::PumpUntil([&] { return pad->GetFramesShown() >= 3; }))
            << pad->GetFramesShown() << " frames shown";
        pad->DestroyUI();
        EXPECT_FALSE(pad->IsReading());
        const int shown = pad->GetFramesShown();
        const size_t snaps = zxtest::Calls(cam, L"Command_WRP(Snap").size();
        for (int i = 0; i < 30; ++i) {
            Pump();
            Sleep(10);
        }
        EXPECT_EQ(zxtest::Calls(cam, L"Command_WRP(Snap").size(), snaps) << "read after close";
        EXPECT_EQ(pad->GetFramesShown(), shown) << "drawn after close";
        delete pad;
        // The first round may leave what the system caches (classes, fonts); the later ones nothing.
        const DWORD gdiNow = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
        const DWORD userNow = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
        if (round == 0) {
            gdi = gdiNow;
            user = userNow;
        } else {
            EXPECT_LE(gdiNow, gdi);
            EXPECT_LE(userNow, user);
        }
    }
    DestroyWindow(owner);
}
