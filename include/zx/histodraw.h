// Histogram display model: a frame histogram re-binned for display, with
// statistics for the range texts and (on Windows) painting into a device context.
#pragma once
#include <cstdint>
#include "zx/export.h"
#include "zx/histogram.h"
#include "zxhost/picture.h"
#include "zxhost/rangemask.h"
#include "zxhost/rect.h"

/// Turns a frame histogram into a fixed number of display bins: a combined
/// histogram and, for colour frames, one per component.
///
/// Tables come from CZxAlloc and are owned by the object; they only grow, so a
/// model fed frames of one format stops allocating after the first. One object
/// is not used from two threads at once: a host that fills it on the acquisition
/// thread and draws on the UI thread holds its own lock around both.
/// Operations return ZX_OK or ZX_E_FAIL when the requested data does not exist;
/// every out-pointer may be null.
class ZX_API CZxHistoDraw {
public:
    enum : uint32_t {
        FLAG_COMBINED = 1,     ///< keep the combined histogram
        FLAG_COMPONENTS = 2,   ///< keep per-component histograms
    };
    enum : uint32_t {
        PIXELKIND_RGB = 2,     ///< components 0, 1, 2 are blue, green, red; colours preset
        PIXELKIND_MULTI = 4,   ///< other multi-component data; colours from SetCompColor
    };
    enum : uint32_t {
        MODE_COMBINED = 1,     ///< draw the combined histogram in grey
        MODE_COMPONENTS = 2,   ///< draw the components the mask selects, in their colours
    };

    /// `bins` is fixed for the object's life (0 leaves a model that never holds data).
    CZxHistoDraw(uint32_t bins, uint32_t flags);
    /// Copies are deep: each object owns its tables.
    CZxHistoDraw(const CZxHistoDraw& other);
    /// Deep copy: takes `other`'s bins, flags, tables and colours.
    CZxHistoDraw& operator=(const CZxHistoDraw& other);
    /// Frees the tables.
    ~CZxHistoDraw();

    /// Rebuilds all bins from `h`; `lut` (may be null) re-bins through the display
    /// transform. pixelKind 2 or 4 builds the component histograms of a colour
    /// frame (with FLAG_COMPONENTS); any other kind leaves them unbuilt.
    /// ZX_E_FAIL (nothing changed) when h has no combined counts, names more than
    /// ZX_HISTO_MAX_COMP components or misses one of their arrays, has more than
    /// 24 bits, or the model has no bins or cannot get memory.
    int SetHistogram(const SZxHisto& h, uint32_t pixelKind, const SZxLutParam* lut);
    /// Same for a frame histogram: a monochrome one as it is; for a colour one the
    /// combined counts are the sum of the three channels and the components are
    /// blue, green, red (pixel kind as given).
    int SetHistogram(const SZxAEHistogram& h, uint32_t pixelKind, const SZxLutParam* lut);

    /// First and last non-zero display bin of the combined histogram.
    int GetRange(uint32_t* lo, uint32_t* hi) const;
    /// Same for component c; ZX_E_FAIL when the component histogram was not built.
    int GetRangeComp(uint32_t c, uint32_t* lo, uint32_t* hi) const;
    /// Lowest and highest source level with a non-zero count (after the LUT
    /// transform when one was given).
    int GetRangeOrig(uint32_t* lo, uint32_t* hi) const;
    /// Same for component c; ZX_E_FAIL when the component histogram was not built.
    int GetRangeCompOrig(uint32_t c, uint32_t* lo, uint32_t* hi) const;
    /// Mean bin position scaled to 0..255; ZX_E_FAIL when every count is in bin 0.
    int GetMeanFreq(double* mean) const;
    /// Same for component c; ZX_E_FAIL when it was not built or all its counts are in bin 0.
    int GetMeanFreqComp(uint32_t c, double* mean) const;
    /// Fractions of the counts in bins below lo, in [lo, hi] and above hi. Sums
    /// are 32-bit; with no counts all three are 0.0.
    int GetStats(uint32_t lo, uint32_t hi, double* below, double* within, double* above) const;
    /// Same for component c; ZX_E_FAIL when the component histogram was not built.
    int GetStatsComp(uint32_t c, uint32_t lo, uint32_t hi, double* below, double* within,
                     double* above) const;
    /// Bar height in pixels: trunc(fraction^(1 / exponent) * height + 0.5).
    static uint32_t CalcHistoY(double exponent, double fraction, uint32_t height);
    /// Drawing colour (COLORREF) of component c, kept across SetHistogram except
    /// that pixel kind 2 presets components 0..2; ZX_E_FAIL when c >= ZX_HISTO_MAX_COMP
    /// (or, for Get, nothing was set yet).
    int SetCompColor(uint32_t c, uint32_t color);
    /// The colour of component c (COLORREF) in *color.
    int GetCompColor(uint32_t c, uint32_t* color) const;

    /// Display bins per histogram (the constructor's `bins`).
    uint32_t GetBins() const { return m_uiBins; }
    /// FLAG_COMBINED and FLAG_COMPONENTS as given to the constructor.
    uint32_t GetFlags() const { return m_uiFlags; }
    /// Components of the last histogram (0 for a monochrome one), built or not.
    uint32_t GetComponents() const { return m_uiComponents; }
    /// Bit depth of the last histogram's levels (0 before the first).
    uint32_t GetBitDepth() const { return m_uiBitDepth; }
    /// Counters of the combined histogram (c = -1) or a component; null when absent.
    const uint32_t* GetBinData(int c) const;

#ifdef _WIN32
    /// Paints into `rect` of the device context `dc` (an HDC), leaving the
    /// background to the caller. One 1-pixel column per display column: the bins
    /// the column covers contribute their largest counter; bars grow up from the
    /// bottom edge. `scale` is the exponent of CalcHistoY (1.0 linear, larger
    /// values lift small counts; non-positive means 1.0). Mode 1 draws the
    /// combined histogram in grey; mode 2 overlays the masked components, each
    /// column drawn tallest first so every component keeps its own top band.
    /// `grouped` scales every component to its own maximum; otherwise all share
    /// the largest one, so their heights compare. ZX_E_FAIL when dc is 0, the
    /// rectangle is empty, the mode is unknown, or the mode's data is absent.
    int DrawIntoDC(uint64_t dc, const CZxRectBase<int>& rect, double scale, uint32_t mode,
                   const CZxRangeMask& mask, bool grouped) const;
    /// Splits `rect` into `groups` panels of equal width, separated by 4 pixels,
    /// and draws one masked component per panel, highest index first (red, green,
    /// blue for RGB). Mode 1 draws the combined histogram over the whole rect.
    int DrawIntoDCGrouped(uint64_t dc, const CZxRectBase<int>& rect, double scale, uint32_t mode,
                          const CZxRangeMask& mask, uint32_t groups, bool grouped) const;
#endif

private:
    const uint32_t* Bins(int c) const;
    bool CompTables();
    bool Grow(uint32_t components, uint32_t levels);
    void BinLevels(const uint32_t* counts, uint32_t levels, uint32_t divisor, const SZxLutParam* lut,
                   int c, uint32_t* bins, uint32_t* maxCount, uint32_t* range) const;
    void Release();

    uint32_t m_uiFlags;
    uint32_t m_uiBins;
    uint32_t m_uiComponents = 0;
    uint32_t m_uiBitDepth = 0;
    uint32_t* m_pBinStore = nullptr;         ///< (components + 1) x bins, combined first
    uint32_t** m_ppCompBins = nullptr;       ///< per component, its block in m_pBinStore
    uint32_t m_uiMaxCombined = 0;
    uint32_t* m_pCompMax = nullptr;
    uint32_t* m_pCompColor = nullptr;
    uint32_t* m_pSourceRange = nullptr;      ///< (lo, hi) pairs: combined, then per component

    // Capacities (grow only) and what the last SetHistogram built.
    uint32_t m_uiStoreComps = 0;             ///< components m_pBinStore has room for
    uint32_t m_uiCompCap = 0;                ///< entries of the per-component tables (0 or ZX_HISTO_MAX_COMP)
    uint32_t m_uiRangeCap = 0;               ///< pairs in m_pSourceRange
    bool m_bHasData = false;
    bool m_bCompBuilt = false;
    uint32_t* m_pSumScratch = nullptr;       ///< combined counts of a colour frame histogram
    uint32_t m_uiSumCap = 0;
};
