// Drives modal dialogs from inside their own message loop: a one-shot timer
// fires once the loop runs, finds the thread's active top-level dialog and runs
// a script on it that acts as a user would (clicks, list notifications).
#pragma once
#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace zxtest {

/// Calls `open` (which shows a modal dialog and returns its result) and runs
/// `script` on the dialog once it is up. A dialog that ends before its loop
/// runs never sees the script; `*scriptRan` tells which happened. Without
/// `scriptRan` the dialog is expected: a script that never ran fails the test,
/// so the script's own assertions cannot pass by not running.
/// A dialog the script leaves open is cancelled and fails the test.
int DriveModal(const std::function<int()>& open, const std::function<void(HWND)>& script, bool* scriptRan = nullptr);

/// A button click through the button itself (BM_CLICK), so auto check boxes and
/// radio buttons change state and the dialog gets BN_CLICKED.
void ClickButton(HWND dlg, int id);
/// Selects a combo entry and tells the dialog, as a user's choice does.
void SelectCombo(HWND dlg, int id, int index);
/// The window text of an item (or of the dialog for id 0).
std::wstring ItemText(HWND dlg, int id);

/// A visible top-level window to own a modal dialog. Place 0 puts it off the
/// centre of the primary monitor's work area, so a dialog centred on the monitor
/// is not centred over it; place 1 hangs it over the work area's bottom-right
/// corner, so a dialog centred over it would leave the monitor.
class OwnerWindow {
public:
    explicit OwnerWindow(int place);
    ~OwnerWindow();
    OwnerWindow(const OwnerWindow&) = delete;
    OwnerWindow& operator=(const OwnerWindow&) = delete;
    HWND Hwnd() const { return m_hwnd; }

private:
    HWND m_hwnd = nullptr;
};

/// "Centred over its owner and fully on the owner's monitor", measured on window
/// rectangles (GetWindowRect, frames included): the dialog lies inside the work
/// area of the monitor MonitorFromWindow gives for the owner, and on each axis
/// its centre is within 1 pixel of the owner's centre, or, where the centred
/// place would cross the work area's edge, the dialog touches that edge.
::testing::AssertionResult CentredOnOwner(HWND dlg, HWND owner);

/// Records message boxes instead of showing them while it lives.
class MessageBoxCapture {
public:
    MessageBoxCapture();
    ~MessageBoxCapture();
    int Count() const;
    std::wstring LastText() const;
    std::wstring LastTitle() const;
    unsigned LastFlags() const;
};

} // namespace zxtest
