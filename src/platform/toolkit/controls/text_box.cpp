#include "platform/toolkit/controls/text_box.h"

#include <algorithm>

#include "platform/environment/text.h"
#include "platform/toolkit/controls/control_window.h"
#include "platform/toolkit/controls/shown_text.h"

namespace dossierkit::toolkit {

using environment::Left;
using environment::Length;
using environment::Middle;

namespace {

bool SplitsLineBreak(const std::string& text, std::size_t position) {
  return position > 0 && Middle(text, position - 1, 2) == "\r\n";
}

}  // namespace

TextBox::TextBox(std::string name, bool multi_line)
    : EditBox(Kind::kTextBox, std::move(name)), multi_line_(multi_line) {}

void TextBox::SetMaxLength(std::size_t length) { max_length_ = length; }

void TextBox::UserReplace(std::size_t start, std::size_t length, const std::string& inserted) {
  const std::size_t entered = Length(inserted);
  const auto kind = entered == 0 ? EditKind::kErased : entered == 1 ? EditKind::kTyped : EditKind::kOther;
  Edit([&] { Replace(start, length, inserted, kind); });
}

void TextBox::UserPaste(const std::string& text) {
  if (!text.empty()) ReplaceSelection(text);
}

void TextBox::EraseSelection() { ReplaceSelection({}); }

void TextBox::ReplaceSelection(const std::string& inserted) {
  Edit([&] { Replace(SelStart(), SelLength(), inserted, EditKind::kOther); });
}

void TextBox::Replace(std::size_t start, std::size_t length, const std::string& inserted, EditKind kind) {
  const std::size_t size = Length(Text());
  std::size_t from = std::min(start, size);
  std::size_t end = from + std::min(length, size - from);
  // A line break goes whole.
  const bool removes = end > from;
  if (SplitsLineBreak(Text(), from)) --from;
  if (!removes) end = from;
  if (SplitsLineBreak(Text(), end)) ++end;
  std::string accepted =
      multi_line_ ? WithLineBreaks(inserted) : inserted.substr(0, inserted.find_first_of("\r\n"));
  if (max_length_ > 0) {
    const std::size_t kept = size - (end - from);
    const std::size_t wanted = accepted.size();
    accepted = Left(accepted, max_length_ > kept ? max_length_ - kept : 0);
    if (accepted.size() < wanted) Window()->Beep();
    if (accepted.ends_with('\r')) accepted.pop_back();
  }
  const std::size_t entered = Length(accepted);
  TextEdit edit{Left(Text(), from).size(), Middle(Text(), from, end - from), std::move(accepted)};
  std::string text = Text();
  text.replace(edit.position, edit.removed.size(), edit.inserted);
  Commit(std::move(text), std::move(edit), kind, {from + entered, 0});
}

void TextBox::UserDblClick() {
  Report([&] {
    if (TakeFocus()) Raise(DblClick);
  });
}

}  // namespace dossierkit::toolkit
