/*
 * libFuzzer target for the native image readers (PNG, BMP, JPEG through stb; PNM through our own reader):
 * any input must give a result code, and a bitmap it yields must pass the kernel's own check and free
 * cleanly. Built only with clang (see CMakeLists.txt).
 */
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Bitmap.h"
#include "BitmapCheck.h"
#include "ImageFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<uint8_t> bytes(data, data + size);
  BITMAPHANDLE b;
  if (qv::DecodeImageBytes(bytes, &b) != QV_SUCCESS) return 0;
  if (qv::CheckBitmap(&b, qv::Access::Read) != QV_SUCCESS) __builtin_trap();
  qv::ReleaseBitmapMemory(&b);
  return 0;
}
