/*
 * A process-wide count of the GDI and USER handles that the framework's owners
 * currently hold. Wine answers 0 to GetGuiResources, so leak checks count
 * through the owners instead: every owner adds one when it takes a handle and
 * subtracts one when it releases it.
 */
#pragma once

namespace qvfw {

// Number of handles held right now by all UniqueXxx owners of the process.
long OwnedHandleCount();

namespace detail {
void CountHandleAcquired();
void CountHandleReleased();
}  // namespace detail

}  // namespace qvfw
