// Texts: between the model's UTF-8 text, counted in code points, and what a native widget shows.
#pragma once

#include <QString>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace dossierkit::qt {

QString ToQString(std::string_view text);
std::string ToUtf8(const QString& text);

// A path as the system wants it: the model's paths may separate folders by a backslash.
QString ToNativePath(std::string_view path);

// The most characters that a widget lays out in one line before it becomes slow.
inline constexpr qsizetype kLongestLine = 5000;

// A text of the model as a widget shows it and the way from positions in one to the other. In several
// lines each break is one character, and a longer line goes on in the next; in a box of one line what goes
// beyond that is not shown. A byte that is no UTF-8 is a replacement character.
class ShownText {
 public:
  ShownText() : starts_{0} {}
  ShownText(std::string_view text, bool multi_line);

  const QString& Shown() const { return shown_; }
  // Of the code points that are shown.
  std::size_t Count() const { return starts_.size() - 1; }
  // Code points before a place in the shown text.
  std::size_t ModelPosition(qsizetype shown) const;
  // The place in the shown text behind so many code points.
  qsizetype ShownPosition(std::size_t model) const;

 private:
  QString shown_;
  std::vector<qsizetype> starts_;  // of each code point in the shown text, then the end
};

// What the user replaced, in places of the shown text.
struct TextChange {
  qsizetype start = 0;
  qsizetype removed = 0;
  QString inserted;
};

// The change from one shown text to another; what stands behind the caret is taken as untouched as
// far as it can be.
TextChange FindChange(const QString& before, const QString& after, qsizetype caret);

}  // namespace dossierkit::qt
