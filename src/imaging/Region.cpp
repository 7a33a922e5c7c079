/*
 * Builds the row and span view of a checked bitmap's region. The descriptor has already been validated, so
 * the rectangle lies inside the bitmap and the mask covers it.
 */
#include "Region.h"

namespace qv {

RegionSpans::RegionSpans(const BITMAPHANDLE& b) {
  if (b.uRgnFlags & QV_RGN_SET) {
    m_hasRegion = true;
    m_left = b.rcRgn.left;
    m_top = b.rcRgn.top;
    m_right = b.rcRgn.right;
    m_bottom = b.rcRgn.bottom;
    m_mask = b.pRgnMask;
    m_maskStride = b.nRgnMaskStride;
  } else {
    m_right = b.nWidth;
    m_bottom = b.nHeight;
  }
}

bool RegionSpans::Contains(int x, int y) const {
  if (x < m_left || x >= m_right || y < m_top || y >= m_bottom) return false;
  if (!m_mask) return true;
  return m_mask[static_cast<size_t>(y - m_top) * m_maskStride + (x - m_left)] != 0;
}

}  // namespace qv
