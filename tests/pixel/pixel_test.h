// Helpers shared by the pixel kernel tests.
#pragma once
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "zx_frames.h"
#include "zx_test.h"

namespace pixtest {

/// Every sample of a frame in memory order, whatever its sample width.
inline std::vector<uint32_t> Samples(const CZxGrabberSample01& s)
{
    SZxPicBuf pb;
    s.GetPicBuf(&pb);
    std::vector<uint32_t> v(size_t(pb.uiWidth) * pb.uiHeight * pb.uiComp);
    for (size_t i = 0; i < v.size(); ++i) v[i] = zxtest::SampleAt(pb, i);
    return v;
}

/// Expects the capture to hold exactly these conditions, all from `source`; a condition
/// listed twice must have been raised twice.
inline void ExpectReports(const zxtest::DiagCapture& diag, const wchar_t* source,
                          const std::vector<std::wstring>& conditions)
{
    EXPECT_EQ(diag.Size(), conditions.size());
    for (const std::wstring& c : conditions) {
        EXPECT_TRUE(diag.Has(c.c_str(), source)) << c;
        EXPECT_EQ(diag.Count(c.c_str()), std::count(conditions.begin(), conditions.end(), c)) << c;
    }
}

} // namespace pixtest
