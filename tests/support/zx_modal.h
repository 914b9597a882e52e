// Drives modal dialogs from inside their own message loop: a one-shot timer
// fires once the loop runs, finds the thread's active top-level dialog and runs
// a script on it that acts as a user would (clicks, list notifications).
#pragma once
#include <windows.h>

#include <functional>
#include <string>

namespace zxtest {

/// Calls `open` (which shows a modal dialog and returns its result) and runs
/// `script` on the dialog once it is up. A dialog that ends before its loop
/// runs never sees the script; `*scriptRan` (may be null) tells which happened.
/// A dialog the script leaves open is cancelled and fails the test.
int DriveModal(const std::function<int()>& open, const std::function<void(HWND)>& script, bool* scriptRan = nullptr);

/// A button click through the button itself (BM_CLICK), so auto check boxes and
/// radio buttons change state and the dialog gets BN_CLICKED.
void ClickButton(HWND dlg, int id);
/// Selects a combo entry and tells the dialog, as a user's choice does.
void SelectCombo(HWND dlg, int id, int index);
/// The window text of an item (or of the dialog for id 0).
std::wstring ItemText(HWND dlg, int id);

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
