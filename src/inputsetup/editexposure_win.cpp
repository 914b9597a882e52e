// The exposure edit: a numeric edit that shows and reads exposure times in
// their units.
#include <windows.h>

#include "inputsetup/wincontrols.h"
#include "zx/iscontrols_editexposure.h"
#include "zx/status.h"
#include "zxhost/exposure.h"

CZxISControlEditExposure::CZxISControlEditExposure(const wchar_t* name, uint32_t mode, int32_t id,
                                                   uint32_t groupMask, uint32_t notifyMessage, bool flag)
    : CZxISControlEditDouble(name, mode, id, groupMask, notifyMessage, flag, 1.0)
{
}

int32_t CZxISControlEditExposure::SetEditValue(double value)
{
    SetText(ZX_ExposureToText(value, -1.0));
    return ZX_OK;
}

int32_t CZxISControlEditExposure::GetEditValue(double& value)
{
    CZxVariant def;
    _GetPropDefinition(def);
    bool ok = false;
    const double typed = ZX_TextToExposure(zxwin::Combo(GetItem()).Text(64), -1.0, def[L"m_dMin"].GetDouble(),
                                           def[L"m_dMax"].GetDouble(), &ok);
    if (ok) {
        value = typed;
        return ZX_OK;
    }
    SZxGrabberPropertyValue current(m_wstrName);
    _GetPropValue(current);
    value = current.m_varValue.GetDouble();
    return ZX_OK;
}
