/*
 * The meaning of every result code of qverror.h, as the status bar and the
 * tour page show it next to the number.
 */
#pragma once

#include <string>

namespace qvdemo {

// The code's name and meaning, e.g. "QV_DLG_CANCEL: the user cancelled"; unknown codes say so.
std::wstring DescribeResult(int code);

}  // namespace qvdemo
