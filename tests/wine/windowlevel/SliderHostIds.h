/*
 * Identifiers of the dialog the slider tests host the slider in.
 */
#pragma once

#define IDD_SLIDER_HOST 300
#define IDC_SH_SLIDER 3001
#define IDC_SH_VSLIDER 3002
