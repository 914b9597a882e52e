// Item ids of the library's generic input-setup template "INPUT_FORM": a
// histogram area with its view button and range texts, the command-menu, help
// and fast/quality items, OK/Cancel, and a block of common camera items a
// driver binds to its properties (items it does not bind it hides). Plain
// defines, so resource scripts include it too.
#pragma once

#define ZX_INPUT_FORM L"INPUT_FORM"

// Histogram area: an invisible frame whose client rectangle the driver hands
// to IS_Histo (plot height = area height - 20 pixels).
#define IDC_ZX_HISTO_AREA 8000
#define IDC_ZX_HISTO_VIEW 8001      // view button: combined / red, green, blue
#define IDC_ZX_RANGE_RED 8002       // also the range of the combined histogram
#define IDC_ZX_RANGE_GREEN 8003
#define IDC_ZX_RANGE_BLUE 8004

// Commands of the dialog.
#define IDC_ZX_COMMANDMENU 8010     // opens the setting command menu
#define IDC_ZX_HELP 8011
#define IDC_ZX_FQSYNC 8012          // fast and quality settings kept equal

// Common camera items: a label (LBL) per row, then the items of its control.
#define IDC_ZX_LBL_EXPOSURE 8020
#define IDC_ZX_EXPOSURE 8021        // editable combo: free exposure
#define IDC_ZX_AUTO 8022            // check box, e.g. auto exposure
#define IDC_ZX_LBL_GAIN 8023
#define IDC_ZX_GAIN 8024            // horizontal scroll bar
#define IDC_ZX_GAIN_TEXT 8025       // its value
#define IDC_ZX_LBL_OFFSET 8026
#define IDC_ZX_OFFSET_EDIT 8027     // edit with an up-down buddy
#define IDC_ZX_OFFSET_SPIN 8028
#define IDC_ZX_LBL_FORMAT 8029
#define IDC_ZX_FORMAT 8030          // drop-down list: picture format
#define IDC_ZX_LBL_BINNING 8031
#define IDC_ZX_BINNING 8032         // drop-down list: binning of the format
#define IDC_ZX_LBL_CHOICE 8033
#define IDC_ZX_CHOICE1 8034         // a run of three radio buttons
#define IDC_ZX_CHOICE2 8035
#define IDC_ZX_CHOICE3 8036
#define IDC_ZX_LBL_INFO 8037
#define IDC_ZX_INFO 8038            // read-only value
#define IDC_ZX_COMMAND1 8039        // push buttons bound to driver commands
#define IDC_ZX_COMMAND2 8040
#define IDC_ZX_COMMAND_STATUS 8041  // status text of an asynchronous command
#define IDC_ZX_CAMERA_GROUP 8042    // group box around the camera items
#define IDC_ZX_ADVANCED 8043        // opens the advanced auto-exposure setup (hidden until a driver shows it)
/// Shows and switches to the fast (live) set, as ZX_InitFastQualityButtons draws it (hidden until a driver shows it).
#define IDC_ZX_FAST 8044
/// The same for the quality (capture) set.
#define IDC_ZX_QUALITY 8045
