#include "platform/toolkit/controls/controls.h"

#include <exception>

#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/control_window.h"
#include "platform/toolkit/controls/user_control.h"

namespace dossierkit::toolkit {

std::shared_ptr<Control> Controls::Find(std::string_view name) const {
  for (const auto& item : items_) {
    if (environment::EqualIgnoringCase(item->Name(), name)) return item;
  }
  return nullptr;
}

std::shared_ptr<Control> Controls::Add(const std::string& class_name, const std::string& name) {
  ControlWindow* window = owner_.Window();
  if (!window) throw environment::MakeFailure(environment::kObjectUnloaded);
  auto control = window->CreateControl(class_name, name);
  Append(control);
  return control;
}

void Controls::Append(const std::shared_ptr<Control>& control) {
  const auto page = std::dynamic_pointer_cast<UserControl>(control);
  // A page asks for its window while it is initialised; one that fails to initialise must not stay behind.
  control->owner_ = &owner_;
  try {
    if (page) page->UserControl_Initialize();
  } catch (...) {
    control->owner_ = nullptr;
    throw;
  }
  items_.push_back(control);
  ControlWindow* window = owner_.Window();
  if (!window) return;
  if (window->Shown()) control->CreateViews();
  if (page) window->PageAdded(page);
}

void Controls::Remove(std::size_t index) {
  const auto control = items_.at(index);
  items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
  control->OnRemoved();
}

void Controls::Clear() {
  std::exception_ptr failure;
  while (!items_.empty()) {
    try {
      Remove(items_.size() - 1);
    } catch (...) {
      if (!failure) failure = std::current_exception();
    }
  }
  if (failure) std::rethrow_exception(failure);
}

}  // namespace dossierkit::toolkit
