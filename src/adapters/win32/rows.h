// Rows: how the rows of lists, trees, grids and menus look.
#pragma once

#include "adapters/win32/painting.h"

namespace dossierkit::win32 {

struct RowLook {
  COLORREF fill;
  COLORREF ink;
  bool bar;  // at its left
};

// The chosen row is dark while its list has the keyboard, else pale with a bar at its left. `plain` is what
// any other row looks like.
inline RowLook LookOfRow(const Palette& colors, bool chosen, bool keyboard, const RowLook& plain) {
  if (!chosen) return plain;
  if (keyboard) return {colors.highlight, colors.highlighted_text, false};
  return {colors.selection, colors.selected_text, true};
}

inline void PaintBar(HDC device, const Look& look, const RECT& row) {
  Fill(device, {row.left, row.top, row.left + look.GetMetrics().Scaled(kBarWidth), row.bottom},
       look.Colors().accent);
}

}  // namespace dossierkit::win32
