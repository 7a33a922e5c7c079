/*
 * Writing colours into a bitmap of any format: one pixel, or every pixel inside the region. The colour goes
 * through the kernel's row writer, so each format takes it by the one rule of the working representation
 * (8-bit components scaled to the samples, gray from the luminance, 5-6-5 packed by uOrder, the nearest
 * palette entry for indexed pixels, signed gray offset so black is the most negative sample).
 */
#include <vector>

#include "BitmapCheck.h"
#include "ExportGuard.h"
#include "Parallel.h"
#include "PixelConvert.h"
#include "PixelFormat.h"
#include "Region.h"

using namespace qv;

namespace {

void ColorRgba(COLORREF color, uint8_t* rgba) {
  rgba[0] = static_cast<uint8_t>(color & 0xFF);
  rgba[1] = static_cast<uint8_t>((color >> 8) & 0xFF);
  rgba[2] = static_cast<uint8_t>((color >> 16) & 0xFF);
  rgba[3] = 255;
}

int CheckWritable(BITMAPHANDLE* p, unsigned int flags, PixelFormat* f) {
  int rc = CheckBitmap(p, Access::Write);
  if (rc == QV_SUCCESS) rc = CheckFlags(flags, 0);
  if (rc == QV_SUCCESS) rc = DescribePixelFormat(*p, f);
  return rc;
}

}  // namespace

QV_EXTERN_C int Q_PutPixelColor(BITMAPHANDLE* p, int x, int y, COLORREF crColor, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    PixelFormat f{};
    const int rc = CheckWritable(p, uFlags, &f);
    if (rc != QV_SUCCESS) return rc;
    if (x < 0 || y < 0 || x >= p->nWidth || y >= p->nHeight) return QV_ERROR_INVALID_PARAMETER;
    uint8_t rgba[4];
    ColorRgba(crColor, rgba);
    WriteRowRgba8(*p, f, y, x, x + 1, rgba);
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_FillBitmap(BITMAPHANDLE* p, COLORREF crColor, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    PixelFormat f{};
    const int rc = CheckWritable(p, uFlags, &f);
    if (rc != QV_SUCCESS) return rc;
    const RegionSpans spans(*p);
    return ParallelRows(spans.Top(), spans.Bottom(), [&](int y0, int y1) {
      std::vector<uint8_t> row(static_cast<size_t>(p->nWidth) * 4);
      for (size_t i = 0; i < row.size(); i += 4) ColorRgba(crColor, &row[i]);
      for (int y = y0; y < y1; ++y)
        spans.ForEachSpan(y, [&](int x0, int x1) { WriteRowRgba8(*p, f, y, x0, x1, row.data()); });
    });
  });
}
