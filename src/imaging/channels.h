// Where each colour channel sits, named once: in a frame's pixels and the
// display models, in a frame histogram's buffers, and on screen.
#pragma once
#include <cstdint>

namespace zx {

/// Samples of a colour pixel in memory, and the components of the display
/// models (CZxHistoDraw), which keep that order.
enum Sample : uint32_t { kBlue = 0, kGreen = 1, kRed = 2 };

/// SZxAEHistogram::pdwHisto buffers.
enum HistoBuffer : int { kMonoBuffer = 0, kRedBuffer = 1, kGreenBuffer = 2, kBlueBuffer = 3 };

/// The frame-histogram buffer that counts sample `s`.
constexpr HistoBuffer BufferOf(Sample s)
{
    return s == kBlue ? kBlueBuffer : s == kGreen ? kGreenBuffer : kRedBuffer;
}

/// Channels as the user reads them, left to right: the split view's plots and
/// the range texts (red, green, blue).
constexpr Sample kShownOrder[3] = {kRed, kGreen, kBlue};

} // namespace zx
