/*
 * Every exported dialog under the German string table, opened as the demo opens it: each visible text with a
 * letter in it (caption, labels, buttons, combo selections) must be a German text of the table, or one of its
 * format strings filled in. A text left at its template fallback, or an English string, fails with the
 * dialog's name, the control id and the text. Dialogs added later are covered as soon as the demo offers them.
 */
#include <windows.h>

#include <gtest/gtest.h>

#include <cwctype>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "DialogCatalog.h"
#include "DialogLibrary.h"
#include "DialogRunner.h"
#include "OwnedBitmap.h"
#include "TestChart.h"
#include "qv/qvdlgkrn.h"
#include "qvdriver/DialogDriver.h"
#include "qvdriver/Script.h"

namespace qvdemo {
namespace {

std::wstring WithoutMnemonics(const std::wstring& text) {
  std::wstring out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'&' && i + 1 < text.size()) ++i;  // "&&" stands for one ampersand
    out += text[i];
  }
  return out;
}

// The German table: its texts as they are, and its format strings as patterns.
class GermanTable {
 public:
  GermanTable() {
    Q_DlgSetLanguage(QV_DLGLANG_GERMAN);
    for (unsigned id = 0; id <= 0xFFFF; ++id) {
      unsigned length = 0;
      if (Q_DlgGetStringLen(id, &length) != QV_SUCCESS) continue;
      std::wstring text(length + 1, L'\0');
      if (Q_DlgGetString(id, text.data(), length + 1) != QV_SUCCESS) continue;
      text.resize(length);
      text = WithoutMnemonics(text);
      if (text.find(L'%') != std::wstring::npos) m_patterns.emplace_back(Pattern(text));
      m_texts.insert(text);
    }
  }
  ~GermanTable() { Q_DlgSetLanguage(QV_DLGLANG_ENGLISH); }
  GermanTable(const GermanTable&) = delete;
  GermanTable& operator=(const GermanTable&) = delete;

  bool Holds(const std::wstring& shown) const {
    const std::wstring text = WithoutMnemonics(shown);
    if (m_texts.count(text) != 0) return true;
    for (const std::wregex& pattern : m_patterns)
      if (std::regex_match(text, pattern)) return true;
    return false;
  }

 private:
  // "%d", "%u", "%s", "%ls" and "%%" of a format string, as a pattern of what they expand to.
  static std::wregex Pattern(const std::wstring& format) {
    std::wstring pattern;
    for (size_t i = 0; i < format.size(); ++i) {
      const wchar_t c = format[i];
      if (c == L'%' && i + 1 < format.size()) {
        size_t j = i + 1;
        while (j < format.size() && (std::iswdigit(format[j]) || format[j] == L'.' || format[j] == L'l')) ++j;
        if (j < format.size() && format[j] == L'%')
          pattern += L"%";
        else if (j < format.size() && (format[j] == L'd' || format[j] == L'u' || format[j] == L'i'))
          pattern += L"-?\\d+";
        else
          pattern += L".*";
        i = j;
      } else if (std::wstring(L"\\^$.|?*+()[]{}").find(c) != std::wstring::npos) {
        pattern += L'\\';
        pattern += c;
      } else {
        pattern += c;
      }
    }
    return std::wregex(pattern);
  }

  std::set<std::wstring> m_texts;
  std::vector<std::wregex> m_patterns;
};

bool HasLetter(const std::wstring& text) {
  for (wchar_t c : text)
    if (std::iswalpha(c)) return true;
  return false;
}

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  return name;
}

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

// The visible texts of a dialog that do not come from the German table, as "id: text".
std::vector<std::string> ForeignTexts(HWND dialog, const GermanTable& table) {
  std::vector<HWND> windows{dialog};
  EnumChildWindows(
      dialog,
      [](HWND child, LPARAM list) { return reinterpret_cast<std::vector<HWND>*>(list)->push_back(child), TRUE; },
      reinterpret_cast<LPARAM>(&windows));
  std::vector<std::string> foreign;
  for (HWND window : windows) {
    // Edits hold the user's values; they are not texts of the dialog.
    if (!IsWindowVisible(window) || _wcsicmp(ClassOf(window).c_str(), L"Edit") == 0) continue;
    const std::wstring text = TextOf(window);
    if (!HasLetter(text) || table.Holds(text)) continue;
    char utf8[512] = "";
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, utf8, sizeof utf8, nullptr, nullptr);
    foreign.push_back(std::to_string(window == dialog ? 0 : GetDlgCtrlID(window)) + ": \"" + utf8 + "\"");
  }
  return foreign;
}

TEST(GermanDialogs, EveryVisibleTextComesFromTheGermanTable) {
  DialogLibrary library;
  ASSERT_TRUE(library.IsLoaded());
  OwnedBitmap photo, gray;
  ASSERT_EQ(MakeColorChart(photo), QV_SUCCESS);
  ASSERT_EQ(MakeGrayGradient(gray, 16), QV_SUCCESS);
  HWND owner = CreateWindowExW(0, L"STATIC", L"German check", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr, nullptr,
                               GetModuleHandleW(nullptr), nullptr);
  const GermanTable table;
  int checked = 0;
  for (const DialogEntry& entry : DialogCatalog()) {
    const DialogCall call = library.Find(entry.exportName);
    if (call == nullptr) continue;
    OwnedBitmap working;
    BITMAPHANDLE* bitmap = nullptr;
    if (entry.image != ImageKind::None) {
      ASSERT_EQ(working.CopyFrom(*(entry.image == ImageKind::Gray16 ? gray : photo).Get()), QV_SUCCESS);
      bitmap = working.Get();
    }
    std::vector<std::string> foreign;
    qv::test::Script script;
    script.Do("read every visible text", [&](qv::test::StepContext& c) { foreign = ForeignTexts(c.Target(), table); });
    script.ClickCancel();
    qv::test::RunResult run;
    RunDialog(entry, call, owner, bitmap, ApplyMode::ThroughDialog, entry.neutralValue,
              [&](const std::function<int()>& makeCall) {
                run = qv::test::DialogDriver().Run(makeCall, script);
                return run.returnValue;
              });
    EXPECT_TRUE(run.failures.empty()) << entry.exportName << ": " << run.failures.front();
    for (const std::string& text : foreign)
      ADD_FAILURE() << entry.exportName << " shows a text not in German: " << text;
    ++checked;
  }
  DestroyWindow(owner);
  EXPECT_GE(checked, 7);
}

}  // namespace
}  // namespace qvdemo
