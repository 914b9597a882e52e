#include <vector>

#include "pixel_test.h"
#include "zx_levels.h"
#include "zx/bayer.h"

using pixtest::Samples;

namespace {

enum { B = 0, G = 1, R = 2 };

// Colour of raw sample (x, y) from the type's 2 x 2 cell.
int ColourAt(int type, uint32_t x, uint32_t y)
{
    static const int cells[4][4] = {{B, G, G, R}, {G, B, R, G}, {R, G, G, B}, {G, R, B, G}};
    return cells[type - 1][(y & 1) * 2 + (x & 1)];
}

uint32_t Mean(const std::vector<uint32_t>& v)
{
    uint32_t s = 0;
    for (uint32_t x : v) s += x;
    return v.size() == 4 ? s >> 2 : v.size() == 2 ? s >> 1 : s;
}

// Per-pixel demosaic from the rules: the neighbours that exist, their pair/diagonal means.
std::vector<uint32_t> Reference(const std::vector<uint32_t>& raw, int64_t w, int64_t h, int type)
{
    auto at = [&](int64_t x, int64_t y) { return raw[size_t(y * w + x)]; };
    auto inside = [&](int64_t x, int64_t y) { return x >= 0 && y >= 0 && x < w && y < h; };
    std::vector<uint32_t> out(size_t(w * h * 3));
    for (int64_t y = 0; y < h; ++y)
        for (int64_t x = 0; x < w; ++x) {
            std::vector<uint32_t> hor, ver, dia;
            int hc = -1, vc = -1;
            for (int64_t d : {-1, 1}) {
                if (inside(x + d, y)) { hor.push_back(at(x + d, y)); hc = ColourAt(type, uint32_t(x + d), uint32_t(y)); }
                if (inside(x, y + d)) { ver.push_back(at(x, y + d)); vc = ColourAt(type, uint32_t(x), uint32_t(y + d)); }
                for (int64_t e : {-1, 1})
                    if (inside(x + d, y + e)) dia.push_back(at(x + d, y + e));
            }
            uint32_t* o = &out[size_t((y * w + x) * 3)];
            const int own = ColourAt(type, uint32_t(x), uint32_t(y));
            const uint32_t s = at(x, y);
            if (own == G) {
                o[G] = (s + Mean(dia)) >> 1;
                o[hc] = Mean(hor);
                o[vc] = Mean(ver);
            } else {
                o[own] = s;
                o[G] = (Mean(hor) + Mean(ver)) >> 1;
                o[2 - own] = Mean(dia);
            }
        }
    return out;
}

} // namespace

TEST(Bayer, EveryLevelMatchesThePerPixelRulesOnRandomFrames)
{
    const uint32_t sizes[][2] = {{2, 2}, {3, 2}, {2, 5}, {4, 4}, {5, 7}, {17, 3}, {18, 6}, {19, 9},
                                 {33, 4}, {34, 11}, {40, 5}, {40, 2}, {66, 3}, {67, 8}, {48, 67},
                                 {16, 5}, {32, 3}, {8, 4}};
    zxtest::ForEachKernelLevel([&](int) {
        uint32_t seed = 100;
        for (uint32_t bits : {8u, 12u, 16u})
            for (const auto& s : sizes)
                for (int type = 1; type <= 4; ++type) {
                    auto raw = zxtest::RandomFrame(s[0], s[1], bits, 1, seed++);
                    CZxGrabberSample01 dst(s[0], s[1], bits, 3);
                    ZX_BayerToRGB(&dst, raw->GetDataPtr(), EZxBayerType(type));
                    ASSERT_EQ(Samples(dst), Reference(Samples(*raw), s[0], s[1], type))
                        << s[0] << "x" << s[1] << " bits " << bits << " type " << type;
                }
    });
}

TEST(Bayer, BadArgumentsAreReportedAndWriteNothing)
{
    zxtest::DiagCapture diag;
    const uint8_t raw[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    CZxGrabberSample01 narrow(1, 8, 8, 3), mono(4, 2, 8, 1), ok(4, 2, 8, 3);
    ZX_BayerToRGB(&narrow, raw, ZX_BAYER_BGGR);
    ZX_BayerToRGB(&mono, raw, ZX_BAYER_BGGR);
    ZX_BayerToRGB(&ok, raw, EZxBayerType(5));
    ZX_BayerToRGB(&ok, nullptr, ZX_BAYER_BGGR);
    ZX_BayerToRGB(static_cast<CZxGrabberSample01*>(nullptr), raw, ZX_BAYER_BGGR);
    SZxPicBuf small{4, 2, 12, 8, 3, 10, ok.GetDataPtr()};  // 24 bytes described, 10 held
    ZX_BayerToRGB(&small, raw, ZX_BAYER_BGGR);
    pixtest::ExpectReports(diag, L"common",
                           {L"pPicBuf->uiWidth < 2 || pPicBuf->uiHeight < 2", L"pPicBuf->uiComp != 3",
                            L"type < 1 || type > 4", L"pSrc == NULL", L"pSample == NULL",
                            L"pb.ui64DataSize != 0 && pb.ui64DataSize < bytes"});
    for (const CZxGrabberSample01* s : {&narrow, &mono, &ok})
        EXPECT_EQ(Samples(*s), std::vector<uint32_t>(Samples(*s).size(), 0));
}
