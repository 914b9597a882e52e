// Declarations the library does not export, beside one it does: the export
// check must name exactly the missing ones.
#pragma once
#include "zx/export.h"
#include "zx/histogram.h"

class ZX_API CZxExportProbe {
public:
    CZxExportProbe();
    void Missing(int a, int b);
    void Inline() {}
    virtual void Pure() = 0;

private:
    void Hidden();
};

ZX_API void ZX_ComputeHistogramAE(SZxAEHistogram* hist, SZxPicBuf* picBuf, SZxGrabberProbe* probe);
class CZxHistoDraw;
ZX_API void ZX_ComputeHistogramAE(SZxAEHistogram* hist, CZxHistoDraw* draw, SZxGrabberProbe* probe);
