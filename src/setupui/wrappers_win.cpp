// The two thin wrappers that give the dialog host and the GUI-element host one
// interface. They forward; what a host lacks does nothing.
#include "zx/grabberuibase.h"

// ---- Dialog host ----

CZxGenProvider_Low* CZxGrabberUI_Wrapper::GetGeneric() const { return m_pHost->GetProvider(); }
CZxISControlList& CZxGrabberUI_Wrapper::GetControls() const { return m_pHost->GetControls(); }
uint32_t CZxGrabberUI_Wrapper::GetUserFlags() const { return 0; }
bool CZxGrabberUI_Wrapper::IsEasySetting() const { return false; }
bool CZxGrabberUI_Wrapper::IS_IsModal() { return m_pHost->IS_IsModal(); }

void CZxGrabberUI_Wrapper::IS_InitDialog(ZxHWnd hwnd, bool* outFlag, uint32_t* outValue)
{
    m_pHost->IS_InitDialog(hwnd, outFlag, outValue);
}

void CZxGrabberUI_Wrapper::IS_Histo(int32_t left, int32_t top, int32_t height, int32_t magnifierId,
                                    int32_t rangeText0, int32_t rangeText1, int32_t rangeText2)
{
    m_pHost->IS_Histo(left, top, height, magnifierId, rangeText0, rangeText1, rangeText2);
}

void CZxGrabberUI_Wrapper::IS_Help(int32_t buttonId, const wchar_t* topic) { m_pHost->IS_Help(buttonId, topic); }

CZxMenu* CZxGrabberUI_Wrapper::IS_CommandX(int32_t buttonId, uint32_t flags)
{
    return m_pHost->IS_CommandX(buttonId, flags);
}

void CZxGrabberUI_Wrapper::IS_CheckFQSync(int32_t checkId) { m_pHost->IS_CheckFQSync(checkId); }

bool CZxGrabberUI_Wrapper::IS_Message(ZxHWnd hwnd, unsigned int msg, int64_t wParam, int64_t lParam,
                                      int64_t* result, CZxISControl** control)
{
    return m_pHost->IS_Message(hwnd, msg, wParam, lParam, result, control);
}

void CZxGrabberUI_Wrapper::IS_ChangeLiveMode(ZxHWnd hwnd, uint32_t mode) { m_pHost->IS_ChangeLiveMode(hwnd, mode); }
ZxHWnd CZxGrabberUI_Wrapper::IS_SetHDLGActive(ZxHWnd hwnd) { return m_pHost->IS_SetHDLGActive(hwnd); }
void CZxGrabberUI_Wrapper::IS_OpenFreeTopicHelp(const wchar_t* topic) { m_pHost->IS_OpenFreeTopicHelp(topic); }
bool CZxGrabberUI_Wrapper::IS_FQModeChangeAllowed() { return m_pHost->IS_FQModeChangeAllowed(); }
