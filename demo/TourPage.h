/*
 * The tour's page: index.html with one row per dialog (its screenshot, the
 * values chosen, the pictures before and after, the result code and its
 * meaning, and any failure), written into the tour folder.
 */
#pragma once

#include <string>
#include <vector>

#include "Tour.h"

namespace qvdemo {

// The page as UTF-8 text; `sampleNote` says where the picture came from.
std::string TourPageHtml(const std::vector<TourRow>& rows, const std::wstring& sampleNote);
// Writes folder\index.html; true on success.
bool WriteTourPage(const std::wstring& folder, const std::vector<TourRow>& rows, const std::wstring& sampleNote);

}  // namespace qvdemo
