/*
 * CQVBeforeAfterDlg: views, toolbar, preview rendering and the zoom, split
 * and Apply behaviour of the before/after dialogs.
 *
 * Rendering is asynchronous on purpose: DoUpdateValues posts one private
 * message and marks a render as wanted; further changes before that message
 * arrives only find the mark set. The render then runs with the dialog's
 * values of that moment, so a dragged slider shows its newest position and
 * never a queue of old ones.
 */
#include "QVBeforeAfterDlg.h"

#include <algorithm>
#include <cmath>

#include "PreviewPipeline.h"
#include "PreviewToolbar.h"
#include "QVImageViewer.h"
#include "qv/qvdlgkrn.h"

namespace {

constexpr UINT kMsgRender = WM_APP + 0x3A1;
constexpr UINT kMsgLayout = WM_APP + 0x3A2;
constexpr int kToolbarGap = 2;

bool IsTextEntry(HWND window) {
  wchar_t name[32] = {};
  GetClassNameW(window, name, 32);
  return _wcsicmp(name, L"Edit") == 0 || _wcsicmp(name, L"RichEdit20W") == 0;
}

// The one place a pane is put at fit or at a fixed zoom.
void ShowZoom(CQVImageViewer& view, bool fit, int zoomPercent) {
  view.SetZoomToFit(fit ? 1 : 0);
  if (!fit) view.SetZoom(zoomPercent);
}

// The failure text with its first "%d" replaced by the code. Replaced by
// hand: a host's override of the text is no format string to trust.
std::wstring WithCode(std::wstring text, int code) {
  const size_t at = text.find(L"%d");
  if (at != std::wstring::npos) text.replace(at, 2, std::to_wstring(code));
  return text;
}

CQVImageViewer::Display Shared(const std::shared_ptr<CQVBitmap>& bitmap) {
  if (!bitmap) return nullptr;
  return CQVImageViewer::Display(bitmap, bitmap->GetHandle());
}

RECT ChildRect(HWND dialog, HWND child) {
  RECT r{};
  GetWindowRect(child, &r);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&r), 2);
  return r;
}

}  // namespace

CQVBeforeAfterDlg::CQVBeforeAfterDlg(UINT templateId, qvfw::CWnd* parent, BITMAPHANDLE* bitmap, unsigned dialogId,
                                     unsigned /*reserved*/, int /*flags*/)
    : CQVBaseDialog(templateId, parent, dialogId),
      m_pBitmap(bitmap),
      m_beforeView(std::make_unique<CQVImageViewer>()),
      m_afterView(std::make_unique<CQVImageViewer>()),
      m_pipeline(std::make_unique<CPreviewPipeline>()),
      m_toolbar(std::make_unique<CPreviewToolbar>()) {}

CQVBeforeAfterDlg::~CQVBeforeAfterDlg() = default;

CQVImageViewer& CQVBeforeAfterDlg::GetBeforeView() { return *m_beforeView; }
CQVImageViewer& CQVBeforeAfterDlg::GetAfterView() { return *m_afterView; }
HWND CQVBeforeAfterDlg::GetPreviewToolbar() const { return m_toolbar->Handle(); }

void CQVBeforeAfterDlg::SetPaneLabelIds(int beforeLabelId, int afterLabelId) {
  m_beforeLabelId = beforeLabelId;
  m_afterLabelId = afterLabelId;
}

const CQVBitmap* CQVBeforeAfterDlg::GetAfterBitmap() const {
  return m_after && m_after->IsAllocated() ? m_after.get() : nullptr;
}

const CQVBitmap* CQVBeforeAfterDlg::GetDisplaySource() const {
  return m_pipeline->HasSource() ? &m_pipeline->Source() : nullptr;
}

RECT CQVBeforeAfterDlg::GetDisplaySourceRect() const {
  return m_pipeline->HasSource() ? m_pipeline->SourceRect() : RECT{};
}

void CQVBeforeAfterDlg::EnableProcessing(int enable) {
  m_processing = enable != 0;
  if (m_processing && m_hWnd) DoUpdateValues();
}

void CQVBeforeAfterDlg::SetZoomToFit(int fit) {
  m_zoomToFit = fit != 0;
  if (!m_hWnd) m_initialZoomToFit = m_zoomToFit;
  if (m_hWnd && m_beforeView->m_hWnd) ApplyViewState(m_zoomToFit, m_afterView->GetZoom());
}

int CQVBeforeAfterDlg::GetZoomToFit() const { return m_zoomToFit ? 1 : 0; }

void CQVBeforeAfterDlg::SetZoomKeyEnabled(int enable) {
  m_zoomKeys = enable != 0;
  m_beforeView->SetMouseWheelEnabled(enable);
  m_afterView->SetMouseWheelEnabled(enable);
}

void CQVBeforeAfterDlg::UseApplyButton(int use) {
  m_useApply = use != 0;
  if (!m_hWnd) return;
  if (HWND apply = GetDlgItemHandle(kApplyButtonId)) ::ShowWindow(apply, m_useApply ? SW_SHOW : SW_HIDE);
  if (!m_useApply && m_stale) RenderNow();
}

int CQVBeforeAfterDlg::PreEndDialog(int ok) {
  if (!ok) return 1;
  // A render still waiting is made now, so the preview's last result is
  // the newest value's. A failed preview does not keep the dialog open: OK
  // runs the effect on the caller's bitmap itself and reports that result,
  // and a dialog that could only be cancelled would trap the user.
  if (m_renderPosted && m_processing && !m_useApply) {
    m_renderPosted = false;
    RenderNow();
  }
  return 1;
}

void CQVBeforeAfterDlg::DoUpdateValues() {
  if (!m_processing || !m_hWnd) return;
  if (m_useApply) {
    m_stale = true;
    ShowRendered();
    return;
  }
  if (m_renderPosted) return;
  m_renderPosted = PostMessage(kMsgRender) != FALSE;
  if (!m_renderPosted) RenderNow();
}

int CQVBeforeAfterDlg::PrepareEffectBitmap(CQVBitmap&) { return 1; }

void CQVBeforeAfterDlg::UpdateUserDocBitmap(BITMAPHANDLE*) {}

void CQVBeforeAfterDlg::DoUpdateViews() {
  m_pipeline->Invalidate();
  UpdateViews(true);
}

void CQVBeforeAfterDlg::UpdateViews(bool forceRender) {
  if (!m_hWnd || !m_afterView->m_hWnd || !m_pipeline->HasImage() || !PanesShown()) return;
  const RECT visible = m_afterView->VisibleContentRect();
  const bool rebuilt = m_pipeline->Prepare(PreviewView{visible, m_afterView->GetScale()});
  if (!m_pipeline->HasSource()) {
    // The rebuild failed: the panes let go of the old source and the after
    // pane says why.
    m_afterValid = false;
    m_failure = m_pipeline->LastResult();
    ShowRendered();
    return;
  }
  if (rebuilt) m_afterValid = false;
  if ((rebuilt || forceRender) && m_processing) {
    // With Apply in use only the opening render is automatic; later ones
    // wait for the button.
    if (m_useApply && m_renderCount > 0)
      m_stale = true;
    else
      RenderNow();
  }
  ShowRendered();
}

bool CQVBeforeAfterDlg::PanesShown() const {
  for (const CQVImageViewer* view : {m_beforeView.get(), m_afterView.get()})
    if (view->m_hWnd && (::GetWindowLongW(view->m_hWnd, GWL_STYLE) & WS_VISIBLE)) return true;
  return false;
}

void CQVBeforeAfterDlg::RenderNow() {
  if (!m_processing || !m_pipeline->HasSource()) return;
  auto rendered = std::make_shared<CQVBitmap>();
  const int result = m_pipeline->Render([this](CQVBitmap& copy) { return PrepareEffectBitmap(copy); },
                                        IsNeighbourhoodEffect(), rendered.get());
  ++m_renderCount;
  m_lastPreviewResult = result ? 1 : 0;
  m_afterValid = result != 0;
  m_stale = false;
  if (result) {
    m_after = std::move(rendered);
    m_failure = QV_SUCCESS;
  } else {
    // An effect that fails without a kernel code is reported as 0.
    const int code = m_pipeline->LastResult();
    m_failure = code == QV_SUCCESS ? 0 : code;
  }
  ShowRendered();
}

std::wstring CQVBeforeAfterDlg::AfterPaneNote() const {
  // Read each time: the host may change the texts while the dialog is open.
  if (m_useApply && m_stale) return GetDlgString(QVDLGSTR_PREVIEW_OUT_OF_DATE);
  if (m_processing && m_failure != QV_SUCCESS) return WithCode(GetDlgString(QVDLGSTR_PREVIEW_FAILED), m_failure);
  return std::wstring();
}

void CQVBeforeAfterDlg::ShowRendered() {
  if (!m_afterView->m_hWnd) return;
  const CQVImageViewer::Display source = m_pipeline->SharedSource();
  const RECT rect = m_pipeline->SourceRect();
  const bool haveAfter = source && m_afterValid && m_after && m_processing;
  m_beforeView->SetDisplay(source, rect);
  m_afterView->SetDisplay(m_showEffect && haveAfter ? Shared(m_after) : source, rect);
  m_afterView->SetSplitDisplay(m_split ? source : nullptr, rect);
  m_afterView->SetNote(AfterPaneNote());
  m_afterView->Invalidate(FALSE);
  m_afterView->UpdateWindow();
  m_beforeView->Invalidate(FALSE);
}

void CQVBeforeAfterDlg::OnZoomToNormalBtnClicked() { ApplyViewState(false, 100); }

void CQVBeforeAfterDlg::OnZoomToFitBtnClicked() { ApplyViewState(true, m_afterView->GetZoom()); }

void CQVBeforeAfterDlg::OnApplyBtnClicked() {
  if (!m_processing) return;
  m_renderPosted = false;
  RenderNow();
}

void CQVBeforeAfterDlg::ApplyViewState(bool fit, int zoomPercent) {
  SetViewsZoom(fit, zoomPercent);
  UpdateViews(false);
}

void CQVBeforeAfterDlg::SetViewsZoom(bool fit, int zoomPercent) {
  m_zoomToFit = fit;
  if (!m_afterView->m_hWnd) return;
  m_syncing = true;
  for (CQVImageViewer* view : {m_afterView.get(), m_beforeView.get()}) ShowZoom(*view, fit, zoomPercent);
  m_beforeView->SetScrollPosition(m_afterView->GetScrollPosition());
  m_syncing = false;
}

void CQVBeforeAfterDlg::StepZoom(int direction) {
  CQVImageViewer& view = *m_afterView;
  const bool moved = direction > 0 ? view.ZoomIn() : view.ZoomOut();
  if (moved) SyncViews(view);
}

void CQVBeforeAfterDlg::SyncViews(CQVImageViewer& from) {
  if (m_syncing) return;
  m_syncing = true;
  CQVImageViewer& to = &from == m_afterView.get() ? *m_beforeView : *m_afterView;
  m_zoomToFit = from.GetZoomToFit() != 0;
  ShowZoom(to, m_zoomToFit, from.GetZoom());
  to.SetScrollPosition(from.GetScrollPosition());
  m_syncing = false;
  UpdateViews(false);
}

void CQVBeforeAfterDlg::ToggleSplit() {
  m_split = !m_split;
  m_toolbar->SetChecked(kCmdSplitView, m_split);
  ShowRendered();
}

void CQVBeforeAfterDlg::ToggleEffect() {
  m_showEffect = !m_showEffect;
  m_toolbar->SetChecked(kCmdEffectToggle, m_showEffect);
  ShowRendered();
}

void CQVBeforeAfterDlg::ResetView() {
  m_split = false;
  m_showEffect = true;
  m_toolbar->SetChecked(kCmdSplitView, false);
  m_toolbar->SetChecked(kCmdEffectToggle, true);
  m_afterView->SetSplitPos(-1);
  m_afterView->SetScrollPosition(POINT{0, 0});
  ApplyViewState(m_initialZoomToFit, 100);
  ShowRendered();
}

bool CQVBeforeAfterDlg::HandleZoomKey(UINT key, bool isChar) {
  if (!isChar) {
    switch (key) {
      case VK_ADD: key = '+'; break;
      case VK_SUBTRACT: key = '-'; break;
      case VK_MULTIPLY: key = '*'; break;
      case VK_DIVIDE: key = '/'; break;
      default: return false;
    }
  }
  switch (key) {
    case '+': StepZoom(1); return true;
    case '-': StepZoom(-1); return true;
    case '*': OnZoomToNormalBtnClicked(); return true;
    case '/': OnZoomToFitBtnClicked(); return true;
    default: return false;
  }
}

BOOL CQVBeforeAfterDlg::PreTranslateMessage(MSG* msg) {
  if (m_zoomKeys && m_hWnd && (msg->message == WM_KEYDOWN || msg->message == WM_CHAR) &&
      (msg->hwnd == m_hWnd || ::IsChild(m_hWnd, msg->hwnd)) && !IsTextEntry(msg->hwnd) && m_afterView->m_hWnd &&
      m_pipeline->HasImage()) {
    if (HandleZoomKey(static_cast<UINT>(msg->wParam), msg->message == WM_CHAR)) return TRUE;
  }
  return CQVBaseDialog::PreTranslateMessage(msg);
}

BOOL CQVBeforeAfterDlg::OnInitDialog() {
  const BOOL result = CQVBaseDialog::OnInitDialog();
  m_pipeline->SetImage(m_pBitmap);
  CreateViews();
  CreateToolbar();
  if (HWND apply = GetDlgItemHandle(kApplyButtonId)) ::ShowWindow(apply, m_useApply ? SW_SHOW : SW_HIDE);
  // The dialog's own OnInitDialog still decides which buttons and views
  // stay; the layout and the first render wait until it has.
  PostMessage(kMsgLayout);
  return result;
}

void CQVBeforeAfterDlg::CreateViews() {
  struct Pane {
    int id;
    CQVImageViewer* view;
  };
  for (const Pane& pane : {Pane{kBeforeViewId, m_beforeView.get()}, Pane{kAfterViewId, m_afterView.get()}}) {
    HWND placeholder = GetDlgItemHandle(pane.id);
    RECT rect{0, 0, 0, 0};
    DWORD visible = 0;
    if (placeholder) {
      rect = ChildRect(m_hWnd, placeholder);
      visible = ::GetWindowLongW(placeholder, GWL_STYLE) & WS_VISIBLE;
      // The placeholder gives up its id; the view takes it and its place in
      // the tab order.
      ::SetWindowLongPtrW(placeholder, GWLP_ID, 0);
    }
    pane.view->Create(WS_CHILD | WS_TABSTOP | WS_BORDER | visible, rect, m_hWnd, static_cast<UINT>(pane.id));
    if (placeholder) {
      ::SetWindowPos(pane.view->m_hWnd, placeholder, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
      ::DestroyWindow(placeholder);
    }
    if (const BITMAPHANDLE* image = m_pipeline->Image()) pane.view->SetContentSize(image->nWidth, image->nHeight);
    ShowZoom(*pane.view, m_zoomToFit, 100);
  }
  m_viewArea[0] = ChildRect(m_hWnd, m_beforeView->m_hWnd);
  m_viewArea[1] = ChildRect(m_hWnd, m_afterView->m_hWnd);
}

void CQVBeforeAfterDlg::CreateToolbar() {
  const HFONT font = GetFont();
  m_toolbar->Create(m_hWnd, kToolbarId, font,
                    CPreviewToolbar::Commands{kCmdZoomNormal, kCmdZoomFit, kCmdSplitView, kCmdEffectToggle,
                                              kCmdResetView});
  PlaceToolbarInTabOrder();
}

void CQVBeforeAfterDlg::PlaceToolbarInTabOrder() {
  // The toolbar works on the panes, so Tab reaches it before the row of
  // buttons that ends the dialog: it goes just before the first of them.
  HWND toolbar = m_toolbar->Handle();
  if (!toolbar) return;
  for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
    const int id = ::GetDlgCtrlID(child);
    if (child == toolbar || (id != IDOK && id != IDCANCEL && id != kHelpButtonId && id != kApplyButtonId)) continue;
    HWND previous = ::GetWindow(child, GW_HWNDPREV);
    ::SetWindowPos(toolbar, previous ? previous : HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return;
  }
}

void CQVBeforeAfterDlg::SetDialogStrings() {
  CQVBaseDialog::SetDialogStrings();
  SetItemString(m_afterLabelId, kStringAfter);
  SetItemString(m_beforeLabelId, kStringBefore);
}

void CQVBeforeAfterDlg::Layout() {
  HWND toolbar = m_toolbar->Handle();
  const bool toolbarShown = toolbar && (::GetWindowLongW(toolbar, GWL_STYLE) & WS_VISIBLE) &&
                            m_toolbar->ButtonCount() > 0;
  RECT before = m_viewArea[0];
  RECT after = m_viewArea[1];
  if (toolbarShown) {
    // Right-aligned over the after pane; both panes give up the same height
    // so they stay the same size.
    const SIZE needed = m_toolbar->NeededSize();
    const int top = std::min(before.top, after.top);
    ::SetWindowPos(toolbar, nullptr, after.right - needed.cx, top, needed.cx, needed.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    const int shift = needed.cy + kToolbarGap;
    before.top += shift;
    after.top += shift;
  }
  for (auto [view, r] : {std::pair<CQVImageViewer*, RECT>{m_beforeView.get(), before},
                         std::pair<CQVImageViewer*, RECT>{m_afterView.get(), after}})
    ::SetWindowPos(view->m_hWnd, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                   SWP_NOZORDER | SWP_NOACTIVATE);
  SetViewsZoom(m_zoomToFit, 100);
  DoUpdateViews();
}

LRESULT CQVBeforeAfterDlg::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kMsgRender:
      if (m_renderPosted) {
        m_renderPosted = false;
        RenderNow();
      }
      return 0;
    case kMsgLayout: Layout(); return 0;
    default: return CQVBaseDialog::WindowProc(message, wParam, lParam);
  }
}

BOOL CQVBeforeAfterDlg::OnCommand(WPARAM wParam, LPARAM lParam) {
  const int id = LOWORD(wParam);
  const int code = HIWORD(wParam);
  if (code == BN_CLICKED || code == 0) {
    switch (id) {
      case kCmdZoomNormal: OnZoomToNormalBtnClicked(); return TRUE;
      case kCmdZoomFit: OnZoomToFitBtnClicked(); return TRUE;
      case kCmdSplitView: ToggleSplit(); return TRUE;
      case kCmdEffectToggle: ToggleEffect(); return TRUE;
      case kCmdResetView: ResetView(); return TRUE;
      case kApplyButtonId:
        if (code == BN_CLICKED) {
          OnApplyBtnClicked();
          return TRUE;
        }
        break;
      default: break;
    }
  }
  return CQVBaseDialog::OnCommand(wParam, lParam);
}

BOOL CQVBeforeAfterDlg::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
  const NMHDR* header = reinterpret_cast<const NMHDR*>(lParam);
  if (header && header->code == CQVScrollWnd::kNotifyViewChanged &&
      (header->idFrom == kBeforeViewId || header->idFrom == kAfterViewId)) {
    SyncViews(header->idFrom == kAfterViewId ? *m_afterView : *m_beforeView);
    *result = 0;
    return TRUE;
  }
  return CQVBaseDialog::OnNotify(wParam, lParam, result);
}
