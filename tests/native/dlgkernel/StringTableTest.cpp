/*
 * The string table: every id the dialogs ask for has a text in both languages,
 * format strings agree between the languages, and the exports honour buffer
 * sizes, overrides and the language switch.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "StringTable.h"
#include "qv/qvdlgkrn.h"

namespace {

void AddRange(std::set<unsigned>& ids, unsigned first, unsigned last) {
  for (unsigned id = first; id <= last; ++id) ids.insert(id);
}

// The ids the dialogs ask for, as their descriptions list them.
std::set<unsigned> IdsTheDialogsUse() {
  std::set<unsigned> ids;
  AddRange(ids, 0, 4);        // OK, Cancel, Help, Before, After
  AddRange(ids, 5, 10);       // preview toolbar tooltips, pending Apply
  ids.insert(11);             // image viewer without an image
  AddRange(ids, 12, 14);      // window-level status: copying, processing, done
  AddRange(ids, 15, 21);      // color models
  AddRange(ids, 22, 31);      // color picker
  ids.insert(32);             // the after pane of a failed preview
  AddRange(ids, 76, 147);     // palette editor and palette files
  AddRange(ids, 398, 406);    // colored gray
  AddRange(ids, 453, 457);    // gray scale
  AddRange(ids, 460, 466);    // balance colors
  AddRange(ids, 477, 486);    // local histogram equalization
  AddRange(ids, 507, 532);    // remap intensity
  AddRange(ids, 533, 560);    // remap hue
  AddRange(ids, 1201, 1212);  // intensity detect
  AddRange(ids, 1213, 1224);  // single-value dialogs
  AddRange(ids, 1225, 1229);  // gamma
  AddRange(ids, 1230, 1250);  // halftone
  AddRange(ids, 1251, 1293);  // color resolution
  AddRange(ids, 1294, 1295);  // histogram contrast
  AddRange(ids, 1300, 1320);  // window level
  AddRange(ids, 1322, 1323);  // edit interval
  AddRange(ids, 4402, 4405);  // curve file boxes
  ids.insert(4548);           // Apply
  return ids;
}

// The printf conversions of a text, in order ("%d", "%02X", ...); "%%" is not one.
std::vector<std::wstring> Conversions(const std::wstring& text) {
  std::vector<std::wstring> out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != L'%') continue;
    if (i + 1 < text.size() && text[i + 1] == L'%') {
      ++i;
      continue;
    }
    size_t j = i + 1;
    while (j < text.size() && !iswalpha(text[j])) ++j;
    out.push_back(text.substr(i, j - i + 1));
    i = j;
  }
  return out;
}

// The mnemonics of a text ("&&" is a literal ampersand): how many, and the first one folded to lower case (0 when
// there is none).
std::pair<int, wchar_t> Mnemonics(const std::wstring& text) {
  int count = 0;
  wchar_t first = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != L'&') continue;
    if (i + 1 < text.size() && text[i + 1] == L'&') {
      ++i;
      continue;
    }
    if (count++ > 0 || i + 1 == text.size()) continue;
    const std::wstring upper = L"ÄÖÜ", lower = L"äöü";
    const size_t umlaut = upper.find(text[i + 1]);
    first = umlaut != std::wstring::npos ? lower[umlaut] : static_cast<wchar_t>(towlower(text[i + 1]));
  }
  return {count, first};
}

std::wstring Fetch(unsigned id) {
  unsigned length = 0;
  if (Q_DlgGetStringLen(id, &length) != QV_SUCCESS) return L"<missing>";
  std::wstring text(length + 1, L'\0');
  EXPECT_EQ(Q_DlgGetString(id, &text[0], length + 1), QV_SUCCESS);
  text.resize(length);
  return text;
}

class StringTableExports : public ::testing::Test {
 protected:
  void TearDown() override {
    Q_DlgSetLanguage(QV_DLGLANG_ENGLISH);
    Q_DlgSetString(0, nullptr);
    Q_DlgSetString(1217, nullptr);
    Q_DlgSetString(99999, nullptr);
  }
};

}  // namespace

TEST(StringTable, HoldsExactlyTheIdsTheDialogsUseInBothLanguages) {
  const std::vector<unsigned> tableIds = qv::AllStringIds();
  ASSERT_TRUE(std::is_sorted(tableIds.begin(), tableIds.end()));
  ASSERT_EQ(std::adjacent_find(tableIds.begin(), tableIds.end()), tableIds.end()) << "an id appears twice";

  const std::set<unsigned> needed = IdsTheDialogsUse();
  const std::set<unsigned> present(tableIds.begin(), tableIds.end());
  for (unsigned id : needed) EXPECT_TRUE(present.count(id)) << "no text for id " << id;
  for (unsigned id : present) EXPECT_TRUE(needed.count(id)) << "id " << id << " is used by no dialog";

  for (unsigned id : tableIds) {
    const qv::StringEntry* entry = qv::FindStringEntry(id);
    ASSERT_NE(entry, nullptr) << id;
    EXPECT_GT(std::wstring(entry->pszEnglish).size(), 0u) << "English text of " << id;
    EXPECT_GT(std::wstring(entry->pszGerman).size(), 0u) << "German text of " << id;
  }
  // Every id up to one past the last, gaps between the ranges included, is found exactly when it is there.
  for (unsigned id = 0; id <= tableIds.back() + 1; ++id)
    EXPECT_EQ(qv::FindStringEntry(id) != nullptr, present.count(id) == 1) << id;
}

TEST(StringTable, FormatsAndMnemonicsAgreeBetweenLanguages) {
  struct Expected {
    unsigned id;
    std::vector<std::wstring> conversions;
  };
  const Expected formats[] = {
      {111, {L"%02X", L"%02X", L"%02X"}},
      {112, {L"%d", L"%d", L"%d"}},
      {113, {L"%d"}},
      {133, {L"%d", L"%d", L"%d", L"%d"}},
      {135, {L"%d", L"%d", L"%d"}},
      {556, {L"%d"}},
      {557, {L"%d"}},
      {1250, {L"%d"}},
      {32, {L"%d"}},
  };
  std::set<unsigned> formatIds;
  for (const auto& f : formats) {
    formatIds.insert(f.id);
    const qv::StringEntry* entry = qv::FindStringEntry(f.id);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(Conversions(entry->pszEnglish), f.conversions) << f.id;
    EXPECT_EQ(Conversions(entry->pszGerman), f.conversions) << f.id;
  }
  for (unsigned id : qv::AllStringIds()) {
    const qv::StringEntry* entry = qv::FindStringEntry(id);
    if (!formatIds.count(id)) {
      // A stray % in a plain text would be taken as a conversion by the dialog's formatter.
      EXPECT_TRUE(Conversions(entry->pszEnglish).empty()) << id;
      EXPECT_TRUE(Conversions(entry->pszGerman).empty()) << id;
    }
    EXPECT_LE(Mnemonics(entry->pszEnglish).first, 1) << id;
    EXPECT_EQ(Mnemonics(entry->pszEnglish).first, Mnemonics(entry->pszGerman).first) << "mnemonic of " << id;
  }
}

TEST(StringTable, QuotedTextsStandAsTheDialogsQuoteThem) {
  const std::pair<unsigned, const wchar_t*> quoted[] = {
      {0, L"OK"},
      {1, L"Cancel"},
      {2, L"Help"},
      {3, L"Before"},
      {4, L"After"},
      {18, L"RGB - 3D Additive"},
      {1229, L"All Channels"},
      {1226, L"Red Channel (10 - 500):"},
      {1204, L"&Channel:"},
      {1230, L"Half Tone"},
  };
  for (const auto& [id, text] : quoted) EXPECT_STREQ(qv::FindStringEntry(id)->pszEnglish, text) << id;
}

// Controls shown together in one dialog must not share a mnemonic, or Alt+key
// reaches only the first of them.
TEST(StringTable, MnemonicsAreUniqueWithinEachDialog) {
  const std::vector<std::vector<unsigned>> dialogs = {
      {77, 85, 86, 90, 92, 93, 100, 102, 103, 105, 106, 114, 115},  // palette editor
      {87, 88, 89},                                                 // its insert menu
      {1303, 1304, 1306, 1307, 1309, 1310, 1311},                   // window level
      {1232, 1233, 1242, 1243, 1244, 1245, 1246, 1247},             // halftone
      {1248, 1249},                                                 // halftone insert menu
      {509, 510, 511, 512, 513, 514, 516},                          // remap intensity
      {535, 536, 537, 538, 539, 540, 542},                          // remap hue
      {478, 479, 480, 481, 482, 483, 4548},                         // local histogram equalization
      {1204, 1205, 1206, 1210, 1211, 1212},                         // intensity detect
      {399, 403, 404, 405, 406},                                    // colored gray
      {461, 462, 463},                                              // balance colors
      {1252, 1253, 1254, 1255, 1256},                               // color resolution
  };
  for (const auto& ids : dialogs) {
    for (bool german : {false, true}) {
      std::set<wchar_t> seen;
      for (unsigned id : ids) {
        const qv::StringEntry* entry = qv::FindStringEntry(id);
        ASSERT_NE(entry, nullptr) << id;
        const wchar_t key = Mnemonics(german ? entry->pszGerman : entry->pszEnglish).second;
        EXPECT_TRUE(!key || seen.insert(key).second) << "mnemonic of " << id << (german ? " (German)" : "");
      }
    }
  }
}

TEST(StringTable, FileFiltersNameTheirExtensions) {
  const std::pair<unsigned, std::wstring> filters[] = {
      {104, L"*.qvp"}, {107, L"*.qvp"}, {1257, L"*.qvp"}, {515, L"*.qri"},
      {517, L"*.qri"}, {541, L"*.qrh"}, {543, L"*.qrh"},
  };
  for (const auto& [id, pattern] : filters) {
    for (const wchar_t* text : {qv::FindStringEntry(id)->pszEnglish, qv::FindStringEntry(id)->pszGerman}) {
      const std::wstring filter(text);
      // Pairs of description|pattern: an odd number of bars would break the file box.
      EXPECT_EQ(std::count(filter.begin(), filter.end(), L'|') % 2, 1) << id;
      EXPECT_NE(filter.find(L"|" + pattern + L"|"), std::wstring::npos) << id;
      EXPECT_NE(filter.find(L"|*.*"), std::wstring::npos) << id;
    }
  }
}

TEST_F(StringTableExports, LengthFetchAndTooSmallBuffer) {
  unsigned length = 0;
  ASSERT_EQ(Q_DlgGetStringLen(1, &length), QV_SUCCESS);
  EXPECT_EQ(length, 6u);  // "Cancel"
  std::vector<wchar_t> buffer(length + 1, L'#');
  EXPECT_EQ(Q_DlgGetString(1, buffer.data(), length), QV_ERROR_BUFFER_TOO_SMALL);
  EXPECT_EQ(buffer[0], L'#') << "a refused fetch writes nothing";
  ASSERT_EQ(Q_DlgGetString(1, buffer.data(), length + 1), QV_SUCCESS);
  EXPECT_EQ(std::wstring(buffer.data()), L"Cancel");

  for (unsigned missing : {33u, 75u, 1296u, 99999u}) {  // gap edges between ranges of the table, and past its end
    EXPECT_EQ(Q_DlgGetStringLen(missing, &length), QV_ERROR_NOT_FOUND) << missing;
    EXPECT_EQ(Q_DlgGetString(missing, buffer.data(), 7), QV_ERROR_NOT_FOUND) << missing;
  }
  EXPECT_EQ(Q_DlgGetStringLen(1, nullptr), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgGetString(1, nullptr, 100), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgGetString(1, buffer.data(), 0), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgGetString(1, reinterpret_cast<wchar_t*>(0x10), 100), QV_ERROR_INVALID_PARAMETER);
}

TEST_F(StringTableExports, OverrideWinsInEveryLanguageAndNullRestores) {
  EXPECT_EQ(Fetch(1217), L"Change Brightness");
  ASSERT_EQ(Q_DlgSetString(1217, L"Luminosité"), QV_SUCCESS);
  EXPECT_EQ(Fetch(1217), L"Luminosité");
  ASSERT_EQ(Q_DlgSetLanguage(QV_DLGLANG_GERMAN), QV_SUCCESS);
  EXPECT_EQ(Fetch(1217), L"Luminosité");
  EXPECT_EQ(Fetch(1), L"Abbrechen");
  ASSERT_EQ(Q_DlgSetString(1217, nullptr), QV_SUCCESS);
  EXPECT_EQ(Fetch(1217), L"Helligkeit ändern");

  // An empty override is a text of its own; an id the table lacks can be added.
  ASSERT_EQ(Q_DlgSetString(0, L""), QV_SUCCESS);
  unsigned length = 99;
  ASSERT_EQ(Q_DlgGetStringLen(0, &length), QV_SUCCESS);
  EXPECT_EQ(length, 0u);
  ASSERT_EQ(Q_DlgSetString(99999, L"Host text"), QV_SUCCESS);
  EXPECT_EQ(Fetch(99999), L"Host text");
  ASSERT_EQ(Q_DlgSetString(99999, nullptr), QV_SUCCESS);
  EXPECT_EQ(Q_DlgGetStringLen(99999, &length), QV_ERROR_NOT_FOUND);

  EXPECT_EQ(Q_DlgSetString(5, reinterpret_cast<const wchar_t*>(0x10)), QV_ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Q_DlgSetLanguage(2), QV_ERROR_INVALID_PARAMETER);
  unsigned language = 99;
  ASSERT_EQ(Q_DlgGetLanguage(&language), QV_SUCCESS);
  EXPECT_EQ(language, QV_DLGLANG_GERMAN) << "a refused language leaves the current one";
}
