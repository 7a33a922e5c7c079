/*
 * The entry sequence's argument checks (see ArgumentChecks.h). A bitmap pointer that cannot be read is
 * reported as not allocated: the caller handed no usable bitmap, and reading it would crash the host.
 */
#include "ArgumentChecks.h"

#include <cstddef>
#include <cstring>
#include <initializer_list>

#include "AddressCheck.h"
#include "qv/qvdlgclr.h"
#include "qv/qverror.h"

namespace qvdlg {
namespace {

constexpr size_t kBitmapPointerOffset = 4;
constexpr size_t kBitmapFlagsOffset = offsetof(BITMAPHANDLE, uFlags);

template <class T>
T ReadAt(const void* base, size_t offset) {
  T value;
  std::memcpy(&value, static_cast<const unsigned char*>(base) + offset, sizeof value);
  return value;
}

}  // namespace

int CheckDemandedBitmap(const void* bitmap, bool refusesSigned) {
  if (!bitmap || !qv::IsValidAddress(bitmap, kBitmapFlagsOffset + sizeof(uint32_t), qv::Access::Read))
    return QV_ERROR_BITMAP_NOT_ALLOCATED;
  const uint32_t flags = ReadAt<uint32_t>(bitmap, kBitmapFlagsOffset);
  if ((flags & QV_BMF_ALLOCATED) == 0) return QV_ERROR_BITMAP_NOT_ALLOCATED;
  if (refusesSigned && (flags & QV_BMF_SIGNED) != 0) return QV_ERROR_UNSUPPORTED_BITMAP;
  return QV_SUCCESS;
}

bool IsPaletteImageWithRegion(const void* bitmap) {
  if (!bitmap || !qv::IsValidAddress(bitmap, sizeof(BITMAPHANDLE), qv::Access::Read)) return false;
  const int bits = ReadAt<int32_t>(bitmap, offsetof(BITMAPHANDLE, nBitsPerPixel));
  const uint32_t order = ReadAt<uint32_t>(bitmap, offsetof(BITMAPHANDLE, uOrder));
  const bool palette = bits == 1 || bits == 2 || bits == 4 || (bits == 8 && order != QV_ORDER_GRAY);
  return palette && (ReadAt<uint32_t>(bitmap, offsetof(BITMAPHANDLE, uRgnFlags)) & QV_RGN_SET) != 0;
}

int CheckExportArguments(const ExportInfo& info, int ready, const void* params) {
  if (ready != 1) return QV_ERROR_DLG_NOT_READY;
  if (!params || !qv::IsValidAddress(params, info.probedSize, qv::Access::Write)) return QV_ERROR_INVALID_PARAMETER;
  if (ReadAt<uint32_t>(params, 0) != info.expectedSize) return QV_ERROR_INVALID_STRUCT_SIZE;
  if (!info.testsBitmap) return QV_SUCCESS;
  const uint32_t flags = ReadAt<uint32_t>(params, info.flagsOffset);
  const void* bitmap = ReadAt<const void*>(params, kBitmapPointerOffset);
  for (uint32_t demanding : {QVDLG_AUTO_PROCESS, QVDLG_SHOW_PREVIEW}) {
    if ((flags & demanding) == 0) continue;
    const int result = CheckDemandedBitmap(bitmap, info.refusesSigned);
    if (result != QV_SUCCESS) return result;
  }
  if ((flags & (QVDLG_AUTO_PROCESS | QVDLG_SHOW_PREVIEW)) != 0 && IsPaletteImageWithRegion(bitmap))
    return QV_ERROR_UNSUPPORTED_FORMAT;
  return QV_SUCCESS;
}

}  // namespace qvdlg
