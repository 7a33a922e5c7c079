/*
 * The bitmap list and its handle registry. A handle is the list object's address, but it is only ever
 * dereferenced after the registry confirms it belongs to a live list.
 */
#include "BitmapList.h"

#include <unordered_set>

#include "Bitmap.h"

namespace qv {
namespace {

std::mutex& RegistryMutex() {
  static std::mutex* m = new std::mutex;
  return *m;
}

std::unordered_set<const void*>& Registry() {
  static auto* lists = new std::unordered_set<const void*>;
  return *lists;
}

}  // namespace

BitmapList::~BitmapList() {
  for (BITMAPHANDLE& b : m_items) ReleaseBitmapMemory(&b);
}

int BitmapList::Insert(unsigned int index, const BITMAPHANDLE& b) {
  std::lock_guard<std::mutex> lock(m_mutex);
  if (index > m_items.size()) return QV_ERROR_INDEX_OUT_OF_RANGE;
  m_items.reserve(m_items.size() + 1);  // may throw before anything was copied
  BITMAPHANDLE copy;
  const int rc = DeepCopyBitmap(b, &copy);
  if (rc != QV_SUCCESS) return rc;
  m_items.insert(m_items.begin() + index, copy);
  return QV_SUCCESS;
}

int BitmapList::Remove(unsigned int index, BITMAPHANDLE* out) {
  std::lock_guard<std::mutex> lock(m_mutex);
  if (index >= m_items.size()) return QV_ERROR_INDEX_OUT_OF_RANGE;
  BITMAPHANDLE item = m_items[index];
  m_items.erase(m_items.begin() + index);
  if (out)
    *out = item;
  else
    ReleaseBitmapMemory(&item);
  return QV_SUCCESS;
}

int BitmapList::Get(unsigned int index, BITMAPHANDLE* out) const {
  std::lock_guard<std::mutex> lock(m_mutex);
  if (index >= m_items.size()) return QV_ERROR_INDEX_OUT_OF_RANGE;
  BITMAPHANDLE copy;
  const int rc = DeepCopyBitmap(m_items[index], &copy);
  if (rc == QV_SUCCESS) *out = copy;
  return rc;
}

unsigned int BitmapList::Count() const {
  std::lock_guard<std::mutex> lock(m_mutex);
  return static_cast<unsigned int>(m_items.size());
}

HBITMAPLIST BitmapList::Register(BitmapList* list) {
  std::lock_guard<std::mutex> lock(RegistryMutex());
  Registry().insert(list);
  return reinterpret_cast<HBITMAPLIST>(list);
}

BitmapList* BitmapList::Lookup(HBITMAPLIST h) {
  std::lock_guard<std::mutex> lock(RegistryMutex());
  return Registry().count(h) ? reinterpret_cast<BitmapList*>(h) : nullptr;
}

bool BitmapList::Destroy(HBITMAPLIST h) {
  {
    std::lock_guard<std::mutex> lock(RegistryMutex());
    if (!Registry().erase(h)) return false;
  }
  delete reinterpret_cast<BitmapList*>(h);
  return true;
}

}  // namespace qv
