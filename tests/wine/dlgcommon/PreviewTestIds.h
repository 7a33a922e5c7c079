/*
 * Ids of the test program's dialog template: a small before/after dialog
 * laid out like the library's tone dialogs.
 */
#pragma once

#define IDD_PREVIEW_TEST 100
#define IDC_TEST_LABEL 101
#define IDC_TEST_SLIDER 102
#define IDC_TEST_EDIT 103
#define IDC_TEST_BEFORE_LABEL 104
#define IDC_TEST_AFTER_LABEL 105
#define IDC_TEST_BEFORE 21205
#define IDC_TEST_AFTER 21204
#define IDC_TEST_APPLY 26205
#define IDC_TEST_HELP 9
