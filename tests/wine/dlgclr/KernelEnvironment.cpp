/*
 * Every test program of the color dialogs starts with the dialog kernel
 * initialised, as a host must; the tests that check the not-ready answer free
 * it and initialise it again themselves.
 */
#include <gtest/gtest.h>

#include "qv/qvdlgkrn.h"

namespace {

class DialogKernelEnvironment : public ::testing::Environment {
 public:
  void SetUp() override { ASSERT_EQ(Q_DlgInit(0), QV_SUCCESS); }
  void TearDown() override { Q_DlgFree(); }
};

const auto* const kEnvironment = ::testing::AddGlobalTestEnvironment(new DialogKernelEnvironment);

}  // namespace
