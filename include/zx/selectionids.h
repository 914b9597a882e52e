// Control ids of the selection and capture-button dialogs (the library's
// templates and the ids drivers and tests address their items by).
#pragma once

// Capture-button setup ("CAPTURE_BUTTON_SETUP")
/// Check box "Confirmation sound" (m_bConfirmationSound).
#define IDC_CB_SOUND 2201
/// Check box that restores the device state after the capture (m_bRestoreDeviceAfterCapture).
#define IDC_CB_RESTORE 2202
/// Check box "Always use the specified camera" (m_bUseSpecifiedCamera).
#define IDC_CB_USE_CAMERA 2203
/// Check box "Use Optical Configuration" (m_bUseSpecifiedOC).
#define IDC_CB_USE_OC 2204
/// Check box "Perform Capture": unchecked switches the button off.
#define IDC_CB_PERFORM 2205
/// Radio button "Capture" (m_iPerformCapture 1).
#define IDC_CB_CAPTURE 2402
/// Radio button "AutoCapture" (m_iPerformCapture 2).
#define IDC_CB_AUTOCAPTURE 2403
/// Combo box of the optical configurations for camera 1.
#define IDC_CB_OC1 2801
/// Combo box of the optical configurations for camera 2.
#define IDC_CB_OC2 2802
/// Combo box of the grabber's cameras.
#define IDC_CB_CAMERA 2803
/// Label "Camera 1:" of the first configuration combo.
#define IDC_CB_OC1_LABEL 3401
/// Label "Camera 2:" of the second configuration combo.
#define IDC_CB_OC2_LABEL 3402
/// Static note on other ways to raise the capture-button event.
#define IDC_CB_NOTE 3403

// Selection hosts ("HWUNIT_SELECT_PREVIEW", "..._ADD", "HWUNIT_AND_CAMERA_SELECT_PREVIEW",
// "CAMERA_SELECT_PREVIEW"): the element areas, "Add...", rotation and flip
/// Placeholder whose rectangle the (first) selection element fills.
#define IDC_SEL_AREA 1401
/// Placeholder of the second element (the cameras beside the units).
#define IDC_SEL_AREA2 1402
/// Button "Add..." that defines a new hardware unit's connection.
#define IDC_SEL_ADD 2003
/// Button: rotate the preview 90 degrees to the left.
#define IDC_SEL_ROTATE_LEFT 2201
/// Button: rotate the preview 90 degrees to the right.
#define IDC_SEL_ROTATE_RIGHT 2202
/// Button: rotate the preview by 180 degrees.
#define IDC_SEL_ROTATE_180 2203
/// Button: flip the preview horizontally.
#define IDC_SEL_FLIP_H 2204
/// Button: flip the preview vertically.
#define IDC_SEL_FLIP_V 2205
/// Button: neither rotate nor flip the preview.
#define IDC_SEL_FLIP_NONE 2206

// Selection elements ("SHOW_HWUNITS", "SHOW_CAMERAS")
/// Group frame around the element's list.
#define IDC_SEL_FRAME 1011
/// Label above the list ("Available HW:", "Available cameras for driver:").
#define IDC_SEL_LABEL 1202
/// Second label (the driver's name in the camera selection).
#define IDC_SEL_LABEL2 1203
/// List view of the units or cameras.
#define IDC_SEL_LIST 1601
