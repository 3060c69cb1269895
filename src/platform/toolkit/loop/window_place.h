// WindowPlace: where a window stands on the screen, in whole pixels of its view.
#pragma once

#include <optional>

#include "platform/toolkit/loop/window_layout.h"

namespace dossierkit::toolkit {

// What desktops put around a window; so much room is left before the real frame is known.
inline constexpr Margins kUsualFrame = {4, 28, 4, 4};

// What a view knows of the screen on which its window opens.
struct Surroundings {
  Rect work_area;                // of the screen, without task bars
  std::optional<Rect> below;     // the window below this one, with its frame
  std::optional<Margins> frame;  // none until the desktop has put one around the window
  int scroll_bar = 0;            // its thickness
  // The desktop shows the window over all of the work area or the screen, whatever its size.
  bool fills_screen = false;
};

class WindowPlace {
 public:
  explicit WindowPlace(const Form& form) : form_(form), place_(form.Place()) {}

  // The client area of the window that opens: as large as its design or the work area, in the middle of the
  // window below or of the screen, or where the program moved it.
  Rect Open(const WindowLayout& layout, const Surroundings& around);
  // The desktop has put its frame around the window, whose client area has a size now: the client area once
  // more, with the room that this frame leaves. None where that was done, or where the user or the desktop
  // has given the window another size since it opened.
  std::optional<Rect> Framed(const WindowLayout& layout, const Surroundings& around, const Size& now);
  // The form's place may have changed: the corner that the frame moves to, if the program moved it.
  std::optional<Point> Moved(const Scale& scale);

 private:
  const Form& form_;
  Rect place_;                  // as the program set it last
  std::optional<Size> opened_;  // the size that the window opened with
  bool framed_ = false;
};

}  // namespace dossierkit::toolkit
