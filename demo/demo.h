// Sections of zxdemo.
#pragma once

void DemoHistograms();
/// With `trace` every frame of every run is listed before the summary tables.
void DemoAutoExposure(bool trace);
void DemoCamera();
