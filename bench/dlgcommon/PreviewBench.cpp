/*
 * Times the brightness preview of a before/after dialog at fit zoom: from the
 * dialog call to the first painted preview, and from a value change to the
 * after pane repainted (median over repeats), for 24-bit images of 1, 12 and
 * 48 megapixels. Prints the numbers and the 48-to-1 megapixel ratio; then the
 * same change-to-repaint time for local histogram equalization (a
 * neighbourhood effect, run at full resolution over what the view covers) on
 * the 12-megapixel image, with changes shown at once and with each change
 * followed by a click on Apply. It asserts nothing.
 *
 * The measurement runs inside the dialog's own message loop: each change
 * posts the render, then a message of ours, which arrives after the render
 * and its synchronous repaint of the after pane.
 */
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "QVBeforeAfterDlg.h"
#include "QVImageViewer.h"
#include "qv/qvimgops.h"

namespace {

constexpr UINT kMsgFirstShown = WM_APP + 10;
constexpr UINT kMsgStep = WM_APP + 11;
constexpr UINT kMsgStepDone = WM_APP + 12;
constexpr int kRepeats = 101;
constexpr int kNeighbourhoodRepeats = 21;

enum class Effect { kBrightness, kLocalHisto, kLocalHistoWithApply };

double Now() {
  LARGE_INTEGER counter, frequency;
  QueryPerformanceCounter(&counter);
  QueryPerformanceFrequency(&frequency);
  return 1000.0 * double(counter.QuadPart) / double(frequency.QuadPart);
}

class CBenchDialog : public CQVBeforeAfterDlg {
 public:
  CBenchDialog(BITMAPHANDLE* bitmap, double callTime, Effect effect)
      : CQVBeforeAfterDlg(100, nullptr, bitmap, 19, 0, 1), m_callTime(callTime), m_effect(effect) {
    if (effect == Effect::kLocalHistoWithApply) UseApplyButton(1);
  }

  double firstPreviewMs = 0;
  std::vector<double> changeMs;
  bool everyChangePainted = true;

  int PrepareEffectBitmap(CQVBitmap& bitmap) override {
    if (m_effect == Effect::kBrightness) return bitmap.Brightness(m_level);
    // Windows of 48 to 112 pixels with an extension of 8, as a user trying sizes would.
    const int window = 48 + (m_level + 400) % 5 * 16;
    return bitmap.LocalHistoEqualize(window, window, 8, 8, QV_LHE_YUV, 4);
  }
  bool IsNeighbourhoodEffect() const override { return m_effect != Effect::kBrightness; }
  int Repeats() const { return m_effect == Effect::kBrightness ? kRepeats : kNeighbourhoodRepeats; }

 protected:
  BOOL OnInitDialog() override {
    CQVBeforeAfterDlg::OnInitDialog();
    ::ShowWindow(GetDlgItemHandle(kBeforeViewId), SW_SHOW);
    ::ShowWindow(GetDlgItemHandle(kAfterViewId), SW_SHOW);
    // Arrives after the base's layout and first render.
    PostMessage(kMsgFirstShown);
    return TRUE;
  }

  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
      case kMsgFirstShown:
        // The dialog manager shows the dialog once its queue runs empty;
        // until the after pane has painted, look again shortly.
        if (GetAfterView().GetPaintCount() == 0 || !IsWindowVisible()) {
          SetTimer(1, 1);
          return 0;
        }
        firstPreviewMs = Now() - m_callTime;
        PostMessage(kMsgStep);
        return 0;
      case WM_TIMER:
        if (wParam != 1) break;
        KillTimer(1);
        PostMessage(kMsgFirstShown);
        return 0;
      case kMsgStep:
        m_paintsBefore = GetAfterView().GetPaintCount();
        m_stepStart = Now();
        m_level = static_cast<int>(changeMs.size() * 37 % 801) - 400;
        DoUpdateValues();
        if (m_effect == Effect::kLocalHistoWithApply) OnApplyBtnClicked();
        PostMessage(kMsgStepDone);
        return 0;
      case kMsgStepDone:
        changeMs.push_back(Now() - m_stepStart);
        if (GetAfterView().GetPaintCount() == m_paintsBefore) everyChangePainted = false;
        if (static_cast<int>(changeMs.size()) < Repeats())
          PostMessage(kMsgStep);
        else
          EndDialog(IDOK);
        return 0;
      default: break;
    }
    return CQVBeforeAfterDlg::WindowProc(message, wParam, lParam);
  }

 private:
  double m_callTime;
  Effect m_effect;
  double m_stepStart = 0;
  unsigned m_paintsBefore = 0;
  int m_level = 0;
};

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values.empty() ? 0 : values[values.size() / 2];
}

struct Measured {
  double firstPreviewMs;
  double medianChangeMs;
  double fastestChangeMs;
  bool painted;
};

bool Measure(int width, int height, Effect effect, Measured* out) {
  BITMAPHANDLE bitmap{};
  bitmap.uStructSize = sizeof bitmap;
  if (Q_CreateBitmap(&bitmap, sizeof bitmap, width, height, 24, QV_ORDER_BGR, nullptr, 0, 0) != QV_SUCCESS)
    return false;
  for (int y = 0; y < height; ++y) {
    uint8_t* row = bitmap.pData + size_t(y) * bitmap.nBytesPerLine;
    for (int x = 0; x < width * 3; ++x) row[x] = static_cast<uint8_t>(x * 7 + y * 3);
  }
  CBenchDialog dialog(&bitmap, Now(), effect);
  const INT_PTR result = dialog.DoModal();
  Q_FreeBitmap(&bitmap, 0);
  if (result != IDOK) return false;
  *out = Measured{dialog.firstPreviewMs, Median(dialog.changeMs),
                  *std::min_element(dialog.changeMs.begin(), dialog.changeMs.end()), dialog.everyChangePainted};
  return true;
}

}  // namespace

int main() {
  struct Size {
    const char* name;
    int width, height;
  };
  const Size sizes[] = {{"1 MP", 1155, 866}, {"12 MP", 4000, 3000}, {"48 MP", 8000, 6000}};
  // The first dialog of a process pays for loading the common controls and
  // fonts; one unmeasured run keeps that out of the numbers.
  Measured warmUp{};
  Measure(640, 480, Effect::kBrightness, &warmUp);
  std::printf("brightness preview at fit zoom, 24-bit, %d changes each\n", kRepeats);
  std::printf("%-6s %22s %26s %10s\n", "image", "call to first preview", "change to repaint (median)", "fastest");
  double change1 = 0, change48 = 0;
  for (const Size& s : sizes) {
    Measured m{};
    if (!Measure(s.width, s.height, Effect::kBrightness, &m)) {
      std::printf("%-6s failed\n", s.name);
      return 1;
    }
    std::printf("%-6s %19.1f ms %23.3f ms %7.3f ms%s\n", s.name, m.firstPreviewMs, m.medianChangeMs, m.fastestChangeMs,
                m.painted ? "" : "  (a change did not repaint)");
    if (s.width == 1155) change1 = m.medianChangeMs;
    if (s.width == 8000) change48 = m.medianChangeMs;
  }
  std::printf("48 MP / 1 MP change time: %.2f\n", change1 > 0 ? change48 / change1 : 0.0);

  std::printf("local histogram equalization at fit zoom, 12 MP 24-bit, %d changes each\n", kNeighbourhoodRepeats);
  for (Effect effect : {Effect::kLocalHisto, Effect::kLocalHistoWithApply}) {
    const char* name = effect == Effect::kLocalHisto ? "live" : "Apply";
    Measured m{};
    if (!Measure(4000, 3000, effect, &m)) {
      std::printf("%-6s failed\n", name);
      return 1;
    }
    std::printf("%-6s %19.1f ms %23.3f ms %7.3f ms%s\n", name, m.firstPreviewMs, m.medianChangeMs, m.fastestChangeMs,
                m.painted ? "" : "  (a change did not repaint)");
  }
  return 0;
}
