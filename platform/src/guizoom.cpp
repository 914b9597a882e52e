#include <atomic>

#include "zxhost/guielement.h"

namespace {
std::atomic<double> g_zoom{1.0};
}

double ZX_GetGUIZoom() { return g_zoom.load(); }
double ZX_SetGUIZoom(double zoom) { return g_zoom.exchange(zoom > 0.0 ? zoom : 1.0); }
