// Ids of the numeric-controls test dialog (2000-2999): a scroll, spin and edit
// row of each kind with the text items that show their values.
#pragma once
#define IDD_NUM_TEST 2000
#define IDC_NUM_SCROLL 2001
#define IDC_NUM_SCROLL_TEXT 2002
#define IDC_NUM_LOG 2003
#define IDC_NUM_LOG_TEXT 2004
#define IDC_NUM_INT 2005
#define IDC_NUM_INT_TEXT 2006
#define IDC_NUM_LIST 2007
#define IDC_NUM_LIST_TEXT 2008
#define IDC_NUM_TRACK 2009
#define IDC_NUM_TRACK_TEXT 2010
#define IDC_NUM_TRACK_LIST 2011
#define IDC_NUM_SPIN_EDIT 2012
#define IDC_NUM_SPIN 2013
#define IDC_NUM_SPININT_EDIT 2014
#define IDC_NUM_SPININT 2015
#define IDC_NUM_EDIT 2016
#define IDC_NUM_EDIT_INT 2017
#define IDC_NUM_TEXT 2018
#define IDC_NUM_OTHER 2019
