/*
 * Q_LoadBitmap and Q_SaveBitmap: the argument checks and the optional conversion to the caller's format,
 * in front of the platform's reader and writer. A load that fails leaves the caller's descriptor as it was.
 */
#include <cstdint>

#include "AddressCheck.h"
#include "Bitmap.h"
#include "BitmapCheck.h"
#include "ExportGuard.h"
#include "ImageFile.h"
#include "PixelConvert.h"
#include "PixelFormat.h"
#include "StringProbe.h"

using namespace qv;

namespace {

constexpr size_t kMaxPathChars = 32768;

// A readable, terminated, non-empty path of fewer than kMaxPathChars characters.
bool IsValidPath(const wchar_t* path) {
  size_t length = 0;
  return SafeStringLength(path, kMaxPathChars - 1, &length) && length > 0;
}

// The order a conversion to `bits` takes when the caller keeps the file's order: gray stays gray where the
// target depth allows it, color keeps its byte order, 12 bits is always gray.
unsigned int KeptOrder(const BITMAPHANDLE& b, int bits) {
  const bool sourceGray = b.uOrder == QV_ORDER_GRAY;
  if (bits == 12) return QV_ORDER_GRAY;
  if (bits == 8 || bits == 16) return sourceGray ? QV_ORDER_GRAY : QV_ORDER_BGR;
  if (bits < 8) return QV_ORDER_BGR;
  return sourceGray ? QV_ORDER_BGR : b.uOrder;
}

// Converts *b in place to the requested bits and order when they differ from what the file held.
int ApplyRequestedFormat(BITMAPHANDLE* b, int bitsPerPixel, unsigned int order) {
  const int bits = bitsPerPixel == QV_LOAD_KEEP_BITS ? b->nBitsPerPixel : bitsPerPixel;
  const unsigned int wantOrder = order == QV_LOAD_KEEP_ORDER ? KeptOrder(*b, bits) : order;
  if (bits == b->nBitsPerPixel && wantOrder == b->uOrder) return QV_SUCCESS;
  BITMAPHANDLE converted;
  const int rc = ConvertBitmap(*b, bits, wantOrder, false, &converted);
  if (rc != QV_SUCCESS) return rc;
  ReleaseBitmapMemory(b);
  *b = converted;
  return QV_SUCCESS;
}

int CheckRequestedFormat(int bitsPerPixel, unsigned int order) {
  if (order != QV_LOAD_KEEP_ORDER && order > QV_ORDER_GRAY) return QV_ERROR_INVALID_PARAMETER;
  if (bitsPerPixel == QV_LOAD_KEEP_BITS) return QV_SUCCESS;
  PixelFormat f{};
  const unsigned int probe = order != QV_LOAD_KEEP_ORDER ? order : (bitsPerPixel == 12 ? QV_ORDER_GRAY : QV_ORDER_BGR);
  return DescribePixelFormat(bitsPerPixel, probe, false, &f);
}

}  // namespace

QV_EXTERN_C int Q_LoadBitmap(const wchar_t* pszPath, BITMAPHANDLE* p, unsigned int uStructSize, int nBitsPerPixel,
                             unsigned int uOrder, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    if (!IsValidPath(pszPath)) return QV_ERROR_INVALID_PARAMETER;
    if (!IsValidAddress(p, sizeof(BITMAPHANDLE), Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    if (uStructSize != sizeof(BITMAPHANDLE)) return QV_ERROR_INVALID_STRUCT_SIZE;
    int rc = CheckFlags(uFlags, 0);
    if (rc == QV_SUCCESS) rc = CheckRequestedFormat(nBitsPerPixel, uOrder);
    if (rc != QV_SUCCESS) return rc;
    BITMAPHANDLE loaded;
    rc = ReadImageFile(pszPath, &loaded);
    if (rc != QV_SUCCESS) return rc;
    rc = ApplyRequestedFormat(&loaded, nBitsPerPixel, uOrder);
    if (rc != QV_SUCCESS) {
      ReleaseBitmapMemory(&loaded);
      return rc;
    }
    *p = loaded;
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_SaveBitmap(const wchar_t* pszPath, const BITMAPHANDLE* p, unsigned int uFormat, unsigned int uFlags) {
  return Guarded(QV_ERROR_PLATFORM, [&] {
    if (!IsValidPath(pszPath)) return QV_ERROR_INVALID_PARAMETER;
    int rc = CheckBitmap(p, Access::Read);
    if (rc == QV_SUCCESS) rc = CheckFlags(uFlags, 0);
    if (rc != QV_SUCCESS) return rc;
    if (uFormat < QV_FILE_BMP || uFormat > QV_FILE_PNM) return QV_ERROR_INVALID_PARAMETER;
    return WriteImageFile(pszPath, *p, uFormat);
  });
}
