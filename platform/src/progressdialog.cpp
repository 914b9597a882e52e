#include "zxhost/progressdialog.h"

#include "progresswindow.h"

CZxProgressDialog::CZxProgressDialog() = default;

CZxProgressDialog::~CZxProgressDialog() { Close(); }

int CZxProgressDialog::SetRange(int minimum, int maximum)
{
    if (minimum >= maximum)
        return -9;
    m_iMin = minimum;
    m_iMax = maximum;
    m_iPos = m_iPos < m_iMin ? m_iMin : (m_iPos > m_iMax ? m_iMax : m_iPos);
    if (m_bOn)
        SZxProgressWindow::Update(*this);
    return 0;
}

int CZxProgressDialog::Show(ZxHWnd parent, bool cancellable, const wchar_t* title, int flags)
{
    if (m_bOn)
        return -9;
    m_iPos = m_iMin;
    m_bCancelled = false;
    m_hWnd = SZxProgressWindow::Open(*this, parent, cancellable, title ? title : L"", flags);
    if (!m_hWnd && SZxProgressWindow::kHasWindows)
        return -11;
    m_bOn = true;
    SZxProgressWindow::Update(*this);
    return 0;
}

int CZxProgressDialog::SetPos(int position)
{
    if (!m_bOn)
        return -9;
    m_iPos = position < m_iMin ? m_iMin : (position > m_iMax ? m_iMax : position);
    SZxProgressWindow::Update(*this);
    return 0;
}

int CZxProgressDialog::Close()
{
    if (!m_bOn)
        return 0;
    m_bOn = false;
    SZxProgressWindow::Destroy(*this);
    m_hWnd = nullptr;
    m_hOwner = nullptr;
    return 0;
}

void CZxProgressDialog::RegisterCancelCallback(PFN_ZxProgressCancel callback, void* context)
{
    m_pfnCancel = callback;
    m_pCancelContext = context;
}

int CZxProgressDialog::Cancel()
{
    if (!m_pfnCancel)
        return -2;
    if (m_bCancelled)
        return 0;   // one request is enough; the job's owner closes the window
    const int rc = m_pfnCancel(m_pCancelContext);
    if (rc == 0) {
        m_bCancelled = true;
        if (m_bOn)
            SZxProgressWindow::CancelTaken(*this);
    }
    return rc;
}
