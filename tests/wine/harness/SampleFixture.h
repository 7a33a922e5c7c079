/*
 * Shared helpers of the driver's tests: the sample's starting values and one
 * call that shows the sample dialog under a script.
 */
#pragma once

#include <vector>
#include <string>

#include "QvSampleDlg.h"
#include "qvdriver/DialogDriver.h"

namespace qv::test {

// Level 25 on the red channel, applied, no note.
QVSAMPLEDLGPARAMS SampleDefaults();

RunResult DriveSample(QVSAMPLEDLGPARAMS& params, const Script& script, const RunOptions& options = {});

bool SameParams(const QVSAMPLEDLGPARAMS& a, const QVSAMPLEDLGPARAMS& b);

// True when some failure message contains every one of the fragments.
bool FailureMentions(const RunResult& result, const std::vector<const char*>& fragments);

}  // namespace qv::test
