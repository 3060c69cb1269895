#include "platform/toolkit/controls/toolbar.h"

#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::toolkit {

void ToolbarButton::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  bar_->ShowAspect(Aspect::kContent);
}

void Toolbar::AddButton(std::string key, std::string caption, int image, bool checks_field) {
  ToolbarButton button(*this, std::move(key), std::move(caption), image);
  button.checks_field_ = checks_field;
  buttons_.push_back(std::move(button));
}

void Toolbar::AddSeparator() { buttons_.push_back(ToolbarButton(*this, {}, {}, 0)); }

ToolbarButton& Toolbar::Button(std::string_view key) {
  for (auto& button : buttons_) {
    if (!button.IsSeparator() && environment::EqualIgnoringCase(button.Key(), key)) return button;
  }
  throw environment::MakeFailure(environment::kElementNotFound);
}

void Toolbar::UserClick(std::size_t index) {
  Form* window = Window();
  if (!window || index >= buttons_.size()) return;
  const KeepAlive keep(*this);
  window->Deliver([&] {
    ToolbarButton& button = buttons_[index];
    if (!Reachable() || !button.Enabled() || button.IsSeparator()) return;
    if (button.checks_field_ && !window->CheckFocus()) return;
    if (!button.Enabled()) return;
    Raise(ButtonClick, button);
  });
}

int Toolbar::FindMnemonic(char letter) const {
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const std::string& caption = buttons_[i].Caption();
    const auto mark = caption.find('&');
    if (mark == std::string::npos || mark + 1 >= caption.size() || !buttons_[i].Enabled()) continue;
    if (environment::EqualIgnoringCase(caption.substr(mark + 1, 1), std::string(1, letter)))
      return static_cast<int>(i);
  }
  return -1;
}

void CoolBar::SetMinHeight(std::size_t band, int height) {
  bands_.at(band).min_height = height;
  ShowAspect(Aspect::kContent);
}

}  // namespace dossierkit::toolkit
