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
 * Signed 12-bit gray holds -2048..2047 in sign-extended 16-bit words, signed
 * 16-bit gray -32768..32767; where a function takes signed gray without a rule
 * of its own, it works on the level v - min of each sample over 0..max (min
 * -2048 or -32768, max 4095 or 65535) and stores the result back as level +
 * min, so its formula runs over the signed range: the range's ends stay its
 * ends and its middle (level (max + 1) / 2) is the value 0. A signed 12-bit
 * word outside -2048..2047 is left as it is.
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

/* Q_LocalHistoEqualizeBitmap uColorSpace values, and its largest smoothing */
#define QV_LHE_RGB 1u  /* red, green and blue each by its own histogram */
#define QV_LHE_YUV 2u  /* the luminance Y; U and V kept */
#define QV_LHE_GRAY 4u /* the luminance, written to every channel */
#define QV_LHE_MAX_SMOOTH 9u

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
#define QV_WLFILL_COLOR_RAMP 0x0001u /* below low black, crStart..crEnd between, above high white */
#define QV_WLFILL_GRAY_RAMP 0x0002u  /* below low crStart, black..white between, above high crEnd */
#define QV_WLFILL_CURVE_MASK 0x00F0u
#define QV_WLFILL_LINEAR 0x0010u
#define QV_WLFILL_EXPONENTIAL 0x0020u
#define QV_WLFILL_LOGARITHMIC 0x0030u
#define QV_WLFILL_SIGMOID 0x0040u
#define QV_WLFILL_SIGNED 0x0100u /* entry length + v holds the negative value v */
#define QV_WLFILL_DICOM 0x1000u  /* window from the DICOM VOI linear function */

/* Q_WindowLevel uFlags */
#define QV_WL_PAINT 0x0000u             /* attach the LUT for painting */
#define QV_WL_PAINT_AND_PROCESS 0x0001u /* the same; the LUT also travels with the bitmap into processing */

/* Largest table any builder or window-level function takes. */
#define QV_MAX_TABLE_LENGTH 65536u

/*
 * Q_ColorResBitmap uFlags: one palette value, one order value and one
 * dithering value OR-ed together.
 */
#define QV_COLORRES_PALETTE_MASK 0x014Bu
#define QV_COLORRES_FIXED_PALETTE 0x0001u     /* a fixed palette for the depth (0 means the same) */
#define QV_COLORRES_OPTIMIZED_PALETTE 0x0002u /* a palette made for the image by the quantizer */
#define QV_COLORRES_SYSTEM_PALETTE 0x0008u    /* keeps the 20 Windows system colors, the rest optimized */
#define QV_COLORRES_WEBSAFE_PALETTE 0x0040u   /* the 216-color web-safe cube (8 bits per pixel only) */
#define QV_COLORRES_USER_PALETTE 0x0100u      /* the caller's palette (hPalette, or pPalette and uColors) */
#define QV_COLORRES_ORDER_MASK 0x0084u
#define QV_COLORRES_ORDER_RGB 0x0000u
#define QV_COLORRES_ORDER_BGR 0x0004u
#define QV_COLORRES_ORDER_GRAY 0x0080u
#define QV_COLORRES_DITHER_MASK 0xF0000u
#define QV_COLORRES_NO_DITHERING 0x00000u
#define QV_COLORRES_FLOYD_STEINBERG 0x10000u /* 7 3 5 1 / 16 */
#define QV_COLORRES_STUCKI 0x20000u          /* three rows, / 42 */
#define QV_COLORRES_BURKES 0x30000u          /* two rows, / 32 */
#define QV_COLORRES_SIERRA 0x40000u          /* three rows, / 32 */
#define QV_COLORRES_STEVENSON_ARCE 0x50000u  /* four rows on a hexagonal lattice, / 200 */
#define QV_COLORRES_JARVIS 0x60000u          /* Jarvis, Judice and Ninke: three rows, / 48 */
#define QV_COLORRES_ORDERED 0x70000u         /* 8 x 8 Bayer matrix */
#define QV_COLORRES_CLUSTERED 0x80000u       /* 8 x 8 clustered-dot screen at 45 degrees */

/* Q_HalfToneBitmap uType values */
#define QV_HALFTONE_PRINT 0u      /* clustered round-to-square dots on a screen at the angle, 8-pixel cells */
#define QV_HALFTONE_VIEW 1u       /* dispersed dots: a 16 x 16 Bayer screen sampled at the angle */
#define QV_HALFTONE_SQUARE 2u     /* square dots in uDimension cells */
#define QV_HALFTONE_ROUND 3u      /* round dots in uDimension cells */
#define QV_HALFTONE_ELLIPTICAL 4u /* elliptical dots in uDimension cells at the angle */
#define QV_HALFTONE_RANDOM 5u     /* position-hashed (repeatable) noise, grain uDimension / 2 */
#define QV_HALFTONE_LINES 6u      /* lines uDimension apart at the angle */
#define QV_HALFTONE_USER 7u       /* uDimension^2 + 1 user patterns, darkest first */
#define QV_HALFTONE_MIN_DIMENSION 2u
#define QV_HALFTONE_MAX_DIMENSION 100u
#define QV_HALFTONE_MAX_ANGLE 36000

/* A GDI palette handle on Windows; natively there are no GDI palettes and it must be null. */
#ifdef _WIN32
typedef HPALETTE QVHPALETTE;
#else
typedef struct QVPALETTE_* QVHPALETTE;
#endif

QV_BEGIN_C

/*
 * Brightness. nChange -1000..1000 in tenths of a percent, per channel:
 * n >= 0: v + (max - v) * n / 1000; n < 0: v * (1000 + n) / 1000.
 * +1000 gives white, -1000 black. Every format; signed gray moves towards the
 * range's maximum (32767, 2047) and minimum (-32768, -2048).
 */
int Q_ChangeBitmapIntensity(BITMAPHANDLE* pBitmap, int nChange, unsigned int uFlags);

/*
 * Contrast about the middle m = (max + 1) / 2. nChange -1000..1000:
 * n >= 0: m + (v - m) * 1000 / (1000 - n), clamped (1000: a threshold at m);
 * n < 0: m + (v - m) * (1000 + n) / 1000 (-1000: flat gray m).
 * Every format; on signed gray the middle is 0, so 1000 is a threshold at 0
 * (0 and above become the maximum, negatives the minimum) and -1000 gives 0.
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
 * median. Every format; on signed gray the median is a signed value and the
 * curve runs over the signed range.
 */
int Q_HistoContrastBitmap(BITMAPHANDLE* pBitmap, int nChange, unsigned int uFlags);

/*
 * Q_HistoContrastBitmap about a given center: nMedian in 0..max of the
 * format's intensity (0..255 for palette and 5-6-5 images; on signed gray a
 * signed value, -32768..32767 or -2048..2047), usually the
 * answer of Q_GetBitmapMedianIntensity for another bitmap. This parameter
 * exists so that a reduced or cropped preview copy is processed with the
 * curve of the full image (or its region), exactly as the full image will
 * be: the median of a reduction is not the median of the image.
 */
int Q_HistoContrastBitmapExt(BITMAPHANDLE* pBitmap, int nChange, int nMedian, unsigned int uFlags);

/*
 * The lower median intensity Q_HistoContrastBitmap centers on, over the
 * region when one is set, into *pnMedian (left alone on an error; a signed
 * value on signed gray). Reads the bitmap only; accepts what
 * Q_HistoContrastBitmap accepts.
 */
int Q_GetBitmapMedianIntensity(const BITMAPHANDLE* pBitmap, int* pnMedian, unsigned int uFlags);

/*
 * Each channel to the nearest of uLevels (2..64) evenly spaced values over
 * 0..max: level k = round(k * max / (uLevels - 1)). Every format; on signed
 * gray the levels span the signed range, min + round(k * max / (uLevels - 1)),
 * so the first is -32768 (-2048), the last 32767 (2047), and with an odd
 * count the middle one is 0.
 */
int Q_PosterizeBitmap(BITMAPHANDLE* pBitmap, unsigned int uLevels, unsigned int uFlags);

/*
 * Each channel value v >= uThreshold (0..max) becomes max - v. Every format.
 * On signed gray uThreshold counts from the range's minimum (the solarize
 * dialog offers 0..4095 or 0..65535 on a signed 12/16-bit image): a sample
 * v >= min + uThreshold becomes -1 - v, its mirror about the range's middle
 * (maximum and minimum swap, 0 becomes -1). uThreshold 0 inverts every sample,
 * max only the range's maximum.
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
int Q_IntensityDetectBitmap(BITMAPHANDLE* pBitmap, unsigned int uLow, unsigned int uHigh, COLORREF crIn, COLORREF crOut,
                            unsigned int uChannel, unsigned int uFlags);

/*
 * Local histogram equalization. The image (or the region's bounding
 * rectangle) is cut into tiles of nWidth x nHeight from its top-left corner,
 * the last row and column of tiles taking what is left. Each tile's pixels are
 * mapped by the histogram of its window: the tile grown by nXExt pixels left
 * and right and nYExt up and down, clipped to the image (or the bounding
 * rectangle). With a region only the region's pixels are counted and changed.
 * A window of N samples maps v to max * (2 below(v) + count(v)) / (2 N),
 * rounded: the middle of v's rank, so order is kept and a flat window maps to
 * the middle level; a window with no sample of the region leaves values as
 * they are. 12-bit samples use 4096 bins; 16-bit samples (16-bit gray, 48,
 * 64) use 4096 bins of 16 values: the mapping is taken at the bin edges,
 * E_k = max * below(bin k) / N rounded, and v = 16 k + f maps to
 * E_k + (E_k+1 - E_k) * (2 f + 1) / 32 rounded, keeping 16-bit output.
 * uSmooth (0..QV_LHE_MAX_SMOOTH) blends tiles near their seams: a pixel at x
 * stands for the span [x + 1/2 - s, x + 1/2 + s], each tile weighs by the
 * share of that span it covers (the outer tiles reach on past the image's
 * edges), likewise across rows, and the weighted mean of the tiles' rounded
 * mappings is rounded again; within s of a seam the mapping thus ramps
 * linearly from one tile to the next.
 * uColorSpace: QV_LHE_RGB each of red, green and blue by its own histogram;
 * QV_LHE_YUV the luminance Y (as in Q_HistoContrastBitmap) with U and V kept,
 * i.e. each channel moves by Y' - Y, clamped; QV_LHE_GRAY the luminance,
 * written to all three channels. Gray images have one channel, equalized in
 * every colour space; signed gray is equalized on its levels. Indexed images
 * are read through their palette and each pixel becomes the nearest palette
 * entry (the palette stays); with a region they are refused like everywhere
 * here. nWidth, nHeight < 1, nXExt, nYExt < 0, another uColorSpace or uSmooth
 * above QV_LHE_MAX_SMOOTH give QV_ERROR_INVALID_PARAMETER; tiles so small
 * against a wide 16-bit image that the work tables would pass 1 GiB give
 * QV_ERROR_NO_MEMORY. Every format.
 */
int Q_LocalHistoEqualizeBitmap(BITMAPHANDLE* pBitmap, int nWidth, int nHeight, int nXExt, int nYExt,
                               unsigned int uColorSpace, unsigned int uSmooth, unsigned int uFlags);

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
int Q_ConvertToColoredGray(BITMAPHANDLE* pBitmap, int nRed, int nGreen, int nBlue, int nRedGray, int nGreenGray,
                           int nBlueGray, unsigned int uFlags);

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
                     const unsigned int* pSat, const unsigned int* pVal, unsigned int uLength, unsigned int uFlags);

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
int Q_WindowLevelFillLUT(RGBQUAD* pLUT, unsigned int uLength, COLORREF crStart, COLORREF crEnd, int nLow, int nHigh,
                         int nLowBit, int nHighBit, int nMinValue, int nMaxValue, int nFactor, unsigned int uFlags);

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
int Q_WindowLevelBitmap(BITMAPHANDLE* pBitmap, int nLowBit, int nHighBit, const RGBQUAD* pLUT, unsigned int uLength,
                        unsigned int uOrderDst, unsigned int uFlags);

/*
 * Converts pSrc to nBitsPerPixel (1 to 8, 12, 16, 24, 32, 48, 64) into *pDst,
 * which may be pSrc itself (the new bitmap then replaces the old one, whose
 * memory is released). Otherwise *pDst is overwritten without being freed, as
 * Q_CopyBitmap does; uStructSize is sizeof(BITMAPHANDLE). The whole bitmap is
 * converted: a region cannot keep pixels of another depth outside it, so it is
 * ignored and the result carries none (nor a window-level LUT).
 *
 * 1 to 8 bits per pixel give an indexed image; 3 bits are stored as 4 and 5 to
 * 7 as 8, with 2^bits palette entries. The palette value chooses the entries:
 *   fixed (or 0)  1 bit black and white; 2 bits four grays; 3 bits the eight
 *                 corners of the color cube; 4 bits the 16 VGA colors; 5 to 8
 *                 bits a uniform cube of 4x4x2, 4x4x4, 4x8x4 or 8x8x4 levels.
 *   optimized     variance-minimizing boxes (Wu) refined by k-means on the
 *                 image's colors; fewer entries when the image has fewer colors.
 *   system        the 20 Windows system colors (first ten at the start, last
 *                 ten at the end) and optimized colors between; at 4 bits the
 *                 16 VGA colors, below that black and white plus optimized ones.
 *   web-safe      the 216-color cube; 8 bits only (QV_ERROR_INVALID_PARAMETER).
 *   user          hPalette when not null (all its entries when uColors is 0),
 *                 else uColors (1..256) entries at pPalette. A palette larger
 *                 than the depth holds gives up the entries the image uses least.
 * The order value at 1 to 8 bits: QV_COLORRES_ORDER_GRAY gives evenly spaced
 * grays (the palette value is not used) and, at 8 bits, an 8-bit gray image;
 * RGB and BGR make no difference to indexed images.
 * Dithering applies to 1 to 8 bits: error diffusion runs in a serpentine scan
 * (even rows left to right, odd rows right to left, the kernel mirrored), each
 * pixel plus its accumulated error clamped to 0..255 before the nearest entry is
 * taken, and the whole difference passed on; ordered and clustered add a
 * screen offset scaled to the palette's spacing.
 * 12 bits: 12-bit gray whatever the order. 16 bits: gray with
 * QV_COLORRES_ORDER_GRAY, else 5-6-5 color (BGR is the Windows layout).
 * 24, 32, 48, 64 bits: color in RGB or BGR order; QV_COLORRES_ORDER_GRAY gives
 * gray pixels in BGR order. Deeper targets are converted exactly (rounded to
 * the nearest level), without dithering.
 * pfnCallback (may be null: the thread's status callback) reports progress and
 * stops the call with QV_ERROR_USER_ABORT, leaving pSrc and pDst unchanged.
 * Checks in order: pSrc (as every operation), uStructSize
 * (QV_ERROR_INVALID_STRUCT_SIZE), pDst writable (QV_ERROR_INVALID_PARAMETER),
 * nBitsPerPixel (QV_ERROR_INVALID_BITS_PER_PIXEL), uFlags (undefined bits, two
 * palette or order values, a dithering value past CLUSTERED:
 * QV_ERROR_INVALID_FLAGS), then the palette (QV_ERROR_INVALID_PARAMETER; a
 * handle that is no palette: QV_ERROR_INVALID_HANDLE).
 */
int Q_ColorResBitmap(BITMAPHANDLE* pSrc, BITMAPHANDLE* pDst, unsigned int uStructSize, int nBitsPerPixel,
                     unsigned int uFlags, const RGBQUAD* pPalette, QVHPALETTE hPalette, unsigned int uColors,
                     pQVSTATUSCALLBACK pfnCallback, void* pUserData);

/*
 * Halftones the bitmap in place to 1 bit per pixel (palette: 0 black, 1 white)
 * by comparing each pixel's darkness (1 - luminance / max) with a screen's
 * threshold. Each screen's thresholds are spread by the area its spot function
 * covers, so a flat gray of darkness t inks close to t of its pixels. Off the
 * pixel axes the angled screens (types 0, 1, 4, 6) are computed from rotated
 * coordinates of every pixel, not tiled from a cell, so they show no seams at
 * any angle; on the axes a cell of d x d pixels is ranked pixel by pixel and
 * renders exactly d * d + 1 levels.
 * uType QV_HALFTONE_*; nAngle in hundredths of a degree (-36000..36000; used by
 * types 0, 1, 4 and 6); uDimension 2..100 (the cell size of types 2 to 7; types
 * 0 and 1 have their own). Type 7 takes the first uDimension^2 + 1 bitmaps of
 * hPatterns, each uDimension by uDimension of any format, darkest first: a pixel
 * of luminance v (on the 16-bit scale 0..65535) takes pattern
 * floor(v * count / 65536) at its position modulo uDimension (a pattern pixel
 * is white when its luminance is at least 128 of 255). The same arguments
 * give the same result on every call (type 5 too).
 * As Q_ColorResBitmap, the whole bitmap is converted and a region is dropped.
 * Checks: the bitmap, uFlags (must be 0), uType, nAngle, uDimension
 * (QV_ERROR_INVALID_PARAMETER), then for type 7 the list (not a live list:
 * QV_ERROR_INVALID_HANDLE; fewer patterns than needed or one of the wrong size:
 * QV_ERROR_INVALID_PARAMETER).
 */
int Q_HalfToneBitmap(BITMAPHANDLE* pBitmap, unsigned int uType, int nAngle, unsigned int uDimension,
                     HBITMAPLIST hPatterns, unsigned int uFlags);

QV_END_C
