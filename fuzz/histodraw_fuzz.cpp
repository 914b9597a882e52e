// Any histogram record and display LUT, then every query of the display model:
// no read past a count array or a table, whatever the record claims.
#include <cmath>
#include <cstdlib>
#include <vector>

#include "fuzz_input.h"
#include "zx/histodraw.h"
#include "zxhost/system.h"

namespace {

double AnyDouble(FuzzInput& in)
{
    // Small selectors reach the odd values more often than raw bits would.
    static const double kOdd[] = {0.0, -0.0, 1.0, -1.0, 0.5, 2.0, 1e9, -1e9, 1e-300, INFINITY, -INFINITY, NAN};
    const uint8_t sel = in.Take<uint8_t>();
    if (sel < 12 * 16)
        return kOdd[sel % 12];
    return in.Take<double>();
}

void Query(const CZxHistoDraw& m, FuzzInput& in)
{
    uint32_t lo = 0, hi = 0, color = 0;
    double mean = 0, b = 0, w = 0, a = 0;
    m.GetRange(&lo, &hi);
    m.GetRangeOrig(&lo, &hi);
    m.GetMeanFreq(&mean);
    m.GetStats(in.Take<uint32_t>(), in.Take<uint32_t>(), &b, &w, &a);
    m.GetStats(in.Take<uint32_t>(), in.Take<uint32_t>(), nullptr, nullptr, nullptr);
    for (uint32_t c = 0; c < 6; ++c) {
        m.GetRangeComp(c, &lo, &hi);
        m.GetRangeCompOrig(c, &lo, &hi);
        m.GetMeanFreqComp(c, &mean);
        m.GetStatsComp(c, in.Take<uint32_t>(), in.Take<uint32_t>(), &b, &w, &a);
        m.GetCompColor(c, &color);
    }
    m.GetRange(nullptr, nullptr);
    m.GetMeanFreq(nullptr);
    // Every counter a non-null table offers must be readable.
    volatile uint32_t sink = 0;
    for (int c = -1; c < 6; ++c)
        if (const uint32_t* bins = m.GetBinData(c))
            for (uint32_t i = 0; i < m.GetBins(); ++i)
                sink = sink + bins[i];
    (void)sink;
    const uint32_t y = CZxHistoDraw::CalcHistoY(AnyDouble(in), AnyDouble(in), in.Take<uint16_t>());
    (void)y;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const bool quiet = (ZX_SetDiagSink([](const wchar_t*, const wchar_t*, int, const wchar_t*, int) {}), true);
    (void)quiet;
    FuzzInput in(data, size);
    const uint32_t bins = in.Take<uint16_t>() % 1100;
    const uint32_t flags = in.Take<uint8_t>() % 4;
    CZxHistoDraw model(bins, flags);
    if (in.Take<uint8_t>() & 1)
        model.SetCompColor(in.Take<uint8_t>() % 6, in.Take<uint32_t>());

    const int rounds = 1 + in.Take<uint8_t>() % 3;   // later rounds reuse (and grow) the tables
    for (int r = 0; r < rounds; ++r) {
        const uint8_t kind = in.Take<uint8_t>();
        const uint32_t pixelKind = in.Take<uint8_t>() % 6;
        SZxLutParam lut;
        lut.dMinSrc = AnyDouble(in);
        lut.dMaxSrc = AnyDouble(in);
        lut.dGamma = AnyDouble(in);
        for (uint32_t c = 0; c < ZX_HISTO_MAX_COMP; ++c) {
            lut.adMinSrc[c] = AnyDouble(in);
            lut.adMaxSrc[c] = AnyDouble(in);
            lut.adGamma[c] = AnyDouble(in);
            lut.adMaxDst[c] = AnyDouble(in);
        }
        const SZxLutParam* lutArg = (kind & 2) ? &lut : nullptr;
        if (kind & 1) {
            // A frame histogram: any allocation, any claimed bin count and layout.
            SZxAEHistogram ae(in.Take<uint8_t>() % 13, kind & 4, kind & 8);
            ae.bMono = kind & 16;
            ae.uiBinCount = in.Take<uint16_t>() % 0x2100;
            for (int c = 0; c < 4; ++c)
                for (uint32_t i = 0; ae.pdwHisto[c] && i < ae.AllocatedBins(); ++i)
                    ae.pdwHisto[c][i] = in.RestSize() ? uint32_t(in.Take<uint8_t>()) << (in.Take<uint8_t>() % 25) : 0;
            model.SetHistogram(ae, pixelKind, lutArg);
        } else {
            // A host record: every array exactly as long as its bits say, some missing.
            SZxHisto h;
            const uint8_t bitsSel = in.Take<uint8_t>();
            h.uiBits = bitsSel < 240 ? bitsSel % 13 : bitsSel;   // rarely far too deep (refused before any read)
            h.uiComp = in.Take<uint8_t>() % 7;
            const uint8_t present = in.Take<uint8_t>();
            const size_t n = h.uiBits < 13 ? size_t(1) << h.uiBits : 1;
            std::vector<std::vector<uint32_t>> arrays(ZX_HISTO_MAX_COMP + 1, std::vector<uint32_t>(n));
            for (auto& v : arrays)
                for (size_t i = 0; i < n && in.RestSize(); ++i)
                    v[i] = in.Take<uint8_t>() ? uint32_t(in.Take<uint16_t>()) << (in.Take<uint8_t>() % 17) : 0;
            h.pdwHisto = (present & 1) ? arrays[0].data() : nullptr;
            for (uint32_t c = 0; c < ZX_HISTO_MAX_COMP; ++c)
                h.pdwCompHisto[c] = (present & (2 << c)) ? arrays[c + 1].data() : nullptr;
            model.SetHistogram(h, pixelKind, lutArg);
        }
        Query(model, in);
    }
    const CZxHistoDraw copy(model);
    Query(copy, in);
    CZxHistoDraw assigned(7, 3);
    assigned = model;
    Query(assigned, in);
    return 0;
}
