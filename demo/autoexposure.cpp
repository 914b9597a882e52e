// zxdemo: auto exposure and white balance in a closed loop on the simulated sensor.
#include <algorithm>
#include <cstdio>
#include <string>

#include "demo.h"
#include "zxsim/aeloop.h"

namespace {

const int kFrames = 30;
const double kMaxExposure = 1000.0;   // the live setting's limit (SetUpStandardCamera)

struct SRun {
    bool colour, saturated, search;
    std::vector<SZxSimAEStep> steps;
    int settled;   // first frame from which every frame is exposure-good, or -1
    double white[3];
};

SRun RunScenario(double msToTarget, bool colour, bool saturated, bool search)
{
    CZxSimAELoop loop;
    loop.SetUpStandardCamera(colour, msToTarget);
    if (search)
        loop.m_uiFlags |= ZX_AE_MODESEARCH;
    if (saturated) {
        loop.m_frame.m_dExposure = 1000.0;
        loop.m_frame.m_dFactor = 8.0;
    } else {
        loop.m_frame.m_dExposure = 0.01;
    }
    SRun run{colour, saturated, search, loop.Run(kFrames), -1, {1.0, 1.0, 1.0}};
    run.settled = ZxSimFramesToGood(run.steps);
    if (colour) {
        run.white[0] = loop.m_frame.m_dHardWhiteR;
        run.white[1] = loop.m_frame.m_dHardWhiteG;
        run.white[2] = loop.m_frame.m_dHardWhiteB;
    }
    return run;
}

const char* Verdict(const SRun& run)
{
    const SZxSimAEStep& last = run.steps.back();
    if (run.settled >= 0)
        return last.m_uiMode > 0 ? "settled, in a binned mode" : "settled";
    if (last.m_dExposure >= kMaxExposure * 0.999)
        return "out of reach: needs more than the maximum exposure";
    return "not settled: still hunting";
}

void PrintTrace(const SRun& run)
{
    std::printf("  frame mode exposure/ms factor  gain  white overflow good\n");
    for (size_t i = 0; i < run.steps.size(); ++i) {
        const SZxSimAEStep& s = run.steps[i];
        std::printf("  %5zu %4u %11.2f %6.2f %5.2f %6.3f %8.4f %4s\n", i, s.m_uiMode, s.m_dExposure, s.m_dFactor,
                    s.m_dComplGain, s.m_dWhite, s.m_dOverflow, s.m_bExposureGood ? "yes" : "no");
    }
}

void PrintScene(double msToTarget, bool trace)
{
    std::printf("\n-- Specimen that reaches the target after %.0f ms in mode 0 --\n", msToTarget);
    std::vector<SRun> runs;
    for (bool colour : {false, true})
        for (bool search : {false, true})
            for (bool saturated : {false, true})
                runs.push_back(RunScenario(msToTarget, colour, saturated, search));
    if (trace) {
        for (const SRun& run : runs) {
            std::printf("%s camera, starting %s, mode search %s:\n", run.colour ? "colour" : "mono",
                        run.saturated ? "saturated" : "dark", run.search ? "on" : "off");
            PrintTrace(run);
        }
        std::printf("\n");
    }
    std::printf("%-7s %-10s %-6s %6s %4s %11s %6s %8s %-17s %s\n", "camera", "start", "search", "frames", "mode",
                "exposure/ms", "gain", "clipped", "white balance", "verdict");
    for (const SRun& run : runs) {
        const SZxSimAEStep& last = run.steps.back();
        const std::string frames = run.settled >= 0 ? std::to_string(run.settled) : "-";
        char balance[32] = "-";
        if (run.colour)
            std::snprintf(balance, sizeof balance, "%.2f %.2f %.2f", run.white[0], run.white[1], run.white[2]);
        std::printf("%-7s %-10s %-6s %6s %4u %11.1f %6.2f %7.2f%% %-17s %s\n", run.colour ? "colour" : "mono",
                    run.saturated ? "saturated" : "dark", run.search ? "on" : "off", frames.c_str(), last.m_uiMode,
                    last.m_dExposure, last.m_dFactor, last.m_dOverflow * 100.0, balance, Verdict(run));
    }
}

} // namespace

void DemoAutoExposure(bool trace)
{
    std::printf("== Auto exposure ==\n");
    std::printf("A 12-bit camera with three modes (0: full resolution; 1 and 2: binned 2x2 and 4x4, 4 and 16\n"
                "times as sensitive) runs the engine frame by frame for %d frames. The live setting allows at\n"
                "most %.0f ms; the strict test wants the target reached by exposure, not by gain.\n",
                kFrames, kMaxExposure);
    std::printf("  start          the first frame: dark (0.01 ms) or saturated (1000 ms, gain 8)\n"
                "  search         whether the engine may switch to a more sensitive binned mode\n"
                "  frames         frames until every later frame passes the test (- : never)\n"
                "  mode           the camera mode of the last frame\n"
                "  exposure/ms    the last frame's exposure time\n"
                "  gain           the last frame's analog gain factor\n"
                "  clipped        share of the last frame's pixels at or above saturation\n"
                "  white balance  the hard red, green, blue gains found (colour; the cast is 1.00 0.80 0.55)\n"
                "  verdict        what happened: settled, or why not\n");
    for (double ms : {600.0, 3000.0})
        PrintScene(ms, trace);
    if (!trace)
        std::printf("\n(./zx demo --trace shows every frame of every run)\n");
}
