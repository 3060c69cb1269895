#include "platform/toolkit/controls/toolbar.h"

#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/control_window.h"
#include "platform/toolkit/controls/mnemonic.h"

namespace dossierkit::toolkit {

void ToolbarButton::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  bar_->ShowAspect(Aspect::kContent);
}

std::string ToolbarButton::AccessibleName() const { return WithoutMnemonic(caption_); }

void Toolbar::AddButton(std::string key, std::string caption, int image, bool checks_field) {
  CheckDesigning();
  ToolbarButton button(*this, std::move(key), std::move(caption), image);
  button.checks_field_ = checks_field;
  buttons_.push_back(std::move(button));
}

void Toolbar::AddSeparator() {
  CheckDesigning();
  buttons_.push_back(ToolbarButton(*this, {}, {}, 0));
}

void Toolbar::CheckDesigning() const {
  if (GetView()) throw environment::MakeFailure(environment::kInvalidCall);
}

ToolbarButton& Toolbar::Button(std::string_view key) {
  for (auto& button : buttons_) {
    if (!button.IsSeparator() && environment::EqualIgnoringCase(button.Key(), key)) return button;
  }
  throw environment::MakeFailure(environment::kElementNotFound);
}

void Toolbar::UserClick(std::size_t index) {
  if (index >= buttons_.size()) return;
  Report([&] {
    ToolbarButton& button = buttons_[index];
    if (!button.Enabled() || button.IsSeparator()) return;
    if (button.checks_field_ && !Window()->CheckFocus()) return;
    if (!button.Enabled()) return;
    Raise(ButtonClick, button);
  });
}

int Toolbar::FindMnemonic(char letter) const {
  if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    if (buttons_[i].Enabled() && MnemonicOf(buttons_[i].Caption()) == letter) return static_cast<int>(i);
  }
  return -1;
}

void CoolBar::SetMinHeight(std::size_t band, int height) {
  bands_.at(band).min_height = height;
  ShowAspect(Aspect::kContent);
}

}  // namespace dossierkit::toolkit
