/*
 * The main window. Messages go through one switch to typed handlers; the
 * object pointer travels in the window's user data from WM_NCCREATE on. The
 * picture is painted by Q_PaintBitmap, scaled to fit with its aspect kept,
 * so any format the kernel holds (12- and 16-bit gray through their
 * window-level table included) shows without conversion by the host.
 */
#include "DemoWindow.h"

#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>
#include <cstring>
#include <cwctype>
#include <new>
#include <utility>

#include "DialogCatalog.h"
#include "ResultCodes.h"
#include "TestChart.h"
#include "resource.h"

namespace qvdemo {
namespace {

constexpr wchar_t kClassName[] = L"QuorvelixDemoWindow";
constexpr int kDialogMenuPosition = 2;

std::wstring Lower(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(towlower(c));
  return text;
}

unsigned FormatFromPath(const std::wstring& path) {
  const std::wstring lower = Lower(path);
  auto endsWith = [&lower](const wchar_t* suffix) {
    const std::wstring s(suffix);
    return lower.size() >= s.size() && lower.compare(lower.size() - s.size(), s.size(), s) == 0;
  };
  if (endsWith(L".bmp")) return QV_FILE_BMP;
  if (endsWith(L".jpg") || endsWith(L".jpeg")) return QV_FILE_JPEG;
  if (endsWith(L".tif") || endsWith(L".tiff")) return QV_FILE_TIFF;
  return QV_FILE_PNG;
}

}  // namespace

DemoWindow::DemoWindow(HINSTANCE instance, const DialogLibrary& library, std::wstring samplePath)
    : m_instance(instance), m_library(library), m_samplePath(std::move(samplePath)) {}

bool DemoWindow::Create(const std::wstring& imagePath, int showCommand) {
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof wc;
  wc.lpfnWndProc = WindowProc;
  wc.hInstance = m_instance;
  wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
  wc.lpszMenuName = MAKEINTRESOURCEW(IDR_MAINMENU);
  wc.lpszClassName = kClassName;
  wc.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  RegisterClassExW(&wc);
  m_accelerators = LoadAcceleratorsW(m_instance, MAKEINTRESOURCEW(IDR_ACCELERATORS));
  m_window = CreateWindowExW(0, kClassName, L"QUORVELIX color dialogs demo", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                             CW_USEDEFAULT, 900, 700, nullptr, nullptr, m_instance, this);
  if (m_window == nullptr) return false;
  LoadStartImage(imagePath);
  ShowWindow(m_window, showCommand);
  UpdateWindow(m_window);
  return true;
}

LRESULT CALLBACK DemoWindow::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    auto* create = reinterpret_cast<CREATESTRUCTW*>(lParam);
    auto* self = static_cast<DemoWindow*>(create->lpCreateParams);
    self->m_window = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  }
  auto* self = reinterpret_cast<DemoWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message == WM_NCDESTROY) SetWindowLongPtrW(window, GWLP_USERDATA, 0);
  if (self == nullptr) return DefWindowProcW(window, message, wParam, lParam);
  // No exception may unwind through the system's code that called us; the only one our handlers can
  // raise is running out of memory for a copy or a text, which the status bar then reports.
  try {
    return self->HandleMessage(message, wParam, lParam);
  } catch (const std::bad_alloc&) {
    self->m_lastResult = QV_ERROR_NO_MEMORY;
    self->m_lastAction.clear();  // assigning a new text could need memory too
    return 0;
  }
}

LRESULT DemoWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CREATE: OnCreate(); return 0;
    case WM_COMMAND: OnCommand(LOWORD(wParam)); return 0;
    case WM_PAINT: OnPaint(); return 0;
    case WM_PRINTCLIENT: Paint(reinterpret_cast<HDC>(wParam)); return 0;
    case WM_ERASEBKGND: return 1;  // OnPaint covers every pixel; erasing first would flicker
    case WM_SIZE: OnSize(); return 0;
    case WM_DPICHANGED: OnDpiChanged(reinterpret_cast<const RECT*>(lParam)); return 0;
    case WM_DESTROY: PostQuitMessage(0); return 0;
    default: return DefWindowProcW(m_window, message, wParam, lParam);
  }
}

void DemoWindow::OnCreate() {
  m_status = CreateWindowExW(0, STATUSCLASSNAMEW, nullptr, WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0, 0, m_window,
                             nullptr, m_instance, nullptr);
  FillDialogMenu();
  SetMode(ApplyMode::ThroughDialog);
}

void DemoWindow::FillDialogMenu() {
  HMENU menu = GetSubMenu(GetMenu(m_window), kDialogMenuPosition);
  if (menu == nullptr) return;
  const auto& catalog = DialogCatalog();
  for (size_t i = 0; i < catalog.size(); ++i) {
    if (m_library.Find(catalog[i].exportName) == nullptr) continue;
    if (m_dialogCommands.empty()) DeleteMenu(menu, 0, MF_BYPOSITION);  // the "(none found)" placeholder
    const UINT id = IDM_DIALOG_FIRST + static_cast<UINT>(m_dialogCommands.size());
    AppendMenuW(menu, MF_STRING, id, catalog[i].menuText);
    m_dialogCommands.push_back(i);
  }
}

void DemoWindow::OnCommand(int id) {
  if (id >= IDM_DIALOG_FIRST && id < IDM_DIALOG_FIRST + static_cast<int>(m_dialogCommands.size())) {
    RunCatalogDialog(m_dialogCommands[static_cast<size_t>(id - IDM_DIALOG_FIRST)]);
    return;
  }
  switch (id) {
    case IDM_OPEN: OpenImage(); break;
    case IDM_SAVEAS: SaveImageAs(); break;
    case IDM_SAMPLE: LoadStartImage(L""); break;
    case IDM_CHART: {
      OwnedBitmap chart;
      const int result = MakeColorChart(chart);
      ReplaceImage(std::move(chart), result, L"test chart");
      break;
    }
    case IDM_GRAY16:
    case IDM_GRAY12: {
      OwnedBitmap gradient;
      const int bits = id == IDM_GRAY16 ? 16 : 12;
      const int result = MakeGrayGradient(gradient, bits);
      ReplaceImage(std::move(gradient), result, std::to_wstring(bits) + L"-bit gray gradient");
      break;
    }
    case IDM_UNDO: Undo(); break;
    case IDM_MODE_DIALOG: SetMode(ApplyMode::ThroughDialog); break;
    case IDM_MODE_OPERATION: SetMode(ApplyMode::ByOperation); break;
    case IDM_ABOUT:
      MessageBoxW(m_window,
                  L"Opens a picture, calls any dialog of Qvdlgclrx.dll on it and applies the result, either through "
                  L"the dialog (QVDLG_AUTO_PROCESS) or by calling the Qvkrnx operation with the returned values.",
                  L"QUORVELIX demo", MB_OK | MB_ICONINFORMATION);
      break;
    case IDM_EXIT: DestroyWindow(m_window); break;
    default: break;
  }
}

void DemoWindow::RunCatalogDialog(size_t index) {
  const DialogEntry& entry = DialogCatalog()[index];
  const bool needsBitmap = entry.image != ImageKind::None;
  OwnedBitmap before;
  if (needsBitmap && before.CopyFrom(*m_image.Get()) != QV_SUCCESS) {
    m_lastResult = QV_ERROR_NO_MEMORY;
    m_lastAction = L"no copy for undo";
    UpdateStatus();
    return;
  }
  const DialogOutcome outcome = RunDialog(entry, m_library.Find(entry.exportName), m_window, m_image.Get(), m_mode,
                                          entry.neutralValue);
  m_lastResult = outcome.LastResult();
  std::wstring how = outcome.operationRun ? L" (by the operation)" : outcome.autoProcessed ? L" (by the dialog)" : L"";
  m_lastAction = std::wstring(entry.exportName, entry.exportName + strlen(entry.exportName)) + how;
  if (!outcome.values.empty()) m_lastAction += L": " + outcome.values;
  if (needsBitmap && outcome.dialogResult == QV_DLG_OK) {
    m_undo = std::move(before);
    m_canUndo = true;
  }
  UpdateStatus();
  InvalidateRect(m_window, nullptr, FALSE);
}

void DemoWindow::OpenImage() {
  wchar_t path[MAX_PATH] = L"";
  OPENFILENAMEW ofn{};
  ofn.lStructSize = sizeof ofn;
  ofn.hwndOwner = m_window;
  ofn.lpstrFilter =
      L"Pictures (*.png;*.bmp;*.jpg;*.jpeg;*.tif;*.tiff)\0*.png;*.bmp;*.jpg;*.jpeg;*.tif;*.tiff\0"
      L"All files (*.*)\0*.*\0";
  ofn.lpstrFile = path;
  ofn.nMaxFile = MAX_PATH;
  ofn.Flags = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
  if (!GetOpenFileNameW(&ofn)) return;
  OwnedBitmap loaded;
  const int result = loaded.Load(path);
  ReplaceImage(std::move(loaded), result, path);
}

void DemoWindow::SaveImageAs() {
  wchar_t path[MAX_PATH] = L"picture.png";
  OPENFILENAMEW ofn{};
  ofn.lStructSize = sizeof ofn;
  ofn.hwndOwner = m_window;
  ofn.lpstrFilter = L"PNG (*.png)\0*.png\0BMP (*.bmp)\0*.bmp\0JPEG (*.jpg)\0*.jpg\0TIFF (*.tif)\0*.tif\0";
  ofn.lpstrFile = path;
  ofn.nMaxFile = MAX_PATH;
  ofn.lpstrDefExt = L"png";
  ofn.Flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;
  if (!GetSaveFileNameW(&ofn)) return;
  m_lastResult = Q_SaveBitmap(path, m_image.Get(), FormatFromPath(path), 0);
  m_lastAction = std::wstring(L"saved ") + path;
  UpdateStatus();
}

void DemoWindow::LoadStartImage(const std::wstring& path) {
  OwnedBitmap image;
  const std::wstring source = path.empty() ? m_samplePath : path;
  int result = source.empty() ? QV_ERROR_FILE_NOT_FOUND : image.Load(source);
  if (result == QV_SUCCESS) {
    ReplaceImage(std::move(image), result, source);
    return;
  }
  // Without the photograph (or with a file that does not load) the demo still has a picture to work on.
  OwnedBitmap chart;
  MakeColorChart(chart);
  ReplaceImage(std::move(chart), QV_SUCCESS, L"test chart");
  m_lastResult = result;
  m_lastAction = source.empty() ? L"no picture given; showing the test chart"
                                : L"could not load " + source + L"; showing the test chart";
  UpdateStatus();
}

void DemoWindow::ReplaceImage(OwnedBitmap&& image, int result, const std::wstring& what) {
  m_lastResult = result;
  if (result == QV_SUCCESS) {
    m_undo = std::move(m_image);
    m_canUndo = m_undo.IsAllocated();
    m_image = std::move(image);
    m_lastAction = L"opened " + what;
  } else {
    m_lastAction = L"could not open " + what;
  }
  UpdateStatus();
  InvalidateRect(m_window, nullptr, FALSE);
}

void DemoWindow::Undo() {
  if (!m_canUndo) return;
  std::swap(m_image, m_undo);
  m_lastResult = QV_SUCCESS;
  m_lastAction = L"undone (Undo again redoes)";
  UpdateStatus();
  InvalidateRect(m_window, nullptr, FALSE);
}

void DemoWindow::SetMode(ApplyMode mode) {
  m_mode = mode;
  HMENU menu = GetMenu(m_window);
  CheckMenuRadioItem(menu, IDM_MODE_DIALOG, IDM_MODE_OPERATION,
                     mode == ApplyMode::ThroughDialog ? IDM_MODE_DIALOG : IDM_MODE_OPERATION, MF_BYCOMMAND);
}

void DemoWindow::UpdateStatus() {
  if (m_status == nullptr) return;
  const BITMAPHANDLE* p = m_image.Get();
  const std::wstring size = std::to_wstring(p->nWidth) + L" x " + std::to_wstring(p->nHeight);
  const std::wstring depth = std::to_wstring(p->nBitsPerPixel) + L" bits per pixel";
  const std::wstring result = std::to_wstring(m_lastResult) + L" " + DescribeResult(m_lastResult);
  const int dpi = static_cast<int>(GetDpiForWindow(m_window));
  const int edges[] = {MulDiv(110, dpi, 96), MulDiv(240, dpi, 96), MulDiv(640, dpi, 96), -1};
  SendMessageW(m_status, SB_SETPARTS, 4, reinterpret_cast<LPARAM>(edges));
  SendMessageW(m_status, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(size.c_str()));
  SendMessageW(m_status, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(depth.c_str()));
  SendMessageW(m_status, SB_SETTEXTW, 2, reinterpret_cast<LPARAM>(result.c_str()));
  SendMessageW(m_status, SB_SETTEXTW, 3, reinterpret_cast<LPARAM>(m_lastAction.c_str()));
  EnableMenuItem(GetMenu(m_window), IDM_UNDO, MF_BYCOMMAND | (m_canUndo ? MF_ENABLED : MF_GRAYED));
}

RECT DemoWindow::ImageArea() const {
  RECT client{};
  GetClientRect(m_window, &client);
  RECT status{};
  if (m_status != nullptr && GetWindowRect(m_status, &status)) client.bottom -= status.bottom - status.top;
  client.bottom = std::max(client.top, client.bottom);
  return client;
}

void DemoWindow::OnPaint() {
  PAINTSTRUCT ps;
  HDC dc = BeginPaint(m_window, &ps);
  Paint(dc);
  EndPaint(m_window, &ps);
}

void DemoWindow::Paint(HDC dc) {
  const RECT area = ImageArea();
  FillRect(dc, &area, GetSysColorBrush(COLOR_APPWORKSPACE));
  const BITMAPHANDLE* p = m_image.Get();
  const int areaWidth = area.right - area.left, areaHeight = area.bottom - area.top;
  if (m_image.IsAllocated() && p->nWidth > 0 && p->nHeight > 0 && areaWidth > 0 && areaHeight > 0) {
    // Scaled to fit the area, aspect kept, centred.
    const double scale = std::min(static_cast<double>(areaWidth) / p->nWidth,
                                  static_cast<double>(areaHeight) / p->nHeight);
    const int width = std::max(1, static_cast<int>(p->nWidth * scale));
    const int height = std::max(1, static_cast<int>(p->nHeight * scale));
    const int left = area.left + (areaWidth - width) / 2, top = area.top + (areaHeight - height) / 2;
    const RECT destination{left, top, left + width, top + height};
    Q_PaintBitmap(dc, p, nullptr, &destination, 0);
  }
}

void DemoWindow::OnSize() {
  if (m_status != nullptr) SendMessageW(m_status, WM_SIZE, 0, 0);
  UpdateStatus();
  InvalidateRect(m_window, nullptr, FALSE);
}

void DemoWindow::OnDpiChanged(const RECT* suggested) {
  if (suggested != nullptr) {
    SetWindowPos(m_window, nullptr, suggested->left, suggested->top, suggested->right - suggested->left,
                 suggested->bottom - suggested->top, SWP_NOZORDER | SWP_NOACTIVATE);
  }
}

}  // namespace qvdemo
