// Ids of the free-entry combos' test dialog.
#pragma once
#define IDD_FREE_TEST 4100
#define IDC_FREE_EXPOSURE 4101
#define IDC_FREE_EXPOSURE2 4102
#define IDC_FREE_TEMPERATURE 4103
#define IDC_FREE_EDIT 4104
