#include "platform/toolkit/controls/shown_text.h"

#include <algorithm>

#include "platform/environment/text.h"

namespace dossierkit::toolkit {
namespace {

bool IsHighHalf(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowHalf(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void Append(std::u16string& text, char32_t character) {
  if (character < 0x10000) {
    text += static_cast<char16_t>(character);
  } else {
    text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
    text += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
  }
}

// A half of a pair that stands alone is a replacement character.
std::string ToUtf8(std::u16string_view text) {
  std::string utf8;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t character = text[i];
    if (IsHighHalf(text[i]) && i + 1 < text.size() && IsLowHalf(text[i + 1])) {
      character = 0x10000 + ((character - 0xD800) << 10) + (text[i + 1] - 0xDC00u);
      ++i;
    } else if (IsHighHalf(text[i]) || IsLowHalf(text[i])) {
      character = U'\uFFFD';
    }
    utf8 += environment::Encode(character);
  }
  return utf8;
}

}  // namespace

std::string WithLineBreaks(std::string_view text) {
  using environment::Replace;
  return Replace(Replace(Replace(text, "\r\n", "\n"), "\r", "\n"), "\n", "\r\n");
}

ShownText::ShownText(std::string_view text, bool multi_line) : multi_line_(multi_line) {
  std::size_t in_line = 0;
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = environment::NextCharacter(text, position);
    const bool breaks = multi_line && (character == U'\r' || character == U'\n' || character == U'\u2028' ||
                                       character == U'\u2029');
    if (in_line == kLongestLine && !breaks) {
      if (!multi_line) break;
      shown_ += u'\n';
      in_line = 0;
    }
    starts_.push_back(shown_.size());
    if (breaks && character == U'\r' && position < text.size() && text[position] == '\n') {
      continue;  // the pair is one break
    }
    ++in_line;
    if (breaks) {
      shown_ += u'\n';
      in_line = 0;
    } else {
      Append(shown_, character);
    }
  }
  starts_.push_back(shown_.size());
}

std::size_t ShownText::ModelPosition(std::size_t shown) const {
  const auto found = std::lower_bound(starts_.begin(), starts_.end(), shown);
  return static_cast<std::size_t>(std::min(found, starts_.end() - 1) - starts_.begin());
}

std::size_t ShownText::ShownPosition(std::size_t model) const {
  return starts_[std::min(model, starts_.size() - 1)];
}

Selection ShownText::ModelSelection(std::size_t start, std::size_t length) const {
  const std::size_t from = ModelPosition(start);
  return {from, ModelPosition(start + length) - from};
}

Selection ShownText::ShownSelection(const Selection& model) const {
  const std::size_t from = ShownPosition(model.start);
  return {from, ShownPosition(model.start + model.length) - from};
}

TextChange FindChange(std::u16string_view before, std::u16string_view after, std::size_t caret) {
  const std::size_t shorter = std::min(before.size(), after.size());
  const std::size_t behind = std::min(after.size() - std::min(caret, after.size()), shorter);
  std::size_t suffix = 0;
  while (suffix < behind && before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix]) ++suffix;
  std::size_t prefix = 0;
  while (prefix < shorter - suffix && before[prefix] == after[prefix]) ++prefix;
  // Never between the halves of a surrogate pair.
  if (prefix > 0 && IsHighHalf(after[prefix - 1])) --prefix;
  if (suffix > 0 && IsLowHalf(after[after.size() - suffix])) --suffix;
  return {prefix, before.size() - prefix - suffix,
          std::u16string(after.substr(prefix, after.size() - prefix - suffix))};
}

ModelChange ChangeOf(const ShownText& before, const Selection& selected, const NativeEdit& edit) {
  TextChange change = FindChange(before.Shown(), edit.text, edit.caret);
  std::size_t start = before.ModelPosition(change.start);
  std::size_t end = before.ModelPosition(change.start + change.removed);
  if (const std::size_t selected_end = selected.start + selected.length; selected_end > before.Count()) {
    // The selection goes on where the widget shows nothing more: all of it is replaced.
    const std::size_t from = before.ShownPosition(selected.start);
    change.inserted = edit.caret > from ? edit.text.substr(from, edit.caret - from) : std::u16string_view();
    start = selected.start;
    end = selected_end;
    // Backspace where the caret itself is out of sight.
    if (edit.caret < from && selected.length == 0) start -= std::min(start, from - edit.caret);
  } else if (change.removed > 0 && start == end && change.inserted.empty()) {
    // Only a break that the widget shows inside a long line: what stands beside it was meant.
    if (edit.caret_before > change.start) {
      --start;
    } else {
      ++end;
    }
  }
  std::string inserted = ToUtf8(change.inserted);
  return {{start, end - start}, before.MultiLine() ? WithLineBreaks(inserted) : std::move(inserted)};
}

}  // namespace dossierkit::toolkit
