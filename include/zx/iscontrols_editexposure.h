// The exposure time in a plain edit, over the numeric family's double edit.
// Windows only.
#pragma once
#include "zx/iscontrols_numeric.h"

/// Exposure time typed into an edit: shown and parsed with the grabber
/// manager's exposure texts (no one-frame exposure); a text that is no exposure
/// time gives the driver's current value, so committing it writes that back.
class ZX_API CZxISControlEditExposure : public CZxISControlEditDouble {
public:
    /// Binds the exposure property `name` (milliseconds) to the edit `id`
    /// (`notifyMessage` and `flag` as CZxISControlEditBase takes them).
    CZxISControlEditExposure(const wchar_t* name, uint32_t mode, int32_t id, uint32_t groupMask,
                             uint32_t notifyMessage, bool flag);

    int32_t SetEditValue(double value) override;
    /// Always ZX_OK: the parsed text, or the driver's current value.
    int32_t GetEditValue(double& value) override;
};
