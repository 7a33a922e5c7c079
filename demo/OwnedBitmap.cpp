/*
 * The demo's bitmap owner: every way a bitmap comes into the demo (created,
 * loaded from a file, copied for undo or for a comparison) goes through the
 * kernel's own exports, as any host's would.
 */
#include "OwnedBitmap.h"

#include <cstring>
#include <utility>

namespace qvdemo {

OwnedBitmap::OwnedBitmap() : m_bitmap{} {}

OwnedBitmap::~OwnedBitmap() { Reset(); }

OwnedBitmap::OwnedBitmap(OwnedBitmap&& other) noexcept : m_bitmap(other.m_bitmap) {
  // The descriptor moves by value; the source must forget the pixels it no longer owns.
  std::memset(&other.m_bitmap, 0, sizeof other.m_bitmap);
}

OwnedBitmap& OwnedBitmap::operator=(OwnedBitmap&& other) noexcept {
  if (this != &other) {
    Reset();
    m_bitmap = other.m_bitmap;
    std::memset(&other.m_bitmap, 0, sizeof other.m_bitmap);
  }
  return *this;
}

void OwnedBitmap::Reset() {
  if (IsAllocated()) Q_FreeBitmap(&m_bitmap, 0);
  std::memset(&m_bitmap, 0, sizeof m_bitmap);
}

int OwnedBitmap::Create(int width, int height, int bitsPerPixel, unsigned order) {
  Reset();
  const int result = Q_CreateBitmap(&m_bitmap, sizeof m_bitmap, width, height, bitsPerPixel, order, nullptr, 0, 0);
  if (result != QV_SUCCESS) Reset();
  return result;
}

int OwnedBitmap::Load(const std::wstring& path) {
  BITMAPHANDLE loaded{};
  const int result = Q_LoadBitmap(path.c_str(), &loaded, sizeof loaded, 24, QV_ORDER_BGR, 0);
  if (result != QV_SUCCESS) return result;  // the current image stays as it was
  Reset();
  m_bitmap = loaded;
  return result;
}

int OwnedBitmap::CopyFrom(const BITMAPHANDLE& source) {
  BITMAPHANDLE copy{};
  const int result = Q_CopyBitmap(&copy, sizeof copy, &source, 0);
  if (result != QV_SUCCESS) return result;
  Reset();
  m_bitmap = copy;
  return result;
}

int OwnedBitmap::SavePng(const std::wstring& path) const {
  return Q_SaveBitmap(path.c_str(), &m_bitmap, QV_FILE_PNG, 0);
}

std::vector<unsigned char> OwnedBitmap::Bytes() const {
  std::vector<unsigned char> bytes;
  if (!IsAllocated() || m_bitmap.pData == nullptr) return bytes;
  const size_t rowBytes = (static_cast<size_t>(m_bitmap.nWidth) * m_bitmap.nBitsPerPixel + 7) / 8;
  bytes.reserve(rowBytes * m_bitmap.nHeight);
  for (int y = 0; y < m_bitmap.nHeight; ++y) {
    const unsigned char* row = m_bitmap.pData + static_cast<size_t>(y) * m_bitmap.nBytesPerLine;
    bytes.insert(bytes.end(), row, row + rowBytes);
  }
  return bytes;
}

}  // namespace qvdemo
