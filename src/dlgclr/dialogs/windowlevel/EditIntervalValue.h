/*
 * The value the edit-interval dialog hands back on OK: the typed number clamped into the marker's bounds, the
 * upper bound tested first. With bounds that cross (minimum above maximum) a value above the maximum so takes
 * the maximum, and one at or below the maximum but below the minimum takes the minimum.
 */
#pragma once

namespace qvwl {

int ClampIntervalValue(int value, int minimum, int maximum);

}  // namespace qvwl
