#include "adapters/qt/texts.h"

#include <algorithm>

#include "platform/environment/text.h"

namespace dossierkit::qt {

QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string ToUtf8(const QString& text) { return text.toStdString(); }

QString ToNativePath(std::string_view path) {
  return ToQString(path).replace(QLatin1Char('\\'), QLatin1Char('/'));
}

ShownText::ShownText(std::string_view text, bool multi_line) {
  const QChar line_break = QLatin1Char('\n');
  qsizetype in_line = 0;
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = environment::NextCharacter(text, position);
    const bool breaks = multi_line && (character == U'\r' || character == U'\n' || character == U'\u2028' ||
                                       character == U'\u2029');
    if (in_line == kLongestLine && !breaks) {
      if (!multi_line) break;
      shown_ += line_break;
      in_line = 0;
    }
    starts_.push_back(shown_.size());
    if (breaks && character == U'\r' && position < text.size() && text[position] == '\n') {
      continue;  // the pair is one break
    }
    ++in_line;
    if (breaks) {
      shown_ += line_break;
      in_line = 0;
    } else if (QChar::requiresSurrogates(character)) {
      shown_ += QChar(QChar::highSurrogate(character));
      shown_ += QChar(QChar::lowSurrogate(character));
    } else {
      shown_ += QChar(static_cast<char16_t>(character));
    }
  }
  starts_.push_back(shown_.size());
}

std::size_t ShownText::ModelPosition(qsizetype shown) const {
  const auto found = std::lower_bound(starts_.begin(), starts_.end(), shown);
  return static_cast<std::size_t>(std::min(found, starts_.end() - 1) - starts_.begin());
}

qsizetype ShownText::ShownPosition(std::size_t model) const {
  return starts_[std::min(model, starts_.size() - 1)];
}

TextChange FindChange(const QString& before, const QString& after, qsizetype caret) {
  const qsizetype shorter = std::min(before.size(), after.size());
  const qsizetype behind = std::clamp<qsizetype>(after.size() - caret, 0, shorter);
  qsizetype suffix = 0;
  while (suffix < behind && before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix]) ++suffix;
  qsizetype prefix = 0;
  while (prefix < shorter - suffix && before[prefix] == after[prefix]) ++prefix;
  // Never between the halves of a surrogate pair.
  if (prefix > 0 && after[prefix - 1].isHighSurrogate()) --prefix;
  if (suffix > 0 && after[after.size() - suffix].isLowSurrogate()) --suffix;
  return {prefix, before.size() - prefix - suffix, after.mid(prefix, after.size() - prefix - suffix)};
}

}  // namespace dossierkit::qt
