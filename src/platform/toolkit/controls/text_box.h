// TextBox: plain text, in one line or several.
#pragma once

#include <cstddef>
#include <string>

#include "platform/toolkit/controls/control.h"

namespace dossierkit::toolkit {

// Positions and lengths count in code points. A line break is CR LF. What the program assigns is
// kept byte for byte; only what the user does is limited by MaxLength and, in a box of one line,
// stops at the first line break.
class TextBox : public Control {
 public:
  explicit TextBox(std::string name, bool multi_line = false);

  bool MultiLine() const { return multi_line_; }
  const std::string& Text() const { return text_; }
  // Raises Change at once if the text differs.
  void SetText(std::string text);
  std::size_t MaxLength() const { return max_length_; }  // 0: no limit
  void SetMaxLength(std::size_t length);

  std::size_t SelStart() const { return sel_start_; }
  std::size_t SelLength() const { return sel_length_; }
  void Select(std::size_t start, std::size_t length);

  environment::Event<> Change;
  environment::Event<> Click;
  environment::Event<> DblClick;

  // Reports of the view. UserReplace: `length` code points from `start` are to become `inserted`;
  // the model decides what of it stands, and shows it. The caret stands behind it.
  void UserReplace(std::size_t start, std::size_t length, const std::string& inserted);
  void UserSelect(std::size_t start, std::size_t length);  // caret and selection moved
  void UserDblClick();

 private:
  bool multi_line_;
  std::string text_;
  std::size_t max_length_ = 0;
  std::size_t sel_start_ = 0;
  std::size_t sel_length_ = 0;
};

}  // namespace dossierkit::toolkit
