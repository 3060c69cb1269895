#include "platform/toolkit/controls/control.h"

#include <algorithm>

#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/control_window.h"
#include "platform/toolkit/controls/user_control.h"

namespace dossierkit::toolkit {

Control::Control(Kind kind, std::string name) : kind_(kind), name_(std::move(name)) {
  switch (kind) {
    case Kind::kTextBox:
    case Kind::kMaskEdBox:
    case Kind::kListBox:
    case Kind::kTreeView:
    case Kind::kDataGrid:
      back_color_ = kWindowBackground;
      fore_color_ = kWindowText;
      break;
    default: break;
  }
}

Control::~Control() = default;

Control::KeepAlive::KeepAlive(Control& control) : self_(control.weak_from_this().lock()) {
  if (control.owner_) owner_ = control.owner_->weak_from_this().lock();
  if (ControlWindow* window = control.Window()) window_ = window->AsControl().weak_from_this().lock();
}

Control* Control::Container() const {
  const auto container = container_.lock();
  return container ? container.get() : owner_;
}

void Control::SetContainer(Control& container) {
  container_ = container.weak_from_this();
  ShowAspect(Aspect::kPlacement);
}

UserControl* Control::Page() {
  if (kind_ == Kind::kUserControl) return static_cast<UserControl*>(this);
  return owner_ ? owner_->Page() : nullptr;
}

ControlWindow* Control::Window() { return owner_ ? owner_->Window() : nullptr; }

void Control::Move(const Rect& place) {
  if (place_ == place) return;
  place_ = place;
  ShowAspect(Aspect::kPlacement);
}

void Control::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  ShowAspect(Aspect::kState);
}

void Control::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  ShowAspect(Aspect::kState);
}

bool Control::Reachable() {
  if (removed_) return false;
  for (Control* control = this; control; control = control->Container()) {
    if (!control->visible_ || !control->enabled_) return false;
    if (control->kind_ == Kind::kForm) return control->Window()->Open();
  }
  return false;
}

bool Control::TakesFocus() const {
  switch (kind_) {
    case Kind::kTextBox:
    case Kind::kMaskEdBox:
    case Kind::kCheckBox:
    case Kind::kCommandButton:
    case Kind::kListBox:
    case Kind::kTreeView:
    case Kind::kTabStrip:
    case Kind::kDataGrid:
    case Kind::kVerticalMenu: return true;
    case Kind::kLabel:
    case Kind::kImage:
    case Kind::kPictureBox:
    case Kind::kFrame:
    case Kind::kLine:
    case Kind::kToolbar:
    case Kind::kCoolBar:
    case Kind::kCommonDialog:
    case Kind::kUserControl:
    case Kind::kForm: return false;
  }
  return false;
}

void Control::SetBackColor(Color color) {
  if (back_color_ == color) return;
  back_color_ = color;
  ShowAspect(Aspect::kStyle);
}

void Control::SetForeColor(Color color) {
  if (fore_color_ == color) return;
  fore_color_ = color;
  ShowAspect(Aspect::kStyle);
}

void Control::SetFont(const Font& font) {
  if (font_ == font) return;
  font_ = font;
  ShowAspect(Aspect::kStyle);
}

void Control::SetToolTipText(std::string text) {
  tool_tip_ = std::move(text);
  ShowAspect(Aspect::kStyle);
}

std::string Control::AccessibleName() const {
  if (!accessible_name_.empty()) return accessible_name_;
  const auto label = labelled_by_.lock();
  return environment::Replace(label ? label->OwnCaption() : OwnCaption(), "&", "");
}

void Control::SetAccessibleName(std::string name) {
  accessible_name_ = std::move(name);
  ShowAspect(Aspect::kStyle);
}

void Control::SetLabelledBy(Control& label) {
  labelled_by_ = label.weak_from_this();
  label.labels_.push_back(weak_from_this());
  ShowAspect(Aspect::kStyle);
}

void Control::CaptionChanged() {
  ShowAspect(Aspect::kText);
  if (accessible_name_.empty() && labelled_by_.expired()) ShowAspect(Aspect::kStyle);
  for (const auto& weak : labels_) {
    if (const auto named = weak.lock()) named->ShowAspect(Aspect::kStyle);
  }
}

void Control::SetFocus() {
  if (!TakesFocus() || !Reachable()) throw environment::MakeFailure(environment::kInvalidCall);
  Window()->MoveFocus(*this);
}

void Control::ReceiveFocus() {
  OnFocus();
  ShowAspect(Aspect::kFocus);
  Raise(GotFocus);
}

bool Control::HasFocus() {
  ControlWindow* window = Window();
  return window && window->ActiveControl().get() == this;
}

bool Control::Report(std::optional<Aspect> then, const std::function<void()>& event) {
  ControlWindow* window = Window();
  if (!window) return false;
  const KeepAlive keep(*this);
  bool ran = false;
  window->Deliver([&] {
    if (!Reachable()) return;
    ran = true;
    event();
  });
  if (then) ShowAspect(*then);
  if (view_) view_->Settle();
  return ran;
}

bool Control::TakeFocus() {
  ControlWindow* window = Window();
  return window && window->MoveFocus(*this);
}

int Control::RowsOfAPage() const { return view_ ? std::max(1, view_->RowsInSight() - 1) : 1; }

bool Control::UserMouseDown(int button, int shift, int x, int y) {
  bool passed = false;
  Report([&] {
    if (TakesFocus() && !TakeFocus()) return;
    Raise(MouseDown, button, shift, x, y);
    passed = !removed_;
  });
  return passed;
}

void Control::UserMouseMove(int button, int shift, int x, int y) {
  Report([&] { Raise(MouseMove, button, shift, x, y); });
}

void Control::UserFocus() {
  ControlWindow* window = Window();
  if (!window || HasFocus()) return;
  const KeepAlive keep(*this);
  Report([&] {
    if (TakesFocus()) TakeFocus();
  });
  if (const auto focus = window->ActiveControl(); focus && focus.get() != this)
    focus->ShowAspect(Aspect::kFocus);
}

void Control::ShowAspect(Aspect aspect) {
  if (ControlWindow* window = Window()) window->Tick();
  if (view_) view_->Show(aspect);
}

void Control::CreateViews() {
  if (view_) return;
  // A container's view comes first. The owner's exists already.
  if (const auto container = container_.lock(); container && container.get() != owner_)
    container->CreateViews();
  if (ControlWindow* window = Window()) view_ = window->CreateView(*this);
}

void Control::DestroyViews() { view_.reset(); }

void Control::OnRemoved() {
  if (ControlWindow* window = Window()) window->ForgetFocusOf(*this);
  removed_ = true;
  DestroyViews();
  owner_ = nullptr;
}

}  // namespace dossierkit::toolkit
