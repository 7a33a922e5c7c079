/*
 * Identifiers of the dialog template the framework tests run against.
 */
#pragma once

#define IDD_FRAMEWORK_TEST 100
#define IDC_FW_NUMBER 1001
#define IDC_FW_CHECK 1002
#define IDC_FW_PRESS 1003
#define IDC_FW_SLIDER 1004
#define IDC_FW_COMBO 1005
#define IDC_FW_OTHER 1006
