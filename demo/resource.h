/*
 * Identifiers of the demo host's menu, accelerators and icon-less resources.
 * The dialog commands are numbered from IDM_DIALOG_FIRST in catalog order.
 */
#pragma once

#define IDR_MAINMENU 101
#define IDR_ACCELERATORS 102

#define IDM_OPEN 1001
#define IDM_SAVEAS 1002
#define IDM_SAMPLE 1003
#define IDM_CHART 1004
#define IDM_GRAY16 1005
#define IDM_GRAY12 1006
#define IDM_EXIT 1007
#define IDM_UNDO 1010
#define IDM_MODE_DIALOG 1020
#define IDM_MODE_OPERATION 1021
#define IDM_ABOUT 1030
#define IDM_DIALOG_FIRST 2000
