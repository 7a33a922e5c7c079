/*
 * The entries of a value combo's drop-down list, computed from its range,
 * its list step and its computation method. Separate from the window so the
 * rules can be read (and tested) in one place.
 */
#pragma once

#include <vector>

namespace qvctl {

enum ValueListMethod {
  // minimum, minimum + step, ..., and the maximum; a step of 0 picks one that
  // gives at most kAutoListEntries entries.
  kValueListLinear = 0,
  // minimum, then the powers of two above it, and the maximum: suits ranges
  // that span many orders of magnitude, such as a tile size up to the image
  // width.
  kValueListDoubling = 1,
};

constexpr int kAutoListEntries = 64;
constexpr int kMaxListEntries = 1000;  // beyond this a list is of no use to anyone

// Ascending, without duplicates; a reversed range is read the right way round.
std::vector<int> ComputeValueList(int minimum, int maximum, int step, int method);

}  // namespace qvctl
