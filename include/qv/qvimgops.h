/*
 * The image operations of Qvkrnx.dll: the pointwise tone, gray, balance,
 * curve and window-level effects that the color dialogs preview and that
 * hosts run on their own bitmaps, and the table builders behind the curve
 * and window-level dialogs.
 *
 * Conventions of every function here: C linkage, exported by name, a signed
 * result (QV_SUCCESS or a negative code of qverror.h), a trailing uFlags word
 * whose undefined bits are refused with QV_ERROR_INVALID_FLAGS, and nothing
 * thrown. Every operation on a bitmap works in place, checks the bitmap first
 * (null or unmapped -> QV_ERROR_INVALID_PARAMETER, wrong uStructSize ->
 * QV_ERROR_INVALID_STRUCT_SIZE, no pixel memory -> QV_ERROR_BITMAP_NOT_ALLOCATED),
 * then its values (out of range -> QV_ERROR_INVALID_PARAMETER; a null,
 * unreadable or wrongly sized table -> QV_ERROR_INVALID_TABLE), and leaves the
 * bitmap unchanged when a check fails. A format an operation does not handle
 * gives QV_ERROR_UNSUPPORTED_FORMAT. When the status callback stops an
 * in-place operation (QV_ERROR_USER_ABORT), rows already processed keep their
 * new values; Q_WindowLevelBitmap is all or nothing.
 *
 * Formats: indexed images (1 to 8 bits per pixel) change their palette, not
 * their indices; because a palette entry is shared by pixels inside and outside
 * a region, an indexed image with a region set is refused with
 * QV_ERROR_UNSUPPORTED_FORMAT. Gray images are one channel; 12- and 16-bit gray
 * and 48/64-bit color are processed at full 16-bit precision; 5-6-5 color goes
 * through its three channels as 8-bit values; alpha is never changed. Signed
 * gray samples (QV_BMF_SIGNED) are accepted only where a function says so.
 * With a region set, pixels outside it stay byte for byte unchanged.
 *
 * "max" below is the largest sample value of the format: 255 for indexed,
 * 8-bit gray, 5-6-5, 24- and 32-bit; 4095 for 12-bit; 65535 for 16-bit gray,
 * 48- and 64-bit. Results are rounded to the nearest level (halves up) and
 * clamped to 0..max. Long operations report progress through the calling
 * thread's status callback and stop with QV_ERROR_USER_ABORT when it asks;
 * rows are split over the available cores.
 */
#pragma once

#include "qvbase.h"
#include "qverror.h"
#include "qvkrn.h"

/*
 * Weights of one output channel of Q_BalanceColors: the new channel is
 * R * fToRed + G * fToGreen + B * fToBlue of the source pixel.
 */
#pragma pack(push, 1)
typedef struct tagQVBALANCINGRECORD {
  uint32_t uStructSize; /*  0  sizeof(QVBALANCINGRECORD), 28 */
  double fToRed;        /*  4  weight of the source red channel */
  double fToGreen;      /* 12  weight of the source green channel */
  double fToBlue;       /* 20  weight of the source blue channel */
} QVBALANCINGRECORD;
#pragma pack(pop)
QV_STATIC_ASSERT(offsetof(QVBALANCINGRECORD, uStructSize) == 0, "QVBALANCINGRECORD.uStructSize is at 0");
QV_STATIC_ASSERT(offsetof(QVBALANCINGRECORD, fToRed) == 4, "QVBALANCINGRECORD.fToRed is at 4");
QV_STATIC_ASSERT(offsetof(QVBALANCINGRECORD, fToGreen) == 12, "QVBALANCINGRECORD.fToGreen is at 12");
QV_STATIC_ASSERT(offsetof(QVBALANCINGRECORD, fToBlue) == 20, "QVBALANCINGRECORD.fToBlue is at 20");
QV_STATIC_ASSERT(sizeof(QVBALANCINGRECORD) == 28, "QVBALANCINGRECORD is 28 bytes");

/* Q_BalanceColors: largest magnitude of a weight (keeps the fixed-point mix exact enough). */
#define QV_BALANCE_MAX_WEIGHT 16.0

/* Q_IntensityDetectBitmap uChannel bits; 0 tests the intensity of the whole pixel. */
#define QV_CHANNEL_RED 0x001u
#define QV_CHANNEL_GREEN 0x010u
#define QV_CHANNEL_BLUE 0x100u

/* Q_RemapBitmapIntensity uChannel values */
#define QV_REMAP_ALL 0u
#define QV_REMAP_RED 1u
#define QV_REMAP_GREEN 2u
#define QV_REMAP_BLUE 3u

/* Q_GetFunctionalLookupTable uKind values */
#define QV_FUNCTIONAL_EXPONENTIAL 0u
#define QV_FUNCTIONAL_LOGARITHM 1u
#define QV_FUNCTIONAL_LINEAR 2u

/* Q_WindowLevelFillLUT uFlags: a ramp kind, a curve, and the two modifiers. */
#define QV_WLFILL_RAMP_MASK 0x000Fu
#define QV_WLFILL_COLOR_RAMP 0x0001u   /* below low black, crStart..crEnd between, above high white */
#define QV_WLFILL_GRAY_RAMP 0x0002u    /* below low crStart, black..white between, above high crEnd */
#define QV_WLFILL_CURVE_MASK 0x00F0u
#define QV_WLFILL_LINEAR 0x0010u
#define QV_WLFILL_EXPONENTIAL 0x0020u
#define QV_WLFILL_LOGARITHMIC 0x0030u
#define QV_WLFILL_SIGMOID 0x0040u
#define QV_WLFILL_SIGNED 0x0100u       /* entry length + v holds the negative value v */
#define QV_WLFILL_DICOM 0x1000u        /* window from the DICOM VOI linear function */

/* Q_WindowLevel uFlags */
#define QV_WL_PAINT 0x0000u            /* attach the LUT for painting */
#define QV_WL_PAINT_AND_PROCESS 0x0001u /* the same; the LUT also travels with the bitmap into processing */

/* Largest table any builder or window-level function takes. */
#define QV_MAX_TABLE_LENGTH 65536u

QV_BEGIN_C

/*
 * Brightness. nChange -1000..1000 in tenths of a percent, per channel:
 * n >= 0: v + (max - v) * n / 1000; n < 0: v * (1000 + n) / 1000.
 * +1000 gives white, -1000 black. Every format but signed gray.
 */
int Q_ChangeBitmapIntensity(BITMAPHANDLE* pBitmap, int nChange, unsigned int uFlags);

/*
 * Contrast about the middle m = (max + 1) / 2. nChange -1000..1000:
 * n >= 0: m + (v - m) * 1000 / (1000 - n), clamped (1000: a threshold at m);
 * n < 0: m + (v - m) * (1000 + n) / 1000 (-1000: flat gray m).
 * Every format but signed gray.
 */
int Q_ChangeBitmapContrast(BITMAPHANDLE* pBitmap, int nChange, unsigned int uFlags);

/*
 * Rotates the HSV hue of every pixel by nAngle degrees (-360..360); value and
 * saturation stay, gray pixels stay. Gray images are left as they are; signed
 * gray is refused.
 */
int Q_ChangeBitmapHue(BITMAPHANDLE* pBitmap, int nAngle, unsigned int uFlags);

/*
 * HSV saturation S becomes S + S * nChange / 1000, clamped to [0, 1]
 * (nChange -1000..1000; -1000 gives gray of value V). Hue and value stay.
 * Gray images are left as they are; signed gray is refused.
 */
int Q_ChangeBitmapSaturation(BITMAPHANDLE* pBitmap, int nChange, unsigned int uFlags);

/*
 * Contrast (as Q_ChangeBitmapContrast) about the median intensity of the
 * image, or of the region when one is set, instead of the middle value. The
 * intensity is the gray value, or the luminance
 * (299 R + 587 G + 114 B) / 1000 of a color pixel; the median is the lower
 * median. Every format but signed gray.
 */
int Q_HistoContrastBitmap(BITMAPHANDLE* pBitmap, int nChange, unsigned int uFlags);

/*
 * Each channel to the nearest of uLevels (2..64) evenly spaced values over
 * 0..max: level k = round(k * max / (uLevels - 1)). Every format but signed gray.
 */
int Q_PosterizeBitmap(BITMAPHANDLE* pBitmap, unsigned int uLevels, unsigned int uFlags);

/*
 * Each channel value v >= uThreshold (0..max) becomes max - v. Every format
 * but signed gray.
 */
int Q_SolarizeBitmap(BITMAPHANDLE* pBitmap, unsigned int uThreshold, unsigned int uFlags);

/*
 * Gamma per channel, each gamma x 100 in 1..1000: v = max * (v / max)^(100 / gamma);
 * a gamma above 100 brightens. Gray images use uRed. Every format but signed
 * gray (see Q_GammaCorrectBitmapSigned).
 */
int Q_GammaCorrectBitmapExt(BITMAPHANDLE* pBitmap, unsigned int uRed, unsigned int uGreen, unsigned int uBlue,
                            unsigned int uFlags);

/*
 * Gamma (x 100, 1..1000) for signed images: on signed 12/16-bit gray the curve
 * of Q_GammaCorrectBitmapExt runs on the magnitude |v| over 0..M
 * (M = 2048 or 32768) and the sign is kept. On any unsigned format it is
 * Q_GammaCorrectBitmapExt with uGamma for all three channels.
 */
int Q_GammaCorrectBitmapSigned(BITMAPHANDLE* pBitmap, unsigned int uGamma, unsigned int uFlags);

/*
 * Intensity detect. uLow, uHigh 0..max; uLow > uHigh leaves nothing inside.
 * uChannel 0: a pixel whose intensity (gray value, or luminance as in
 * Q_HistoContrastBitmap) lies in [uLow, uHigh] becomes white, any other black.
 * uChannel of QV_CHANNEL_* bits: each selected channel whose value lies in
 * [uLow, uHigh] takes that channel of crIn, otherwise of crOut (scaled from
 * 0..255 to 0..max); unselected channels stay. On a gray image any channel
 * bit selects the gray channel, which takes the luminance of crIn or crOut.
 * Every format but signed gray.
 */
int Q_IntensityDetectBitmap(BITMAPHANDLE* pBitmap, unsigned int uLow, unsigned int uHigh, COLORREF crIn,
                            COLORREF crOut, unsigned int uChannel, unsigned int uFlags);

/*
 * Every channel becomes (R * nRed + G * nGreen + B * nBlue) / 1000; the weights
 * are thousandths, each 0..1000, summing to 1000. Bits per pixel stay. Gray
 * images are already gray and stay; signed gray is refused.
 */
int Q_GrayScaleBitmapExt(BITMAPHANDLE* pBitmap, int nRed, int nGreen, int nBlue, unsigned int uFlags);

/*
 * Colored gray: G = (R * nRed + G * nGreen + B * nBlue) / 1000 with weights as
 * in Q_GrayScaleBitmapExt; then channel c = G + G * fact_c / 1000, clamped,
 * with fact_c the channel's gray weight -1000..1000. Color and indexed formats
 * only (a gray image cannot hold the tint).
 */
int Q_ConvertToColoredGray(BITMAPHANDLE* pBitmap, int nRed, int nGreen, int nBlue, int nRedGray,
                           int nGreenGray, int nBlueGray, unsigned int uFlags);

/*
 * Channel mixing: new R = R * pRed->fToRed + G * pRed->fToGreen + B * pRed->fToBlue,
 * new G and B likewise from pGreen and pBlue; clamped. Each record must be
 * readable with uStructSize 28 (else QV_ERROR_INVALID_STRUCT_SIZE); each weight
 * finite with magnitude at most QV_BALANCE_MAX_WEIGHT. Color and indexed
 * formats only.
 */
int Q_BalanceColors(BITMAPHANDLE* pBitmap, const QVBALANCINGRECORD* pRed, const QVBALANCINGRECORD* pGreen,
                    const QVBALANCINGRECORD* pBlue, unsigned int uFlags);

/*
 * v = pTable[v] on the chosen channels (QV_REMAP_*); entries above max give max.
 * uLength must match the samples: 256 (indexed, 8-bit gray, 5-6-5, 24, 32),
 * 4096 (12-bit), 65536 (16-bit gray, 48, 64), else QV_ERROR_INVALID_TABLE. On a
 * gray image every channel value remaps the gray. Signed gray is refused.
 */
int Q_RemapBitmapIntensity(BITMAPHANDLE* pBitmap, const unsigned int* pTable, unsigned int uLength,
                           unsigned int uChannel, unsigned int uFlags);

/*
 * Remaps hue, saturation and value. Each component is scaled to an index
 * 0..uLength-1 (hue: 0..360 degrees, saturation 0..1, value 0..max, index
 * round(c * (uLength - 1))); where pMask[h] != 0, h = pHue[h], s = pSat[s],
 * v = pVal[v] (entries above uLength-1 count as uLength-1). A null table is
 * the identity (a null mask selects every hue); a pixel whose three indices
 * stay the same is left untouched. uLength as in Q_RemapBitmapIntensity. On
 * a gray image hue and saturation are 0 and only the value is remapped.
 * Signed gray is refused.
 */
int Q_RemapBitmapHue(BITMAPHANDLE* pBitmap, const unsigned int* pMask, const unsigned int* pHue,
                     const unsigned int* pSat, const unsigned int* pVal, unsigned int uLength,
                     unsigned int uFlags);

/*
 * Fills pTable[0..uLength) with a smooth curve through the nCount (1..uLength)
 * control points, x strictly increasing within 0..uLength-1, y within
 * 0..uLength-1: monotone cubic Hermite between the points (no overshoot),
 * constant before the first point and after the last. *puFilled (may be null)
 * receives the number of entries written (uLength). uLength 2..65536.
 */
int Q_GetCurvePoints(unsigned int* pTable, unsigned int uLength, const POINT* pPoints, int nCount,
                     unsigned int* puFilled, unsigned int uFlags);

/*
 * Fills the entries strictly between nStart and nEnd (indices of the table,
 * either order) from the values already at nStart and nEnd: with
 * t = (i - nStart) / (nEnd - nStart) and k = nFactor / 10 (nFactor -1000..1000),
 * QV_FUNCTIONAL_EXPONENTIAL (e^(k t) - 1) / (e^k - 1),
 * QV_FUNCTIONAL_LOGARITHM ln(1 + k t) / ln(1 + k) (nFactor >= 0),
 * QV_FUNCTIONAL_LINEAR t; a factor of 0 is linear. uLength 2..65536.
 */
int Q_GetFunctionalLookupTable(unsigned int* pTable, unsigned int uLength, int nStart, int nEnd, int nFactor,
                               unsigned int uKind, unsigned int uFlags);

/*
 * Fills a window-level LUT of uLength (1..65536) entries. Entry i stands for
 * the value i, or with QV_WLFILL_SIGNED for i - uLength when i >= uLength / 2.
 * Values below nLow and above nHigh (nLow <= nHigh) take the ends of the ramp
 * kind (QV_WLFILL_COLOR_RAMP or QV_WLFILL_GRAY_RAMP); between them t runs from
 * 0 to 1 and goes through the curve: linear t; exponential
 * (e^(k t) - 1)/(e^k - 1); logarithmic ln(1 + k t)/ln(1 + k) (k >= 0); sigmoid a
 * logistic S of steepness 2|k| normalized to 0..1, its inverse for k < 0; with
 * k = nFactor / 100 (nFactor -1000..1000, 0 linear). With QV_WLFILL_DICOM the
 * window is the DICOM VOI linear function of center (nLow + nHigh) / 2
 * (truncated) and width nHigh - nLow (at least 1). nMinValue <= nMaxValue
 * bound the values of the source (checked, not otherwise used); nLowBit and
 * nHighBit describe the source samples for the caller and are not used to fill.
 */
int Q_WindowLevelFillLUT(RGBQUAD* pLUT, unsigned int uLength, COLORREF crStart, COLORREF crEnd, int nLow,
                         int nHigh, int nLowBit, int nHighBit, int nMinValue, int nMaxValue, int nFactor,
                         unsigned int uFlags);

/*
 * Attaches a kernel-owned copy of pLUT (uLength 1..65536 entries) to a 12- or
 * 16-bit gray bitmap, replacing any earlier one, and sets QV_BMF_USELUT,
 * nLowBit, nHighBit (0 <= nLowBit <= nHighBit < bits per pixel). Painting then
 * maps bits nLowBit..nHighBit of each sample (sign-extended for signed data)
 * through the LUT; the samples themselves are not changed. uFlags QV_WL_*.
 */
int Q_WindowLevel(BITMAPHANDLE* pBitmap, int nLowBit, int nHighBit, const RGBQUAD* pLUT, unsigned int uLength,
                  unsigned int uFlags);

/*
 * Converts a 12- or 16-bit gray bitmap permanently to 24 bits per pixel in
 * uOrderDst (QV_ORDER_RGB or QV_ORDER_BGR) through the LUT, indexed as in
 * Q_WindowLevel (an index past the table takes its last entry). The signed
 * and LUT flags are cleared and an attached LUT is released. A bitmap with a
 * region is refused (QV_ERROR_UNSUPPORTED_FORMAT): its pixels outside the
 * region could not keep their format.
 */
int Q_WindowLevelBitmap(BITMAPHANDLE* pBitmap, int nLowBit, int nHighBit, const RGBQUAD* pLUT,
                        unsigned int uLength, unsigned int uOrderDst, unsigned int uFlags);

QV_END_C
