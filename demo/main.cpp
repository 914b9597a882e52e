// zxdemo: the library doing its job on the simulated camera. Each section
// lives in its own file and is listed here in the order it prints.
//
//   zxdemo [--trace]   --trace adds the auto-exposure loop's per-frame trace
#include <cstdio>
#include <cstring>

#include "demo.h"

int main(int argc, char** argv)
{
    bool trace = false;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--trace") == 0) {
            trace = true;
        } else {
            std::fprintf(stderr, "usage: zxdemo [--trace]\n");
            return 2;
        }
    }
    DemoHistograms();
    DemoAutoExposure(trace);
    DemoCamera();
    return 0;
}
