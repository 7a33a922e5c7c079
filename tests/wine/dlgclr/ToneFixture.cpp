/*
 * The shared helpers of the single-value dialog tests (see ToneFixture.h).
 */
#include "ToneFixture.h"

#include <cstring>
#include <stdexcept>

#include "qv/qvdlgkrn.h"
#include "qv/qvimgops.h"
#include "resource.h"

namespace qv::test {
namespace {

template <class Params, int (*Export)(HWND, Params*)>
int CallAs(HWND owner, QVBRIGHTNESSDLGPARAMS* params) {
  return Export(owner, reinterpret_cast<Params*>(params));
}

int Posterize(BITMAPHANDLE* b, int v) { return Q_PosterizeBitmap(b, static_cast<unsigned>(v), 0); }
int Solarize(BITMAPHANDLE* b, int v) { return Q_SolarizeBitmap(b, static_cast<unsigned>(v), 0); }
int Brightness(BITMAPHANDLE* b, int v) { return Q_ChangeBitmapIntensity(b, v, 0); }
int Contrast(BITMAPHANDLE* b, int v) { return Q_ChangeBitmapContrast(b, v, 0); }
int Hue(BITMAPHANDLE* b, int v) { return Q_ChangeBitmapHue(b, v, 0); }
int Saturation(BITMAPHANDLE* b, int v) { return Q_ChangeBitmapSaturation(b, v, 0); }
int HistoContrast(BITMAPHANDLE* b, int v) { return Q_HistoContrastBitmap(b, v, 0); }

}  // namespace

const std::vector<ToneExport>& ToneExports() {
  // clang-format off
  static const std::vector<ToneExport> exports = {
    {"Brightness", CallAs<QVBRIGHTNESSDLGPARAMS, Q_DlgBrightness>, Brightness, 19, 1217, 1218,
     IDC_BRIGHTNESS_SLIDER, IDC_BRIGHTNESS_EDIT, IDC_BRIGHTNESS_GROUP, IDC_BRIGHTNESS_BEFORE, IDC_BRIGHTNESS_AFTER, -1000, 1000, false, 400},
    {"Contrast", CallAs<QVCONTRASTDLGPARAMS, Q_DlgContrast>, Contrast, 20, 1219, 1220,
     IDC_CONTRAST_SLIDER, IDC_CONTRAST_EDIT, IDC_CONTRAST_GROUP, IDC_CONTRAST_BEFORE, IDC_CONTRAST_AFTER, -1000, 1000, false, 500},
    {"Hue", CallAs<QVHUEDLGPARAMS, Q_DlgHue>, Hue, 21, 1221, 1222,
     IDC_HUE_SLIDER, IDC_HUE_EDIT, IDC_HUE_GROUP, IDC_HUE_BEFORE, IDC_HUE_AFTER, -180, 180, true, 120},
    {"Saturation", CallAs<QVSATURATIONDLGPARAMS, Q_DlgSaturation>, Saturation, 22, 1223, 1224,
     IDC_SATURATION_SLIDER, IDC_SATURATION_EDIT, IDC_SATURATION_GROUP, IDC_SATURATION_BEFORE, IDC_SATURATION_AFTER, -1000, 1000, true, -700},
    {"HistoContrast", CallAs<QVHISTOCONTRASTDLGPARAMS, Q_DlgHistoContrast>, HistoContrast, 25, 1294, 1295,
     IDC_HISTOCONTRAST_SLIDER, IDC_HISTOCONTRAST_EDIT, IDC_HISTOCONTRAST_GROUP, IDC_HISTOCONTRAST_BEFORE, IDC_HISTOCONTRAST_AFTER, -1000, 1000, false, 600},
    {"Posterize", CallAs<QVPOSTERIZEDLGPARAMS, Q_DlgPosterize>, Posterize, 24, 1215, 1216,
     IDC_POSTERIZE_SLIDER, IDC_POSTERIZE_EDIT, IDC_POSTERIZE_GROUP, IDC_POSTERIZE_BEFORE, IDC_POSTERIZE_AFTER, 2, 64, false, 3},
    {"Solarize", CallAs<QVSOLARIZEDLGPARAMS, Q_DlgSolarize>, Solarize, 18, 1213, 1214,
     IDC_SOLARIZE_SLIDER, IDC_SOLARIZE_EDIT, IDC_SOLARIZE_GROUP, IDC_SOLARIZE_BEFORE, IDC_SOLARIZE_AFTER, 0, 255, false, 25},
  };
  // clang-format on
  return exports;
}

const ToneExport& ToneExportNamed(const std::string& name) {
  for (const ToneExport& e : ToneExports())
    if (name == e.name) return e;
  throw std::invalid_argument(name);
}

OwnerWindow::OwnerWindow()
    : m_window(CreateWindowExW(0, L"STATIC", L"Tone test owner", WS_OVERLAPPEDWINDOW, 40, 40, 400, 300, nullptr,
                               nullptr, GetModuleHandleW(nullptr), nullptr)) {}

OwnerWindow::~OwnerWindow() {
  if (m_window) DestroyWindow(m_window);
}

std::vector<unsigned char> TestBitmap::Pixels() const {
  std::vector<unsigned char> bytes;
  if (!(m_bitmap->uFlags & QV_BMF_ALLOCATED)) return bytes;
  const size_t rowBytes = (static_cast<size_t>(m_bitmap->nWidth) * m_bitmap->nBitsPerPixel + 7) / 8;
  for (int y = 0; y < m_bitmap->nHeight; ++y) {
    const unsigned char* row = m_bitmap->pData + static_cast<size_t>(y) * m_bitmap->nBytesPerLine;
    bytes.insert(bytes.end(), row, row + rowBytes);
  }
  return bytes;
}

COLORREF TestBitmap::ColorAt(int x, int y) const {
  const unsigned char* p = Get()->pData + static_cast<size_t>(y) * Get()->nBytesPerLine + x * 3;
  return Get()->uOrder == QV_ORDER_RGB ? RGB(p[0], p[1], p[2]) : RGB(p[2], p[1], p[0]);
}

std::vector<int> StripeCentres() { return {kStripedWidth / 10, kStripedWidth * 45 / 100, kStripedWidth * 85 / 100}; }

void MakeStripedBitmap(TestBitmap& bitmap) {
  BITMAPHANDLE* b = bitmap.Get();
  if (Q_CreateBitmap(b, sizeof(BITMAPHANDLE), kStripedWidth, kStripedHeight, 24, QV_ORDER_BGR, nullptr, 0, 0) !=
      QV_SUCCESS)
    throw std::runtime_error("Q_CreateBitmap failed");
  for (int y = 0; y < kStripedHeight; ++y) {
    unsigned char* row = b->pData + static_cast<size_t>(y) * b->nBytesPerLine;
    for (int x = 0; x < kStripedWidth; ++x) {
      const COLORREF c = x < kStripedWidth / 5 ? kDarkColor : x < kStripedWidth * 7 / 10 ? kMiddleColor : kBrightColor;
      row[x * 3] = GetBValue(c);
      row[x * 3 + 1] = GetGValue(c);
      row[x * 3 + 2] = GetRValue(c);
    }
  }
}

void MakeGray16Bitmap(TestBitmap& bitmap, bool signedSamples) {
  BITMAPHANDLE* b = bitmap.Get();
  if (Q_CreateBitmap(b, sizeof(BITMAPHANDLE), 256, 64, 16, QV_ORDER_GRAY, nullptr, 0, 0) != QV_SUCCESS)
    throw std::runtime_error("Q_CreateBitmap failed");
  for (int y = 0; y < b->nHeight; ++y) {
    auto* row = reinterpret_cast<uint16_t*>(b->pData + static_cast<size_t>(y) * b->nBytesPerLine);
    for (int x = 0; x < b->nWidth; ++x) row[x] = static_cast<uint16_t>(x * 256 + y);
  }
  if (signedSamples) b->uFlags |= QV_BMF_SIGNED;
}

void ApplyOperation(const ToneExport& e, const TestBitmap& source, int value, TestBitmap& result, int* code) {
  if (Q_CopyBitmap(result.Get(), sizeof(BITMAPHANDLE), source.Get(), 0) != QV_SUCCESS)
    throw std::runtime_error("Q_CopyBitmap failed");
  const int r = e.operation(result.Get(), value);
  if (code) *code = r;
}

QVBRIGHTNESSDLGPARAMS ToneParams(uint32_t flags, BITMAPHANDLE* bitmap, int32_t value) {
  QVBRIGHTNESSDLGPARAMS p{};
  p.uStructSize = sizeof p;
  p.pBitmap = bitmap;
  p.bZoomToFit = 1;
  p.nBrightness = value;
  p.uDlgFlags = flags;
  return p;
}

bool SameBytes(const QVBRIGHTNESSDLGPARAMS& a, const QVBRIGHTNESSDLGPARAMS& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

RunResult DriveTone(const ToneExport& e, HWND owner, QVBRIGHTNESSDLGPARAMS& params, const Script& script,
                    const RunOptions& options) {
  DialogDriver driver;
  return driver.Run([&] { return e.call(owner, &params); }, script, options);
}

std::wstring KernelString(unsigned id) {
  wchar_t buffer[512] = {};
  if (Q_DlgGetString(id, buffer, 512) != QV_SUCCESS) return L"";
  return buffer;
}

bool ShowsColor(const Image& image, COLORREF color, double share) {
  Bgra c;
  c.r = GetRValue(color);
  c.g = GetGValue(color);
  c.b = GetBValue(color);
  return image.ShareNear(c, 3) >= share;
}

bool PaneShows(const DialogView& v, int paneId, const std::vector<COLORREF>& colors) {
  const auto pixels = v.Pixels(paneId);
  if (!pixels || pixels->Empty()) return false;
  for (COLORREF c : colors)
    if (!ShowsColor(*pixels, c, 0.05)) return false;
  return true;
}

std::vector<COLORREF> StripeColors(const TestBitmap& bitmap) {
  std::vector<COLORREF> colors;
  for (int x : StripeCentres()) colors.push_back(bitmap.ColorAt(x, kStripedHeight / 2));
  return colors;
}

}  // namespace qv::test
