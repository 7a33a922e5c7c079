/*
 * The registry of kernel allocations. Pixel rows, LUT copies and region masks are allocated here and recorded
 * with their size; CheckBitmap asks the registry whether a descriptor's pointer is a live block large enough
 * for what the descriptor claims. Freeing removes the record first, so a second free of the same pointer is
 * refused instead of corrupting the heap.
 */
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <new>
#include <unordered_map>

#include "Bitmap.h"

namespace qv {
namespace {

class AllocationRegistry {
 public:
  static AllocationRegistry& Instance() {
    static AllocationRegistry* registry = new AllocationRegistry;  // never destroyed: used until process exit
    return *registry;
  }

  uint8_t* Allocate(size_t bytes) {
    if (bytes == 0 || bytes > static_cast<size_t>(PTRDIFF_MAX)) return nullptr;
    void* p = std::calloc(bytes, 1);
    if (!p) return nullptr;
    try {
      std::lock_guard<std::mutex> lock(m_mutex);
      m_blocks[p] = bytes;
    } catch (const std::bad_alloc&) {
      std::free(p);
      return nullptr;
    }
    return static_cast<uint8_t*>(p);
  }

  bool Free(void* p) {
    if (!p) return false;
    {
      std::lock_guard<std::mutex> lock(m_mutex);
      auto it = m_blocks.find(p);
      if (it == m_blocks.end()) return false;
      m_blocks.erase(it);
    }
    std::free(p);
    return true;
  }

  size_t Size(const void* p) {
    if (!p) return 0;
    std::lock_guard<std::mutex> lock(m_mutex);
    auto it = m_blocks.find(p);
    return it == m_blocks.end() ? 0 : it->second;
  }

 private:
  std::mutex m_mutex;
  std::unordered_map<const void*, size_t> m_blocks;
};

}  // namespace

uint8_t* AllocatePixels(size_t bytes) { return AllocationRegistry::Instance().Allocate(bytes); }

bool FreePixels(uint8_t* p) { return AllocationRegistry::Instance().Free(p); }

size_t AllocationSize(const void* p) { return AllocationRegistry::Instance().Size(p); }

}  // namespace qv
