// The acquisition step simulated drivers share: a frame in, its histogram out.
#pragma once
#include <memory>
#include "zx/histogram.h"

/// Counts each frame over a probe into one histogram record, kept across
/// frames and made again only when the frame's depth or colour changes. Both
/// the reference driver and the auto-exposure loop take their frames through it.
/// One thread at a time.
class CZxSimLiveStep {
public:
    /// Takes over `frame` (a null one leaves the last histogram) and counts it
    /// over `probe` (null: the whole frame); the histogram.
    const SZxAEHistogram* Count(std::unique_ptr<CZxGrabberSample01> frame, const SZxGrabberProbe* probe);
    /// The last frame counted (null before the first).
    CZxGrabberSample01* Frame() const { return m_frame.get(); }
    /// Forgets the frame and the histogram.
    void Reset();

private:
    std::unique_ptr<CZxGrabberSample01> m_frame;
    std::unique_ptr<SZxAEHistogram> m_hist;
};
