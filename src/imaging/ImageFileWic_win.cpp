/*
 * Image files on Windows through Windows Imaging Component: any container WIC decodes is read, keeping
 * 8/16-bit gray, 24/32-bit color, 48/64-bit color, 5-6-5 and indexed pixels as they are stored and
 * converting every other pixel format to the nearest kept one; BMP, PNG, JPEG and TIFF are written from a
 * copy in one of six canonical layouts, converted by WIC when the encoder negotiates another. 16-bit PNG and
 * 16-bit gray TIFF go through our own encoders, because system encoders differ in whether they keep them.
 */
#include <initguid.h>
#include <windows.h>
#include <wincodec.h>

#include <climits>
#include <cstring>
#include <vector>

#include "Bitmap.h"
#include "BitmapCheck.h"
#include "ComPtr_win.h"
#include "ComScope_win.h"
#include "ImageFile.h"
#include "PixelConvert.h"
#include "PixelFormat.h"

namespace qv {
namespace {

struct KeptFormat {
  const GUID* wic;
  int bits;
  uint32_t order;
};

// Pixel formats copied as they are.
const KeptFormat kKeptFormats[] = {
    {&GUID_WICPixelFormat8bppGray, 8, QV_ORDER_GRAY},    {&GUID_WICPixelFormat16bppGray, 16, QV_ORDER_GRAY},
    {&GUID_WICPixelFormat24bppBGR, 24, QV_ORDER_BGR},    {&GUID_WICPixelFormat24bppRGB, 24, QV_ORDER_RGB},
    {&GUID_WICPixelFormat32bppBGRA, 32, QV_ORDER_BGR},   {&GUID_WICPixelFormat32bppRGBA, 32, QV_ORDER_RGB},
    {&GUID_WICPixelFormat48bppRGB, 48, QV_ORDER_RGB},    {&GUID_WICPixelFormat48bppBGR, 48, QV_ORDER_BGR},
    {&GUID_WICPixelFormat64bppRGBA, 64, QV_ORDER_RGB},   {&GUID_WICPixelFormat64bppBGRA, 64, QV_ORDER_BGR},
    {&GUID_WICPixelFormat16bppBGR565, 16, QV_ORDER_BGR}, {&GUID_WICPixelFormat1bppIndexed, 1, QV_ORDER_BGR},
    {&GUID_WICPixelFormat2bppIndexed, 2, QV_ORDER_BGR},  {&GUID_WICPixelFormat4bppIndexed, 4, QV_ORDER_BGR},
    {&GUID_WICPixelFormat8bppIndexed, 8, QV_ORDER_BGR},
};

struct Conversion {
  const GUID* from;
  const GUID* to;
};

// Formats that are converted to a kept one with the same information.
const Conversion kConversions[] = {
    {&GUID_WICPixelFormatBlackWhite, &GUID_WICPixelFormat8bppGray},
    {&GUID_WICPixelFormat2bppGray, &GUID_WICPixelFormat8bppGray},
    {&GUID_WICPixelFormat4bppGray, &GUID_WICPixelFormat8bppGray},
    {&GUID_WICPixelFormat32bppBGR, &GUID_WICPixelFormat24bppBGR},
    {&GUID_WICPixelFormat16bppBGR555, &GUID_WICPixelFormat24bppBGR},
    {&GUID_WICPixelFormat32bppPBGRA, &GUID_WICPixelFormat32bppBGRA},
    {&GUID_WICPixelFormat64bppPRGBA, &GUID_WICPixelFormat64bppRGBA},
    {&GUID_WICPixelFormat16bppGrayHalf, &GUID_WICPixelFormat16bppGray},
    {&GUID_WICPixelFormat32bppGrayFloat, &GUID_WICPixelFormat16bppGray},
};

const KeptFormat* FindKept(const GUID& g) {
  for (const auto& k : kKeptFormats)
    if (IsEqualGUID(*k.wic, g)) return &k;
  return nullptr;
}

// The kept format an unknown pixel format is converted to: 16 bits per channel when it has more than 8.
const GUID& ConversionTarget(IWICImagingFactory* factory, const GUID& g) {
  for (const auto& c : kConversions)
    if (IsEqualGUID(*c.from, g)) return *c.to;
  ComPtr<IWICComponentInfo> info;
  ComPtr<IWICPixelFormatInfo> pixelInfo;
  UINT bpp = 0, channels = 0;
  if (SUCCEEDED(factory->CreateComponentInfo(g, info.Put())) &&
      SUCCEEDED(info->QueryInterface(IID_IWICPixelFormatInfo, reinterpret_cast<void**>(pixelInfo.Put()))) &&
      SUCCEEDED(pixelInfo->GetBitsPerPixel(&bpp)) && SUCCEEDED(pixelInfo->GetChannelCount(&channels)) && channels > 0 &&
      bpp / channels > 8)
    return GUID_WICPixelFormat64bppRGBA;
  return GUID_WICPixelFormat32bppBGRA;
}

int CreateFactory(ComPtr<IWICImagingFactory>* factory) {
  const HRESULT hr = CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                      reinterpret_cast<void**>(factory->Put()));
  return SUCCEEDED(hr) ? QV_SUCCESS : QV_ERROR_PLATFORM;
}

// The first bytes of a file, for telling a damaged image from a file of another kind.
std::vector<uint8_t> FileHead(const wchar_t* path) {
  std::vector<uint8_t> head(16);
  HANDLE h = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  if (h == INVALID_HANDLE_VALUE) return {};
  DWORD got = 0;
  if (!ReadFile(h, head.data(), static_cast<DWORD>(head.size()), &got, nullptr)) got = 0;
  CloseHandle(h);
  head.resize(got);
  return head;
}

int DecoderError(HRESULT hr, const wchar_t* path) {
  if (hr == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND) || hr == HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND) ||
      hr == E_ACCESSDENIED)
    return QV_ERROR_FILE_NOT_FOUND;
  const std::vector<uint8_t> head = FileHead(path);
  return HasImageSignature(head.data(), head.size()) ? QV_ERROR_FILE_CORRUPT : QV_ERROR_FILE_FORMAT;
}

void CopyPalette(IWICImagingFactory* factory, IWICBitmapFrameDecode* frame, BITMAPHANDLE* b) {
  ComPtr<IWICPalette> palette;
  UINT count = 0;
  if (FAILED(factory->CreatePalette(palette.Put())) || FAILED(frame->CopyPalette(palette.Get())) ||
      FAILED(palette->GetColorCount(&count)) || count == 0)
    return;
  WICColor colors[256];
  const UINT room = 1u << b->nBitsPerPixel;
  UINT got = 0;
  if (FAILED(palette->GetColors(count < room ? count : room, colors, &got))) return;
  for (UINT i = 0; i < got; ++i)
    b->Palette[i] = RGBQUAD{static_cast<BYTE>(colors[i]), static_cast<BYTE>(colors[i] >> 8),
                            static_cast<BYTE>(colors[i] >> 16), 0};
  b->nColors = static_cast<int>(got);
}

int Decode(IWICImagingFactory* factory, const wchar_t* path, BITMAPHANDLE* out) {
  ComPtr<IWICBitmapDecoder> decoder;
  HRESULT hr = factory->CreateDecoderFromFilename(path, nullptr, GENERIC_READ, WICDecodeMetadataCacheOnDemand,
                                                  decoder.Put());
  if (FAILED(hr)) return DecoderError(hr, path);
  ComPtr<IWICBitmapFrameDecode> frame;
  if (FAILED(decoder->GetFrame(0, frame.Put()))) return QV_ERROR_FILE_CORRUPT;
  UINT w = 0, h = 0;
  WICPixelFormatGUID format{};
  if (FAILED(frame->GetSize(&w, &h)) || FAILED(frame->GetPixelFormat(&format))) return QV_ERROR_FILE_CORRUPT;
  if (w == 0 || h == 0 || w > INT_MAX || h > INT_MAX || uint64_t{w} * h > kMaxFilePixels) return QV_ERROR_FILE_CORRUPT;

  IWICBitmapSource* source = frame.Get();
  ComPtr<IWICFormatConverter> converter;
  const KeptFormat* kept = FindKept(format);
  if (!kept) {
    const GUID& target = ConversionTarget(factory, format);
    kept = FindKept(target);
    if (FAILED(factory->CreateFormatConverter(converter.Put())) ||
        FAILED(converter->Initialize(frame.Get(), target, WICBitmapDitherTypeNone, nullptr, 0.0,
                                     WICBitmapPaletteTypeCustom)))
      return QV_ERROR_FILE_FORMAT;
    source = converter.Get();
  }
  BITMAPHANDLE b;
  int rc = CreateBlankBitmap(static_cast<int>(w), static_cast<int>(h), kept->bits, kept->order, false, &b);
  if (rc != QV_SUCCESS) return rc;
  if (kept->bits <= 8 && kept->order != QV_ORDER_GRAY) CopyPalette(factory, frame.Get(), &b);
  const uint64_t bytes = static_cast<uint64_t>(b.nBytesPerLine) * h;
  if (bytes > UINT_MAX ||
      FAILED(source->CopyPixels(nullptr, static_cast<UINT>(b.nBytesPerLine), static_cast<UINT>(bytes), b.pData))) {
    ReleaseBitmapMemory(&b);
    return QV_ERROR_FILE_CORRUPT;
  }
  double dpiX = 96, dpiY = 96;
  if (SUCCEEDED(frame->GetResolution(&dpiX, &dpiY)) && dpiX >= 1 && dpiY >= 1 && dpiX < 1e6 && dpiY < 1e6) {
    b.nXResolution = static_cast<int32_t>(dpiX + 0.5);
    b.nYResolution = static_cast<int32_t>(dpiY + 0.5);
  }
  *out = b;
  return QV_SUCCESS;
}

// The layout a bitmap is handed to the encoder in.
struct Canonical {
  int bits;
  uint32_t order;
  const GUID* wic;
};

Canonical CanonicalFor(const PixelFormat& f) {
  if (f.IsGray()) {
    return f.bitsPerPixel == 8 ? Canonical{8, QV_ORDER_GRAY, &GUID_WICPixelFormat8bppGray}
                               : Canonical{16, QV_ORDER_GRAY, &GUID_WICPixelFormat16bppGray};
  }
  switch (f.kind) {
    case PixelKind::Color32: return {32, QV_ORDER_BGR, &GUID_WICPixelFormat32bppBGRA};
    case PixelKind::Color48: return {48, QV_ORDER_RGB, &GUID_WICPixelFormat48bppRGB};
    case PixelKind::Color64: return {64, QV_ORDER_RGB, &GUID_WICPixelFormat64bppRGBA};
    default: return {24, QV_ORDER_BGR, &GUID_WICPixelFormat24bppBGR};
  }
}

const GUID* ContainerFor(unsigned int format) {
  switch (format) {
    case QV_FILE_BMP: return &GUID_ContainerFormatBmp;
    case QV_FILE_PNG: return &GUID_ContainerFormatPng;
    case QV_FILE_JPEG: return &GUID_ContainerFormatJpeg;
    case QV_FILE_TIFF: return &GUID_ContainerFormatTiff;
    default: return nullptr;
  }
}

// Hands the pixels to the frame, through a WIC converter when the encoder asked for another layout.
HRESULT WriteFramePixels(IWICImagingFactory* factory, IWICBitmapFrameEncode* frame, const BITMAPHANDLE& b,
                         const GUID& layout) {
  WICPixelFormatGUID negotiated = layout;
  HRESULT hr = frame->SetPixelFormat(&negotiated);
  if (FAILED(hr)) return hr;
  const uint64_t bytes = static_cast<uint64_t>(b.nBytesPerLine) * b.nHeight;
  if (bytes > UINT_MAX) return E_OUTOFMEMORY;
  if (IsEqualGUID(negotiated, layout))
    return frame->WritePixels(static_cast<UINT>(b.nHeight), static_cast<UINT>(b.nBytesPerLine),
                              static_cast<UINT>(bytes), b.pData);
  ComPtr<IWICBitmap> bitmap;
  ComPtr<IWICFormatConverter> converter;
  hr = factory->CreateBitmapFromMemory(static_cast<UINT>(b.nWidth), static_cast<UINT>(b.nHeight), layout,
                                       static_cast<UINT>(b.nBytesPerLine), static_cast<UINT>(bytes), b.pData,
                                       bitmap.Put());
  if (SUCCEEDED(hr)) hr = factory->CreateFormatConverter(converter.Put());
  if (SUCCEEDED(hr))
    hr = converter->Initialize(bitmap.Get(), negotiated, WICBitmapDitherTypeNone, nullptr, 0.0,
                               WICBitmapPaletteTypeMedianCut);
  if (SUCCEEDED(hr)) hr = frame->WriteSource(converter.Get(), nullptr);
  return hr;
}

int Encode(IWICImagingFactory* factory, const wchar_t* path, const BITMAPHANDLE& b, const GUID& container,
           const GUID& layout) {
  ComPtr<IWICBitmapEncoder> encoder;
  if (FAILED(factory->CreateEncoder(container, nullptr, encoder.Put()))) return QV_ERROR_FILE_FORMAT;
  ComPtr<IWICStream> stream;
  if (FAILED(factory->CreateStream(stream.Put())) || FAILED(stream->InitializeFromFilename(path, GENERIC_WRITE)))
    return QV_ERROR_FILE_WRITE;
  ComPtr<IWICBitmapFrameEncode> frame;
  ComPtr<IPropertyBag2> options;
  HRESULT hr = encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache);
  if (SUCCEEDED(hr)) hr = encoder->CreateNewFrame(frame.Put(), options.Put());
  if (SUCCEEDED(hr)) hr = frame->Initialize(options.Get());
  if (SUCCEEDED(hr)) hr = frame->SetSize(static_cast<UINT>(b.nWidth), static_cast<UINT>(b.nHeight));
  if (SUCCEEDED(hr) && b.nXResolution > 0 && b.nYResolution > 0)
    frame->SetResolution(b.nXResolution, b.nYResolution);  // optional: some encoders ignore it
  if (SUCCEEDED(hr)) hr = WriteFramePixels(factory, frame.Get(), b, layout);
  if (SUCCEEDED(hr)) hr = frame->Commit();
  if (SUCCEEDED(hr)) hr = encoder->Commit();
  return SUCCEEDED(hr) ? QV_SUCCESS : QV_ERROR_FILE_WRITE;
}

}  // namespace

int ReadImageFile(const wchar_t* path, BITMAPHANDLE* out) {
  const DWORD attrs = GetFileAttributesW(path);
  if (attrs == INVALID_FILE_ATTRIBUTES || (attrs & FILE_ATTRIBUTE_DIRECTORY)) return QV_ERROR_FILE_NOT_FOUND;
  ComScope com;
  if (!com.Ok()) return QV_ERROR_PLATFORM;
  ComPtr<IWICImagingFactory> factory;
  const int rc = CreateFactory(&factory);
  return rc == QV_SUCCESS ? Decode(factory.Get(), path, out) : rc;
}

int WriteImageFile(const wchar_t* path, const BITMAPHANDLE& b, unsigned int format) {
  const GUID* container = ContainerFor(format);
  if (!container) return QV_ERROR_FILE_FORMAT;
  std::vector<uint8_t> own;
  int ownResult = QV_ERROR_FILE_FORMAT;
  if (format == QV_FILE_PNG && HasWideSamples(b)) ownResult = EncodeOwnPng16(b, &own);
  if (format == QV_FILE_TIFF && HasWideSamples(b) && FileChannels(b) == 1) ownResult = EncodeOwnTiff(b, &own);
  if (ownResult == QV_SUCCESS) return WriteBytes(path, own);
  ComScope com;
  if (!com.Ok()) return QV_ERROR_PLATFORM;
  ComPtr<IWICImagingFactory> factory;
  int rc = CreateFactory(&factory);
  if (rc != QV_SUCCESS) return rc;
  PixelFormat f{};
  DescribePixelFormat(b, &f);
  const Canonical c = CanonicalFor(f);
  const bool direct = c.bits == b.nBitsPerPixel && c.order == b.uOrder && !f.isSigned;
  BITMAPHANDLE converted;
  if (!direct && (rc = ConvertBitmap(b, c.bits, c.order, false, &converted)) != QV_SUCCESS) return rc;
  rc = Encode(factory.Get(), path, direct ? b : converted, *container, *c.wic);
  if (!direct) ReleaseBitmapMemory(&converted);
  if (rc != QV_SUCCESS && rc != QV_ERROR_FILE_FORMAT) DeleteFileW(path);
  return rc;
}

}  // namespace qv
