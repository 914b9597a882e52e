// Ids of the command-controls test dialog. The multi-button row keeps the ids
// 2401..2403: item ids are the dialog's own, so they cannot clash with others.
#pragma once
#define IDD_CMD_TEST 4000
#define IDC_CMD_PUSH 4001
#define IDC_CMD_PUSH_TEXT 4002
#define IDC_CMD_ASYNC 4003
#define IDC_CMD_ASYNC_PROGRESS 4004
#define IDC_CMD_STATIC 4005
#define IDC_CMD_MULTI1 2401
#define IDC_CMD_MULTI2 2402
#define IDC_CMD_MULTI3 2403
