// Sections of zxdemo.
#pragma once

void DemoHistograms();
void DemoAutoExposure();
void DemoCamera();
