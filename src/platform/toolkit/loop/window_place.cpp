#include "platform/toolkit/loop/window_place.h"

#include <utility>

namespace dossierkit::toolkit {

Rect WindowPlace::Open(const WindowLayout& layout, const Surroundings& around) {
  WindowRequest request = layout.Opening();
  request.scroll_bar = around.scroll_bar;
  request.frame = around.frame.value_or(kUsualFrame);
  request.screen = around.work_area;
  request.over = form_.CenteredOnOwner() ? around.below.value_or(around.work_area) : around.work_area;
  const Rect client = PlaceWindow(request);
  opened_ = {client.width, client.height};
  return client;
}

std::optional<Rect> WindowPlace::Framed(const WindowLayout& layout, const Surroundings& around,
                                        const Size& now) {
  if (!opened_ || !around.frame || std::exchange(framed_, true)) return std::nullopt;
  if (now != *opened_ || around.fills_screen) return std::nullopt;
  return Open(layout, around);
}

std::optional<Point> WindowPlace::Moved(const Scale& scale) {
  const Rect former = std::exchange(place_, form_.Place());
  if (!opened_ || (former.left == place_.left && former.top == place_.top)) return std::nullopt;
  return Point{scale.Pixels(place_.left), scale.Pixels(place_.top)};
}

}  // namespace dossierkit::toolkit
