/*
 * PNG output through WIC: a PNG encoder over a file stream, one frame in
 * 32bpp BGRA. Every step reports its HRESULT in the failure message, since a
 * missing codec under a bare Wine prefix is the usual way this goes wrong.
 */
#include "qvdriver/PngFile.h"

#include <wincodec.h>

#include <cstdio>
#include <filesystem>

#include "qvdriver/WinHandles.h"
#include "qvdriver/WindowText.h"

namespace qv::test {
namespace {

std::string Failed(const char* what, HRESULT hr) {
  char text[96];
  std::snprintf(text, sizeof text, "%s failed (HRESULT 0x%08lX)", what, static_cast<unsigned long>(hr));
  return text;
}

}  // namespace

Outcome SavePng(const Image& image, const std::wstring& path) {
  if (image.Empty()) return Outcome::Fail("nothing to save to " + Narrow(path));
  std::error_code error;
  std::filesystem::path target(path);
  if (target.has_parent_path()) std::filesystem::create_directories(target.parent_path(), error);
  ComApartment com;
  if (!com.Usable()) return Outcome::Fail("COM could not be initialised");
  ComPtr<IWICImagingFactory> factory;
  HRESULT hr = CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                reinterpret_cast<void**>(factory.Put()));
  if (FAILED(hr)) return Outcome::Fail(Failed("creating the imaging factory", hr));
  ComPtr<IWICStream> stream;
  if (FAILED(hr = factory->CreateStream(stream.Put()))) return Outcome::Fail(Failed("CreateStream", hr));
  if (FAILED(hr = stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE)))
    return Outcome::Fail(Failed(("opening " + Narrow(path)).c_str(), hr));
  ComPtr<IWICBitmapEncoder> encoder;
  if (FAILED(hr = factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.Put())))
    return Outcome::Fail(Failed("creating the PNG encoder", hr));
  if (FAILED(hr = encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache)))
    return Outcome::Fail(Failed("starting the PNG encoder", hr));
  ComPtr<IWICBitmapFrameEncode> frame;
  if (FAILED(hr = encoder->CreateNewFrame(frame.Put(), nullptr))) return Outcome::Fail(Failed("CreateNewFrame", hr));
  if (FAILED(hr = frame->Initialize(nullptr))) return Outcome::Fail(Failed("starting the frame", hr));
  if (FAILED(hr = frame->SetSize(image.width, image.height))) return Outcome::Fail(Failed("SetSize", hr));
  WICPixelFormatGUID format = GUID_WICPixelFormat32bppBGRA;
  if (FAILED(hr = frame->SetPixelFormat(&format))) return Outcome::Fail(Failed("SetPixelFormat", hr));
  if (format != GUID_WICPixelFormat32bppBGRA) return Outcome::Fail("the PNG encoder does not take 32bpp BGRA");
  UINT stride = static_cast<UINT>(image.width) * 4;
  UINT bytes = stride * static_cast<UINT>(image.height);
  auto* data = reinterpret_cast<BYTE*>(const_cast<Bgra*>(image.pixels.data()));
  if (FAILED(hr = frame->WritePixels(static_cast<UINT>(image.height), stride, bytes, data)))
    return Outcome::Fail(Failed("WritePixels", hr));
  if (FAILED(hr = frame->Commit())) return Outcome::Fail(Failed("committing the frame", hr));
  if (FAILED(hr = encoder->Commit())) return Outcome::Fail(Failed("committing the file", hr));
  return Outcome::Ok();
}

}  // namespace qv::test
