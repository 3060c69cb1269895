// Placement: where windows stand on a screen, which of their parts scroll and how far. Numbers are whole
// pixels of a view, the same for every view set.
#pragma once

#include "platform/toolkit/controls/control.h"

namespace dossierkit::toolkit {

struct Point {
  int left = 0;
  int top = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  int width = 0;
  int height = 0;
  bool operator==(const Size&) const = default;
};

// What border and title bar add around a client area.
struct Margins {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

struct WindowRequest {
  Size client;         // the size of the design
  Size content;        // the part of it that scrolls where the window is smaller
  int scroll_bar = 0;  // its thickness
  Margins frame;
  Rect screen;             // without task bars
  Rect over;               // the window or the screen over whose middle it opens
  bool at_corner = false;  // opens at `corner` instead
  Point corner;            // of its frame
};

// The client area of a window that opens: with its frame it lies on the screen; it is as large as the
// design, and by a scroll bar larger where the other direction does not fit.
Rect PlaceWindow(const WindowRequest& request);

// A window of three panes: a bar along the top, a side at the left, and the rest, which alone scrolls.
struct Panes {
  Rect bar;
  Rect side;
  Rect scrolled;
};

// The panes in a client area of another size than the design's: the bar runs to its right edge, the side
// to its lower edge, the scrolled pane to both. What stands in the latter keeps its size.
Panes FitPanes(const Panes& design, const Size& client);

// What stands in a pane of another height than the design's: keeps its distance from the lower edge.
Rect FollowLowerEdge(const Rect& place, const Rect& design, const Rect& shown);

struct Scrolling {
  Point offset;   // of the content's corner that shows
  Size viewport;  // what shows at a time
  Size content;
};

// How far to scroll, moving no more than needed, until `target` shows, with `label` where there is room for
// both, and `margin` around them. What is larger than the viewport shows from its beginning.
Point ScrollIntoSight(const Scrolling& now, const Rect& target, const Rect& label, int margin);

}  // namespace dossierkit::toolkit
