/*
 * Plain HTML with relative links, so the tour folder can be copied or opened
 * from anywhere; every text from the program is escaped.
 */
#include "TourPage.h"

#include <windows.h>

#include "ResultCodes.h"

namespace qvdemo {
namespace {

std::string Utf8(const std::wstring& text) {
  if (text.empty()) return {};
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr,
                                       nullptr);
  std::string out(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), size, nullptr, nullptr);
  return out;
}

std::string Escape(const std::string& text) {
  std::string out;
  for (char c : text) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      default: out += c;
    }
  }
  return out;
}

std::string Picture(const std::wstring& file, const char* alt) {
  if (file.empty()) return "<td>-</td>";
  const std::string name = Escape(Utf8(file));
  return "<td><a href=\"" + name + "\"><img src=\"" + name + "\" alt=\"" + alt + "\"></a></td>";
}

std::string Row(const TourRow& row) {
  std::string html = "<tr" + std::string(row.failures.empty() ? "" : " class=\"failed\"") + ">";
  html += "<td><b>" + Escape(Utf8(row.title)) + "</b><br><code>" + Escape(row.exportName) + "</code></td>";
  html += Picture(row.screenshotFile, "dialog");
  html += "<td>" + Escape(Utf8(row.values.empty() ? L"-" : row.values)) + "</td>";
  html += Picture(row.beforeFile, "before");
  html += Picture(row.afterFile, "after");
  html += "<td>" + std::to_string(row.result) + "<br>" + Escape(Utf8(DescribeResult(row.result)));
  for (const std::string& failure : row.failures) html += "<br><span class=\"failure\">" + Escape(failure) + "</span>";
  html += "</td></tr>\n";
  return html;
}

}  // namespace

std::string TourPageHtml(const std::vector<TourRow>& rows, const std::wstring& sampleNote) {
  std::string html =
      "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>QUORVELIX color dialogs: the tour</title>\n"
      "<style>body{font-family:sans-serif}table{border-collapse:collapse}td,th{border:1px solid #bbb;"
      "padding:4px;vertical-align:top}img{max-width:320px}.failed{background:#fdd}.failure{color:#a00}</style>"
      "</head><body>\n<h1>QUORVELIX color dialogs</h1>\n<p>Each dialog of Qvdlgclrx.dll, opened on the sample "
      "picture, its main control moved, OK pressed with the effect applied by the dialog.</p>\n<p>" +
      Escape(Utf8(sampleNote)) +
      "</p>\n<table>\n<tr><th>dialog</th><th>screenshot</th><th>values</th>"
      "<th>before</th><th>after</th><th>result</th></tr>\n";
  for (const TourRow& row : rows) html += Row(row);
  html += "</table>\n<p>" + std::to_string(rows.size()) + " dialogs.</p>\n</body></html>\n";
  return html;
}

bool WriteTourPage(const std::wstring& folder, const std::vector<TourRow>& rows, const std::wstring& sampleNote) {
  const std::string html = TourPageHtml(rows, sampleNote);
  const std::wstring path = folder + L"\\index.html";
  HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  const BOOL ok = WriteFile(file, html.data(), static_cast<DWORD>(html.size()), &written, nullptr);
  CloseHandle(file);
  return ok && written == html.size();
}

}  // namespace qvdemo
