// Helpers of the gray conversion and colour balance dialog tests (see GrayFixture.h).
#include "GrayFixture.h"

namespace qv::test {

Applied ApplyToCopy(const TestBitmap& source, const std::function<int(BITMAPHANDLE*)>& operation) {
  TestBitmap copy;
  EXPECT_EQ(Q_CopyBitmap(copy.Get(), sizeof(BITMAPHANDLE), source.Get(), 0), QV_SUCCESS);
  EXPECT_EQ(operation(copy.Get()), QV_SUCCESS);
  return {StripeColors(copy), copy.Pixels()};
}

}  // namespace qv::test
