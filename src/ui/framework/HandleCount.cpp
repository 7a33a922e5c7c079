/*
 * The counter behind OwnedHandleCount. Atomic because an owner may be released
 * on a worker thread (a preview rendered off the UI thread frees its DC there).
 */
#include "HandleCount.h"

#include <atomic>

namespace qvfw {
namespace {
std::atomic<long> g_ownedHandles{0};
}

long OwnedHandleCount() { return g_ownedHandles.load(); }

namespace detail {
void CountHandleAcquired() { ++g_ownedHandles; }
void CountHandleReleased() { --g_ownedHandles; }
}  // namespace detail

}  // namespace qvfw
