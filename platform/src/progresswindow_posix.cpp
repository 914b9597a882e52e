// Without a window system the dialog keeps its state and shows nothing.
#include "progresswindow.h"

const bool SZxProgressWindow::kHasWindows = false;

ZxHWnd SZxProgressWindow::Open(CZxProgressDialog&, ZxHWnd, bool, const wchar_t*, int) { return nullptr; }
void SZxProgressWindow::Update(CZxProgressDialog&) {}
void SZxProgressWindow::CancelTaken(CZxProgressDialog&) {}
void SZxProgressWindow::Destroy(CZxProgressDialog&) {}
