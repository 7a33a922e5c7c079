/*
 * The imaging kernel of Qvkrnx.dll: the BITMAPHANDLE descriptor, its pixel
 * memory, palettes, regions, bitmap lists, status callbacks, image files and
 * painting.
 *
 * Conventions of every function here: C linkage, exported by name, a signed
 * result (QV_SUCCESS or a negative code of qverror.h), a trailing uFlags word
 * whose undefined bits are refused with QV_ERROR_INVALID_FLAGS, and every
 * pointer argument checked (null, unmapped, not writable) before use.
 */
#pragma once

#include "qvbase.h"
#include "qverror.h"

/* BITMAPHANDLE.uFlags */
#define QV_BMF_ALLOCATED 0x0001u /* pData holds pixel memory owned by the kernel */
#define QV_BMF_SIGNED 0x0200u    /* samples are two's-complement signed (12/16-bit gray) */
#define QV_BMF_USELUT 0x0800u    /* painted through its window-level LUT (pLUT, uLUTLength) */

/* BITMAPHANDLE.uOrder */
#define QV_ORDER_RGB 0u
#define QV_ORDER_BGR 1u
#define QV_ORDER_GRAY 2u

/* BITMAPHANDLE.uRgnFlags */
#define QV_RGN_SET 0x0001u /* a region is set: rcRgn, and pRgnMask when not null */

#define QV_MAX_PALETTE_ENTRIES 256

/* The largest width and height of a bitmap the kernel makes (Q_InitBitmap, Q_CreateBitmap, loading, ...) */
#define QV_MAX_BITMAP_SIDE 262144

/* Q_IsGrayScaleBitmap results (not error codes: 0 is a valid answer) */
#define QV_GRAY_NONE 0        /* not a gray image */
#define QV_GRAY_ORDERED 1     /* gray samples, or a gray palette ordered dark to light */
#define QV_GRAY_INVERSE 2     /* a gray palette ordered light to dark */
#define QV_GRAY_NOT_ORDERED 3 /* a gray palette whose entries are not in order */

/* Q_LoadBitmap: keep what the file holds */
#define QV_LOAD_KEEP_BITS 0
#define QV_LOAD_KEEP_ORDER 0xFFFFFFFFu

#pragma pack(push, 8)
/*
 * The caller-owned bitmap descriptor. Offsets 0 to 28 and 68 are fixed and
 * relied on by the dialogs and by hosts; the rest is laid out here and kept
 * stable as well. Pixel rows are top-down, nBytesPerLine apart (a multiple of
 * 4). Formats by nBitsPerPixel:
 *   1, 2, 4   palette indices packed most significant bit first
 *   8         palette index, or gray when uOrder is QV_ORDER_GRAY
 *   12        gray in 16-bit little-endian words holding 0..4095
 *   16        gray (uOrder QV_ORDER_GRAY, signed or not) or color 5-6-5
 *   24, 32    three color bytes in uOrder (BGR or RGB), 32 with alpha last
 *   48, 64    three 16-bit samples in uOrder, 64 with alpha last
 */
typedef struct tagBITMAPHANDLE {
  uint32_t uStructSize;   /*    0  sizeof(BITMAPHANDLE) */
  uint32_t uFlags;        /*    4  QV_BMF_* */
  uint8_t* pData;         /*    8  pixel rows, owned by the kernel */
  int32_t nWidth;         /*   16 */
  int32_t nHeight;        /*   20 */
  int32_t nBitsPerPixel;  /*   24  1, 2, 4, 8, 12, 16, 24, 32, 48, 64 */
  int32_t nBytesPerLine;  /*   28  a multiple of 4 */
  uint64_t uDataSize;     /*   32  bytes at pData (nBytesPerLine x nHeight) */
  int32_t nColors;        /*   40  palette entries in use (indexed formats) */
  int32_t nLowBit;        /*   44  lowest significant bit of gray samples */
  int32_t nHighBit;       /*   48  highest significant bit of gray samples */
  uint32_t uLUTLength;    /*   52  entries at pLUT */
  RGBQUAD* pLUT;          /*   56  window-level LUT (a kernel-owned copy), or null */
  int32_t nXResolution;   /*   64  dots per inch */
  uint32_t uOrder;        /*   68  QV_ORDER_* */
  int32_t nYResolution;   /*   72  dots per inch */
  uint32_t uRgnFlags;     /*   76  QV_RGN_* */
  RECT rcRgn;             /*   80  region bounds in pixels, right and bottom exclusive */
  uint8_t* pRgnMask;      /*   96  null: the whole of rcRgn; else one byte per pixel of rcRgn, nonzero inside */
  int32_t nRgnMaskStride; /*  104  bytes per mask row */
  uint32_t uReserved;     /*  108 */
  RGBQUAD Palette[QV_MAX_PALETTE_ENTRIES]; /* 112 */
  uint8_t Reserved[16];                    /* 1136 */
} BITMAPHANDLE;                            /* 1152 */
#pragma pack(pop)

#ifdef __cplusplus
#define QV_OFFSET_CHECK(field, off) \
  QV_STATIC_ASSERT(offsetof(BITMAPHANDLE, field) == off, "BITMAPHANDLE." #field " is at " #off)
#else
#define QV_OFFSET_CHECK(field, off) QV_STATIC_ASSERT(offsetof(BITMAPHANDLE, field) == off, "BITMAPHANDLE field offset")
#endif
QV_OFFSET_CHECK(uStructSize, 0);
QV_OFFSET_CHECK(uFlags, 4);
QV_OFFSET_CHECK(pData, 8);
QV_OFFSET_CHECK(nWidth, 16);
QV_OFFSET_CHECK(nHeight, 20);
QV_OFFSET_CHECK(nBitsPerPixel, 24);
QV_OFFSET_CHECK(nBytesPerLine, 28);
QV_OFFSET_CHECK(uDataSize, 32);
QV_OFFSET_CHECK(pLUT, 56);
QV_OFFSET_CHECK(uOrder, 68);
QV_OFFSET_CHECK(rcRgn, 80);
QV_OFFSET_CHECK(pRgnMask, 96);
QV_OFFSET_CHECK(Palette, 112);
#undef QV_OFFSET_CHECK
QV_STATIC_ASSERT(sizeof(BITMAPHANDLE) == 1152, "BITMAPHANDLE is 1152 bytes");

/* An ordered list of bitmaps, owned by the kernel. */
typedef struct QVBITMAPLIST_* HBITMAPLIST;

/*
 * Progress of long operations: called on the calling thread with 0..100;
 * any return other than QV_SUCCESS stops the operation, which then returns
 * QV_ERROR_USER_ABORT. Registered per thread.
 */
typedef int (*pQVSTATUSCALLBACK)(int nPercentComplete, void* pUserData);

/* Q_SaveBitmap formats */
#define QV_FILE_BMP 1u
#define QV_FILE_PNG 2u
#define QV_FILE_JPEG 3u
#define QV_FILE_TIFF 4u
#define QV_FILE_PNM 5u

QV_BEGIN_C

/*
 * Descriptor and memory.
 * Q_InitBitmap fills *p without pixel memory (rows of the smallest size, a multiple of 4; uOrder
 * QV_ORDER_GRAY up to 16 bits per pixel, so 16 bits means gray, QV_ORDER_BGR above; a gray ramp palette for
 * 1 to 8 bits; nLowBit 0 and nHighBit the top sample bit). uFlags may hold QV_BMF_SIGNED.
 * Q_AllocateBitmap gives an initialised descriptor zeroed pixel memory; a descriptor that already owns live
 * pixels is refused (QV_ERROR_INVALID_PARAMETER) rather than leaked. uMemFlags must be 0.
 * Q_CreateBitmap is both in one call, with the order and the palette given (null pPalette: the gray ramp).
 * Every way of making a bitmap applies one size rule: a width or height below 1 gives
 * QV_ERROR_INVALID_DIMENSIONS, one above QV_MAX_BITMAP_SIDE QV_ERROR_IMAGE_TOO_LARGE (checked in that order,
 * then the format), before anything is allocated.
 * Q_FreeBitmap releases pixels, LUT and region mask; a second free, or a free through a copy of a
 * descriptor whose pixels were already released, gives QV_ERROR_BITMAP_NOT_ALLOCATED.
 * Q_CopyBitmap makes *pDst a deep copy (pixels, LUT, region). *pDst is overwritten, not freed first: free
 * a bitmap held there before. pDst == pSrc is refused.
 * Q_IsValidBitmap returns QV_SUCCESS or the code of the first fault found, checked in this order: pointer,
 * uStructSize, allocation, dimensions, format, rows, palette, LUT, region.
 * Q_IsGrayScaleBitmap returns one of QV_GRAY_* (not an error) or a negative code.
 */
int Q_InitBitmap(BITMAPHANDLE* p, unsigned int uStructSize, int nWidth, int nHeight, int nBitsPerPixel,
                 unsigned int uFlags);
int Q_AllocateBitmap(BITMAPHANDLE* p, unsigned int uMemFlags);
int Q_CreateBitmap(BITMAPHANDLE* p, unsigned int uStructSize, int nWidth, int nHeight, int nBitsPerPixel,
                   unsigned int uOrder, const RGBQUAD* pPalette, int nColors, unsigned int uFlags);
int Q_FreeBitmap(BITMAPHANDLE* p, unsigned int uFlags);
int Q_CopyBitmap(BITMAPHANDLE* pDst, unsigned int uStructSize, const BITMAPHANDLE* pSrc, unsigned int uFlags);
int Q_IsValidBitmap(const BITMAPHANDLE* p, unsigned int uFlags);
int Q_IsGrayScaleBitmap(const BITMAPHANDLE* p, unsigned int uFlags);

/*
 * Reduction for display. Q_ReduceBitmapRegion makes *pDst (overwritten, not freed first) the area-averaged
 * reduction of pRegion of *pSrc (null: the whole bitmap) to nWidth x nHeight: every output sample is the
 * exact mean of the source area it covers, rounded half up, in the source's own sample format, so an
 * effect run on it sees the samples OK will process. 1/2/4/8-bit palette images and 5-6-5 colour come out
 * as 24-bit BGR (their codes have no meaningful average); every other format keeps its bits per pixel,
 * order, signedness, nLowBit/nHighBit and window-level LUT (with QV_BMF_USELUT). A region of *pSrc is
 * carried over: an output pixel is inside when the source pixel under its centre is, so a rectangle stays a
 * rectangle and an output the size of pRegion keeps the region pixel for pixel; when no output pixel's centre
 * falls inside it, *pDst has no region (compare Q_BitmapHasRgn of both to tell that from a source without
 * one). The output may not be larger than pRegion in either direction. Checked in this order: pDst and
 * uStructSize, uFlags (must be 0), *pSrc (as Q_IsValidBitmap), pDst == pSrc (QV_ERROR_INVALID_PARAMETER),
 * pRegion readable (QV_ERROR_INVALID_PARAMETER), pRegion empty or not inside the bitmap
 * (QV_ERROR_BAD_REGION), nWidth or nHeight below 1 (QV_ERROR_INVALID_DIMENSIONS), larger than pRegion
 * (QV_ERROR_INVALID_PARAMETER). Rows are shared among the cores; progress and abort through the status
 * callback. Extra memory beyond the output: a few rows per core.
 */
int Q_ReduceBitmapRegion(const BITMAPHANDLE* pSrc, const RECT* pRegion, int nWidth, int nHeight, BITMAPHANDLE* pDst,
                         unsigned int uStructSize, unsigned int uFlags);

/*
 * Pixels. A colour (0x00BBGGRR) goes into every format by one rule: its 8-bit components scaled to the
 * samples (v * max / 255; alpha full), gray formats from its luminance (0.299 R + 0.587 G + 0.114 B), signed
 * gray offset by half the range (black is the most negative sample, white the most positive), 5-6-5 packed by
 * uOrder (BGR: blue in the low five bits, RGB: red there), indexed formats the nearest palette entry.
 * Q_PutPixelColor writes the pixel at (x, y) whether or not it lies in the region (outside the bitmap:
 * QV_ERROR_INVALID_PARAMETER); Q_FillBitmap writes every pixel inside the region (all without one).
 */
int Q_PutPixelColor(BITMAPHANDLE* p, int x, int y, COLORREF crColor, unsigned int uFlags);
int Q_FillBitmap(BITMAPHANDLE* p, COLORREF crColor, unsigned int uFlags);

/*
 * Regions. Q_SetBitmapRgnMask takes the mask's bounds, the mask (one byte per pixel of the bounds, nonzero
 * inside) and its row stride as well: the region needs all three, and the kernel keeps its own copy. A
 * rectangle outside the bitmap, an empty one or an all-zero mask gives QV_ERROR_BAD_REGION and keeps the
 * previous region. Q_BitmapHasRgn returns 1 or 0. Q_GetBitmapRgnBounds gives the whole bitmap when no region
 * is set.
 */
int Q_SetBitmapRgnRect(BITMAPHANDLE* p, const RECT* pRect, unsigned int uFlags);
int Q_SetBitmapRgnMask(BITMAPHANDLE* p, const RECT* pBounds, const uint8_t* pMask, int nMaskStride,
                       unsigned int uFlags);
int Q_BitmapHasRgn(const BITMAPHANDLE* p, unsigned int uFlags);
int Q_GetBitmapRgnBounds(const BITMAPHANDLE* p, RECT* pRect, unsigned int uFlags);
int Q_FreeBitmapRgn(BITMAPHANDLE* p, unsigned int uFlags);

/*
 * Bitmap lists hold deep copies. Insert copies *p (uIndex up to the count); Remove hands the stored bitmap
 * to *pOut, which then owns it, or frees it when pOut is null; GetItem writes a deep copy the caller frees
 * (it takes uStructSize because it fills a caller's descriptor); Destroy frees every bitmap still held.
 * Handles that are not live lists give QV_ERROR_INVALID_HANDLE. A handle must not be destroyed while another
 * thread is still using it.
 */
int Q_CreateBitmapList(HBITMAPLIST* phList, unsigned int uFlags);
int Q_InsertBitmapListItem(HBITMAPLIST hList, unsigned int uIndex, const BITMAPHANDLE* p, unsigned int uFlags);
int Q_RemoveBitmapListItem(HBITMAPLIST hList, unsigned int uIndex, BITMAPHANDLE* pOut, unsigned int uFlags);
int Q_GetBitmapListCount(HBITMAPLIST hList, unsigned int* puCount, unsigned int uFlags);
int Q_GetBitmapListItem(HBITMAPLIST hList, unsigned int uIndex, BITMAPHANDLE* pOut, unsigned int uStructSize,
                        unsigned int uFlags);
int Q_DestroyBitmapList(HBITMAPLIST hList, unsigned int uFlags);

/* Status callbacks: one per thread; a null callback removes it. */
int Q_SetStatusCallBack(pQVSTATUSCALLBACK pfnCallback, void* pUserData, unsigned int uFlags);
int Q_GetStatusCallBack(pQVSTATUSCALLBACK* ppfnCallback, void** ppUserData, unsigned int uFlags);

/*
 * Files. nBitsPerPixel QV_LOAD_KEEP_BITS and uOrder QV_LOAD_KEEP_ORDER keep what the file holds (16-bit gray
 * and 48/64-bit color included); other values convert. On Windows any container the Imaging Component
 * decodes is read; natively PNG, BMP, PNM and JPEG. Q_SaveBitmap writes QV_FILE_BMP, QV_FILE_PNG (16-bit
 * samples kept), QV_FILE_JPEG and QV_FILE_TIFF (16-bit kept) everywhere, and QV_FILE_PNM natively only.
 * A missing file gives QV_ERROR_FILE_NOT_FOUND, a file that is no image QV_ERROR_FILE_FORMAT, a damaged or
 * cut-short image QV_ERROR_FILE_CORRUPT; the caller's descriptor is then unchanged.
 */
int Q_LoadBitmap(const wchar_t* pszPath, BITMAPHANDLE* p, unsigned int uStructSize, int nBitsPerPixel,
                 unsigned int uOrder, unsigned int uFlags);
int Q_SaveBitmap(const wchar_t* pszPath, const BITMAPHANDLE* p, unsigned int uFormat, unsigned int uFlags);

#ifdef _WIN32
/*
 * Palettes and painting (Windows only). The palette functions hand the new HPALETTE back through an output
 * pointer (the result is the status code); the caller deletes it with DeleteObject. Q_GetBitmapPalette
 * gives the bitmap's own entries when indexed, 256 grays when gray, the halftone palette otherwise.
 * Q_PaintBitmap draws pSrc of the bitmap (null: all of it) into pDst of the device context (null: the same
 * size at the origin), computing only what the DC's clip box shows.
 */
int Q_GetBitmapPalette(const BITMAPHANDLE* p, HPALETTE* phPalette, unsigned int uFlags);
int Q_DupPalette(HPALETTE hSrc, HPALETTE* phDst, unsigned int uFlags);
int Q_PaintBitmap(HDC hDC, const BITMAPHANDLE* p, const RECT* pSrc, const RECT* pDst, unsigned int uFlags);
int Q_CreatePaintPalette(HDC hDC, const BITMAPHANDLE* p, HPALETTE* phPalette, unsigned int uFlags);
#endif

QV_END_C
