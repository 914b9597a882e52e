// Declarations the library does not export, beside ones it does: the export
// check must name exactly the missing ones and the ones without the macro.
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

// Without the macro: reported unless the library exports the name anyway.
class CZxUnmarkedProbe {
public:
    void Run();
    int Inline() const { return 0; }
};
void ZX_UnmarkedProbe(int level);
int ZX_SetKernelLevel(int level);
inline void ZX_InlineProbe() {}
