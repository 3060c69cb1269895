// WindowLayout: where the parts of a window show, in whole pixels of its view.
#pragma once

#include <memory>
#include <vector>

#include "platform/toolkit/loop/form.h"
#include "platform/toolkit/loop/placement.h"
#include "platform/toolkit/loop/scale.h"

namespace dossierkit::toolkit {

// What has no room in a smaller window scrolls: all of it, or the one pane that the form names, with bar and
// side at the window's edges.
class WindowLayout {
 public:
  // Made with the window's view, when the design is complete: whether the form has panes is settled then.
  WindowLayout(const Form& form, const Scale& scale);

  // The window came to a screen of another resolution.
  void SetScale(const Scale& scale) { scale_ = scale; }

  bool HasPanes() const { return has_panes_; }
  Size DesignSize() const;
  // The size of what scrolls, and where it shows in a client area of a size.
  Size ScrolledSize() const;
  Rect Viewport(const Size& client) const;
  // Whether a control whose container is the window stands in what scrolls.
  bool Scrolls(const Control& control) const;
  // Where a control of this window shows, in its container or viewport.
  Rect ShownPlace(const Control& control, const Size& client) const;
  // The controls whose place changes with the client area.
  std::vector<std::shared_ptr<Control>> Stretched() const;
  // What the window asks of the screen when it opens; frame, scroll bar and screen are the view's to fill in.
  WindowRequest Opening() const;
  // The outer size in twips that the model is told where the user gave the client area a size: a smaller
  // window scrolls, and keeps the size of its design for the model.
  Size ModelSize(const Size& client) const;

 private:
  Panes DesignPanes() const;
  Panes ShownPanes(const Size& client) const { return FitPanes(DesignPanes(), client); }

  const Form& form_;
  Scale scale_;
  bool has_panes_;
};

}  // namespace dossierkit::toolkit
