/*
 * A bitmap the demo owns: a BITMAPHANDLE whose pixel memory the kernel
 * allocated, freed when the owner goes away. Move-only, so exactly one owner
 * ever frees it; copies of the pixels are made explicitly with CopyFrom.
 */
#pragma once

#include <string>
#include <vector>

#include "qv/qvkrn.h"

namespace qvdemo {

class OwnedBitmap {
 public:
  OwnedBitmap();
  ~OwnedBitmap();
  OwnedBitmap(OwnedBitmap&& other) noexcept;
  OwnedBitmap& operator=(OwnedBitmap&& other) noexcept;
  OwnedBitmap(const OwnedBitmap&) = delete;
  OwnedBitmap& operator=(const OwnedBitmap&) = delete;

  BITMAPHANDLE* Get() { return &m_bitmap; }
  const BITMAPHANDLE* Get() const { return &m_bitmap; }
  bool IsAllocated() const { return (m_bitmap.uFlags & QV_BMF_ALLOCATED) != 0; }

  // Kernel results; on failure the owner holds no pixels.
  int Create(int width, int height, int bitsPerPixel, unsigned order);
  int Load(const std::wstring& path);
  int CopyFrom(const BITMAPHANDLE& source);
  int SavePng(const std::wstring& path) const;
  void Reset();

  // The pixel bytes row by row without the row padding, for comparisons.
  std::vector<unsigned char> Bytes() const;

 private:
  BITMAPHANDLE m_bitmap;
};

}  // namespace qvdemo
