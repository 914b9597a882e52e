// Field-by-field comparison of capture-button records (names up to their terminator).
#pragma once
#include <string>

#include "zx/capturebutton.h"

inline bool SameRecord(const SZxCaptureButtonSetup_Param& a, const SZxCaptureButtonSetup_Param& b)
{
    return a.m_iPerformCapture == b.m_iPerformCapture && a.m_bUseSpecifiedCamera == b.m_bUseSpecifiedCamera &&
           std::wstring(a.m_wszSpecifiedCamera) == b.m_wszSpecifiedCamera &&
           a.m_bUseSpecifiedOC == b.m_bUseSpecifiedOC &&
           std::wstring(a.m_wszSpecifiedOC_Camera1) == b.m_wszSpecifiedOC_Camera1 &&
           std::wstring(a.m_wszSpecifiedOC_Camera2) == b.m_wszSpecifiedOC_Camera2 &&
           a.m_bRestoreDeviceAfterCapture == b.m_bRestoreDeviceAfterCapture &&
           a.m_bConfirmationSound == b.m_bConfirmationSound;
}
