/*
 * The demo's tests start as the demo does: common controls registered, COM
 * up for the picture files, and the dialog kernel initialised.
 */
#include <windows.h>
#include <commctrl.h>
#include <objbase.h>

#include <gtest/gtest.h>

#include "qv/qvdlgkrn.h"

namespace {

class DemoEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&controls);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    ASSERT_EQ(Q_DlgInit(0), QV_SUCCESS);
  }
  void TearDown() override {
    Q_DlgFree();
    CoUninitialize();
  }
};

const auto* const kEnvironment = ::testing::AddGlobalTestEnvironment(new DemoEnvironment);

}  // namespace
