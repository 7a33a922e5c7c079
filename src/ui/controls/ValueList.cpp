/*
 * Value list computation in 64-bit arithmetic, so ranges up to the ends of
 * int never overflow while stepping.
 */
#include "ValueList.h"

#include <algorithm>

namespace qvctl {
namespace {

std::vector<int> LinearList(long long minimum, long long maximum, long long step) {
  const long long span = maximum - minimum;
  if (step <= 0) step = std::max(1LL, (span + kAutoListEntries - 2) / (kAutoListEntries - 1));
  if (span / step + 1 > kMaxListEntries) step = (span + kMaxListEntries - 2) / (kMaxListEntries - 1);
  std::vector<int> values;
  for (long long v = minimum; v < maximum; v += step) values.push_back(static_cast<int>(v));
  values.push_back(static_cast<int>(maximum));
  return values;
}

std::vector<int> DoublingList(long long minimum, long long maximum) {
  std::vector<int> values{static_cast<int>(minimum)};
  if (minimum < 0 && maximum > 0) values.push_back(0);
  long long power = 1;
  while (power <= minimum) power *= 2;
  for (; power < maximum; power *= 2) values.push_back(static_cast<int>(power));
  if (maximum != minimum) values.push_back(static_cast<int>(maximum));
  return values;
}

}  // namespace

std::vector<int> ComputeValueList(int minimum, int maximum, int step, int method) {
  long long low = std::min(minimum, maximum);
  long long high = std::max(minimum, maximum);
  return method == kValueListDoubling ? DoublingList(low, high) : LinearList(low, high, step);
}

}  // namespace qvctl
