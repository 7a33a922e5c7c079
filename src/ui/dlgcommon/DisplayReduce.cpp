/*
 * The reduction itself: one sample reader per source format (inlined into the
 * band loop as a template argument), a horizontal pass per source row into
 * output columns, and a vertical accumulation of those partial rows into the
 * output rows they overlap.
 */
#include "DisplayReduce.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <thread>
#include <vector>

namespace qvpreview {
namespace {

struct Weights {
  // For each source index: first output index and its weight; the rest of
  // the source's span (span - first weight) goes to the next output index.
  std::vector<int> first;
  std::vector<int> firstWeight;
};

// Source index i spans [i*dst, (i+1)*dst); output j spans [j*src, (j+1)*src).
Weights MakeWeights(int src, int dst) {
  Weights w;
  w.first.resize(static_cast<size_t>(src));
  w.firstWeight.resize(static_cast<size_t>(src));
  for (int i = 0; i < src; ++i) {
    const int64_t start = int64_t(i) * dst;
    const int64_t end = start + dst;
    const int j = static_cast<int>(start / src);
    const int64_t boundary = int64_t(j + 1) * src;
    w.first[i] = j;
    w.firstWeight[i] = static_cast<int>(std::min(end, boundary) - start);
  }
  return w;
}

uint16_t Read16(const uint8_t* p) { return static_cast<uint16_t>(p[0] | (p[1] << 8)); }

// Readers: Channels samples of pixel x of a row, as unsigned values.
template <int Channels>
struct Bytes {
  static constexpr int kChannels = Channels;
  int stride;
  void Read(const uint8_t* row, int x, uint32_t* v) const {
    const uint8_t* p = row + x * stride;
    for (int c = 0; c < Channels; ++c) v[c] = p[c];
  }
};

template <int Channels>
struct Words {
  static constexpr int kChannels = Channels;
  int stride;
  uint32_t bias;  // 32768 for signed samples: averaged as offset values
  void Read(const uint8_t* row, int x, uint32_t* v) const {
    const uint8_t* p = row + x * stride;
    for (int c = 0; c < Channels; ++c) v[c] = static_cast<uint16_t>(Read16(p + 2 * c) + bias);
  }
};

struct Indexed {
  static constexpr int kChannels = 3;
  int bits;
  const RGBQUAD* palette;
  void Read(const uint8_t* row, int x, uint32_t* v) const {
    int index;
    if (bits == 8) {
      index = row[x];
    } else {
      const int perByte = 8 / bits;
      const int shift = (perByte - 1 - x % perByte) * bits;
      index = (row[x / perByte] >> shift) & ((1 << bits) - 1);
    }
    const RGBQUAD& e = palette[index];
    v[0] = e.rgbBlue;
    v[1] = e.rgbGreen;
    v[2] = e.rgbRed;
  }
};

struct Rgb565 {
  static constexpr int kChannels = 3;
  void Read(const uint8_t* row, int x, uint32_t* v) const {
    const uint16_t p = Read16(row + 2 * x);
    const uint32_t r = (p >> 11) & 31, g = (p >> 5) & 63, b = p & 31;
    v[0] = (b << 3) | (b >> 2);
    v[1] = (g << 2) | (g >> 4);
    v[2] = (r << 3) | (r >> 2);
  }
};

struct Job {
  const BITMAPHANDLE* source;
  RECT region;
  int width;
  int height;
  BITMAPHANDLE* out;
  const Weights* columns;
  const Weights* rows;
  int sampleBytes;  // 1 or 2 in the output
  uint32_t bias;
};

template <typename Reader>
void ReduceBand(const Job& job, const Reader& reader, int bandFirst, int bandEnd) {
  constexpr int C = Reader::kChannels;
  const int srcW = job.region.right - job.region.left;
  const int srcH = job.region.bottom - job.region.top;
  const int dstW = job.width;
  const int dstH = job.height;
  const uint64_t divisor = uint64_t(srcW) * uint64_t(srcH);
  std::vector<uint64_t> acc(static_cast<size_t>(bandEnd - bandFirst) * dstW * C, 0);
  std::vector<uint64_t> line(static_cast<size_t>(dstW) * C);
  // Source rows that reach output rows [bandFirst, bandEnd).
  const int rowFirst = static_cast<int>(int64_t(bandFirst) * srcH / dstH);
  const int rowEnd = std::min<int>(srcH, static_cast<int>((int64_t(bandEnd) * srcH + dstH - 1) / dstH));
  uint32_t v[4] = {};
  for (int sy = rowFirst; sy < rowEnd; ++sy) {
    const uint8_t* row = job.source->pData + size_t(job.region.top + sy) * size_t(job.source->nBytesPerLine);
    std::fill(line.begin(), line.end(), 0);
    for (int sx = 0; sx < srcW; ++sx) {
      reader.Read(row, job.region.left + sx, v);
      const int j = job.columns->first[sx];
      const uint32_t w0 = static_cast<uint32_t>(job.columns->firstWeight[sx]);
      const uint32_t w1 = static_cast<uint32_t>(dstW) - w0;
      uint64_t* a = &line[size_t(j) * C];
      for (int c = 0; c < C; ++c) a[c] += uint64_t(v[c]) * w0;
      if (w1) {
        uint64_t* b = a + C;
        for (int c = 0; c < C; ++c) b[c] += uint64_t(v[c]) * w1;
      }
    }
    const int j = job.rows->first[sy];
    const uint64_t w0 = static_cast<uint64_t>(job.rows->firstWeight[sy]);
    const uint64_t w1 = static_cast<uint64_t>(dstH) - w0;
    auto addTo = [&](int outRow, uint64_t weight) {
      if (weight == 0 || outRow < bandFirst || outRow >= bandEnd) return;
      uint64_t* a = &acc[size_t(outRow - bandFirst) * dstW * C];
      for (size_t k = 0; k < line.size(); ++k) a[k] += line[k] * weight;
    };
    addTo(j, w0);
    addTo(j + 1, w1);
  }
  for (int y = bandFirst; y < bandEnd; ++y) {
    uint8_t* out = job.out->pData + size_t(y) * size_t(job.out->nBytesPerLine);
    const uint64_t* a = &acc[size_t(y - bandFirst) * dstW * C];
    for (int k = 0; k < dstW * C; ++k) {
      const uint32_t value = static_cast<uint32_t>((a[k] + divisor / 2) / divisor);
      if (job.sampleBytes == 1) {
        out[k] = static_cast<uint8_t>(value);
      } else {
        const uint16_t stored = static_cast<uint16_t>(value - job.bias);
        out[2 * k] = static_cast<uint8_t>(stored & 0xFF);
        out[2 * k + 1] = static_cast<uint8_t>(stored >> 8);
      }
    }
  }
}

template <typename Reader>
void RunBands(const Job& job, const Reader& reader) {
  // Work grows with the source area; small reductions stay on this thread.
  const int64_t area = int64_t(job.region.right - job.region.left) * (job.region.bottom - job.region.top);
  unsigned threads = std::max(1u, std::thread::hardware_concurrency());
  if (area < 1000000) threads = 1;
  threads = std::min<unsigned>(threads, static_cast<unsigned>(job.height));
  if (threads <= 1) {
    ReduceBand(job, reader, 0, job.height);
    return;
  }
  std::vector<std::thread> workers;
  for (unsigned t = 0; t < threads; ++t) {
    const int first = static_cast<int>(int64_t(job.height) * t / threads);
    const int end = static_cast<int>(int64_t(job.height) * (t + 1) / threads);
    workers.emplace_back([&job, &reader, first, end] { ReduceBand(job, reader, first, end); });
  }
  for (std::thread& w : workers) w.join();
}

bool IsGray(const BITMAPHANDLE& b) { return b.uOrder == QV_ORDER_GRAY; }

}  // namespace

int ReducedBitsPerPixel(const BITMAPHANDLE& b) {
  switch (b.nBitsPerPixel) {
    case 1:
    case 2:
    case 4:
      return 24;
    case 8:
      return IsGray(b) ? 8 : 24;
    case 16:
      return IsGray(b) ? 16 : 24;
    default:
      return b.nBitsPerPixel;
  }
}

int ReduceRegion(const BITMAPHANDLE& source, const RECT& region, int width, int height, BITMAPHANDLE* out) {
  if (!out || !source.pData || !(source.uFlags & QV_BMF_ALLOCATED)) return QV_ERROR_BITMAP_NOT_ALLOCATED;
  const int srcW = region.right - region.left;
  const int srcH = region.bottom - region.top;
  if (region.left < 0 || region.top < 0 || srcW <= 0 || srcH <= 0 || region.right > source.nWidth ||
      region.bottom > source.nHeight)
    return QV_ERROR_INVALID_PARAMETER;
  if (width <= 0 || height <= 0 || width > srcW || height > srcH) return QV_ERROR_INVALID_PARAMETER;

  const int outBits = ReducedBitsPerPixel(source);
  const bool keepsFormat = outBits == source.nBitsPerPixel;
  const unsigned order = keepsFormat ? source.uOrder : QV_ORDER_BGR;
  const bool isSigned = keepsFormat && (source.uFlags & QV_BMF_SIGNED);
  BITMAPHANDLE made{};
  made.uStructSize = sizeof(BITMAPHANDLE);
  int rc = Q_CreateBitmap(&made, sizeof(BITMAPHANDLE), width, height, outBits, order, nullptr, 0,
                          isSigned ? QV_BMF_SIGNED : 0);
  if (rc != QV_SUCCESS) return rc;
  if (keepsFormat) {
    made.nLowBit = source.nLowBit;
    made.nHighBit = source.nHighBit;
  }

  const Weights columns = MakeWeights(srcW, width);
  const Weights rows = MakeWeights(srcH, height);
  Job job{&source, region, width, height, &made, &columns, &rows, 1, 0};
  const int bits = source.nBitsPerPixel;
  if (bits <= 8 && !(bits == 8 && IsGray(source))) {
    RunBands(job, Indexed{bits, source.Palette});
  } else if (bits == 8) {
    RunBands(job, Bytes<1>{1});
  } else if (bits == 16 && !IsGray(source)) {
    RunBands(job, Rgb565{});
  } else if (bits == 24) {
    RunBands(job, Bytes<3>{3});
  } else if (bits == 32) {
    RunBands(job, Bytes<4>{4});
  } else if (bits == 12 || bits == 16) {
    job.sampleBytes = 2;
    job.bias = isSigned ? 32768u : 0u;
    RunBands(job, Words<1>{2, job.bias});
  } else if (bits == 48) {
    job.sampleBytes = 2;
    RunBands(job, Words<3>{6, 0});
  } else if (bits == 64) {
    job.sampleBytes = 2;
    RunBands(job, Words<4>{8, 0});
  } else {
    Q_FreeBitmap(&made, 0);
    return QV_ERROR_INVALID_BITS_PER_PIXEL;
  }
  *out = made;
  return QV_SUCCESS;
}

}  // namespace qvpreview
