// The reference driver on its simulated camera, ready on both hosts: the dialog
// host under an application that leaves every message to the dialog, and the
// element host with a hidden pane to dock its page in.
#pragma once
#include <windows.h>

#include <gtest/gtest.h>

#include "zxsim/setupui.h"

class ReferenceDriver : public ::testing::Test {
protected:
    void SetUp() override
    {
        ui.Init(&camera, [](IZxGrabberUI::EZxEvent e, ZxHWnd, int64_t, void*) -> int32_t {
            return e == IZxGrabberUI::evMessage ? 1 : 0;
        });
    }
    void TearDown() override { DestroyWindow(pane); }

    CZxSimDriverCamera camera;
    CZxSimSetupUI ui{camera};
    CZxSimSetupElement element{camera};
    HWND pane = CreateWindowExW(0, L"STATIC", L"pane", WS_OVERLAPPEDWINDOW, 0, 0, 640, 720, nullptr, nullptr, nullptr,
                                nullptr);
};
