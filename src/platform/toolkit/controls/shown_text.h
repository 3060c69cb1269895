// ShownText: between a box's text, UTF-8 counted in code points, and what its native widget shows, UTF-16.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/toolkit/controls/edit_history.h"

namespace dossierkit::toolkit {

// The most characters that a widget lays out in one line before it becomes slow.
inline constexpr std::size_t kLongestLine = 5000;

// The text with each line break, however it came, as CR LF.
std::string WithLineBreaks(std::string_view text);

// A text of the model as a widget shows it and the way from positions in one to the other. In several
// lines each break is one character, and a longer line goes on in the next; in a box of one line what goes
// beyond that is not shown. A byte that is no UTF-8 is a replacement character.
class ShownText {
 public:
  ShownText() : starts_{0} {}
  ShownText(std::string_view text, bool multi_line);

  const std::u16string& Shown() const { return shown_; }
  bool MultiLine() const { return multi_line_; }
  // Of the code points that are shown.
  std::size_t Count() const { return starts_.size() - 1; }
  // Code points before a place in the shown text.
  std::size_t ModelPosition(std::size_t shown) const;
  // The place in the shown text behind so many code points.
  std::size_t ShownPosition(std::size_t model) const;
  // The same for what is selected.
  Selection ModelSelection(std::size_t start, std::size_t length) const;
  Selection ShownSelection(const Selection& model) const;

 private:
  std::u16string shown_;
  bool multi_line_ = false;
  std::vector<std::size_t> starts_;  // of each code point in the shown text, then the end
};

// What the user replaced, in places of the shown text.
struct TextChange {
  std::size_t start = 0;
  std::size_t removed = 0;
  std::u16string inserted;
};

// The change from one shown text to another; what stands behind the caret is taken as untouched as
// far as it can be.
TextChange FindChange(std::u16string_view before, std::u16string_view after, std::size_t caret);

// What the user replaced, in code points of the model's text.
struct ModelChange {
  Selection replaced;
  std::string inserted;
};

// A native widget as it stands after the user edited it.
struct NativeEdit {
  std::u16string_view text;
  std::size_t caret = 0;
  std::size_t caret_before = 0;
};

// What the user's edit of a shown text means for the model's, of which `selected` was selected before.
ModelChange ChangeOf(const ShownText& before, const Selection& selected, const NativeEdit& edit);

}  // namespace dossierkit::toolkit
