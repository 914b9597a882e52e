#include <algorithm>
#include <cmath>
#include <cstdint>

#include "imaging/pixel_io.h"
#include "imaging/probe_region.h"
#include "zx/autoexposure.h"
#include "zxhost/system.h"

namespace {

const wchar_t* const kSource = L"autoexposure";

// Offset as an integer level, rounded half away from zero. Offsets beyond 2^20
// levels mean nothing for frames of at most 16 bits; limiting them keeps the
// integer sums below from overflowing.
int64_t OffsetLevel(double full, double offset)
{
    double x = full * offset;
    if (!(x == x))
        return 0;
    const double limit = 16.0 * 65536.0;
    x = std::max(-limit, std::min(x, limit));
    return static_cast<int64_t>(x > 0 ? x + 0.5 : x - 0.5);
}

// Exact totals: a pixel adds at most about 2^42 (offsets limited as above), so
// 128 bits hold any frame; the totals become doubles once, at the end.
struct Sums {
    __int128 c[3] = {0, 0, 0};  // red, green, blue
    uint64_t count = 0;
};

template <typename T>
void Chunk(const T* p, uint32_t n, int64_t full, const int64_t off[3], Sums& unsat, Sums& sat)
{
    int64_t u[3] = {0, 0, 0}, s[3] = {0, 0, 0};
    uint64_t nu = 0;
    for (uint32_t i = 0; i < n; ++i, p += 3) {
        const int64_t b = p[0], g = p[1], r = p[2];  // memory order blue, green, red
        const int64_t rr = r + off[0], gg = g + off[1], bb = b + off[2];
        const int64_t w = std::abs(rr) + std::abs(gg) + std::abs(bb);
        int64_t* dst = s;
        if (r < full && g < full && b < full) {
            dst = u;
            ++nu;
        }
        dst[0] += rr * w;
        dst[1] += gg * w;
        dst[2] += bb * w;
    }
    for (int c = 0; c < 3; ++c) {
        unsat.c[c] += u[c];
        sat.c[c] += s[c];
    }
    unsat.count += nu;
    sat.count += n - nu;
}

template <typename T>
void Accumulate(const T* data, uint32_t width, uint32_t height, const SZxGrabberProbe* probe, int64_t full,
                const int64_t off[3], Sums& unsat, Sums& sat)
{
    zx::ForEachProbeSpan(width, height, probe, [&](uint32_t y, uint32_t x0, uint32_t n) {
        const T* p = data + (size_t(y) * width + x0) * 3;
        for (uint32_t done = 0; done < n;) {
            // 64-bit sums over a chunk (a chunk cannot overflow them), then
            // into the 128-bit totals.
            const uint32_t chunk = std::min<uint32_t>(n - done, 1024);
            Chunk(p, chunk, full, off, unsat, sat);
            p += size_t(chunk) * 3;
            done += chunk;
        }
    });
}

} // namespace

int ZX_AccurateAutoWhite(double* redGain, double* greenGain, double* blueGain, double redOffset, double greenOffset,
                         double blueOffset, CZxGrabberSample01* sample, SZxGrabberProbe* probe)
{
    double gains[3] = {1.0, 1.0, 1.0};
    auto write = [&] {
        if (redGain)
            *redGain = gains[0];
        if (greenGain)
            *greenGain = gains[1];
        if (blueGain)
            *blueGain = gains[2];
    };
    if (ZX_DIAG_FAIL_IF(sample == NULL, kSource)) {
        write();
        return 0;
    }
    uint32_t width = 0, height = 0, bits = 0, comp = 0;
    sample->GetPicBufNumbers(&width, &height, &bits, &comp);
    const void* data = sample->GetDataPtr();
    if (ZX_DIAG_FAIL_IF(comp != 3, kSource) || !data ||
        sample->GetDataSize() < zx::FrameBytes(width, height, 3, bits)) {
        write();
        return 0;
    }

    const int64_t full = (int64_t(1) << std::min<uint32_t>(bits, 40)) - 1;
    const int64_t off[3] = {OffsetLevel(double(full), redOffset), OffsetLevel(double(full), greenOffset),
                            OffsetLevel(double(full), blueOffset)};
    Sums unsat, sat;
    if (bits > 8)
        Accumulate(static_cast<const uint16_t*>(data), width, height, probe, full, off, unsat, sat);
    else
        Accumulate(static_cast<const uint8_t*>(data), width, height, probe, full, off, unsat, sat);

    const Sums& chosen = sat.count < unsat.count ? unsat : sat;
    const double sums[3] = {double(chosen.c[0]), double(chosen.c[1]), double(chosen.c[2])};
    const double m = std::max({sums[0], sums[1], sums[2]});
    for (int c = 0; c < 3; ++c)
        if (chosen.c[c] > 0)
            gains[c] = m / sums[c];
    write();
    return int(std::min<uint64_t>(unsat.count, INT32_MAX));
}
