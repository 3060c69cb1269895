#include "platform/toolkit/controls/text_box.h"

#include <algorithm>

#include "platform/environment/text.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::toolkit {

using environment::Left;
using environment::Length;
using environment::Middle;

TextBox::TextBox(std::string name, bool multi_line)
    : Control(Kind::kTextBox, std::move(name)), multi_line_(multi_line) {}

void TextBox::SetText(std::string text) {
  if (text_ == text) return;
  text_ = std::move(text);
  sel_start_ = 0;
  sel_length_ = 0;
  ShowAspect(Aspect::kText);
  Raise(Change);
}

void TextBox::SetMaxLength(std::size_t length) { max_length_ = length; }

void TextBox::Select(std::size_t start, std::size_t length) {
  const std::size_t size = Length(text_);
  sel_start_ = std::min(start, size);
  sel_length_ = std::min(length, size - sel_start_);
  ShowAspect(Aspect::kSelection);
}

void TextBox::UserReplace(std::size_t start, std::size_t length, const std::string& inserted) {
  Form* window = Window();
  if (!window) return;
  const auto keep = weak_from_this().lock();
  window->Deliver([&] {
    if (!Reachable()) {
      ShowAspect(Aspect::kText);
      return;
    }
    const std::size_t size = Length(text_);
    const std::size_t from = std::min(start, size);
    const std::size_t removed = std::min(length, size - from);
    std::string accepted = multi_line_ ? inserted : inserted.substr(0, inserted.find_first_of("\r\n"));
    if (max_length_ > 0) {
      const std::size_t kept = size - removed;
      accepted = Left(accepted, max_length_ > kept ? max_length_ - kept : 0);
    }
    std::string text = Left(text_, from) + accepted + Middle(text_, from + removed);
    sel_start_ = from + Length(accepted);
    sel_length_ = 0;
    const bool changed = text != text_;
    text_ = std::move(text);
    ShowAspect(Aspect::kText);
    if (changed) Raise(Change);
  });
}

void TextBox::UserSelect(std::size_t start, std::size_t length) {
  const std::size_t size = Length(text_);
  sel_start_ = std::min(start, size);
  sel_length_ = std::min(length, size - sel_start_);
}

void TextBox::UserDblClick() {
  Form* window = Window();
  if (!window) return;
  const auto keep = weak_from_this().lock();
  window->Deliver([&] {
    if (Reachable() && window->MoveFocus(*this)) Raise(DblClick);
  });
}

}  // namespace dossierkit::toolkit
