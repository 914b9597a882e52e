// Control ids of the selection and capture-button dialogs (the library's
// templates and the ids drivers and tests address their items by).
#pragma once

// Capture-button setup ("CAPTURE_BUTTON_SETUP")
#define IDC_CB_SOUND 2201
#define IDC_CB_RESTORE 2202
#define IDC_CB_USE_CAMERA 2203
#define IDC_CB_USE_OC 2204
#define IDC_CB_PERFORM 2205
#define IDC_CB_CAPTURE 2402
#define IDC_CB_AUTOCAPTURE 2403
#define IDC_CB_OC1 2801
#define IDC_CB_OC2 2802
#define IDC_CB_CAMERA 2803
#define IDC_CB_OC1_LABEL 3401
#define IDC_CB_OC2_LABEL 3402
#define IDC_CB_NOTE 3403

// Selection hosts ("HWUNIT_SELECT_PREVIEW", "..._ADD", "HWUNIT_AND_CAMERA_SELECT_PREVIEW",
// "CAMERA_SELECT_PREVIEW"): the element areas, "Add...", rotation and flip
#define IDC_SEL_AREA 1401
#define IDC_SEL_AREA2 1402
#define IDC_SEL_ADD 2003
#define IDC_SEL_ROTATE_LEFT 2201
#define IDC_SEL_ROTATE_RIGHT 2202
#define IDC_SEL_ROTATE_180 2203
#define IDC_SEL_FLIP_H 2204
#define IDC_SEL_FLIP_V 2205
#define IDC_SEL_FLIP_NONE 2206

// Selection elements ("SHOW_HWUNITS", "SHOW_CAMERAS")
#define IDC_SEL_FRAME 1011
#define IDC_SEL_LABEL 1202
#define IDC_SEL_LABEL2 1203
#define IDC_SEL_LIST 1601
