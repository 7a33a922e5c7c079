/*
 * CPalette: building a LOGPALETTE of the right size and copying entries in
 * and out.
 */
#include "Palette.h"

#include <cstring>

namespace qvfw {
namespace {
constexpr int kMaxEntries = 256;
}

BOOL CPalette::CreatePalette(const PALETTEENTRY* entries, int count) {
  if (m_palette || !entries || count < 1 || count > kMaxEntries) return FALSE;
  std::vector<unsigned char> storage(sizeof(LOGPALETTE) + sizeof(PALETTEENTRY) * static_cast<size_t>(count));
  auto* logical = reinterpret_cast<LOGPALETTE*>(storage.data());
  logical->palVersion = 0x300;
  logical->palNumEntries = static_cast<WORD>(count);
  std::memcpy(logical->palPalEntry, entries, sizeof(PALETTEENTRY) * static_cast<size_t>(count));
  m_palette.Reset(::CreatePalette(logical));
  return m_palette ? TRUE : FALSE;
}

BOOL CPalette::CreateCopy(HPALETTE source) {
  if (!source) return FALSE;
  const UINT count = ::GetPaletteEntries(source, 0, 0, nullptr);
  if (count == 0 || count > kMaxEntries) return FALSE;
  std::vector<PALETTEENTRY> entries(count);
  if (::GetPaletteEntries(source, 0, count, entries.data()) != count) return FALSE;
  return CreatePalette(entries.data(), static_cast<int>(count));
}

BOOL CPalette::Attach(HPALETTE palette) {
  if (m_palette || !palette) return FALSE;
  m_palette.Reset(palette);
  return TRUE;
}

BOOL CPalette::DeleteObject() {
  if (!m_palette) return FALSE;
  m_palette.Reset();
  return TRUE;
}

int CPalette::GetEntryCount() const {
  return m_palette ? static_cast<int>(::GetPaletteEntries(m_palette.Get(), 0, 0, nullptr)) : 0;
}

UINT CPalette::GetPaletteEntries(UINT start, UINT count, PALETTEENTRY* entries) const {
  if (!m_palette || !entries) return 0;
  return ::GetPaletteEntries(m_palette.Get(), start, count, entries);
}

UINT CPalette::SetPaletteEntries(UINT start, UINT count, const PALETTEENTRY* entries) {
  if (!m_palette || !entries) return 0;
  return ::SetPaletteEntries(m_palette.Get(), start, count, entries);
}

std::vector<PALETTEENTRY> CPalette::GetAllEntries() const {
  std::vector<PALETTEENTRY> entries(static_cast<size_t>(GetEntryCount()));
  if (!entries.empty()) GetPaletteEntries(0, static_cast<UINT>(entries.size()), entries.data());
  return entries;
}

}  // namespace qvfw
