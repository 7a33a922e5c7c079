/*
 * CQVBitmap: the dialogs' wrapper over a BITMAPHANDLE. A preview copy lives in
 * one of these; each effect member runs the matching Qvkrnx.dll operation on
 * the wrapped bitmap in place, so what a preview shows is exactly what the
 * same call on the caller's bitmap produces at OK. The wrapper owns its
 * bitmap (freed in the destructor) unless it merely wraps a caller's bitmap
 * through Attach. The descriptor lives on the heap so that moving the wrapper
 * never moves a descriptor the kernel has handed out memory for.
 */
#pragma once

#include <windows.h>

#include <memory>

#include "qv/qvkrn.h"

// Declared here rather than by including the operations header, so that a
// dialog may include this header beside the dialog parameter header.
struct tagQVBALANCINGRECORD;
typedef struct tagQVBALANCINGRECORD QVBALANCINGRECORD;

class CQVBitmap {
 public:
  CQVBitmap();
  ~CQVBitmap();
  CQVBitmap(const CQVBitmap&) = delete;
  CQVBitmap& operator=(const CQVBitmap&) = delete;
  CQVBitmap(CQVBitmap&& other) noexcept;
  CQVBitmap& operator=(CQVBitmap&& other) noexcept;

  // The wrapped descriptor: the attached caller's one, else the owned one.
  BITMAPHANDLE* GetHandle();
  const BITMAPHANDLE* GetHandle() const;
  bool IsAllocated() const;

  // Wraps the caller's bitmap without owning it (any owned bitmap is freed
  // first); nonzero on success, 0 for a null or unreadable descriptor.
  int Attach(BITMAPHANDLE* p);
  // Stops wrapping the attached bitmap and returns it (null when none).
  BITMAPHANDLE* Detach();
  // Frees an owned bitmap, or forgets an attached one.
  void Free();

  // Takes ownership of the kernel bitmap *p describes (no pixel copy); *p is
  // left describing nothing. Nonzero on success.
  int TakeOver(BITMAPHANDLE* p);
  // Replaces the content by a deep copy of `src`; nonzero on success.
  int Copy(const BITMAPHANDLE& src);
  // An owned bitmap of the given format filled with `fill` (Q_FillBitmap);
  // fewer than 8 bits get a gray palette. `unused` is kept for the callers'
  // argument order.
  int CreateEmptyBitmap(int bitsPerPixel, int width, int height, int unused, COLORREF fill);
  // Writes one pixel through Q_PutPixelColor (the kernel's rule for every
  // format, 5-6-5 by its order).
  int PutPixelColor(int x, int y, COLORREF color);

  // Gamma x 100 applied when painting only (100 = none); the pixels are not
  // changed. Values outside 1..1000 are taken as 100.
  void SetPaintGamma(unsigned gamma);
  unsigned GetPaintGamma() const { return m_paintGamma; }
  // Draws `src` (null: the whole bitmap) into `dst`; the clip rectangles
  // (each may be null) limit what is read and what is drawn.
  int Paint(HDC dc, const RECT* src, const RECT* srcClip, const RECT* dst, const RECT* dstClip, unsigned flags);

  // Effects on this bitmap; each calls the Qvkrnx.dll operation and returns
  // nonzero on success. LastResult() keeps the operation's own code.
  int Brightness(int change);
  int Contrast(int change);
  int Hue(int angle);
  int Saturation(int change);
  int HistoContrast(int change);
  // About a given median (0..max), e.g. the full image's for a reduced copy.
  int HistoContrast(int change, int median);
  int Posterize(unsigned levels);
  int Solarize(unsigned threshold);
  int GammaAdjustment(unsigned red, unsigned green, unsigned blue);
  int GammaAdjustmentSigned(unsigned gamma);
  int IntensityDetect(unsigned low, unsigned high, unsigned long inColor, unsigned long outColor, unsigned channel);
  int GrayScaleBitmapExt(int red, int green, int blue);
  int ConvertToColoredGray(int red, int green, int blue, int redGray, int greenGray, int blueGray);
  int BalanceColors(const QVBALANCINGRECORD* red, const QVBALANCINGRECORD* green, const QVBALANCINGRECORD* blue);
  int RemapBitmapIntensity(unsigned* table, unsigned length, unsigned channel);
  int RemapBitmapHue(unsigned* mask, unsigned* hue, unsigned* saturation, unsigned* value, unsigned length);
  // Converts to bitsPerPixel with the color-resolution flags (QV_COLORRES_*
  // of qvimgops.h), and for the caller's palette flag a GDI palette and how
  // many of its entries to use (0: all).
  int ColorRes(int bitsPerPixel, unsigned long flags, HPALETTE palette, unsigned colors);
  // Halftones to 1 bit per pixel: type, angle in hundredths of a degree, cell
  // dimension, and for the user-pattern type the pattern list.
  int HalfTone(unsigned type, int angle, unsigned dimension, HBITMAPLIST patterns);
  int LocalHistoEqualize(int width, int height, int xExt, int yExt, unsigned colorSpace, unsigned smooth);
  int LastResult() const { return m_lastResult; }

 private:
  int Keep(int result);
  bool Usable();

  std::unique_ptr<BITMAPHANDLE> m_own;
  BITMAPHANDLE* m_attached = nullptr;
  unsigned m_paintGamma = 100;
  int m_lastResult = QV_SUCCESS;
};
