// TextBox: plain text, in one line or several.
#pragma once

#include <cstddef>
#include <string>

#include "platform/toolkit/controls/edit_box.h"

namespace dossierkit::toolkit {

// A line break is CR LF. What the program assigns is kept byte for byte; only what the user does is
// limited by MaxLength, with a beep for what is cut off, and, in a box of one line, stops at the first
// line break.
class TextBox : public EditBox {
 public:
  explicit TextBox(std::string name, bool multi_line = false);

  bool MultiLine() const { return multi_line_; }
  // Raises Change at once if the text differs.
  void SetText(std::string text) { Assign(std::move(text)); }
  std::size_t MaxLength() const { return max_length_; }  // 0: no limit
  void SetMaxLength(std::size_t length);

  environment::Event<> Click;
  environment::Event<> DblClick;

  // Reports of the view. UserReplace: the user put `inserted` in place of `length` code points from `start`.
  // The model decides how much of it is taken, and shows the text that results, with the caret behind it.
  void UserReplace(std::size_t start, std::size_t length, const std::string& inserted);
  void UserPaste(const std::string& text) override;
  void UserDblClick();

 protected:
  void EraseSelection() override;

 private:
  void ReplaceSelection(const std::string& inserted);
  void Replace(std::size_t start, std::size_t length, const std::string& inserted, EditKind kind);

  bool multi_line_;
  std::size_t max_length_ = 0;
};

}  // namespace dossierkit::toolkit
