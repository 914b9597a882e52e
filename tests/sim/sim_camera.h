// One-line reads, writes and frame shapes on the simulated camera.
#pragma once
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "zx/status.h"
#include "zx_frames.h"
#include "zxsim/camera.h"

inline CZxVariant Get(CZxSimCamera& cam, uint32_t mode, const wchar_t* name)
{
    SZxGrabberPropertyValue v(name);
    EXPECT_EQ(cam.PropGetSingle_WRP(mode, v), ZX_OK) << name;
    return v.m_varValue;
}

inline int Set(CZxSimCamera& cam, uint32_t mode, std::initializer_list<SZxGrabberPropertyValue> items,
               SZxStateChangeInfo* info = nullptr)
{
    CZxVector_SZxGrabberPropertyValue values(128);
    for (const auto& v : items)
        values.Add(v);
    return cam.PropSet_WRP(mode, values, info, false);
}

// The mean sample of a frame, which it takes over.
inline double Mean(CZxGrabberSample01* frame)
{
    std::unique_ptr<CZxGrabberSample01> owned(frame);
    SZxPicBuf pb;
    frame->GetPicBuf(&pb);
    const size_t n = size_t(pb.uiWidth) * pb.uiHeight * pb.uiComp;
    double sum = 0;
    for (size_t i = 0; i < n; ++i)
        sum += zxtest::SampleAt(pb, i);
    return n ? sum / double(n) : 0.0;
}

// "width x height, bits x components"
inline std::string Shape(CZxGrabberSample01& frame)
{
    uint32_t w = 0, h = 0, bits = 0, comp = 0;
    frame.GetPicBufNumbers(&w, &h, &bits, &comp);
    return std::to_string(w) + "x" + std::to_string(h) + ", " + std::to_string(bits) + "x" + std::to_string(comp);
}
