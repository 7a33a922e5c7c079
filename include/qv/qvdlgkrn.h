/*
 * The dialog kernel of Qvdlgkrnx.dll: the readiness switch every dialog export
 * asks first, the string table by numeric id (English and German built in, host
 * overrides for localisation), the dialog font and window placement, the color
 * models with their conversions, component ranges and color names, and the
 * narrow-to-wide copy of the halftone pattern list.
 *
 * Conventions of every function here: C linkage, exported by name, a signed
 * result (QV_SUCCESS or a negative code of qverror.h) unless noted, and every
 * pointer argument checked (null, unmapped, not writable) before use. The color,
 * string and list functions are portable and also built natively; the readiness,
 * font and placement functions exist on Windows only.
 */
#pragma once

#include "qvbase.h"
#include "qverror.h"
#include "qvkrn.h"

/* Q_DlgInit flags */
#define QV_DLGINIT_GERMAN 0x0001u /* start with the German built-in texts */

/* Q_DlgSetLanguage languages */
#define QV_DLGLANG_ENGLISH 0u
#define QV_DLGLANG_GERMAN 1u

/*
 * String ids chosen by the kernel for texts whose dialogs leave the number open;
 * the dialogs and the preview base use these names. Every other id is the one
 * the dialog itself names (0 "OK", 1 "Cancel", 2 "Help", 3 "Before", 4 "After", ...).
 */
#define QVDLGSTR_PREVIEW_ZOOM_NORMAL 5    /* tooltip: zoom the preview to its actual size */
#define QVDLGSTR_PREVIEW_ZOOM_FIT 6       /* tooltip: fit the preview to its pane */
#define QVDLGSTR_PREVIEW_SPLIT 7          /* tooltip: before and after in one split pane */
#define QVDLGSTR_PREVIEW_SHOW_EFFECT 8    /* tooltip: show or hide the effect */
#define QVDLGSTR_PREVIEW_RESET_VIEW 9     /* tooltip: reset zoom, pan and split */
#define QVDLGSTR_PREVIEW_OUT_OF_DATE 10   /* after pane text while Apply is pending */
#define QVDLGSTR_PREVIEW_FAILED 32        /* after pane text when the effect failed; its %d is the code */
#define QVDLGSTR_IMAGE_COLORS 22          /* color picker: title of the image-palette list */
#define QVDLGSTR_DEFAULT_MODEL 23         /* color picker: the "( Default )" model menu entry */
#define QVDLGSTR_PALETTE_LIST 146         /* palette editor: left list title */
#define QVDLGSTR_EDIT_PALETTE_LIST 147    /* palette editor: right list title */
#define QVDLGSTR_GRAY_BLUE 457            /* gray scale: "Blue:" label (455 red, 456 green) */
#define QVDLGSTR_BALANCE_TITLE 460        /* balance colors: title */
#define QVDLGSTR_BALANCE_RED_GROUP 461    /* "&Red Weights:" */
#define QVDLGSTR_BALANCE_GREEN_GROUP 462  /* "&Green Weights:" */
#define QVDLGSTR_BALANCE_BLUE_GROUP 463   /* "&Blue Weights:" */
#define QVDLGSTR_BALANCE_RED 464          /* "Red:" in each group */
#define QVDLGSTR_BALANCE_GREEN 465        /* "Green:" */
#define QVDLGSTR_BALANCE_BLUE 466         /* "Blue:" */
#define QVDLGSTR_CURVE_POS_X 556          /* curve dialogs: pointer read-out format "X: %d" */
#define QVDLGSTR_CURVE_POS_Y 557          /* curve dialogs: pointer read-out format "Y: %d" */
#define QVDLGSTR_HALFTONE_ADD 1244        /* halftone list buttons: add (7112) */
#define QVDLGSTR_HALFTONE_REMOVE 1245     /* remove (7113) */
#define QVDLGSTR_HALFTONE_ADD_ALL 1246    /* add all (7117) */
#define QVDLGSTR_HALFTONE_REMOVE_ALL 1247 /* remove all (7116) */
#define QVDLGSTR_COLORRES_TITLE 1251      /* color resolution: title */
#define QVDLGSTR_COLORRES_BPP 1252        /* "&Bits per pixel:" */
#define QVDLGSTR_COLORRES_DITHER 1253     /* "&Dithering:" */
#define QVDLGSTR_COLORRES_PALETTE 1254    /* "&Palette:" */
#define QVDLGSTR_COLORRES_ORDER 1255      /* "Byte &order:" */
#define QVDLGSTR_COLORRES_OPEN 1256       /* "Open Palette &File..." */
#define QVDLGSTR_WL_TITLE 1300            /* window level: title */
#define QVDLGSTR_WL_HINT 1301             /* the hint line under the preview */
#define QVDLGSTR_WL_CURVE_GROUP 1302      /* "LUT Curve:" */
#define QVDLGSTR_WL_MODE 1303             /* "&Mode:" */
#define QVDLGSTR_WL_FACTOR 1304           /* "&Factor:" */
#define QVDLGSTR_WL_COLORS_GROUP 1305     /* "Colors:" */
#define QVDLGSTR_WL_START_COLOR 1306      /* "&Start Color" */
#define QVDLGSTR_WL_END_COLOR 1307        /* "&End Color" */
#define QVDLGSTR_WL_WINDOW_GROUP 1308     /* "Window:" */
#define QVDLGSTR_WL_CENTER 1309           /* "&Center:" */
#define QVDLGSTR_WL_WIDTH 1310            /* "&Width:" */
#define QVDLGSTR_WL_RANGE 1311            /* "&Range:" */
#define QVDLGSTR_WL_LOW_LEVEL 1312        /* "Low Level:" */
#define QVDLGSTR_WL_HIGH_LEVEL 1313       /* "High Level:" */
#define QVDLGSTR_WL_MODE_LINEAR 1314      /* Mode entries, curve types 0x10 to 0x40 in order */
#define QVDLGSTR_WL_MODE_EXPONENTIAL 1315
#define QVDLGSTR_WL_MODE_LOGARITHMIC 1316
#define QVDLGSTR_WL_MODE_SIGMOID 1317
#define QVDLGSTR_WL_RANGE_FULL 1318      /* Range entry: every value the bits can hold */
#define QVDLGSTR_WL_RANGE_IMAGE 1319     /* Range entry: the values the image holds */
#define QVDLGSTR_WL_STATUS_READY 1320    /* status pane before the first preview */
#define QVDLGSTR_EDITINTERVAL_TITLE 1322 /* edit interval: title "Enter a number" */
#define QVDLGSTR_EDITINTERVAL_VALUE 1323 /* edit interval: "&Value:" */

#pragma pack(push, 1)
/* RGB, each 0..255. */
typedef struct tagQVRGB {
  int32_t nRed;
  int32_t nGreen;
  int32_t nBlue;
} QVRGB;

/* Hue 0..359 degrees, saturation and brightness 0..100 percent. */
typedef struct tagQVHSB {
  int32_t nHue;
  int32_t nSaturation;
  int32_t nBrightness;
} QVHSB;

/* Hue 0..359 degrees, lightness and saturation 0..100 percent. */
typedef struct tagQVHLS {
  int32_t nHue;
  int32_t nLightness;
  int32_t nSaturation;
} QVHLS;

/* Cyan, magenta, yellow 0..255: the complement of RGB (c = 255 - r). */
typedef struct tagQVCMY {
  int32_t nCyan;
  int32_t nMagenta;
  int32_t nYellow;
} QVCMY;

/* Device CMYK, each 0..100 percent; K = 1 - max(R, G, B). */
typedef struct tagQVCMYK {
  int32_t nCyan;
  int32_t nMagenta;
  int32_t nYellow;
  int32_t nBlack;
} QVCMYK;

/* CIE L*a*b* (D50): L 0..100, a and b -128..127. */
typedef struct tagQVLAB {
  int32_t nL;
  int32_t nA;
  int32_t nB;
} QVLAB;
#pragma pack(pop)

QV_STATIC_ASSERT(sizeof(QVRGB) == 12, "QVRGB is three 32-bit integers");
QV_STATIC_ASSERT(sizeof(QVHSB) == 12, "QVHSB is three 32-bit integers");
QV_STATIC_ASSERT(sizeof(QVHLS) == 12, "QVHLS is three 32-bit integers");
QV_STATIC_ASSERT(sizeof(QVCMY) == 12, "QVCMY is three 32-bit integers");
QV_STATIC_ASSERT(sizeof(QVCMYK) == 16, "QVCMYK is four 32-bit integers");
QV_STATIC_ASSERT(sizeof(QVLAB) == 12, "QVLAB is three 32-bit integers");

/* Component-range indexes of Q_DlgGetComponentRange. */
#define QV_RANGE_HUE_MAX 6
#define QV_RANGE_SATURATION_MAX 8
#define QV_RANGE_BRIGHTNESS_MAX 10
#define QV_RANGE_LIGHTNESS_MAX 12
#define QV_RANGE_CYAN_MAX 14
#define QV_RANGE_MAGENTA_MAX 16
#define QV_RANGE_YELLOW_MAX 18
#define QV_RANGE_BLACK_MAX 20
#define QV_RANGE_L_MAX 22
#define QV_RANGE_L_MIN 23
#define QV_RANGE_A_MAX 24
#define QV_RANGE_A_MIN 25
#define QV_RANGE_B_MAX 26
#define QV_RANGE_B_MIN 27

/*
 * The halftone pattern list, in a narrow (char names) and a wide (wchar_t names)
 * form of the same layout. An entry is 28 bytes, packed:
 *   +0  uStructSize  28 (the entry size; the copy writes 28, the source's is not checked)
 *   +4  pBitmap      the pattern bitmap; copied as a pointer, never duplicated
 *   +12 pUserData    the caller's own value; copied unchanged
 *   +20 pszName      the pattern's display name (may be null)
 * The list header is 24 bytes: uStructSize (24), two reserved words, uCount (the
 * entry count, the fourth 32-bit word at offset 12) and pEntries (uCount entries).
 */
#pragma pack(push, 1)
typedef struct tagQVHALFTONEPATTERNA {
  uint32_t uStructSize;
  BITMAPHANDLE* pBitmap;
  void* pUserData;
  char* pszName;
} QVHALFTONEPATTERNA;

typedef struct tagQVHALFTONEPATTERNW {
  uint32_t uStructSize;
  BITMAPHANDLE* pBitmap;
  void* pUserData;
  wchar_t* pszName;
} QVHALFTONEPATTERNW;

typedef struct tagQVHALFTONELISTA {
  uint32_t uStructSize;
  uint32_t uReserved1;
  uint32_t uReserved2;
  uint32_t uCount;
  QVHALFTONEPATTERNA* pEntries;
} QVHALFTONELISTA;

typedef struct tagQVHALFTONELISTW {
  uint32_t uStructSize;
  uint32_t uReserved1;
  uint32_t uReserved2;
  uint32_t uCount;
  QVHALFTONEPATTERNW* pEntries;
} QVHALFTONELISTW;
#pragma pack(pop)

QV_STATIC_ASSERT(sizeof(QVHALFTONEPATTERNA) == 28, "a narrow pattern entry is 28 bytes");
QV_STATIC_ASSERT(sizeof(QVHALFTONEPATTERNW) == 28, "a wide pattern entry is 28 bytes");
QV_STATIC_ASSERT(offsetof(QVHALFTONEPATTERNA, pBitmap) == 4, "the pattern bitmap is at +4");
QV_STATIC_ASSERT(offsetof(QVHALFTONEPATTERNA, pszName) == 20, "the pattern name is at +20");
QV_STATIC_ASSERT(offsetof(QVHALFTONEPATTERNW, pBitmap) == 4, "the pattern bitmap is at +4");
QV_STATIC_ASSERT(offsetof(QVHALFTONEPATTERNW, pszName) == 20, "the pattern name is at +20");
QV_STATIC_ASSERT(offsetof(QVHALFTONELISTA, uCount) == 12, "the entry count is the fourth word");
QV_STATIC_ASSERT(offsetof(QVHALFTONELISTW, uCount) == 12, "the entry count is the fourth word");
QV_STATIC_ASSERT(offsetof(QVHALFTONELISTA, pEntries) == 16, "the entries follow the count");
QV_STATIC_ASSERT(sizeof(QVHALFTONELISTA) == 24, "the narrow list header is 24 bytes");
QV_STATIC_ASSERT(sizeof(QVHALFTONELISTW) == 24, "the wide list header is 24 bytes");

/* Longest pattern list and name the copy accepts (a damaged count is refused). */
#define QV_HALFTONE_MAX_PATTERNS 65536u
#define QV_HALFTONE_MAX_NAME 4096u

QV_BEGIN_C

/*
 * Strings. Ids without a text give QV_ERROR_NOT_FOUND. The length excludes the
 * terminator; Q_DlgGetString needs uBufLen >= length + 1 and otherwise returns
 * QV_ERROR_BUFFER_TOO_SMALL without writing. Q_DlgSetString copies the text
 * (an empty text is allowed, up to 65535 characters); null removes the
 * override. An override replaces the text in every language and survives a
 * change of language and Q_DlgFree. The strings work before Q_DlgInit too.
 */
int Q_DlgGetStringLen(unsigned int uId, unsigned int* puLen);
int Q_DlgGetString(unsigned int uId, wchar_t* pBuf, unsigned int uBufLen);
int Q_DlgSetString(unsigned int uId, const wchar_t* pszText);
int Q_DlgSetLanguage(unsigned int uLanguage); /* QV_DLGLANG_*; others are QV_ERROR_INVALID_PARAMETER */
int Q_DlgGetLanguage(unsigned int* puLanguage);

/*
 * Conversions between the color models; each checks both records. A component
 * outside its documented range is QV_ERROR_INVALID_PARAMETER and the output is
 * not written. Results are rounded to the nearest integer; Lab values outside
 * the sRGB gamut give the nearest displayable RGB (clipped per channel).
 */
int Q_DlgRGBToHSB(const QVRGB* pIn, QVHSB* pOut);
int Q_DlgRGBToHLS(const QVRGB* pIn, QVHLS* pOut);
int Q_DlgRGBToCMY(const QVRGB* pIn, QVCMY* pOut);
int Q_DlgRGBToCMYK(const QVRGB* pIn, QVCMYK* pOut);
int Q_DlgRGBToLab(const QVRGB* pIn, QVLAB* pOut);
int Q_DlgHSBToRGB(const QVHSB* pIn, QVRGB* pOut);
int Q_DlgHLSToRGB(const QVHLS* pIn, QVRGB* pOut);
int Q_DlgCMYToRGB(const QVCMY* pIn, QVRGB* pOut);
int Q_DlgCMYKToRGB(const QVCMYK* pIn, QVRGB* pOut);
int Q_DlgLabToRGB(const QVLAB* pIn, QVRGB* pOut);

/* The bound of a component by QV_RANGE_* index; other indexes are QV_ERROR_NOT_FOUND. */
int Q_DlgGetComponentRange(int nIndex, int* pnValue);

/*
 * The CSS name of a color (exact match; bits 24..31 of the COLORREF are ignored).
 * Q_DlgGetColorNameLen answers the length without terminator, or
 * QV_ERROR_NOT_FOUND when the color has no name; Q_DlgGetColorName needs
 * uBufLen >= length + 1. Where CSS has two names for one color the first in
 * alphabetical order is given ("aqua", not "cyan").
 */
int Q_DlgGetColorNameLen(COLORREF crColor, unsigned int* puLen);
int Q_DlgGetColorName(COLORREF crColor, wchar_t* pBuf, unsigned int uBufLen);

/*
 * A wide copy of a narrow halftone pattern list. Names are converted from the
 * ANSI code page on Windows and from UTF-8 elsewhere; a name that is not valid
 * in that encoding gives QV_ERROR_INVALID_PARAMETER. Bitmaps and user data are
 * copied as pointers. *ppOut is set only on success; release the copy with
 * Q_DlgFreeHalftoneList. Releasing null is QV_ERROR_INVALID_PARAMETER; a list
 * this kernel did not make, or one already released, is QV_ERROR_INVALID_HANDLE.
 */
int Q_DlgConvertHalftoneListA(const QVHALFTONELISTA* pIn, QVHALFTONELISTW** ppOut);
int Q_DlgFreeHalftoneList(QVHALFTONELISTW* pList);

#ifdef _WIN32
/*
 * Readiness. Q_DlgInit(uFlags: QV_DLGINIT_*) makes Q_DlgIsReady return 1; a
 * second Q_DlgInit only applies its flags (initialisation is not counted), and
 * flags it does not know are QV_ERROR_INVALID_FLAGS. Q_DlgFree makes it return 0
 * again, deletes the font the kernel made and forgets the host's font; without
 * a Q_DlgInit it returns QV_ERROR_NOT_INITIALIZED.
 * Q_DlgIsReady returns 1 or 0, not a result code.
 */
int Q_DlgInit(unsigned int uFlags);
int Q_DlgFree(void);
int Q_DlgIsReady(void);

/*
 * The dialog font. Q_DlgGetFont returns the font the dialogs use: the one set
 * with Q_DlgSetFont, else the system message font at the system DPI (made on
 * first use, owned by the kernel), or null when none can be made. Q_DlgSetFont
 * takes a font the caller keeps owning and must keep alive; null goes back to
 * the system message font; a handle that is not a font is QV_ERROR_INVALID_PARAMETER.
 */
int Q_DlgSetFont(HFONT hFont);
HFONT Q_DlgGetFont(void);

/*
 * Places a top-level window with its top-left corner at *pPoint (screen
 * coordinates), moved as little as needed to lie whole in the work area of the
 * monitor that holds the point (the nearest monitor when none does). A null
 * point centres the window on its owner (on the monitor's work area without
 * one), again kept whole on that monitor.
 */
int Q_DlgPlaceWindow(HWND hWnd, const POINT* pPoint);
#endif

QV_END_C
