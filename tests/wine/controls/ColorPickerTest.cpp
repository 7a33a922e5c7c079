/*
 * The colour picker button: the system colour dialog it opens (by mouse, Space and Enter) driven as a user
 * drives it, the parent told once of a new colour and never otherwise, the palettes offered as custom colours,
 * and the swatch it paints.
 */
#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "ControlsTestDialog.h"
#include "SelectObjectScope.h"
#include "UniqueDC.h"
#include "UniqueHandle.h"
#include "qvdriver/DialogDriver.h"

namespace {

using qv::test::DialogDriver;
using qv::test::RunResult;
using qv::test::Script;
using qv::test::StepContext;

// The system colour dialog's red, green and blue edits.
constexpr int kRedEdit = 706, kGreenEdit = 707, kBlueEdit = 708;
constexpr COLORREF kStart = RGB(255, 0, 0);

qvfw::CPalette MakePalette(const std::vector<COLORREF>& colors) {
  std::vector<PALETTEENTRY> entries;
  for (COLORREF c : colors) entries.push_back(PALETTEENTRY{GetRValue(c), GetGValue(c), GetBValue(c), 0});
  qvfw::CPalette palette;
  palette.CreatePalette(entries.data(), static_cast<int>(entries.size()));
  return palette;
}

std::vector<COLORREF> Grays(int count) {
  std::vector<COLORREF> colors;
  for (int i = 0; i < count; ++i) colors.push_back(RGB(i, i, i));
  return colors;
}

class ColorPickerTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(dialog.Open()); }
  void TearDown() override { ::DestroyWindow(dialog.m_hWnd); }

  CQVColorPickerCtrl& picker() { return dialog.m_picker; }
  int Changes() const { return dialog.NotificationsFrom(IDC_CT_PICKER, CQVColorPickerCtrl::kNotifyColorChanged); }
  std::vector<COLORREF> Custom() {
    return std::vector<COLORREF>(picker().GetCustomColors(),
                                 picker().GetCustomColors() + CQVColorPickerCtrl::kCustomColorCount);
  }

  ControlsTestDialog dialog{0, 100, 10, 0};
};

}  // namespace

TEST_F(ColorPickerTest, TheColourDialogIsDrivenAndOnlyANewColourIsTold) {
  const std::function<void(ControlsTestDialog&)> click = [](ControlsTestDialog& d) {
    const LPARAM centre = MAKELPARAM(5, 5);
    d.m_picker.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, centre);
    d.m_picker.SendMessage(WM_LBUTTONUP, 0, centre);
  };
  const std::function<void(ControlsTestDialog&)> space = [](ControlsTestDialog& d) {
    d.m_picker.SetFocus();
    d.m_picker.SendMessage(WM_KEYDOWN, VK_SPACE, 1);
    d.m_picker.SendMessage(WM_KEYUP, VK_SPACE, 0xC0000001);
  };
  // Enter goes through the dialog manager, which would press OK unless the picker asks for the key.
  const std::function<void(ControlsTestDialog&)> enter = [](ControlsTestDialog& d) {
    d.m_picker.SetFocus();
    d.m_picker.PostMessage(WM_KEYDOWN, VK_RETURN, 1);
    d.Pump();
  };
  struct Case {
    const char* name;
    const std::function<void(ControlsTestDialog&)>* open;
    const wchar_t* rgb[3];  // typed into the dialog; null: leave it as it opened
    bool ok;
    COLORREF after;
    int changes;
  };
  const Case cases[] = {
      {"click, new colour", &click, {L"10", L"20", L"30"}, true, RGB(10, 20, 30), 1},
      {"click, cancelled", &click, {L"10", L"20", L"30"}, false, kStart, 0},
      {"click, same colour", &click, {nullptr}, true, kStart, 0},
      {"space", &space, {L"200", L"100", L"50"}, true, RGB(200, 100, 50), 1},
      {"enter", &enter, {L"1", L"2", L"3"}, true, RGB(1, 2, 3), 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    picker().SetRGB(kStart);
    dialog.log.clear();
    Script script;
    script.Do("choose in the colour dialog", [&c](StepContext& s) {
      if (c.rgb[0]) {
        s.Require(s.View().SetEditText(kRedEdit, c.rgb[0]));
        s.Require(s.View().SetEditText(kGreenEdit, c.rgb[1]));
        s.Require(s.View().SetEditText(kBlueEdit, c.rgb[2]));
      }
      s.Require(c.ok ? s.View().Ok() : s.View().Cancel());
    });
    const RunResult result = DialogDriver().Run(
        [&] {
          (*c.open)(dialog);
          return 0;
        },
        script);
    EXPECT_TRUE(result.Ok()) << result.Report();
    EXPECT_TRUE(result.dialogSeen);
    EXPECT_EQ(picker().GetRGBColorRef(), c.after);
    EXPECT_EQ(Changes(), c.changes);
    EXPECT_EQ(static_cast<int>(dialog.log.size()), c.changes) << "nothing else reaches the parent";
  }
}

TEST_F(ColorPickerTest, SetRGBIsSilentAndPalettesBecomeTheCustomColours) {
  picker().SetRGB(0x12345678);
  EXPECT_EQ(picker().GetRGBColorRef(), 0x00345678u) << "the high byte is no part of a colour";

  qvfw::CPalette gray = MakePalette(Grays(256)), four = MakePalette(Grays(4)), none;
  // `taken` grays spread over 0..255 (or 0..3), both ends included.
  const auto spread = [](int count, int taken) {
    std::vector<COLORREF> colors;
    for (int i = 0; i < taken; ++i) colors.push_back(Grays(count)[static_cast<size_t>(i * (count - 1) / (taken - 1))]);
    return colors;
  };
  const auto join = [](std::vector<COLORREF> a, const std::vector<COLORREF>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
  };
  struct Case {
    qvfw::CPalette* first;
    qvfw::CPalette* second;
    std::vector<COLORREF> custom;
  };
  const Case cases[] = {
      {&gray, nullptr, spread(256, 16)},
      {nullptr, &gray, spread(256, 16)},
      {&gray, &gray, join(spread(256, 8), spread(256, 8))},
      {&four, &gray, join(spread(4, 4), spread(256, 12))},    // a small palette leaves the rest to the other
      {&none, nullptr, join(spread(4, 4), spread(256, 12))},  // no colours: the slots keep theirs
  };
  for (const Case& c : cases) {
    picker().SetPalette(c.first, c.second);
    EXPECT_EQ(Custom(), c.custom) << (&c - cases);
  }
  EXPECT_TRUE(dialog.log.empty());
}

TEST_F(ColorPickerTest, TheSwatchShowsTheColourAndFadesWhenDisabled) {
  EXPECT_EQ(picker().GetStyle() & BS_TYPEMASK, static_cast<DWORD>(BS_OWNERDRAW));
  picker().SetRGB(RGB(0, 128, 255));
  RECT client{};
  picker().GetClientRect(&client);
  const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
  const COLORREF faded = RGB((0 + GetRValue(face)) / 2, (128 + GetGValue(face)) / 2, (255 + GetBValue(face)) / 2);
  for (bool enabled : {true, false}) {
    SCOPED_TRACE(enabled);
    picker().EnableWindow(enabled);
    qvfw::UniqueDC screen(nullptr);
    qvfw::UniqueMemoryDC memory(::CreateCompatibleDC(screen.Get()));
    qvfw::UniqueBitmap target(::CreateCompatibleBitmap(screen.Get(), client.right, client.bottom));
    qvfw::SelectObjectScope select(memory.Get(), target.Get());
    picker().SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory.Get()), PRF_CLIENT);
    EXPECT_EQ(::GetPixel(memory.Get(), client.right / 2, client.bottom / 2), enabled ? RGB(0, 128, 255) : faded);
  }
  picker().EnableWindow(TRUE);
}
