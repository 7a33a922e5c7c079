/*
 * The sample dialog's message handling. The level has two views (trackbar and
 * edit); each updates the other, with a guard so the edit's EN_CHANGE caused
 * by the dialog itself does not echo back.
 */
#include "SampleDialog.h"

#include <commctrl.h>
#include <commdlg.h>

#include <cwchar>

#include "NoteDialog.h"
#include "Swatch.h"
#include "resource.h"

namespace qv::sample {
namespace {

constexpr const wchar_t* kChannelNames[] = {L"Red", L"Green", L"Blue"};

int Clamp(int value, int low, int high) { return value < low ? low : (value > high ? high : value); }

}  // namespace

INT_PTR SampleDialog::DoModal(HWND owner) {
  return DialogBoxParamW(m_instance, MAKEINTRESOURCEW(IDD_SAMPLE), owner, DialogProc,
                         reinterpret_cast<LPARAM>(this));
}

INT_PTR CALLBACK SampleDialog::DialogProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
    reinterpret_cast<SampleDialog*>(lParam)->m_hwnd = hwnd;
  }
  auto* self = reinterpret_cast<SampleDialog*>(GetWindowLongPtrW(hwnd, DWLP_USER));
  return self ? self->HandleMessage(message, wParam, lParam) : FALSE;
}

INT_PTR SampleDialog::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      OnInitDialog();
      return TRUE;
    case WM_COMMAND:
      OnCommand(LOWORD(wParam), HIWORD(wParam));
      return TRUE;
    case WM_HSCROLL:
      OnScroll(reinterpret_cast<HWND>(lParam));
      return TRUE;
    case kSwatchPick:
      OnSwatchPick(wParam, lParam);
      return TRUE;
    case WM_NOTIFY:
      if (lParam) OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
      return TRUE;
    default:
      return FALSE;
  }
}

void SampleDialog::CreateToolbar() {
  // Placed beside the Reset and Note buttons; CCS_NORESIZE keeps the toolbar
  // where it is put instead of docking it to the top edge.
  RECT place{205, 62, 245, 78};
  MapDialogRect(m_hwnd, &place);
  HWND toolbar = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_LIST |
                                     CCS_NORESIZE | CCS_NODIVIDER | CCS_NOPARENTALIGN,
                                 place.left, place.top, place.right - place.left, place.bottom - place.top, m_hwnd,
                                 reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_SAMPLE_TOOLBAR)), m_instance, nullptr);
  if (!toolbar) return;
  SendMessageW(toolbar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  SendMessageW(toolbar, TB_SETBITMAPSIZE, 0, MAKELPARAM(0, 0));
  TBBUTTON buttons[3] = {};
  const wchar_t* labels[] = {L"0", L"|", L"100"};
  const int commands[] = {ID_SAMPLE_LEVEL_ZERO, 0, ID_SAMPLE_LEVEL_FULL};
  for (int i = 0; i < 3; ++i) {
    buttons[i].iBitmap = I_IMAGENONE;
    buttons[i].idCommand = commands[i];
    buttons[i].fsState = TBSTATE_ENABLED;
    buttons[i].fsStyle = static_cast<BYTE>(commands[i] ? (BTNS_BUTTON | BTNS_AUTOSIZE) : BTNS_SEP);
    buttons[i].iString = reinterpret_cast<INT_PTR>(labels[i]);
  }
  SendMessageW(toolbar, TB_ADDBUTTONSW, 3, reinterpret_cast<LPARAM>(buttons));
}

void SampleDialog::OnNotify(const NMHDR& header) {
  if (header.idFrom == IDC_SAMPLE_TOOLBAR && header.code == static_cast<UINT>(NM_RCLICK) && m_values.bEnabled)
    SetLevel(50, true);
}

void SampleDialog::OnInitDialog() {
  CreateToolbar();
  HWND trackbar = GetDlgItem(m_hwnd, IDC_SAMPLE_LEVEL);
  SendMessageW(trackbar, TBM_SETRANGE, TRUE, MAKELPARAM(0, 100));
  SendMessageW(trackbar, TBM_SETTICFREQ, 10, 0);
  SendDlgItemMessageW(m_hwnd, IDC_SAMPLE_LEVEL_EDIT, EM_LIMITTEXT, 3, 0);
  HWND combo = GetDlgItem(m_hwnd, IDC_SAMPLE_CHANNEL);
  for (const wchar_t* name : kChannelNames) SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
  m_values.nChannel = Clamp(m_values.nChannel, 0, 2);
  SendMessageW(combo, CB_SETCURSEL, m_values.nChannel, 0);
  CheckDlgButton(m_hwnd, IDC_SAMPLE_ENABLE, m_values.bEnabled ? BST_CHECKED : BST_UNCHECKED);
  m_values.szNote[63] = L'\0';
  SetDlgItemTextW(m_hwnd, IDC_SAMPLE_NOTE_TEXT, m_values.szNote);
  SetLevel(m_values.nLevel, true);
  OnCommand(IDC_SAMPLE_CHANNEL, CBN_SELCHANGE);
  OnCommand(IDC_SAMPLE_ENABLE, BN_CLICKED);
}

void SampleDialog::OnCommand(int id, int code) {
  switch (id) {
    case IDOK:
    case IDCANCEL:
      EndDialog(m_hwnd, id);
      break;
    case IDC_SAMPLE_LEVEL_EDIT:
      if (code == EN_CHANGE && !m_settingEdit)
        SetLevel(static_cast<int>(GetDlgItemInt(m_hwnd, IDC_SAMPLE_LEVEL_EDIT, nullptr, FALSE)), false);
      break;
    case IDC_SAMPLE_CHANNEL:
      if (code == CBN_SELCHANGE) {
        int channel = static_cast<int>(SendDlgItemMessageW(m_hwnd, IDC_SAMPLE_CHANNEL, CB_GETCURSEL, 0, 0));
        m_values.nChannel = Clamp(channel, 0, 2);
        wchar_t label[64];
        swprintf(label, 64, L"Channel: %ls", kChannelNames[m_values.nChannel]);
        SetDlgItemTextW(m_hwnd, IDC_SAMPLE_CHANNEL_LABEL, label);
        UpdateSwatch();
      }
      break;
    case IDC_SAMPLE_ENABLE: {
      m_values.bEnabled = IsDlgButtonChecked(m_hwnd, IDC_SAMPLE_ENABLE) == BST_CHECKED;
      EnableWindow(GetDlgItem(m_hwnd, IDC_SAMPLE_LEVEL), m_values.bEnabled);
      EnableWindow(GetDlgItem(m_hwnd, IDC_SAMPLE_LEVEL_EDIT), m_values.bEnabled);
      UpdateSwatch();
      break;
    }
    case IDC_SAMPLE_RESET:
      OnReset();
      break;
    case IDC_SAMPLE_NOTE:
      OnNote();
      break;
    case IDC_SAMPLE_COLOR:
      OnColor();
      break;
    case IDC_SAMPLE_FILE:
      OnFile();
      break;
    case ID_SAMPLE_LEVEL_ZERO:
      SetLevel(0, true);
      break;
    case ID_SAMPLE_LEVEL_FULL:
      SetLevel(100, true);
      break;
    default:
      break;
  }
}

void SampleDialog::OnScroll(HWND control) {
  if (GetDlgCtrlID(control) != IDC_SAMPLE_LEVEL) return;
  SetLevel(static_cast<int>(SendMessageW(control, TBM_GETPOS, 0, 0)), true);
}

void SampleDialog::OnSwatchPick(WPARAM level, LPARAM delta) {
  if (!m_values.bEnabled) return;
  if (level == static_cast<WPARAM>(-1))
    SetLevel(m_values.nLevel + static_cast<int>(delta), true);
  else
    SetLevel(static_cast<int>(level), true);
}

void SampleDialog::OnReset() {
  if (MessageBoxW(m_hwnd, L"Set the level back to zero?", L"Sample Reset", MB_YESNO | MB_ICONQUESTION) == IDYES)
    SetLevel(0, true);
}

void SampleDialog::OnNote() {
  NoteDialog note(m_instance, m_values.szNote);
  if (note.DoModal(m_hwnd) != IDOK) return;
  wcsncpy(m_values.szNote, note.Text().c_str(), 63);
  m_values.szNote[63] = L'\0';
  SetDlgItemTextW(m_hwnd, IDC_SAMPLE_NOTE_TEXT, m_values.szNote);
}

void SampleDialog::OnColor() {
  CHOOSECOLORW choose{};
  choose.lStructSize = sizeof choose;
  choose.hwndOwner = m_hwnd;
  choose.rgbResult = m_color;
  choose.lpCustColors = m_customColors;
  choose.Flags = CC_RGBINIT | CC_FULLOPEN;
  if (!ChooseColorW(&choose)) return;
  m_color = choose.rgbResult;
  wchar_t text[16];
  swprintf(text, 16, L"#%02X%02X%02X", GetRValue(m_color), GetGValue(m_color), GetBValue(m_color));
  SetDlgItemTextW(m_hwnd, IDC_SAMPLE_COLOR_TEXT, text);
}

void SampleDialog::OnFile() {
  wchar_t path[MAX_PATH] = L"levels.txt";
  OPENFILENAMEW open{};
  open.lStructSize = sizeof open;
  open.hwndOwner = m_hwnd;
  open.lpstrFilter = L"Level files (*.txt)\0*.txt\0";
  open.lpstrFile = path;
  open.nMaxFile = MAX_PATH;
  open.lpstrDefExt = L"txt";
  open.Flags = OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY;
  if (GetSaveFileNameW(&open)) SetDlgItemTextW(m_hwnd, IDC_SAMPLE_FILE_TEXT, path);
}

void SampleDialog::SetLevel(int level, bool updateEdit) {
  m_values.nLevel = Clamp(level, 0, 100);
  SendDlgItemMessageW(m_hwnd, IDC_SAMPLE_LEVEL, TBM_SETPOS, TRUE, m_values.nLevel);
  if (updateEdit) {
    m_settingEdit = true;
    SetDlgItemInt(m_hwnd, IDC_SAMPLE_LEVEL_EDIT, static_cast<UINT>(m_values.nLevel), FALSE);
    m_settingEdit = false;
  }
  UpdateSwatch();
}

void SampleDialog::UpdateSwatch() {
  HWND swatch = GetDlgItem(m_hwnd, IDC_SAMPLE_SWATCH);
  if (!m_values.bEnabled) {
    SetSwatchColor(swatch, RGB(128, 128, 128));
    return;
  }
  BYTE v = static_cast<BYTE>(m_values.nLevel * 255 / 100);
  COLORREF colors[] = {RGB(v, 0, 0), RGB(0, v, 0), RGB(0, 0, v)};
  SetSwatchColor(swatch, colors[m_values.nChannel]);
}

}  // namespace qv::sample
