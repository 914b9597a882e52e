// zxdemo: the library doing its job on the simulated camera. Each section
// lives in its own file and is listed here in the order it prints.
#include "demo.h"

int main()
{
    DemoHistograms();
    DemoAutoExposure();
    DemoCamera();
    return 0;
}
