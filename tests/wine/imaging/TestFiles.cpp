/*
 * Test image writers and file helpers for the kernel's Wine tests. The TIFF and PNG here are assembled byte
 * by byte so that reading them tests the decoder path on files our encoder did not make.
 */
#include "TestFiles.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <fstream>

namespace qvtest {

namespace {

void Put16(std::vector<uint8_t>& v, uint32_t x) {
  v.push_back(uint8_t(x));
  v.push_back(uint8_t(x >> 8));
}
void Put32(std::vector<uint8_t>& v, uint32_t x) {
  Put16(v, x & 0xFFFF);
  Put16(v, x >> 16);
}
void PutBig32(std::vector<uint8_t>& v, uint32_t x) {
  v.push_back(uint8_t(x >> 24));
  v.push_back(uint8_t(x >> 16));
  v.push_back(uint8_t(x >> 8));
  v.push_back(uint8_t(x));
}

uint32_t Crc32(const uint8_t* p, size_t n) {
  uint32_t crc = 0xFFFFFFFFu;
  for (size_t i = 0; i < n; ++i) {
    crc ^= p[i];
    for (int k = 0; k < 8; ++k) crc = (crc & 1) ? 0xEDB88320u ^ (crc >> 1) : crc >> 1;
  }
  return ~crc;
}

void Chunk(std::vector<uint8_t>& out, const char* type, const std::vector<uint8_t>& data) {
  PutBig32(out, static_cast<uint32_t>(data.size()));
  std::vector<uint8_t> body(type, type + 4);
  body.insert(body.end(), data.begin(), data.end());
  out.insert(out.end(), body.begin(), body.end());
  PutBig32(out, Crc32(body.data(), body.size()));
}

}  // namespace

std::vector<uint8_t> MakeGray16Tiff(int width, int height, const std::vector<uint16_t>& samples) {
  std::vector<uint8_t> t = {'I', 'I', 42, 0};
  const uint32_t dataBytes = static_cast<uint32_t>(samples.size() * 2);
  const uint32_t ifdOffset = 8 + dataBytes;
  Put32(t, ifdOffset);
  for (uint16_t s : samples) Put16(t, s);
  struct Entry {
    uint16_t tag, type;
    uint32_t count, value;
  };
  const Entry entries[] = {
      {256, 4, 1, uint32_t(width)},
      {257, 4, 1, uint32_t(height)},
      {258, 3, 1, 16},
      {259, 3, 1, 1},
      {262, 3, 1, 1},
      {273, 4, 1, 8},
      {277, 3, 1, 1},
      {278, 4, 1, uint32_t(height)},
      {279, 4, 1, dataBytes},
  };
  Put16(t, sizeof entries / sizeof entries[0]);
  for (const Entry& e : entries) {
    Put16(t, e.tag);
    Put16(t, e.type);
    Put32(t, e.count);
    if (e.type == 3) {
      Put16(t, e.value);
      Put16(t, 0);
    } else {
      Put32(t, e.value);
    }
  }
  Put32(t, 0);
  return t;
}

std::vector<uint8_t> MakeRgb48Png(int width, int height, const std::vector<uint16_t>& samples) {
  std::vector<uint8_t> raw;
  for (int y = 0; y < height; ++y) {
    raw.push_back(0);
    for (int i = 0; i < width * 3; ++i) {
      const uint16_t s = samples[static_cast<size_t>(y) * width * 3 + i];
      raw.push_back(uint8_t(s >> 8));
      raw.push_back(uint8_t(s));
    }
  }
  std::vector<uint8_t> z = {0x78, 0x01};
  for (size_t pos = 0; pos < raw.size() || pos == 0;) {
    const size_t n = std::min<size_t>(65535, raw.size() - pos);
    const bool last = pos + n >= raw.size();
    z.push_back(last ? 1 : 0);
    Put16(z, static_cast<uint32_t>(n));
    Put16(z, static_cast<uint32_t>(~n & 0xFFFF));
    z.insert(z.end(), raw.begin() + pos, raw.begin() + pos + n);
    pos += n;
    if (last) break;
  }
  uint32_t a = 1, b = 0;
  for (uint8_t c : raw) {
    a = (a + c) % 65521;
    b = (b + a) % 65521;
  }
  PutBig32(z, (b << 16) | a);
  std::vector<uint8_t> png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  std::vector<uint8_t> ihdr;
  PutBig32(ihdr, uint32_t(width));
  PutBig32(ihdr, uint32_t(height));
  ihdr.insert(ihdr.end(), {16, 2, 0, 0, 0});
  Chunk(png, "IHDR", ihdr);
  Chunk(png, "IDAT", z);
  Chunk(png, "IEND", {});
  return png;
}

void WriteFileBytes(const std::wstring& path, const std::vector<uint8_t>& bytes) {
  HANDLE h = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (h == INVALID_HANDLE_VALUE) return;
  DWORD written = 0;
  if (!bytes.empty()) WriteFile(h, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  CloseHandle(h);
}

std::vector<uint8_t> ReadFileBytes(const std::wstring& path) {
  std::vector<uint8_t> out;
  HANDLE h = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  if (h == INVALID_HANDLE_VALUE) return out;
  LARGE_INTEGER size{};
  GetFileSizeEx(h, &size);
  out.resize(static_cast<size_t>(size.QuadPart));
  DWORD got = 0;
  if (!out.empty()) ReadFile(h, out.data(), static_cast<DWORD>(out.size()), &got, nullptr);
  CloseHandle(h);
  out.resize(got);
  return out;
}

std::wstring OutputPath(const std::wstring& name) {
  wchar_t exe[MAX_PATH];
  GetModuleFileNameW(nullptr, exe, MAX_PATH);
  std::wstring dir(exe);
  dir = dir.substr(0, dir.find_last_of(L"\\/") + 1) + L"..\\test-output\\";
  CreateDirectoryW(dir.c_str(), nullptr);
  return dir + L"kernel-" + name;
}

}  // namespace qvtest
