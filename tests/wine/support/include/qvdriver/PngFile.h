/*
 * Writes captured pixels to a PNG file through the Windows Imaging Component,
 * creating the folders on the way.
 */
#pragma once

#include <string>

#include "qvdriver/Image.h"
#include "qvdriver/Outcome.h"

namespace qv::test {

Outcome SavePng(const Image& image, const std::wstring& path);

}  // namespace qv::test
