/*
 * The window-level slider driven with real mouse and key messages in a host dialog: drags with and without
 * the neighbour rule, stacked markers, Ctrl-drags and their refusal, the pointer beyond the track, the
 * notifications each of these sends, value entry through the real "Enter a number" dialog, the keyboard, and
 * the interval band as painted.
 */
#include <windows.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "SliderHostDialog.h"
#include "qvdriver/DialogDriver.h"
#include "qvdriver/TestOutput.h"
#include "resource.h"

namespace {

using qv::test::DialogDriver;
using qv::test::DialogView;
using qv::test::RunResult;
using qv::test::Script;
using qv::test::StepContext;

// Stand-ins in the tables for values known only once the slider is laid out.
constexpr double kMax = -1;     // the range's maximum (the track length)
constexpr double kBeyond = -2;  // fifty pixels past the track's end

// Values in each interval of markers at 20 and 60, away from the thumbs (a marker's own column belongs to
// the marker; the lower interval on a marker's value is left to the native rule test).
struct IntervalProbe {
  double value;
  int interval;
};
constexpr IntervalProbe kIntervalProbes[] = {{5, 0}, {40, 1}, {80, 2}};

class WindowLevelSliderTest : public ::testing::Test {
 protected:
  // Lays the markers on [0, track length in pixels], so one value unit is one pixel and every expected value
  // in the tables is exact.
  void Open(int style, std::vector<double> markers, bool vertical = false) {
    host = std::make_unique<SliderHostDialog>(vertical ? IDC_SH_VSLIDER : IDC_SH_SLIDER);
    ASSERT_TRUE(host->Open());
    if (vertical) Slider().SetOrientation(1);
    for (int i = 0; i < 256; ++i) palette[i] = RGBQUAD{BYTE(i), BYTE(i), BYTE(i), 0};
    Slider().Init(0, 1000, 100, 0, nullptr, style, palette, 256);
    length = Slider().ValueToPixel(1000) - Slider().ValueToPixel(0);
    ASSERT_GT(length, 150);
    for (double& v : markers) v = Resolve(v);
    Slider().Init(0, length, 10, static_cast<int>(markers.size()), markers.data(), style, palette, 256);
    host->Pump();
    host->notifications.clear();
  }
  void TearDown() override {
    if (host && host->m_hWnd) ::DestroyWindow(host->m_hWnd);
  }

  CQVWindowLevelDlgSliderCtrl& Slider() { return host->m_slider; }
  double Resolve(double v) const { return v == kMax ? length : v == kBeyond ? length + 50 : v; }
  std::vector<double> Resolve(std::vector<double> values) const {
    for (double& v : values) v = Resolve(v);
    return values;
  }
  std::vector<double> Values() {
    std::vector<double> values(static_cast<size_t>(Slider().GetMarkerCount()));
    Slider().GetMarkerValues(values.data());
    return values;
  }
  // The point on the thumbs' row at a value.
  POINT At(double value) {
    POINT p = Slider().MarkerThumbCenter(0);
    (Slider().GetOrientation() & 1 ? p.y : p.x) = Slider().ValueToPixel(Resolve(value));
    return p;
  }
  void Mouse(UINT message, WPARAM keys, POINT p) {
    ::SendMessageW(Slider().m_hWnd, message, keys, MAKELPARAM(p.x, p.y));
  }
  void ExpectEveryNotificationIsCode4() {
    for (const auto& n : host->notifications) {
      EXPECT_EQ(n.from, Slider().m_hWnd);
      EXPECT_EQ(n.id, static_cast<UINT_PTR>(host->m_sliderId));
      EXPECT_EQ(n.code, CQVWindowLevelDlgSliderCtrl::kNotifyMarkerChanged);
    }
  }
  static void SetCtrl(bool down) {
    BYTE keys[256];
    ::GetKeyboardState(keys);
    keys[VK_CONTROL] = down ? 0x80 : 0;
    ::SetKeyboardState(keys);
  }

  std::unique_ptr<SliderHostDialog> host;
  RGBQUAD palette[256];
  int length = 0;
};

TEST_F(WindowLevelSliderTest, DragsMoveStopAndHandOverMarkersAndNotifyEachChange) {
  constexpr int kNoPassing = CQVWindowLevelDlgSliderCtrl::STYLE_NO_PASSING;
  struct Case {
    const char* what;
    int style;
    std::vector<double> markers;
    bool ctrl;
    std::vector<double> moves;
    std::vector<double> afterMoves;  // list order, before the drop
    std::vector<double> dropped;
    size_t notifications;
  };
  const Case cases[] = {
      {"a plain drag follows the pointer", 0, {20}, false, {30, 45}, {45}, {45}, 3},
      {"a move that changes no pixel sends nothing", 0, {20}, false, {20}, {20}, {20}, 1},
      {"the track start is the minimum", 0, {20}, false, {0}, {0}, {0}, 2},
      {"a pointer beyond the track clamps to the maximum", 0, {20}, false, {kBeyond}, {kMax}, {kMax}, 2},
      {"the neighbour stops the drag and the drop keeps its value",
       kNoPassing,
       {20, 50},
       false,
       {70},
       {50, 50},
       {50, 50},
       2},
      {"without the rule markers pass and the drop sorts them", 0, {20, 50}, false, {70}, {70, 50}, {50, 70}, 2},
      {"stacked markers: a drag up moves the upper", kNoPassing, {40, 40}, false, {55}, {40, 55}, {40, 55}, 2},
      {"ctrl-drag moves every marker, one notification each", 0, {20, 50}, true, {30}, {30, 60}, {30, 60}, 3},
      {"ctrl-drag with a marker at the maximum is refused", 0, {20, kMax}, true, {30}, {20, kMax}, {20, kMax}, 1},
  };
  for (const bool vertical : {false, true})
    for (const Case& c : cases) {
      SCOPED_TRACE(std::string(c.what) + (vertical ? ", vertical" : ""));
      Open(c.style, c.markers, vertical);
      const WPARAM keys = MK_LBUTTON | (c.ctrl ? MK_CONTROL : 0);
      Mouse(WM_LBUTTONDOWN, keys, Slider().MarkerThumbCenter(0));
      EXPECT_EQ(::GetCapture(), Slider().m_hWnd);
      for (double move : c.moves) Mouse(WM_MOUSEMOVE, keys, At(move));
      EXPECT_EQ(Values(), Resolve(c.afterMoves));
      Mouse(WM_LBUTTONUP, c.ctrl ? MK_CONTROL : 0, At(c.moves.back()));
      EXPECT_EQ(::GetCapture(), nullptr);
      EXPECT_EQ(Values(), Resolve(c.dropped));
      ASSERT_EQ(host->notifications.size(), c.notifications);
      EXPECT_EQ(host->notifications.back().values, Resolve(c.dropped)) << "the parent reads the dropped values";
      ExpectEveryNotificationIsCode4();
      TearDown();
    }
}

TEST_F(WindowLevelSliderTest, InitIgnoresWhatItCannotUseAndClampsWhatItCan) {
  Open(0, {20});
  const RGBQUAD* unmapped = reinterpret_cast<const RGBQUAD*>(static_cast<uintptr_t>(0x10));
  const double values[] = {30, std::nan(""), 1e300, -5};
  struct Case {
    const char* what;
    double minimum, maximum;
    int count;
    const double* values;
    const RGBQUAD* palette;
    UINT paletteCount;
    std::vector<double> result;
  };
  const Case cases[] = {
      {"no palette", 0, 100, 1, values, nullptr, 256, {20}},
      {"an empty palette", 0, 100, 1, values, palette, 0, {20}},
      {"an unreadable palette", 0, 100, 1, values, unmapped, 256, {20}},
      {"unreadable values", 0, 100, 1, reinterpret_cast<const double*>(unmapped), palette, 256, {20}},
      {"a backward range", 100, 0, 1, values, palette, 256, {20}},
      {"an infinite range", 0, HUGE_VAL, 1, values, palette, 256, {20}},
      {"values clamped into the range, a non-number skipped", 0, 100, 4, values, palette, 256, {0, 20, 30, 100}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Slider().Init(c.minimum, c.maximum, 10, c.count, c.values, -1, c.palette, c.paletteCount);
    EXPECT_EQ(Values(), c.result);
  }
  EXPECT_TRUE(host->notifications.empty()) << "Init is no user change";
}

TEST_F(WindowLevelSliderTest, ALostCaptureEndsTheDragWithoutADrop) {
  Open(0, {20});
  Mouse(WM_LBUTTONDOWN, MK_LBUTTON, Slider().MarkerThumbCenter(0));
  ::ReleaseCapture();
  Mouse(WM_MOUSEMOVE, MK_LBUTTON, At(60));
  Mouse(WM_LBUTTONUP, 0, At(60));
  EXPECT_EQ(Values(), std::vector<double>{20});
  EXPECT_TRUE(host->notifications.empty());
}

TEST_F(WindowLevelSliderTest, RightClickOnAMarkerTakesATypedWholeNumberWithinItsBounds) {
  constexpr int kEdit = CQVWindowLevelDlgSliderCtrl::STYLE_EDIT_VALUE;
  constexpr int kNoPassing = CQVWindowLevelDlgSliderCtrl::STYLE_NO_PASSING;
  struct Case {
    const char* what;
    int style;
    std::vector<double> markers;
    int marker;
    const wchar_t* shown;
    const wchar_t* typed;  // null: Cancel
    std::vector<double> result;
    size_t notifications;
  };
  const Case cases[] = {
      {"a value inside the bounds is taken", kEdit | kNoPassing, {20.4, 60}, 0, L"20", L"35", {35, 60}, 1},
      {"above the upper neighbour takes its value", kEdit | kNoPassing, {20, 60}, 0, L"20", L"999", {60, 60}, 1},
      {"below the lower neighbour takes its value", kEdit | kNoPassing, {20, 60}, 1, L"60", L"-5", {20, 20}, 1},
      {"without the neighbour rule the range bounds it", kEdit, {20, 60}, 0, L"20", L"999", {60, kMax}, 1},
      {"cancel changes nothing", kEdit | kNoPassing, {20, 60}, 0, L"20", nullptr, {20, 60}, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Open(c.style, c.markers);
    const POINT p = Slider().MarkerThumbCenter(c.marker);
    Script script;
    // The label's text comes from the string table ("&Value:"), not the template ("Value:").
    script.Expect("texts from the string table", [](const DialogView& v) {
      return v.Caption() == L"Enter a number" && v.Text(IDC_EDITINTERVAL_LABEL) == std::wstring(L"&Value:");
    });
    script.Expect("the dialog shows the marker's whole value",
                  [&](const DialogView& v) { return v.Text(IDC_EDITINTERVAL_VALUE) == std::wstring(c.shown); });
    if (c.typed) {
      script.Do("type the value",
                [&](StepContext& s) { s.Require(s.View().SetEditText(IDC_EDITINTERVAL_VALUE, c.typed)); });
      script.ClickOk();
    } else {
      script.ClickCancel();
    }
    const RunResult run = DialogDriver().Run(
        [&] { return static_cast<int>(::SendMessageW(Slider().m_hWnd, WM_RBUTTONUP, 0, MAKELPARAM(p.x, p.y))); },
        script);
    EXPECT_TRUE(run.Ok()) << run.Report();
    EXPECT_EQ(Values(), Resolve(c.result));
    EXPECT_EQ(host->notifications.size(), c.notifications);
    ExpectEveryNotificationIsCode4();
    TearDown();
  }
}

TEST_F(WindowLevelSliderTest, RightClickOnTheBandRecoloursTheIntervalUnderThePointer) {
  constexpr int kStyle = CQVWindowLevelDlgSliderCtrl::STYLE_BAND | CQVWindowLevelDlgSliderCtrl::STYLE_EDIT_COLOR;
  // The colour dialog's red, green and blue boxes.
  constexpr int kRed = 706, kGreen = 707, kBlue = 708;
  for (const IntervalProbe& c : kIntervalProbes) {
    SCOPED_TRACE(c.value);
    Open(kStyle, {20, 60});
    const POINT inArea = At(c.value);
    Script script;
    script.Do("mix the colour", [](StepContext& s) {
      s.Require(s.View().SetEditText(kRed, L"10"));
      s.Require(s.View().SetEditText(kGreen, L"20"));
      s.Require(s.View().SetEditText(kBlue, L"30"));
    });
    script.ClickOk();
    const RunResult run = DialogDriver().Run(
        [&] {
          return static_cast<int>(::SendMessageW(Slider().m_hWnd, WM_RBUTTONUP, 0, MAKELPARAM(inArea.x, inArea.y)));
        },
        script);
    EXPECT_TRUE(run.Ok()) << run.Report();
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(Slider().GetIntervalColor(i), i == c.interval ? RGB(10, 20, 30) : RGB(255, 255, 255)) << i;
    }
    EXPECT_TRUE(host->notifications.empty()) << "a colour is no marker change";
    TearDown();
  }
}

TEST_F(WindowLevelSliderTest, KeysChooseAndMoveTheSelectedMarkerWithinItsNeighbours) {
  struct Key {
    UINT key;
    bool ctrl;
  };
  struct Case {
    const char* what;
    std::vector<Key> keys;
    std::vector<double> result;
    int selected;
    size_t notifications;
  };
  const Case cases[] = {
      {"right moves the first marker one unit", {{VK_RIGHT, false}}, {21, 60}, 0, 1},
      {"up lowers it", {{VK_UP, false}}, {19, 60}, 0, 1},
      {"end stops at the upper neighbour", {{VK_END, false}}, {60, 60}, 0, 1},
      {"home goes to the minimum", {{VK_HOME, false}}, {0, 60}, 0, 1},
      {"page up clamps at the minimum", {{VK_PRIOR, false}}, {0, 60}, 0, 1},
      {"ctrl+right selects the next marker and sends nothing", {{VK_RIGHT, true}}, {20, 60}, 1, 0},
      {"home on the second stops at the first", {{VK_RIGHT, true}, {VK_HOME, false}}, {20, 20}, 1, 1},
      {"ctrl+left on the first keeps it", {{VK_LEFT, true}, {VK_RIGHT, false}}, {21, 60}, 0, 1},
      {"end on the last goes to the maximum", {{VK_DOWN, true}, {VK_END, false}}, {20, kMax}, 1, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Open(CQVWindowLevelDlgSliderCtrl::STYLE_NO_PASSING, {20, 60});
    for (const Key& k : c.keys) {
      SetCtrl(k.ctrl);
      ::SendMessageW(Slider().m_hWnd, WM_KEYDOWN, k.key, 1);
    }
    SetCtrl(false);
    EXPECT_EQ(Values(), Resolve(c.result));
    EXPECT_EQ(Slider().GetSelectedMarker(), c.selected);
    EXPECT_EQ(host->notifications.size(), c.notifications);
    TearDown();
  }
}

TEST_F(WindowLevelSliderTest, TheBandShowsEachIntervalInItsColour) {
  Open(CQVWindowLevelDlgSliderCtrl::STYLE_BAND | CQVWindowLevelDlgSliderCtrl::STYLE_SCALE, {20, 60});
  const COLORREF colors[] = {RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255)};
  for (int i = 0; i < 3; ++i) Slider().SetIntervalColor(i, colors[i]);

  RECT client{};
  ::GetClientRect(Slider().m_hWnd, &client);
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = client.right;
  info.bmiHeader.biHeight = -client.bottom;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  HDC dc = ::CreateCompatibleDC(nullptr);
  HBITMAP bitmap = ::CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  ASSERT_TRUE(dc && bitmap);
  HGDIOBJ old = ::SelectObject(dc, bitmap);
  ::SendMessageW(Slider().m_hWnd, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
  ::GdiFlush();
  auto columnHas = [&](int x, COLORREF color) {
    const auto* pixels = static_cast<const DWORD*>(bits);
    const DWORD want = (GetRValue(color) << 16) | (GetGValue(color) << 8) | GetBValue(color);
    for (int y = 0; y < client.bottom; ++y) {
      if ((pixels[y * client.right + x] & 0xFFFFFF) == want) return true;
    }
    return false;
  };
  for (const IntervalProbe& p : kIntervalProbes) {
    SCOPED_TRACE(p.value);
    const int x = Slider().ValueToPixel(p.value);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(columnHas(x, colors[i]), i == p.interval) << "interval " << i;
  }
  ::SelectObject(dc, old);
  ::DeleteObject(bitmap);
  ::DeleteDC(dc);
  // For the eye: the host with the slider as the user sees it, the palette ramp above the channel, and the
  // vertical layout.
  EXPECT_TRUE(qv::test::SaveTestScreenshot(host->m_hWnd, "windowlevel_slider", L"band.png"));
  Slider().SetOrientation(2);
  host->Pump();
  EXPECT_TRUE(qv::test::SaveTestScreenshot(host->m_hWnd, "windowlevel_slider", L"ramp.png"));
  TearDown();
  Open(CQVWindowLevelDlgSliderCtrl::STYLE_BAND | CQVWindowLevelDlgSliderCtrl::STYLE_SCALE, {20, 60}, true);
  EXPECT_TRUE(qv::test::SaveTestScreenshot(host->m_hWnd, "windowlevel_slider", L"vertical.png"));
}

}  // namespace
