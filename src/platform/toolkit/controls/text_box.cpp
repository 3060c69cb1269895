#include "platform/toolkit/controls/text_box.h"

#include <algorithm>

#include "platform/environment/text.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::toolkit {

using environment::Left;
using environment::Length;
using environment::Middle;

namespace {

// The text with each line break, however it came, as CR LF.
std::string WithLineBreaks(const std::string& text) {
  using environment::Replace;
  return Replace(Replace(Replace(text, "\r\n", "\n"), "\r", "\n"), "\n", "\r\n");
}

bool SplitsLineBreak(const std::string& text, std::size_t position) {
  return position > 0 && Middle(text, position - 1, 2) == "\r\n";
}

}  // namespace

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
  const KeepAlive keep(*this);
  const bool delivered = window->Deliver([&] {
    if (!Reachable()) {
      ShowAspect(Aspect::kText);
      return;
    }
    const std::size_t size = Length(text_);
    std::size_t from = std::min(start, size);
    std::size_t end = from + std::min(length, size - from);
    // A line break goes whole.
    const bool removes = end > from;
    if (SplitsLineBreak(text_, from)) --from;
    if (!removes) end = from;
    if (SplitsLineBreak(text_, end)) ++end;
    std::string accepted =
        multi_line_ ? WithLineBreaks(inserted) : inserted.substr(0, inserted.find_first_of("\r\n"));
    if (max_length_ > 0) {
      const std::size_t kept = size - (end - from);
      accepted = Left(accepted, max_length_ > kept ? max_length_ - kept : 0);
      if (accepted.ends_with('\r')) accepted.pop_back();
    }
    std::string text = Left(text_, from) + accepted + Middle(text_, end);
    sel_start_ = from + Length(accepted);
    sel_length_ = 0;
    const bool changed = text != text_;
    text_ = std::move(text);
    ShowAspect(Aspect::kText);
    if (changed) Raise(Change);
  });
  // The native widget has edited already.
  if (!delivered) ShowAspect(Aspect::kText);
}

void TextBox::UserSelect(std::size_t start, std::size_t length) {
  const std::size_t size = Length(text_);
  sel_start_ = std::min(start, size);
  sel_length_ = std::min(length, size - sel_start_);
}

void TextBox::UserDblClick() {
  Form* window = Window();
  if (!window) return;
  const KeepAlive keep(*this);
  window->Deliver([&] {
    if (Reachable() && window->MoveFocus(*this)) Raise(DblClick);
  });
}

}  // namespace dossierkit::toolkit
