/*
 * Identifiers of the dialog template the control tests run against.
 */
#pragma once

#define IDD_CONTROLS_TEST 200
#define IDC_CT_NUMBER 2001
#define IDC_CT_BEFORE 2002
#define IDC_CT_PLACEHOLDER 2003
#define IDC_CT_AFTER 2004
#define IDC_CT_REALCOMBO 2005
#define IDC_CT_SLIDER 2006
#define IDC_CT_PICKER 2007
