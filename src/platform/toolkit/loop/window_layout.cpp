#include "platform/toolkit/loop/window_layout.h"

namespace dossierkit::toolkit {

WindowLayout::WindowLayout(const Form& form, const Scale& scale)
    : form_(form), scale_(scale), has_panes_(!form.Panes().scrolled.expired()) {}

Size WindowLayout::DesignSize() const {
  return {scale_.Pixels(form_.DesignWidth()), scale_.Pixels(form_.DesignHeight())};
}

Panes WindowLayout::DesignPanes() const {
  const auto place = [this](const std::weak_ptr<Control>& pane) {
    const auto control = pane.lock();
    return control ? scale_.Pixels(control->Place()) : Rect();
  };
  const FormPanes& panes = form_.Panes();
  return {place(panes.bar), place(panes.side), place(panes.scrolled)};
}

Size WindowLayout::ScrolledSize() const {
  if (!has_panes_) return DesignSize();
  const Rect scrolled = DesignPanes().scrolled;
  return {scrolled.width, scrolled.height};
}

Rect WindowLayout::Viewport(const Size& client) const {
  return has_panes_ ? ShownPanes(client).scrolled : Rect{0, 0, client.width, client.height};
}

bool WindowLayout::Scrolls(const Control& control) const {
  return !has_panes_ || &control == form_.Panes().scrolled.lock().get();
}

Rect WindowLayout::ShownPlace(const Control& control, const Size& client) const {
  const Rect place = scale_.Pixels(control.Place());
  if (!has_panes_) return place;
  const FormPanes& panes = form_.Panes();
  const auto side = panes.side.lock();
  if (&control == panes.bar.lock().get()) return ShownPanes(client).bar;
  if (&control == side.get()) return ShownPanes(client).side;
  if (&control == panes.scrolled.lock().get()) return {0, 0, place.width, place.height};
  if (control.Container() != side.get()) return place;
  return FollowLowerEdge(place, DesignPanes().side, ShownPanes(client).side);
}

std::vector<std::shared_ptr<Control>> WindowLayout::Stretched() const {
  std::vector<std::shared_ptr<Control>> stretched;
  const Controls* controls = form_.LoadedControls();
  if (!has_panes_ || !controls) return stretched;
  const auto side = form_.Panes().side.lock();
  for (const auto& control : *controls) {
    if (control->Container() == &form_ || control->Container() == side.get()) stretched.push_back(control);
  }
  return stretched;
}

WindowRequest WindowLayout::Opening() const {
  WindowRequest request;
  request.client = request.content = DesignSize();
  if (has_panes_) {
    const Rect scrolled = DesignPanes().scrolled;
    request.content = {scrolled.left + scrolled.width, scrolled.top + scrolled.height};
  }
  const Rect& place = form_.Place();
  if (place.left != 0 || place.top != 0) {
    request.at_corner = true;
    request.corner = {scale_.Pixels(place.left), scale_.Pixels(place.top)};
  }
  return request;
}

Size WindowLayout::ModelSize(const Size& client) const {
  const Size design = DesignSize();
  const int width = client.width <= design.width ? form_.DesignWidth() : scale_.Twips(client.width);
  const int height = client.height <= design.height ? form_.DesignHeight() : scale_.Twips(client.height);
  return {width + kBorderWidth, height + kBorderHeight};
}

}  // namespace dossierkit::toolkit
