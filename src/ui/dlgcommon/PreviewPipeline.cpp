/*
 * CPreviewPipeline: source building and rendering.
 */
#include "PreviewPipeline.h"

#include <algorithm>
#include <cmath>

#include "qv/qvimgops.h"

namespace {

// At a fixed zoom the source reaches this share of the view beyond each edge,
// so small pans need no rebuild.
constexpr double kMarginShare = 0.25;

bool Contains(const RECT& outer, const RECT& inner) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

int ScaledSize(int length, double scale) {
  return std::max(1, std::min(length, static_cast<int>(std::lround(length * scale))));
}

}  // namespace

void CPreviewPipeline::SetImage(const BITMAPHANDLE* bitmap) {
  // A descriptor the kernel does not accept (unmapped, pixels not a live
  // allocation of the stated size) is never read.
  m_image = bitmap && Q_IsValidBitmap(bitmap, 0) == QV_SUCCESS ? bitmap : nullptr;
  Invalidate();
}

std::shared_ptr<const BITMAPHANDLE> CPreviewPipeline::SharedSource() const {
  if (!HasSource()) return nullptr;
  return std::shared_ptr<const BITMAPHANDLE>(m_source, m_source->GetHandle());
}

void CPreviewPipeline::Invalidate() {
  m_source.reset();
  m_sourceRect = RECT{};
  m_sourceScale = 0;
  m_sourceCover = qvpreview::RegionCover::kWhole;
}

int CPreviewPipeline::Reduce(const BITMAPHANDLE& from, const RECT& region, int width, int height, CQVBitmap* out,
                             qvpreview::RegionCover* cover) const {
  // The kernel's reduction keeps the window-level table and carries the region over to the smaller grid; a
  // region that does not reach that grid means no pixel there may change.
  BITMAPHANDLE reduced{};
  const int rc = Q_ReduceBitmapRegion(&from, &region, width, height, &reduced, sizeof(BITMAPHANDLE), 0);
  if (rc != QV_SUCCESS) return rc;
  if (Q_BitmapHasRgn(&from, 0) != 1) {
    *cover = qvpreview::RegionCover::kWhole;
  } else {
    *cover = Q_BitmapHasRgn(&reduced, 0) == 1 ? qvpreview::RegionCover::kPart : qvpreview::RegionCover::kNone;
  }
  out->TakeOver(&reduced);
  return QV_SUCCESS;
}

bool CPreviewPipeline::Prepare(const PreviewView& view) {
  if (!m_image) return false;
  const double scale = std::min(1.0, view.scale);
  const RECT full{0, 0, m_image->nWidth, m_image->nHeight};
  RECT wanted = view.visible;
  if (!IntersectRect(&wanted, &wanted, &full)) return false;
  if (HasSource() && std::fabs(scale - m_sourceScale) < 1e-9 && Contains(m_sourceRect, wanted)) return false;

  RECT region = wanted;
  const bool wholeImage = EqualRect(&wanted, &full);
  if (!wholeImage) {
    const int marginX = static_cast<int>((wanted.right - wanted.left) * kMarginShare) + 1;
    const int marginY = static_cast<int>((wanted.bottom - wanted.top) * kMarginShare) + 1;
    InflateRect(&region, marginX, marginY);
    IntersectRect(&region, &region, &full);
  }
  const int width = ScaledSize(region.right - region.left, scale);
  const int height = ScaledSize(region.bottom - region.top, scale);
  Invalidate();
  auto built = std::make_shared<CQVBitmap>();
  m_lastResult = Reduce(*m_image, region, width, height, built.get(), &m_sourceCover);
  if (m_lastResult != QV_SUCCESS) {
    Invalidate();
    return false;
  }
  m_source = std::move(built);
  m_sourceRect = region;
  m_sourceScale = scale;
  return true;
}

int CPreviewPipeline::Render(const Effect& effect, bool neighbourhood, CQVBitmap* out) {
  if (!HasSource() || !out) {
    m_lastResult = QV_ERROR_BITMAP_NOT_ALLOCATED;
    return 0;
  }
  CQVBitmap work;
  qvpreview::RegionCover cover = m_sourceCover;
  const BITMAPHANDLE& source = *m_source->GetHandle();
  const bool reduced = source.nWidth != m_sourceRect.right - m_sourceRect.left ||
                       source.nHeight != m_sourceRect.bottom - m_sourceRect.top;
  if (neighbourhood && reduced) {
    // Full resolution over the covered region: a crop is a reduction by one.
    const int rc = Reduce(*m_image, m_sourceRect, m_sourceRect.right - m_sourceRect.left,
                          m_sourceRect.bottom - m_sourceRect.top, &work, &cover);
    if (rc != QV_SUCCESS) {
      m_lastResult = rc;
      return 0;
    }
  } else if (!work.Copy(source)) {
    m_lastResult = work.LastResult();
    return 0;
  }
  const int result = effect ? effect(work) : 1;
  m_lastResult = work.LastResult();
  if (!result) return 0;
  if (cover == qvpreview::RegionCover::kNone) {
    // The region lies wholly outside what the view covers: the effect ran
    // for its result, but none of these pixels would change at OK.
    CQVBitmap unchanged;
    if (!unchanged.Copy(source)) {
      m_lastResult = unchanged.LastResult();
      return 0;
    }
    *out = std::move(unchanged);
    return result;
  }
  if (neighbourhood && reduced) {
    CQVBitmap shown;
    const BITMAPHANDLE& done = *work.GetHandle();
    qvpreview::RegionCover shownCover;
    const int rc = Reduce(done, RECT{0, 0, done.nWidth, done.nHeight}, source.nWidth, source.nHeight, &shown,
                          &shownCover);
    if (rc != QV_SUCCESS) {
      m_lastResult = rc;
      return 0;
    }
    *out = std::move(shown);
  } else {
    *out = std::move(work);
  }
  return result;
}
