/*
 * Remap intensity: a caller's table replaces the values of the chosen channels. The table must have one
 * entry per sample value of the format; entries past max give max.
 */
#include "AddressCheck.h"
#include "ChannelLut.h"
#include "OpsCommon.h"
#include "TableLength.h"

namespace qv {
namespace ops {
namespace {

class TableCurve : public ChannelMap {
 public:
  TableCurve(const unsigned int* table, unsigned int channel) : m_table(table), m_channel(channel) {}
  uint32_t Value(int channel, uint32_t v, uint32_t max) const override {
    const bool chosen = channel == kGray || m_channel == QV_REMAP_ALL ||
                        static_cast<unsigned>(channel) + 1 == m_channel;
    if (!chosen) return v;
    const uint32_t out = m_table[v];
    return out > max ? max : out;
  }
  bool SameForAllChannels() const override { return m_channel == QV_REMAP_ALL; }

 private:
  const unsigned int* m_table;
  unsigned int m_channel;
};

}  // namespace
}  // namespace ops
}  // namespace qv

extern "C" int Q_RemapBitmapIntensity(BITMAPHANDLE* pBitmap, const unsigned int* pTable, unsigned int uLength,
                                      unsigned int uChannel, unsigned int uFlags) {
  using namespace qv::ops;
  static constexpr FormatSet kFormats = kAllUnsigned;
  return RunOperation(pBitmap, uFlags, 0, kFormats, [&](const qv::PixelFormat& f) {
    if (uChannel > QV_REMAP_BLUE) return QV_ERROR_INVALID_PARAMETER;
    const int rc = CheckSampleTable(f, pTable, uLength);
    if (rc != QV_SUCCESS) return rc;
    return ApplyChannelMap(*pBitmap, f, TableCurve(pTable, uChannel));
  });
}
