/*
 * The demo's main window: the current picture scaled to the window through
 * the kernel's painter, a menu of every dialog the library exports, the
 * choice of how a dialog's result is applied, one step of undo, open and
 * save, and a status bar with the picture's size, depth and the last result.
 */
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "DialogLibrary.h"
#include "DialogRunner.h"
#include "OwnedBitmap.h"

namespace qvdemo {

class DemoWindow {
 public:
  DemoWindow(HINSTANCE instance, const DialogLibrary& library, std::wstring samplePath);
  DemoWindow(const DemoWindow&) = delete;
  DemoWindow& operator=(const DemoWindow&) = delete;

  // Creates and shows the window with `imagePath` (empty: the sample photograph, else the chart).
  bool Create(const std::wstring& imagePath, int showCommand);
  HWND Handle() const { return m_window; }
  HACCEL Accelerators() const { return m_accelerators; }
  const BITMAPHANDLE* Picture() const { return m_image.Get(); }

 private:
  static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

  void OnCreate();
  void OnCommand(int id);
  void OnPaint();
  // Draws the picture; shared by WM_PAINT and WM_PRINTCLIENT, so captures see what the screen shows.
  void Paint(HDC dc);
  void OnSize();
  void OnDpiChanged(const RECT* suggested);

  void FillDialogMenu();
  void RunCatalogDialog(size_t index);
  void OpenImage();
  void SaveImageAs();
  void LoadStartImage(const std::wstring& path);
  void ReplaceImage(OwnedBitmap&& image, int result, const std::wstring& what);
  void Undo();
  void SetMode(ApplyMode mode);
  void UpdateStatus();
  RECT ImageArea() const;

  HINSTANCE m_instance;
  const DialogLibrary& m_library;
  std::wstring m_samplePath;
  HWND m_window = nullptr;
  HWND m_status = nullptr;
  HACCEL m_accelerators = nullptr;
  OwnedBitmap m_image;
  OwnedBitmap m_undo;
  bool m_canUndo = false;
  ApplyMode m_mode = ApplyMode::ThroughDialog;
  int m_lastResult = QV_SUCCESS;
  std::wstring m_lastAction = L"ready";
  std::vector<size_t> m_dialogCommands;  // catalog index of each dialog menu command
};

}  // namespace qvdemo
