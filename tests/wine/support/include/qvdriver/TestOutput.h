/*
 * Where test programs put their artifacts: ..\test-output\<test>\ relative to
 * the folder of the running executable, so screenshots of build/win/bin's
 * programs land in build/win/test-output.
 */
#pragma once

#include <windows.h>

#include <string>

#include "qvdriver/Outcome.h"

namespace qv::test {

// The full path of `fileName` in the output folder of `testName`; the folder
// is created by the writer (SavePng).
std::wstring TestOutputFile(const std::string& testName, const std::wstring& fileName);

// Captures `window` (frame included) and writes it as `fileName` into the
// output folder of `testName`.
Outcome SaveTestScreenshot(HWND window, const std::string& testName, const std::wstring& fileName);

}  // namespace qv::test
