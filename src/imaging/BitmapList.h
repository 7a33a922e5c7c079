/*
 * An ordered list of bitmaps owned by the kernel. The list stores deep copies: inserting copies the caller's
 * bitmap, reading an item hands out another deep copy, removing hands the stored bitmap itself to the caller
 * (or frees it), and destroying the list frees every bitmap still in it. Handles are checked against a
 * registry of live lists so a stale or forged handle is an error, not a crash.
 */
#pragma once

#include <mutex>
#include <vector>

#include "qv/qvkrn.h"

namespace qv {

class BitmapList {
 public:
  BitmapList() = default;
  ~BitmapList();
  BitmapList(const BitmapList&) = delete;
  BitmapList& operator=(const BitmapList&) = delete;

  // Each returns a QV_ result code; the bitmaps given have passed CheckBitmap.
  int Insert(unsigned int index, const BITMAPHANDLE& b);
  int Remove(unsigned int index, BITMAPHANDLE* out);
  int Get(unsigned int index, BITMAPHANDLE* out) const;
  unsigned int Count() const;

  // The registry of live lists: Register after creation, Lookup before every use, Unregister to destroy.
  static HBITMAPLIST Register(BitmapList* list);
  static BitmapList* Lookup(HBITMAPLIST h);
  static bool Destroy(HBITMAPLIST h);

 private:
  mutable std::mutex m_mutex;
  std::vector<BITMAPHANDLE> m_items;
};

}  // namespace qv
