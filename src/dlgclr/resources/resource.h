/*
 * Identifiers of the resources of Qvdlgclrx.dll: dialog templates and their
 * controls. The numbers are part of the library's face (hosts and tests reach
 * controls by them), so they never change once given. Plain defines, read by
 * the resource compiler and by portable code alike.
 */
#pragma once

/* Controls every before/after template shares. */
#define IDC_QV_HELP 9
#define IDC_QV_AFTER_VIEW 21204
#define IDC_QV_BEFORE_VIEW 21205

/* Change Brightness */
#define IDD_QV_BRIGHTNESS 3100
#define IDC_BRIGHTNESS_SLIDER 3101
#define IDC_BRIGHTNESS_EDIT 3102
#define IDC_BRIGHTNESS_GROUP 3103
#define IDC_BRIGHTNESS_BEFORE 3104
#define IDC_BRIGHTNESS_AFTER 3105

/* Change Contrast */
#define IDD_QV_CONTRAST 3700
#define IDC_CONTRAST_SLIDER 3701
#define IDC_CONTRAST_EDIT 3702
#define IDC_CONTRAST_GROUP 3703
#define IDC_CONTRAST_BEFORE 3704
#define IDC_CONTRAST_AFTER 3705

/* Change Hue: its labels are numbered the other way round. */
#define IDD_QV_HUE 7500
#define IDC_HUE_SLIDER 7501
#define IDC_HUE_EDIT 7502
#define IDC_HUE_GROUP 7503
#define IDC_HUE_AFTER 7504
#define IDC_HUE_BEFORE 7505

/* Change Saturation */
#define IDD_QV_SATURATION 11500
#define IDC_SATURATION_SLIDER 11501
#define IDC_SATURATION_EDIT 11502
#define IDC_SATURATION_GROUP 11503
#define IDC_SATURATION_BEFORE 11504
#define IDC_SATURATION_AFTER 11505

/* HistoContrast */
#define IDD_QV_HISTOCONTRAST 7200
#define IDC_HISTOCONTRAST_SLIDER 7201
#define IDC_HISTOCONTRAST_EDIT 7202
#define IDC_HISTOCONTRAST_GROUP 7203
#define IDC_HISTOCONTRAST_BEFORE 7204
#define IDC_HISTOCONTRAST_AFTER 7205

/* Posterize Effect */
#define IDD_QV_POSTERIZE 10300
#define IDC_POSTERIZE_SLIDER 10301
#define IDC_POSTERIZE_EDIT 10302
#define IDC_POSTERIZE_BEFORE 10303
#define IDC_POSTERIZE_AFTER 10304
#define IDC_POSTERIZE_GROUP 10305

/* Solarize */
#define IDD_QV_SOLARIZE 12200
#define IDC_SOLARIZE_SLIDER 12201
#define IDC_SOLARIZE_EDIT 12202
#define IDC_SOLARIZE_GROUP 12203
#define IDC_SOLARIZE_BEFORE 12204
#define IDC_SOLARIZE_AFTER 12205
