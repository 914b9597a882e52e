// Ids of the choice-controls test dialog (3000..3999).
#pragma once
#define IDD_CH_TEST 3000
#define IDC_CH_COMBO 3001
#define IDC_CH_COMBO2 3002
#define IDC_CH_FORMAT 3003
#define IDC_CH_BINNING 3004
#define IDC_CH_CHECK 3005
#define IDC_CH_OWNER1 3006
#define IDC_CH_OWNER2 3007
#define IDC_CH_OWNER3 3008
#define IDC_CH_OWNER4 3009
#define IDC_CH_RADIO1 3010
#define IDC_CH_RADIO2 3011
#define IDC_CH_RADIO3 3012
#define IDC_CH_SPIN_EDIT 3013
#define IDC_CH_SPIN 3014
#define IDC_CH_NP_TEXT 3015
#define IDC_CH_NEXT 3016
#define IDC_CH_PREV 3017
