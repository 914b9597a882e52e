// Exposure-time texts of the grabber manager's library.
#pragma once
#include "zxhost/export.h"
#include "zxhost/string.h"

/// Formats an exposure time given in milliseconds for display: "250 µs",
/// "12.5 ms", "1.5 s" (at most three decimals, unit chosen by size). A value
/// equal to `oneFrameExposure` (> 0; -1.0 means none) is shown as "1 frame".
ZX_HOST_API void ZX_ExposureToText(CZxStringW& text, double value, double oneFrameExposure);
/// Same, as a new string.
ZX_HOST_API CZxStringW ZX_ExposureToText(double value, double oneFrameExposure);

/// Parses an exposure text back to milliseconds and clamps it to
/// [minimum, maximum]. Accepts what ZX_ExposureToText writes, plain numbers
/// (milliseconds), the units "us", "µs", "ms", "s" in any case, and a comma as
/// decimal point. `ok` (may be null) tells whether the text was a time; a text
/// that is none gives the minimum.
ZX_HOST_API double ZX_TextToExposure(const wchar_t* text, double oneFrameExposure, double minimum,
                                     double maximum, bool* ok = nullptr);
