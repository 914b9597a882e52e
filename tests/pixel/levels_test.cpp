// Every level's kernels against the reference kernels, called directly on data
// large or odd enough to take the paths small frames never reach (streaming
// stores, vector bodies with tails, clamped and full tables).
#include <cstring>
#include <functional>
#include <random>
#include <vector>

#include "imaging/lut_kernels.h"
#include "imaging/pixel_kernels.h"
#include "zx_levels.h"

namespace {

template <typename T>
std::vector<T> Random(size_t n, uint32_t mask, uint32_t seed)
{
    std::mt19937 rng(seed);
    std::vector<T> v(n);
    for (T& x : v) x = T(rng() & mask);
    return v;
}

template <typename T>
void ExpectPixelKernelsMatchTheReference()
{
    // A demosaic writing more than 16 MiB, and a binning moving more, stream
    // their stores on wide levels; the odd widths make the rows' output
    // alignment differ from row to row.
    const uint32_t w = 2401, h = 2400, bw = 1833, bh = 1840;
    const std::vector<T> raw = Random<T>(size_t(w) * h, sizeof(T) == 1 ? 0xFF : 0xFFFF, 7);
    const std::vector<T> binRaw = Random<T>(size_t(bw) * bh * 4, sizeof(T) == 1 ? 0xFF : 0xFFFF, 8);
    using Kernels = zx::PixelKernels<T>;
    // Name, output samples, call.
    const struct { const char* name; size_t samples; std::function<void(const Kernels&, T*)> run; } kernels[] = {
        {"demosaic", size_t(w) * h * 3, [&](const Kernels& k, T* o) { k.Demosaic(raw.data(), o, w, h, 3, 0, h); }},
        {"mono binning", size_t(bw) * bh, [&](const Kernels& k, T* o) { k.MonoBin2(binRaw.data(), o, bw, bh, bh); }},
        {"Bayer binning", size_t(bw) * bh * 3, [&](const Kernels& k, T* o) { k.BayerBin2(binRaw.data(), o, bw, bh, 4); }},
    };
    for (const auto& kernel : kernels) {
        SCOPED_TRACE(::testing::Message() << kernel.name << ", " << 8 * sizeof(T) << " bits");
        std::vector<T> want(kernel.samples), got(kernel.samples);
        kernel.run(zx::GetReferencePixelKernels<T>(), want.data());
        zxtest::ForEachKernelLevel([&](int) {
            // Cleared at every level, so that a sample a level leaves unwritten shows.
            std::fill(got.begin(), got.end(), T(0));
            kernel.run(zx::GetPixelKernels<T>(), got.data());
            ASSERT_TRUE(got == want);
        });
    }
}

} // namespace

TEST(KernelLevels, PixelKernelsMatchTheReferenceOnFramesBeyondTheCache)
{
    ExpectPixelKernelsMatchTheReference<uint8_t>();
    ExpectPixelKernelsMatchTheReference<uint16_t>();
}

// Tables of every depth, full and shorter than the samples' range (those samples
// take the last entry), over counts that end inside any vector width.
TEST(KernelLevels, LutKernelsMatchTheReference)
{
    const zx::LutKernels& ref = zx::GetReferenceLutKernels();
    uint32_t seed = 1;
    for (const uint32_t last : {255u, 100u, 4095u, 65535u, 30000u})
        for (const size_t n : {size_t(1), size_t(31), size_t(100003)}) {
            SCOPED_TRACE(::testing::Message() << "last " << last << ", " << n << " pixels");
            // Room for three tables of last + 1 entries: full 16-bit tables take the unclamped path.
            const std::vector<uint16_t> table = Random<uint16_t>(3 * (size_t(last) + 1), 0xFFFF, seed++);
            std::vector<int32_t> pairs[3];
            for (auto& p : pairs) {
                p = Random<int32_t>(2 * (size_t(last) + 1), 0x7FFFF, seed++);
                for (int32_t& e : p) e -= 0x20000;
            }
            const uint16_t* tables[3] = {table.data(), table.data() + last + 1, table.data() + 2 * (last + 1)};
            const int32_t* pairPtrs[3] = {pairs[0].data(), pairs[1].data(), pairs[2].data()};
            const std::vector<uint16_t> in16 = Random<uint16_t>(3 * n, last > 255 ? 0xFFFF : 0x1FF, seed++);
            std::vector<uint8_t> in8(in16.begin(), in16.end());
            zxtest::ForEachKernelLevel([&](int) {
                const zx::LutKernels& k = zx::GetLutKernels();
                auto check = [&](auto kernel, auto refKernel, auto data, size_t count, auto... args) {
                    auto want = data, got = data;
                    refKernel(want.data(), count, args...);
                    kernel(got.data(), count, args...);
                    return got == want;
                };
                const int32_t maxOut = last > 255 ? 65535 : 255;
                if (last <= 255) {
                    EXPECT_TRUE(check(k.Map8, ref.Map8, in8, 3 * n, table.data(), last)) << "Map8";
                    EXPECT_TRUE(check(k.Map8x3, ref.Map8x3, in8, n, tables, last)) << "Map8x3";
                    EXPECT_TRUE(check(k.Pair8, ref.Pair8, in8, n, pairPtrs, last, maxOut)) << "Pair8";
                }
                EXPECT_TRUE(check(k.Map16, ref.Map16, in16, 3 * n, table.data(), last)) << "Map16";
                EXPECT_TRUE(check(k.Map16x3, ref.Map16x3, in16, n, tables, last)) << "Map16x3";
                EXPECT_TRUE(check(k.Pair16, ref.Pair16, in16, n, pairPtrs, last, maxOut)) << "Pair16";
            });
        }
}
