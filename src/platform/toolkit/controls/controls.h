// Controls: the controls of a page or a window, in the order of their creation.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/toolkit/controls/control.h"

namespace dossierkit::toolkit {

// Flat: a control inside a frame stands here too. Positions count from 0.
class Controls {
 public:
  explicit Controls(Control& owner) : owner_(owner) {}

  std::size_t Count() const { return items_.size(); }
  const std::shared_ptr<Control>& At(std::size_t index) const { return items_.at(index); }

  // The control of that name (case ignored), or nullptr.
  std::shared_ptr<Control> Find(std::string_view name) const;

  // Makes a control of type T at the end, placed in the owner.
  template <typename T, typename... Arguments>
  std::shared_ptr<T> Make(Arguments&&... arguments) {
    auto control = std::make_shared<T>(std::forward<Arguments>(arguments)...);
    Append(control);
    return control;
  }

  // Makes a control by the name of its class, as registered with the desktop, and gives it `name`.
  // Throws 731 where there is no such class.
  std::shared_ptr<Control> Add(const std::string& class_name, const std::string& name);

  // Removes the control at a position: it loses the focus without Validate or LostFocus, a page
  // raises Terminate, the views go.
  void Remove(std::size_t index);
  // Removes all, the last first, and throws the first failure of a Terminate at the end.
  void Clear();

  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

 private:
  void Append(const std::shared_ptr<Control>& control);

  Control& owner_;
  std::vector<std::shared_ptr<Control>> items_;
};

}  // namespace dossierkit::toolkit
