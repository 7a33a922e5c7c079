/*
 * The color dialogs of Qvdlgclrx.dll: one exported function per dialog, each
 * taking the owner window and a caller-owned parameter structure, returning
 * QV_DLG_OK (100), QV_DLG_CANCEL (101), 102 (palette editor closed without a
 * palette) or a negative code of qverror.h.
 *
 * Every structure is packed to one byte: 64-bit pointers stand at unaligned
 * offsets, and each offset below is part of the binary contract (checked by
 * static asserts). uStructSize must equal sizeof the structure exactly.
 * Call Q_DlgInit (qvdlgkrn.h) once before the first dialog.
 *
 * When QVDLG_AUTO_PROCESS or QVDLG_SHOW_PREVIEW demands the bitmap, a palette
 * image (1, 2, 4 bits, or 8 bits not gray) with a region set is refused with
 * QV_ERROR_UNSUPPORTED_FORMAT after the other bitmap checks: no effect can
 * change the pixels inside the region alone when both sides share one
 * palette, so the dialog neither opens nor previews what OK cannot do.
 */
#pragma once

#include "qvimgops.h"
#include "qvkrn.h"

/* Flags of uDlgFlags shared by the before/after preview dialogs. */
#define QVDLG_AUTO_PROCESS 0x0001u        /* at OK, run the effect on the caller's bitmap in place */
#define QVDLG_SHOW_CONTEXTHELP 0x0002u    /* title-bar context-help button */
#define QVDLG_SHOW_PREVIEW 0x0004u        /* before/after preview with its toolbar; live processing */
#define QVDLG_SHOW_TOOL_ZOOMLEVEL 0x0008u /* keep the toolbar's zoom buttons; zoom keys on */
#define QVDLG_SHOW_TOOL_BUTTON3 0x0010u   /* keep toolbar button 3 (split view) */
#define QVDLG_SHOW_TOOL_BUTTON4 0x0020u   /* keep toolbar button 4 (effect on/off) */
#define QVDLG_SHOW_TOOL_BUTTON5 0x0040u   /* keep toolbar button 5 (reset view), with button 3 or 4 */
#define QVDLG_SHOW_APPLY 0x0080u          /* local histogram equalization: an Apply button */

/* The gamma dialog keeps its toolbar bits one place higher. */
#define QVGAMMADLG_SINGLE_GAMMA 0x0010u
#define QVGAMMADLG_SHOW_TOOL_BUTTON3 0x0020u
#define QVGAMMADLG_SHOW_TOOL_BUTTON4 0x0040u
#define QVGAMMADLG_SHOW_TOOL_BUTTON5 0x0080u

/* The color resolution dialog keeps its toolbar bits two places higher. */
#define QVCOLORRESDLG_SHOW_ORDER 0x0010u
#define QVCOLORRESDLG_SHOW_PALETTE_FILE 0x0020u
#define QVCOLORRESDLG_SHOW_TOOL_BUTTON3 0x0040u
#define QVCOLORRESDLG_SHOW_TOOL_BUTTON4 0x0080u
#define QVCOLORRESDLG_SHOW_TOOL_BUTTON5 0x0100u

/* The help callback: dialog id, control id (0 for the Help button), user data. */
typedef void (*pQVHELPCALLBACK)(unsigned int uDlgId, int nCtrlId, void* pUserData);

/* The halftone pattern lists (wide and narrow names) are declared by the dialog kernel. */
struct tagQVHALFTONELISTW;
struct tagQVHALFTONELISTA;

#pragma pack(push, 1)

/* The common tail of every structure: flags, position point, help callback and its data. */
#define QVDLG_COMMON_TAIL          \
  uint32_t uDlgFlags;              \
  POINT* pPositionPoint;           \
  pQVHELPCALLBACK pfnHelpCallback; \
  void* pHelpCallBackUserData

/* The seven single-value dialogs share one shape (48 bytes). */
#define QVDLG_SINGLE_VALUE_PARAMS(name, type, field) \
  typedef struct tag##name {                         \
    uint32_t uStructSize;                            \
    BITMAPHANDLE* pBitmap;                           \
    int32_t bZoomToFit;                              \
    type field;                                      \
    QVDLG_COMMON_TAIL;                               \
  } name

QVDLG_SINGLE_VALUE_PARAMS(QVBRIGHTNESSDLGPARAMS, int32_t, nBrightness);       /* -1000..1000 */
QVDLG_SINGLE_VALUE_PARAMS(QVCONTRASTDLGPARAMS, int32_t, nContrast);           /* -1000..1000 */
QVDLG_SINGLE_VALUE_PARAMS(QVHUEDLGPARAMS, int32_t, nHue);                     /* -180..180 degrees */
QVDLG_SINGLE_VALUE_PARAMS(QVSATURATIONDLGPARAMS, int32_t, nSaturation);       /* -1000..1000 */
QVDLG_SINGLE_VALUE_PARAMS(QVHISTOCONTRASTDLGPARAMS, int32_t, nHistoContrast); /* -1000..1000 */
QVDLG_SINGLE_VALUE_PARAMS(QVPOSTERIZEDLGPARAMS, uint32_t, uLevels);           /* 2..64 */
QVDLG_SINGLE_VALUE_PARAMS(QVSOLARIZEDLGPARAMS, uint32_t, uThreshold);         /* 0..max sample */

typedef struct tagQVGAMMAADJUSTMENTDLGPARAMS {
  uint32_t uStructSize;
  BITMAPHANDLE* pBitmap;
  int32_t bZoomToFit;
  uint32_t uRedGamma; /* gamma x 100, 10..500 */
  uint32_t uGreenGamma;
  uint32_t uBlueGamma;
  int32_t bAllChannels; /* nonzero: the three values move together */
  QVDLG_COMMON_TAIL;
} QVGAMMAADJUSTMENTDLGPARAMS;

typedef struct tagQVINTENSITYDETECTDLGPARAMS {
  uint32_t uStructSize;
  BITMAPHANDLE* pBitmap;
  int32_t bZoomToFit;
  uint32_t uLow;
  uint32_t uHigh;
  uint32_t uChannel; /* 0x001 red, 0x010 green, 0x100 blue; 0 the intensity */
  COLORREF crInColor;
  COLORREF crOutColor;
  QVDLG_COMMON_TAIL;
} QVINTENSITYDETECTDLGPARAMS;

typedef struct tagQVLOCALHISTOEQUALIZEDLGPARAMS {
  uint32_t uStructSize;
  BITMAPHANDLE* pBitmap;
  int32_t bZoomToFit;
  int32_t nWidth;
  int32_t nHeight;
  int32_t nXExt;
  int32_t nYExt;
  uint32_t uColorSpace; /* 1 RGB, 2 YUV, 4 gray */
  uint32_t uSmooth;
  QVDLG_COMMON_TAIL;
} QVLOCALHISTOEQUALIZEDLGPARAMS;

typedef struct tagQVGRAYSCALEDLGPARAMS {
  uint32_t uStructSize;
  BITMAPHANDLE* pBitmap;
  int32_t bZoomToFit;
  int32_t nRedFactor; /* thousandths; the three sum to 1000 */
  int32_t nGreenFactor;
  int32_t nBlueFactor;
  QVDLG_COMMON_TAIL;
} QVGRAYSCALEDLGPARAMS;

typedef struct tagQVCOLOREDGRAYDLGPARAMS {
  uint32_t uStructSize;
  BITMAPHANDLE* pBitmap;
  int32_t bZoomToFit;
  int32_t nRedFactor;
  int32_t nGreenFactor;
  int32_t nBlueFactor;
  int32_t nRedGrayFactor; /* -1000..1000 */
  int32_t nGreenGrayFactor;
  int32_t nBlueGrayFactor;
  QVDLG_COMMON_TAIL;
} QVCOLOREDGRAYDLGPARAMS;

/* QVBALANCINGRECORD, one output channel of the balance colors dialog, is the operations header's own. */

typedef struct tagQVBALANCECOLORSDLGPARAMS {
  uint32_t uStructSize;
  BITMAPHANDLE* pBitmap;
  int32_t bZoomToFit;
  QVBALANCINGRECORD RedFactor;
  QVBALANCINGRECORD GreenFactor;
  QVBALANCINGRECORD BlueFactor;
  QVDLG_COMMON_TAIL;
} QVBALANCECOLORSDLGPARAMS;

typedef struct tagQVWINDOWLEVELDLGPARAMS {
  uint32_t uStructSize;
  BITMAPHANDLE* pBitmap;
  int32_t bZoomToFit;
  RGBQUAD* pLUT;
  uint32_t uLUTLength;
  int32_t nLowBit;
  int32_t nHighBit;
  int32_t nLow;
  int32_t nHigh;
  COLORREF crStart;
  COLORREF crEnd;
  int32_t nFactor;
  uint32_t uFillFlags; /* ramp kind | curve type | 0x1000 */
  QVDLG_COMMON_TAIL;
} QVWINDOWLEVELDLGPARAMS;

typedef struct tagQVCOLORDLGPARAMS {
  uint32_t uStructSize;
  COLORREF crColor;     /* in: initial color; out: chosen color */
  uint32_t uColorSpace; /* a model flag; out 0xFFFFFFFF when the image palette list was active */
  uint32_t uDisplay;    /* a display flag */
  void* hPalette;       /* optional HPALETTE of the image */
  uint32_t uDlgFlags;
  POINT ptPosition; /* screen point at which the dialog is placed */
  pQVHELPCALLBACK pfnHelpCallback;
  void* pHelpCallBackUserData;
} QVCOLORDLGPARAMS;

typedef struct tagQVCUSTOMIZEPALETTEDLGPARAMS {
  uint32_t uStructSize;
  void* hSrcPalette;    /* optional HPALETTE shown as the caller's palette */
  void* hResultPalette; /* out: a new HPALETTE owned by the caller */
  uint32_t bApply;      /* state of the "apply palette when exit" box */
  uint32_t uDlgFlags;
  POINT ptPosition;
  pQVHELPCALLBACK pfnHelpCallback;
  void* pHelpCallBackUserData;
} QVCUSTOMIZEPALETTEDLGPARAMS;

typedef struct tagQVREMAPINTENSITYDLGPARAMS {
  uint32_t uStructSize;
  BITMAPHANDLE* pBitmap;
  int32_t bZoomToFit;
  uint32_t uChannel;       /* 0 all, 1 red, 2 green, 3 blue */
  uint32_t* puMasterTable; /* out: GlobalAlloc blocks owned by the caller */
  uint32_t* puRedTable;
  uint32_t* puGreenTable;
  uint32_t* puBlueTable;
  uint32_t uTableLength;
  QVDLG_COMMON_TAIL;
} QVREMAPINTENSITYDLGPARAMS;

typedef struct tagQVREMAPHUEDLGPARAMS {
  uint32_t uStructSize;
  BITMAPHANDLE* pBitmap;
  int32_t bZoomToFit;
  uint32_t* puMaskTable; /* out: GlobalAlloc blocks owned by the caller */
  uint32_t* puHueTable;
  uint32_t* puSaturationTable;
  uint32_t* puValueTable;
  uint32_t uTableLength;
  QVDLG_COMMON_TAIL;
} QVREMAPHUEDLGPARAMS;

typedef struct tagQVCOLORRESDLGPARAMS {
  uint32_t uStructSize;
  BITMAPHANDLE* pBitmap;
  int32_t bZoomToFit;
  uint32_t uBitsPerPixel;
  uint32_t uColorResFlags; /* out: dithering | palette | order */
  void* hPalette;          /* out: HPALETTE of the chosen user palette, or null */
  uint32_t uDlgFlags;
  uint32_t uOptions; /* which entries the combos offer */
  POINT* pPositionPoint;
  pQVHELPCALLBACK pfnHelpCallback;
  void* pHelpCallBackUserData;
} QVCOLORRESDLGPARAMS;

#define QVDLG_HALFTONE_PARAMS(name, listType) \
  typedef struct tag##name {                  \
    uint32_t uStructSize;                     \
    BITMAPHANDLE* pBitmap;                    \
    int32_t bZoomToFit;                       \
    uint32_t uDimension;                      \
    int32_t nAngle;                           \
    uint32_t uType;                           \
    const struct listType* pPatternList;      \
    const uint32_t* puSelection;              \
    uint32_t uSelectionCount;                 \
    HBITMAPLIST hChosenPatterns;              \
    QVDLG_COMMON_TAIL;                        \
  } name

QVDLG_HALFTONE_PARAMS(QVHALFTONEDLGPARAMS, tagQVHALFTONELISTW);
QVDLG_HALFTONE_PARAMS(QVHALFTONEDLGPARAMSA, tagQVHALFTONELISTA);

#pragma pack(pop)

#define QVDLG_CHECK(type, field, off) QV_STATIC_ASSERT(offsetof(type, field) == off, #type "." #field " is at " #off)
#define QVDLG_CHECK_SIZE(type, size) QV_STATIC_ASSERT(sizeof(type) == size, #type " is " #size " bytes")
#define QVDLG_CHECK_HEAD(type)       \
  QVDLG_CHECK(type, uStructSize, 0); \
  QVDLG_CHECK(type, pBitmap, 4);     \
  QVDLG_CHECK(type, bZoomToFit, 12)
/* uStructSize is the offset of uDlgFlags plus 28 for every structure with the common tail. */
#define QVDLG_CHECK_TAIL(type, flagsAt)                   \
  QVDLG_CHECK(type, uDlgFlags, flagsAt);                  \
  QVDLG_CHECK(type, pPositionPoint, flagsAt + 4);         \
  QVDLG_CHECK(type, pfnHelpCallback, flagsAt + 12);       \
  QVDLG_CHECK(type, pHelpCallBackUserData, flagsAt + 20); \
  QVDLG_CHECK_SIZE(type, flagsAt + 28)

QVDLG_CHECK_HEAD(QVBRIGHTNESSDLGPARAMS);
QVDLG_CHECK(QVBRIGHTNESSDLGPARAMS, nBrightness, 16);
QVDLG_CHECK_TAIL(QVBRIGHTNESSDLGPARAMS, 20);
QVDLG_CHECK_HEAD(QVCONTRASTDLGPARAMS);
QVDLG_CHECK(QVCONTRASTDLGPARAMS, nContrast, 16);
QVDLG_CHECK_TAIL(QVCONTRASTDLGPARAMS, 20);
QVDLG_CHECK_HEAD(QVHUEDLGPARAMS);
QVDLG_CHECK(QVHUEDLGPARAMS, nHue, 16);
QVDLG_CHECK_TAIL(QVHUEDLGPARAMS, 20);
QVDLG_CHECK_HEAD(QVSATURATIONDLGPARAMS);
QVDLG_CHECK(QVSATURATIONDLGPARAMS, nSaturation, 16);
QVDLG_CHECK_TAIL(QVSATURATIONDLGPARAMS, 20);
QVDLG_CHECK_HEAD(QVHISTOCONTRASTDLGPARAMS);
QVDLG_CHECK(QVHISTOCONTRASTDLGPARAMS, nHistoContrast, 16);
QVDLG_CHECK_TAIL(QVHISTOCONTRASTDLGPARAMS, 20);
QVDLG_CHECK_HEAD(QVPOSTERIZEDLGPARAMS);
QVDLG_CHECK(QVPOSTERIZEDLGPARAMS, uLevels, 16);
QVDLG_CHECK_TAIL(QVPOSTERIZEDLGPARAMS, 20);
QVDLG_CHECK_HEAD(QVSOLARIZEDLGPARAMS);
QVDLG_CHECK(QVSOLARIZEDLGPARAMS, uThreshold, 16);
QVDLG_CHECK_TAIL(QVSOLARIZEDLGPARAMS, 20);

QVDLG_CHECK_HEAD(QVGAMMAADJUSTMENTDLGPARAMS);
QVDLG_CHECK(QVGAMMAADJUSTMENTDLGPARAMS, uRedGamma, 16);
QVDLG_CHECK(QVGAMMAADJUSTMENTDLGPARAMS, uGreenGamma, 20);
QVDLG_CHECK(QVGAMMAADJUSTMENTDLGPARAMS, uBlueGamma, 24);
QVDLG_CHECK(QVGAMMAADJUSTMENTDLGPARAMS, bAllChannels, 28);
QVDLG_CHECK_TAIL(QVGAMMAADJUSTMENTDLGPARAMS, 32);

QVDLG_CHECK_HEAD(QVINTENSITYDETECTDLGPARAMS);
QVDLG_CHECK(QVINTENSITYDETECTDLGPARAMS, uLow, 16);
QVDLG_CHECK(QVINTENSITYDETECTDLGPARAMS, uHigh, 20);
QVDLG_CHECK(QVINTENSITYDETECTDLGPARAMS, uChannel, 24);
QVDLG_CHECK(QVINTENSITYDETECTDLGPARAMS, crInColor, 28);
QVDLG_CHECK(QVINTENSITYDETECTDLGPARAMS, crOutColor, 32);
QVDLG_CHECK_TAIL(QVINTENSITYDETECTDLGPARAMS, 36);

QVDLG_CHECK_HEAD(QVLOCALHISTOEQUALIZEDLGPARAMS);
QVDLG_CHECK(QVLOCALHISTOEQUALIZEDLGPARAMS, nWidth, 16);
QVDLG_CHECK(QVLOCALHISTOEQUALIZEDLGPARAMS, nHeight, 20);
QVDLG_CHECK(QVLOCALHISTOEQUALIZEDLGPARAMS, nXExt, 24);
QVDLG_CHECK(QVLOCALHISTOEQUALIZEDLGPARAMS, nYExt, 28);
QVDLG_CHECK(QVLOCALHISTOEQUALIZEDLGPARAMS, uColorSpace, 32);
QVDLG_CHECK(QVLOCALHISTOEQUALIZEDLGPARAMS, uSmooth, 36);
QVDLG_CHECK_TAIL(QVLOCALHISTOEQUALIZEDLGPARAMS, 40);

QVDLG_CHECK_HEAD(QVGRAYSCALEDLGPARAMS);
QVDLG_CHECK(QVGRAYSCALEDLGPARAMS, nRedFactor, 16);
QVDLG_CHECK(QVGRAYSCALEDLGPARAMS, nGreenFactor, 20);
QVDLG_CHECK(QVGRAYSCALEDLGPARAMS, nBlueFactor, 24);
QVDLG_CHECK_TAIL(QVGRAYSCALEDLGPARAMS, 28);

QVDLG_CHECK_HEAD(QVCOLOREDGRAYDLGPARAMS);
QVDLG_CHECK(QVCOLOREDGRAYDLGPARAMS, nRedFactor, 16);
QVDLG_CHECK(QVCOLOREDGRAYDLGPARAMS, nRedGrayFactor, 28);
QVDLG_CHECK(QVCOLOREDGRAYDLGPARAMS, nBlueGrayFactor, 36);
QVDLG_CHECK_TAIL(QVCOLOREDGRAYDLGPARAMS, 40);

QVDLG_CHECK_SIZE(QVBALANCINGRECORD, 28);
QVDLG_CHECK(QVBALANCINGRECORD, fToRed, 4);
QVDLG_CHECK(QVBALANCINGRECORD, fToGreen, 12);
QVDLG_CHECK(QVBALANCINGRECORD, fToBlue, 20);
QVDLG_CHECK_HEAD(QVBALANCECOLORSDLGPARAMS);
QVDLG_CHECK(QVBALANCECOLORSDLGPARAMS, RedFactor, 16);
QVDLG_CHECK(QVBALANCECOLORSDLGPARAMS, GreenFactor, 44);
QVDLG_CHECK(QVBALANCECOLORSDLGPARAMS, BlueFactor, 72);
QVDLG_CHECK_TAIL(QVBALANCECOLORSDLGPARAMS, 100);

QVDLG_CHECK_HEAD(QVWINDOWLEVELDLGPARAMS);
QVDLG_CHECK(QVWINDOWLEVELDLGPARAMS, pLUT, 16);
QVDLG_CHECK(QVWINDOWLEVELDLGPARAMS, uLUTLength, 24);
QVDLG_CHECK(QVWINDOWLEVELDLGPARAMS, nLowBit, 28);
QVDLG_CHECK(QVWINDOWLEVELDLGPARAMS, nHighBit, 32);
QVDLG_CHECK(QVWINDOWLEVELDLGPARAMS, nLow, 36);
QVDLG_CHECK(QVWINDOWLEVELDLGPARAMS, nHigh, 40);
QVDLG_CHECK(QVWINDOWLEVELDLGPARAMS, crStart, 44);
QVDLG_CHECK(QVWINDOWLEVELDLGPARAMS, crEnd, 48);
QVDLG_CHECK(QVWINDOWLEVELDLGPARAMS, nFactor, 52);
QVDLG_CHECK(QVWINDOWLEVELDLGPARAMS, uFillFlags, 56);
QVDLG_CHECK_TAIL(QVWINDOWLEVELDLGPARAMS, 60);

QVDLG_CHECK(QVCOLORDLGPARAMS, crColor, 4);
QVDLG_CHECK(QVCOLORDLGPARAMS, uColorSpace, 8);
QVDLG_CHECK(QVCOLORDLGPARAMS, uDisplay, 12);
QVDLG_CHECK(QVCOLORDLGPARAMS, hPalette, 16);
QVDLG_CHECK(QVCOLORDLGPARAMS, uDlgFlags, 24);
QVDLG_CHECK(QVCOLORDLGPARAMS, ptPosition, 28);
QVDLG_CHECK(QVCOLORDLGPARAMS, pfnHelpCallback, 36);
QVDLG_CHECK(QVCOLORDLGPARAMS, pHelpCallBackUserData, 44);
QVDLG_CHECK_SIZE(QVCOLORDLGPARAMS, 52);

QVDLG_CHECK(QVCUSTOMIZEPALETTEDLGPARAMS, hSrcPalette, 4);
QVDLG_CHECK(QVCUSTOMIZEPALETTEDLGPARAMS, hResultPalette, 12);
QVDLG_CHECK(QVCUSTOMIZEPALETTEDLGPARAMS, bApply, 20);
QVDLG_CHECK(QVCUSTOMIZEPALETTEDLGPARAMS, uDlgFlags, 24);
QVDLG_CHECK(QVCUSTOMIZEPALETTEDLGPARAMS, ptPosition, 28);
QVDLG_CHECK(QVCUSTOMIZEPALETTEDLGPARAMS, pfnHelpCallback, 36);
QVDLG_CHECK(QVCUSTOMIZEPALETTEDLGPARAMS, pHelpCallBackUserData, 44);
QVDLG_CHECK_SIZE(QVCUSTOMIZEPALETTEDLGPARAMS, 52);

QVDLG_CHECK_HEAD(QVREMAPINTENSITYDLGPARAMS);
QVDLG_CHECK(QVREMAPINTENSITYDLGPARAMS, uChannel, 16);
QVDLG_CHECK(QVREMAPINTENSITYDLGPARAMS, puMasterTable, 20);
QVDLG_CHECK(QVREMAPINTENSITYDLGPARAMS, puRedTable, 28);
QVDLG_CHECK(QVREMAPINTENSITYDLGPARAMS, puGreenTable, 36);
QVDLG_CHECK(QVREMAPINTENSITYDLGPARAMS, puBlueTable, 44);
QVDLG_CHECK(QVREMAPINTENSITYDLGPARAMS, uTableLength, 52);
QVDLG_CHECK_TAIL(QVREMAPINTENSITYDLGPARAMS, 56);

QVDLG_CHECK_HEAD(QVREMAPHUEDLGPARAMS);
QVDLG_CHECK(QVREMAPHUEDLGPARAMS, puMaskTable, 16);
QVDLG_CHECK(QVREMAPHUEDLGPARAMS, puHueTable, 24);
QVDLG_CHECK(QVREMAPHUEDLGPARAMS, puSaturationTable, 32);
QVDLG_CHECK(QVREMAPHUEDLGPARAMS, puValueTable, 40);
QVDLG_CHECK(QVREMAPHUEDLGPARAMS, uTableLength, 48);
QVDLG_CHECK_TAIL(QVREMAPHUEDLGPARAMS, 52);

/* The color resolution structure has one more field after its flags: its size is flags + 32. */
QVDLG_CHECK_HEAD(QVCOLORRESDLGPARAMS);
QVDLG_CHECK(QVCOLORRESDLGPARAMS, uBitsPerPixel, 16);
QVDLG_CHECK(QVCOLORRESDLGPARAMS, uColorResFlags, 20);
QVDLG_CHECK(QVCOLORRESDLGPARAMS, hPalette, 24);
QVDLG_CHECK(QVCOLORRESDLGPARAMS, uDlgFlags, 32);
QVDLG_CHECK(QVCOLORRESDLGPARAMS, uOptions, 36);
QVDLG_CHECK(QVCOLORRESDLGPARAMS, pPositionPoint, 40);
QVDLG_CHECK(QVCOLORRESDLGPARAMS, pfnHelpCallback, 48);
QVDLG_CHECK(QVCOLORRESDLGPARAMS, pHelpCallBackUserData, 56);
QVDLG_CHECK_SIZE(QVCOLORRESDLGPARAMS, 64);

QVDLG_CHECK_HEAD(QVHALFTONEDLGPARAMS);
QVDLG_CHECK(QVHALFTONEDLGPARAMS, uDimension, 16);
QVDLG_CHECK(QVHALFTONEDLGPARAMS, nAngle, 20);
QVDLG_CHECK(QVHALFTONEDLGPARAMS, uType, 24);
QVDLG_CHECK(QVHALFTONEDLGPARAMS, pPatternList, 28);
QVDLG_CHECK(QVHALFTONEDLGPARAMS, puSelection, 36);
QVDLG_CHECK(QVHALFTONEDLGPARAMS, uSelectionCount, 44);
QVDLG_CHECK(QVHALFTONEDLGPARAMS, hChosenPatterns, 48);
QVDLG_CHECK_TAIL(QVHALFTONEDLGPARAMS, 56);
QVDLG_CHECK_SIZE(QVHALFTONEDLGPARAMSA, 84);

#undef QVDLG_CHECK_HEAD
#undef QVDLG_CHECK_TAIL
#undef QVDLG_CHECK_SIZE
#undef QVDLG_CHECK

/* The exports exist on Windows only; the structures and flags above are portable. */
#ifdef _WIN32

QV_BEGIN_C

int Q_DlgBalanceColors(HWND hWndOwner, QVBALANCECOLORSDLGPARAMS* pParams);
int Q_DlgBrightness(HWND hWndOwner, QVBRIGHTNESSDLGPARAMS* pParams);
int Q_DlgColor(HWND hWndOwner, QVCOLORDLGPARAMS* pParams);
int Q_DlgColorRes(HWND hWndOwner, QVCOLORRESDLGPARAMS* pParams);
int Q_DlgColoredGray(HWND hWndOwner, QVCOLOREDGRAYDLGPARAMS* pParams);
int Q_DlgContrast(HWND hWndOwner, QVCONTRASTDLGPARAMS* pParams);
int Q_DlgCustomizePalette(HWND hWndOwner, QVCUSTOMIZEPALETTEDLGPARAMS* pParams);
int Q_DlgGammaAdjustment(HWND hWndOwner, QVGAMMAADJUSTMENTDLGPARAMS* pParams);
int Q_DlgGrayScale(HWND hWndOwner, QVGRAYSCALEDLGPARAMS* pParams);
int Q_DlgHalftone(HWND hWndOwner, QVHALFTONEDLGPARAMS* pParams);
int Q_DlgHalftoneA(HWND hWndOwner, QVHALFTONEDLGPARAMSA* pParams);
int Q_DlgHistoContrast(HWND hWndOwner, QVHISTOCONTRASTDLGPARAMS* pParams);
int Q_DlgHue(HWND hWndOwner, QVHUEDLGPARAMS* pParams);
int Q_DlgIntensityDetect(HWND hWndOwner, QVINTENSITYDETECTDLGPARAMS* pParams);
int Q_DlgLocalHistoEqualize(HWND hWndOwner, QVLOCALHISTOEQUALIZEDLGPARAMS* pParams);
int Q_DlgPosterize(HWND hWndOwner, QVPOSTERIZEDLGPARAMS* pParams);
int Q_DlgRemapHue(HWND hWndOwner, QVREMAPHUEDLGPARAMS* pParams);
int Q_DlgRemapIntensity(HWND hWndOwner, QVREMAPINTENSITYDLGPARAMS* pParams);
int Q_DlgSaturation(HWND hWndOwner, QVSATURATIONDLGPARAMS* pParams);
int Q_DlgSolarize(HWND hWndOwner, QVSOLARIZEDLGPARAMS* pParams);
int Q_DlgWindowLevel(HWND hWndOwner, QVWINDOWLEVELDLGPARAMS* pParams);

QV_END_C

#endif /* _WIN32 */
