#include "platform/toolkit/loop/placement.h"

#include <algorithm>

namespace dossierkit::toolkit {
namespace {

// The lowest value wins where there is no room: the upper left corner is what must be in sight.
int Within(int value, int lowest, int highest) { return std::max(lowest, std::min(value, highest)); }

Rect Union(const Rect& a, const Rect& b) {
  const int left = std::min(a.left, b.left);
  const int top = std::min(a.top, b.top);
  return {left, top, std::max(a.left + a.width, b.left + b.width) - left,
          std::max(a.top + a.height, b.top + b.height) - top};
}

int Scrolled(int offset, int viewport, int content, int start, int length) {
  if (length > viewport) {
    // Its beginning, unless that shows already with much of the rest.
    if (start < offset || start > offset + viewport / 2) offset = start;
  } else if (start < offset) {
    offset = start;
  } else if (start + length > offset + viewport) {
    offset = start + length - viewport;
  }
  return Within(offset, 0, content - viewport);
}

}  // namespace

Rect PlaceWindow(const WindowRequest& request) {
  const Margins& frame = request.frame;
  const Rect& screen = request.screen;
  const int most_width = screen.width - frame.left - frame.right;
  const int most_height = screen.height - frame.top - frame.bottom;
  Size client = request.client;
  const Size content = {std::min(request.content.width, client.width),
                        std::min(request.content.height, client.height)};
  if (content.height > most_height) client.width = std::max(client.width, content.width + request.scroll_bar);
  if (content.width > most_width)
    client.height = std::max(client.height, content.height + request.scroll_bar);
  client = {std::min(client.width, most_width), std::min(client.height, most_height)};
  const Size outer = {client.width + frame.left + frame.right, client.height + frame.top + frame.bottom};
  const Rect& over = request.over;
  const Point corner = request.at_corner ? request.corner
                                         : Point{over.left + (over.width - outer.width) / 2,
                                                 over.top + (over.height - outer.height) / 2};
  return {Within(corner.left, screen.left, screen.left + screen.width - outer.width) + frame.left,
          Within(corner.top, screen.top, screen.top + screen.height - outer.height) + frame.top, client.width,
          client.height};
}

Panes FitPanes(const Panes& design, const Size& client) {
  const auto to_right = [&](Rect& pane) { pane.width = std::max(0, client.width - pane.left); };
  const auto to_bottom = [&](Rect& pane) { pane.height = std::max(0, client.height - pane.top); };
  Panes shown = design;
  to_right(shown.bar);
  to_bottom(shown.side);
  to_right(shown.scrolled);
  to_bottom(shown.scrolled);
  return shown;
}

Rect FollowLowerEdge(const Rect& place, const Rect& design, const Rect& shown) {
  return {place.left, place.top, place.width, std::max(0, place.height + shown.height - design.height)};
}

Point ScrollIntoSight(const Scrolling& now, const Rect& target, const Rect& label, int margin) {
  const auto widened = [margin](const Rect& rect) {
    return Rect{rect.left - margin, rect.top - margin, rect.width + 2 * margin, rect.height + 2 * margin};
  };
  const Rect alone = widened(target);
  const Rect both = widened(Union(target, label));
  const Rect& across = both.width <= now.viewport.width ? both : alone;
  const Rect& down = both.height <= now.viewport.height ? both : alone;
  return {
      Scrolled(now.offset.left, now.viewport.width, now.content.width, across.left, across.width),
      Scrolled(now.offset.top, now.viewport.height, now.content.height, down.top, down.height),
  };
}

}  // namespace dossierkit::toolkit
