/*
 * The multi-marker slider as a user meets it: it takes over the template's track bar, scales with its font,
 * is dragged, clicked and keyed with real messages, paints its intervals, and tells its parent of each change
 * the user makes and of none the program makes.
 */
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "ControlsTestDialog.h"
#include "SelectObjectScope.h"
#include "UniqueDC.h"
#include "UniqueHandle.h"

namespace {

constexpr UINT kGrayStyles = CQVSliderCtrl::SHOW_INTEGERS | CQVSliderCtrl::DISPLAY_COLORS |
                             CQVSliderCtrl::DISPLAY_VALUES | CQVSliderCtrl::PREVENT_CROSSING |
                             CQVSliderCtrl::DISPLAY_TICS | CQVSliderCtrl::ALLOW_SET_POS;
constexpr COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255);

class SliderCtrlTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(dialog.Open());
    Init(kGrayStyles);
  }
  void TearDown() override { ::DestroyWindow(dialog.m_hWnd); }

  // The gray scale set-up: red up to the first marker, green to the second, blue to the end.
  void Init(UINT styles, double first = 333, double second = 666) {
    double markers[] = {first, second};
    unsigned long colors[] = {kRed, kGreen, kBlue};
    ASSERT_TRUE(slider().Init(0, 1000, 10, 2, markers, colors, static_cast<int>(styles), nullptr));
    dialog.log.clear();
  }
  CQVSliderCtrl& slider() { return dialog.m_slider; }
  std::vector<double> Markers() {
    std::vector<double> values;
    for (int i = 0; i < slider().GetMarkerCount(); ++i) {
      double value = -1;
      slider().GetMarkerValue(i, value);
      values.push_back(value);
    }
    return values;
  }
  POINT ThumbCentre(int marker) {
    RECT thumb{};
    EXPECT_TRUE(slider().GetThumbRect(marker, &thumb));
    return POINT{(thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2};
  }
  RECT Channel() {
    RECT channel{};
    slider().GetChannelRect(&channel);
    return channel;
  }
  void Mouse(UINT message, POINT point) {
    slider().SendMessage(message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(point.x, point.y));
  }
  int Moves() const { return dialog.NotificationsFrom(IDC_CT_SLIDER, CQVSliderCtrl::kNotifyMarkerMoved); }

  ControlsTestDialog dialog{0, 100, 10, 0};
};

}  // namespace

TEST_F(SliderCtrlTest, TakesOverTheTrackBarAndScalesWithItsFont) {
  HWND window = dialog.GetDlgItemHandle(IDC_CT_SLIDER);
  ASSERT_EQ(window, slider().m_hWnd);
  EXPECT_EQ(slider().GetFont(), dialog.GetFont());
  RECT expected{10, 80, 230, 110};
  ::MapDialogRect(dialog.m_hWnd, &expected);
  RECT actual{};
  slider().GetWindowRect(&actual);
  dialog.ScreenToClient(&actual);
  EXPECT_TRUE(::EqualRect(&actual, &expected));
  EXPECT_EQ(::GetNextDlgTabItem(dialog.m_hWnd, dialog.m_realCombo.m_hWnd, FALSE), window);
  EXPECT_EQ(::GetNextDlgTabItem(dialog.m_hWnd, window, FALSE), dialog.m_picker.m_hWnd);
  EXPECT_LE(slider().GetIdealHeight(), actual.bottom - actual.top) << "the template leaves room for every row";

  RECT small{};
  slider().GetThumbRect(0, &small);
  LOGFONTW description{};
  ::GetObjectW(dialog.GetFont(), sizeof(description), &description);
  description.lfHeight *= 2;
  qvfw::UniqueFont large(::CreateFontIndirectW(&description));
  slider().SetFont(large.Get());
  RECT big{};
  slider().GetThumbRect(0, &big);
  EXPECT_GE((big.bottom - big.top) * 10, (small.bottom - small.top) * 17) << "thumbs grow with the font";
  EXPECT_GT(big.right - big.left, small.right - small.left);
  RECT channel = Channel();
  EXPECT_GT(channel.left, big.right - big.left) << "the thumb and label at the minimum fit inside";
  slider().SetFont(dialog.GetFont());
}

TEST_F(SliderCtrlTest, ADraggedMarkerStopsAtItsNeighbourAndEachChangeIsToldOnce) {
  const POINT first = ThumbCentre(0);
  Mouse(WM_LBUTTONDOWN, first);
  EXPECT_EQ(Moves(), 0) << "taking a marker changes nothing";
  Mouse(WM_MOUSEMOVE, POINT{first.x + 30, first.y});
  const double moved = Markers()[0];
  EXPECT_GT(moved, 333);
  EXPECT_LT(moved, 666);
  EXPECT_EQ(moved, static_cast<int>(moved)) << "whole numbers only";
  EXPECT_EQ(Moves(), 1);
  Mouse(WM_MOUSEMOVE, POINT{Channel().right + 50, first.y});
  Mouse(WM_MOUSEMOVE, POINT{Channel().right + 80, first.y});  // already stopped: no news
  Mouse(WM_LBUTTONUP, POINT{Channel().right + 80, first.y});
  EXPECT_EQ(Markers(), (std::vector<double>{666, 666}));
  EXPECT_EQ(Moves(), 2);
  EXPECT_EQ(dialog.log.back(), L"notify 2006 4 0=666");
}

TEST_F(SliderCtrlTest, AClickOnTheTrackMovesTheNearestMarkerOnlyWhenAllowed) {
  struct Case {
    UINT styles;
    int quarter;  // clicked at this quarter of the track
    std::vector<double> after;
    int moves;
  };
  const UINT fixed = kGrayStyles & ~CQVSliderCtrl::ALLOW_SET_POS;
  const Case cases[] = {{kGrayStyles, 1, {250, 666}, 1}, {kGrayStyles, 3, {333, 750}, 1}, {fixed, 1, {333, 666}, 0}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.quarter);
    Init(c.styles);
    const RECT channel = Channel();
    const int x = channel.left + (channel.right - 1 - channel.left) * c.quarter / 4;
    Mouse(WM_LBUTTONDOWN, POINT{x, (channel.top + channel.bottom) / 2});
    Mouse(WM_LBUTTONUP, POINT{x, (channel.top + channel.bottom) / 2});
    // The pixel stands for a span of values: its nearest whole one.
    EXPECT_NEAR(Markers()[0], c.after[0], 2);
    EXPECT_NEAR(Markers()[1], c.after[1], 2);
    EXPECT_EQ(Moves(), c.moves);
    EXPECT_EQ(slider().GetSelectedMarker(), c.quarter < 2 ? 0 : 1) << "the pressed marker is the chosen one";
    EXPECT_EQ(::GetFocus(), slider().m_hWnd);
  }
}

TEST_F(SliderCtrlTest, KeysMoveTheChosenMarkerAndTabWalksTheMarkersBeforeLeaving) {
  struct Case {
    UINT key;
    std::vector<double> after;
    int selected;
    int moves;  // so far
  };
  // Where each key leads is proven on the rules; here: the keys arrive, news only for a real move.
  const Case cases[] = {
      {VK_RIGHT, {334, 666}, 0, 1}, {VK_END, {666, 666}, 0, 2}, {VK_RIGHT, {666, 666}, 0, 2},
      {VK_DOWN, {666, 666}, 1, 2},  {VK_UP, {666, 666}, 0, 2},
  };
  slider().SetFocus();
  for (const Case& c : cases) {
    SCOPED_TRACE(c.key);
    slider().SendMessage(WM_KEYDOWN, c.key, 1);
    EXPECT_EQ(Markers(), c.after);
    EXPECT_EQ(slider().GetSelectedMarker(), c.selected);
    EXPECT_EQ(Moves(), c.moves);
  }

  // Tab through the dialog manager: to the second marker, then out to the next control.
  slider().PostMessage(WM_KEYDOWN, VK_TAB, 1);
  dialog.Pump();
  EXPECT_EQ(slider().GetSelectedMarker(), 1);
  EXPECT_EQ(::GetFocus(), slider().m_hWnd);
  slider().PostMessage(WM_KEYDOWN, VK_TAB, 1);
  dialog.Pump();
  EXPECT_EQ(::GetFocus(), dialog.m_picker.m_hWnd);
  // Coming back with Shift+Tab (the keys as a real keyboard leaves them) starts at the last marker.
  slider().SetSelectedMarker(0);
  BYTE keys[256], shiftTab[256];
  ::GetKeyboardState(keys);
  std::copy(keys, keys + 256, shiftTab);
  shiftTab[VK_SHIFT] = shiftTab[VK_TAB] = 0x80;
  ::SetKeyboardState(shiftTab);
  slider().SetFocus();
  ::SetKeyboardState(keys);
  EXPECT_EQ(slider().GetSelectedMarker(), 1);
  EXPECT_EQ(Moves(), 2);
}

TEST_F(SliderCtrlTest, ProgramChangesAreSilentAndBadInputIsRefused) {
  EXPECT_TRUE(slider().SetMarkerValue(0, 700));
  EXPECT_EQ(Markers(), (std::vector<double>{666, 666})) << "a program cannot cross markers either";
  const double value = 12.5;
  EXPECT_TRUE(slider().SendMessage(QVSM_SETMARKER, 0, reinterpret_cast<LPARAM>(&value)));
  double read = 0;
  EXPECT_TRUE(slider().SendMessage(QVSM_GETMARKER, 0, reinterpret_cast<LPARAM>(&read)));
  EXPECT_EQ(read, 12.5) << "kept exactly; only the user's moves land on whole numbers";

  double markers[] = {600, 500};
  unsigned long colors[] = {kRed, kGreen, kBlue};
  auto* unmapped = reinterpret_cast<double*>(static_cast<uintptr_t>(0x10));
  EXPECT_FALSE(slider().Init(5, 5, 10, 2, markers, colors, 0, nullptr));
  EXPECT_FALSE(slider().Init(0, 1000, 10, CQVSliderCtrl::kMaxMarkers + 1, markers, colors, 0, nullptr));
  EXPECT_FALSE(slider().Init(0, 1000, 10, 2, unmapped, colors, 0, nullptr));
  EXPECT_FALSE(slider().Init(0, 1000, 10, 2, nullptr, colors, 0, nullptr));
  EXPECT_EQ(Markers(), (std::vector<double>{12.5, 666})) << "a refused Init leaves the slider as it was";
  EXPECT_FALSE(slider().SendMessage(QVSM_GETMARKER, 0, reinterpret_cast<LPARAM>(unmapped)));
  EXPECT_FALSE(slider().SendMessage(QVSM_SETMARKER, 2, reinterpret_cast<LPARAM>(&value)));
  EXPECT_FALSE(slider().SetMarkerValue(-1, 10));

  EXPECT_TRUE(dialog.log.empty());
}

TEST_F(SliderCtrlTest, TheIntervalsArePaintedInTheirColours) {
  const RECT client = [this] {
    RECT r{};
    slider().GetClientRect(&r);
    return r;
  }();
  struct Case {
    bool enabled;
    UINT styles;
    COLORREF left, middle, right;
  };
  const COLORREF window = ::GetSysColor(COLOR_WINDOW), face = ::GetSysColor(COLOR_BTNFACE);
  const Case cases[] = {
      {true, kGrayStyles, kRed, kGreen, kBlue},
      {true, kGrayStyles & ~CQVSliderCtrl::DISPLAY_COLORS, window, window, window},
      {false, kGrayStyles, face, face, face},
  };
  for (const Case& c : cases) {
    Init(c.styles);
    slider().EnableWindow(c.enabled);
    qvfw::UniqueDC screen(nullptr);
    qvfw::UniqueMemoryDC memory(::CreateCompatibleDC(screen.Get()));
    qvfw::UniqueBitmap target(::CreateCompatibleBitmap(screen.Get(), client.right, client.bottom));
    qvfw::SelectObjectScope select(memory.Get(), target.Get());
    slider().SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory.Get()), PRF_CLIENT);
    const RECT channel = Channel();
    RECT first{}, second{};
    slider().GetThumbRect(0, &first);
    slider().GetThumbRect(1, &second);
    const int y = (channel.top + channel.bottom) / 2;
    EXPECT_EQ(::GetPixel(memory.Get(), (channel.left + first.left) / 2, y), c.left);
    EXPECT_EQ(::GetPixel(memory.Get(), (first.right + second.left) / 2, y), c.middle);
    EXPECT_EQ(::GetPixel(memory.Get(), (second.right + channel.right) / 2, y), c.right);
  }
  slider().EnableWindow(TRUE);
}
