/*
 * CPreviewPipeline: what a preview pane shows, made as cheaply as the view
 * allows. The display source is the part of the caller's bitmap the view
 * covers, reduced to the pane's pixel size (whole image at fit zoom; the
 * visible region plus a margin at a fixed zoom), in the bitmap's own format.
 * It is rebuilt only when the view leaves it or its scale changes, so a value
 * change costs a copy of that small source and one effect run over it.
 * Effects that depend on their neighbourhood run at full resolution over the
 * source's region instead and are reduced afterwards, so the preview shows
 * what the same effect does to the whole image. A region of the caller's
 * bitmap goes with the source (mapped to its grid), so the effect changes
 * the pixels OK will change and no others. The caller's bitmap is only ever
 * read.
 */
#pragma once

#include <windows.h>

#include <functional>
#include <memory>

#include "QVBitmap.h"

namespace qvpreview {

// What a display source's region says about the caller's region.
enum class RegionCover {
  kWhole,  // no region: every pixel may change
  kPart,   // the display bitmap carries the region mapped to its grid
  kNone,   // the region misses the display bitmap: no pixel may change
};

}  // namespace qvpreview

struct PreviewView {
  RECT visible;  // the image rectangle the pane shows (image pixels, clipped to the image)
  double scale;  // pane pixels per image pixel
};

class CPreviewPipeline {
 public:
  using Effect = std::function<int(CQVBitmap&)>;

  // The caller's bitmap (null: nothing to show). Drops the source.
  void SetImage(const BITMAPHANDLE* bitmap);
  const BITMAPHANDLE* Image() const { return m_image; }
  bool HasImage() const { return m_image != nullptr; }

  // Makes the source cover `view`; returns true when it was rebuilt (the
  // after pane must be rendered again), false when the old one still
  // serves. A failure leaves no source (LastResult tells why).
  bool Prepare(const PreviewView& view);
  void Invalidate();

  const CQVBitmap& Source() const { return *m_source; }
  // The source as a pane holds it (null while there is none).
  std::shared_ptr<const BITMAPHANDLE> SharedSource() const;
  bool HasSource() const { return m_source && m_source->IsAllocated(); }
  // The image rectangle the source holds.
  const RECT& SourceRect() const { return m_sourceRect; }

  // Replaces *out by the effect applied to a copy of the source (or, for a
  // neighbourhood effect, applied to the full-resolution region and then
  // reduced). Returns the effect's result (nonzero on success); *out is
  // left as it was when the effect fails.
  int Render(const Effect& effect, bool neighbourhood, CQVBitmap* out);

  int LastResult() const { return m_lastResult; }

 private:
  int Reduce(const BITMAPHANDLE& from, const RECT& region, int width, int height, CQVBitmap* out,
             qvpreview::RegionCover* cover) const;

  const BITMAPHANDLE* m_image = nullptr;
  std::shared_ptr<CQVBitmap> m_source;
  RECT m_sourceRect{};
  double m_sourceScale = 0;
  qvpreview::RegionCover m_sourceCover = qvpreview::RegionCover::kWhole;
  int m_lastResult = QV_SUCCESS;
};
