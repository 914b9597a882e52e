// Item ids of the library's generic input-setup template "INPUT_FORM": a
// histogram area with its view button and range texts, the command-menu, help
// and fast/quality items, OK/Cancel, and a block of common camera items a
// driver binds to its properties (items it does not bind it hides). Plain
// defines, so resource scripts include it too.
#pragma once

/// Resource name of the generic input-setup template in the library's module
/// (ZX_GetLibraryModule).
#define ZX_INPUT_FORM L"INPUT_FORM"

// Histogram area: an invisible frame whose client rectangle the driver hands
// to IS_Histo (plot height = area height - 20 pixels).
/// Invisible frame marking the histogram area; its client rectangle goes to IS_Histo.
#define IDC_ZX_HISTO_AREA 8000
/// View button: toggles the combined and the red, green, blue histograms.
#define IDC_ZX_HISTO_VIEW 8001      // view button: combined / red, green, blue
/// Range text of red; with the combined view the range of the whole histogram.
#define IDC_ZX_RANGE_RED 8002       // also the range of the combined histogram
/// Range text of green (hidden in the combined view).
#define IDC_ZX_RANGE_GREEN 8003
/// Range text of blue (hidden in the combined view).
#define IDC_ZX_RANGE_BLUE 8004

// Commands of the dialog.
/// Button that opens the setting command menu (IS_CommandX).
#define IDC_ZX_COMMANDMENU 8010     // opens the setting command menu
/// Help button (IS_Help).
#define IDC_ZX_HELP 8011
/// Check box that keeps the fast and quality settings equal (IS_CheckFQSync).
#define IDC_ZX_FQSYNC 8012          // fast and quality settings kept equal

// Common camera items: a label (LBL) per row, then the items of its control.
/// Label of the exposure row.
#define IDC_ZX_LBL_EXPOSURE 8020
/// Editable combo for a free exposure time (CZxISControlComboFreeExposure).
#define IDC_ZX_EXPOSURE 8021        // editable combo: free exposure
/// Check box, e.g. bound to an auto-exposure switch.
#define IDC_ZX_AUTO 8022            // check box, e.g. auto exposure
/// Label of the gain row.
#define IDC_ZX_LBL_GAIN 8023
/// Horizontal scroll bar (a CZxISControlScrollDouble or its kin).
#define IDC_ZX_GAIN 8024            // horizontal scroll bar
/// Static text showing the scroll bar's value.
#define IDC_ZX_GAIN_TEXT 8025       // its value
/// Label of the offset row.
#define IDC_ZX_LBL_OFFSET 8026
/// Edit of an up-down pair (CZxISControlSpinInt and kin).
#define IDC_ZX_OFFSET_EDIT 8027     // edit with an up-down buddy
/// The up-down whose buddy is IDC_ZX_OFFSET_EDIT.
#define IDC_ZX_OFFSET_SPIN 8028
/// Label of the format row.
#define IDC_ZX_LBL_FORMAT 8029
/// Drop-down list of picture formats.
#define IDC_ZX_FORMAT 8030          // drop-down list: picture format
/// Label of the binning row.
#define IDC_ZX_LBL_BINNING 8031
/// Drop-down list of the binnings of the current format.
#define IDC_ZX_BINNING 8032         // drop-down list: binning of the format
/// Label of the radio-button row.
#define IDC_ZX_LBL_CHOICE 8033
/// First of three radio buttons bound to one list property.
#define IDC_ZX_CHOICE1 8034         // a run of three radio buttons
/// Second radio button.
#define IDC_ZX_CHOICE2 8035
/// Third radio button.
#define IDC_ZX_CHOICE3 8036
/// Label of the read-only value.
#define IDC_ZX_LBL_INFO 8037
/// Static text with a read-only value (CZxISControlTextDouble).
#define IDC_ZX_INFO 8038            // read-only value
/// First push button bound to a driver command.
#define IDC_ZX_COMMAND1 8039        // push buttons bound to driver commands
/// Second push button bound to a driver command.
#define IDC_ZX_COMMAND2 8040
/// Status text of an asynchronous command.
#define IDC_ZX_COMMAND_STATUS 8041  // status text of an asynchronous command
/// Group box around the camera items.
#define IDC_ZX_CAMERA_GROUP 8042    // group box around the camera items
/// Button that opens the advanced auto-exposure setup; hidden until a driver shows it.
#define IDC_ZX_ADVANCED 8043        // opens the advanced auto-exposure setup (hidden until a driver shows it)
/// Shows and switches to the fast (live) set, as ZX_InitFastQualityButtons draws it (hidden until a driver shows it).
#define IDC_ZX_FAST 8044
/// The same for the quality (capture) set.
#define IDC_ZX_QUALITY 8045
