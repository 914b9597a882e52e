// Ids of the input-setup test dialog: one item of each kind the controls drive.
#pragma once
#define IDD_IS_TEST 1000
#define IDC_IS_EDIT 1001
#define IDC_IS_COMBO 1002
#define IDC_IS_COMBO_EDIT 1003
#define IDC_IS_SCROLL 1004
#define IDC_IS_SCROLL_TEXT 1005
#define IDC_IS_TRACK 1006
#define IDC_IS_TRACK_TEXT 1007
#define IDC_IS_SPIN_EDIT 1008
#define IDC_IS_SPIN 1009
#define IDC_IS_CHECK 1010
#define IDC_IS_RADIO1 1011
#define IDC_IS_RADIO2 1012
#define IDC_IS_RADIO3 1013
#define IDC_IS_PUSH 1014
#define IDC_IS_PUSH_TEXT 1015
#define IDC_IS_MULTI1 1016
#define IDC_IS_MULTI2 1017
#define IDC_IS_MULTI3 1018
#define IDC_IS_STATIC 1019
#define IDC_IS_LIST_TEXT 1020
#define IDC_IS_NEXT 1021
#define IDC_IS_PREV 1022
#define IDC_IS_OWNERDRAW 1023
#define IDC_IS_LABEL 1024
