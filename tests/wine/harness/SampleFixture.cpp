/*
 * Helpers shared by the driver's test files.
 */
#include "SampleFixture.h"

#include <cstring>

namespace qv::test {

QVSAMPLEDLGPARAMS SampleDefaults() {
  QVSAMPLEDLGPARAMS params{};
  params.uStructSize = sizeof params;
  params.nLevel = 25;
  params.nChannel = QV_SAMPLE_CHANNEL_RED;
  params.bEnabled = TRUE;
  return params;
}

RunResult DriveSample(QVSAMPLEDLGPARAMS& params, const Script& script, const RunOptions& options) {
  DialogDriver driver;
  return driver.Run([&params] { return Q_ShowSampleDialog(nullptr, &params); }, script, options);
}

bool SameParams(const QVSAMPLEDLGPARAMS& a, const QVSAMPLEDLGPARAMS& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

bool FailureMentions(const RunResult& result, const std::vector<const char*>& fragments) {
  for (const std::string& failure : result.failures) {
    bool all = true;
    for (const char* fragment : fragments) all = all && failure.find(fragment) != std::string::npos;
    if (all) return true;
  }
  return false;
}

}  // namespace qv::test
