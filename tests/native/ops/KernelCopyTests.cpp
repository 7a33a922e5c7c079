/*
 * The 8-bit kernels exist twice, a baseline copy and an AVX2 copy picked at run time. On a processor with
 * AVX2 the formula tests only reach the second, so here every such operation runs both ways on the same
 * image and the results must be identical byte for byte.
 */
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "TestImage.h"
#include "ops/OpsCommon.h"

namespace opstest {
namespace {

#ifdef QV_OPS_AVX2_CLONE
TEST(KernelCopies, BaselineAndAvx2AgreeByteForByte) {
  if (!__builtin_cpu_supports("avx2")) GTEST_SKIP() << "no AVX2 here: only the baseline copy runs";
  const QVBALANCINGRECORD red{28, 0.6, 0.3, 0.1}, green{28, -0.2, 1.1, 0.1}, blue{28, 0, 0.5, 0.7};
  const std::vector<std::pair<const char*, std::function<int(BITMAPHANDLE*)>>> ops = {
      {"intensity", [](BITMAPHANDLE* b) { return Q_ChangeBitmapIntensity(b, 300, 0); }},
      {"gamma", [](BITMAPHANDLE* b) { return Q_GammaCorrectBitmapExt(b, 180, 180, 180, 0); }},
      {"hue", [](BITMAPHANDLE* b) { return Q_ChangeBitmapHue(b, -200, 0); }},
      {"saturation up", [](BITMAPHANDLE* b) { return Q_ChangeBitmapSaturation(b, 700, 0); }},
      {"saturation down", [](BITMAPHANDLE* b) { return Q_ChangeBitmapSaturation(b, -300, 0); }},
      {"balance", [&](BITMAPHANDLE* b) { return Q_BalanceColors(b, &red, &green, &blue, 0); }},
  };
  const Format formats[] = {{"Bgr24", 24, QV_ORDER_BGR, false},
                            {"Rgba32", 32, QV_ORDER_RGB, false},
                            {"Gray8", 8, QV_ORDER_GRAY, false}};
  for (const Format& f : formats) {
    for (const auto& op : ops) {
      if (f.order == QV_ORDER_GRAY && std::string(op.first) == "balance") continue;
      // 301 pixels a row: whole vectors, whole blocks and a tail.
      TestBitmap fast(f, 301, 9, 5), baseline(f, 301, 9, 5);
      ASSERT_EQ(op.second(fast.get()), QV_SUCCESS) << op.first;
      qv::ops::BaselineKernelsOnly() = true;
      const int rc = op.second(baseline.get());
      qv::ops::BaselineKernelsOnly() = false;
      ASSERT_EQ(rc, QV_SUCCESS) << op.first;
      EXPECT_EQ(fast.Pixels(), baseline.Pixels()) << op.first << " on " << f.name;
    }
  }
}
#endif

}  // namespace
}  // namespace opstest
