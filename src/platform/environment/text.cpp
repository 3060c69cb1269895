#include "platform/environment/text.h"

#include <algorithm>

namespace dossierkit::environment {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

unsigned char ByteAt(std::string_view text, std::size_t position) {
  return static_cast<unsigned char>(text[position]);
}

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

// Bytes of the sequence that `lead` begins, or 0 where it begins none.
std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

// True for a code point that takes `length` bytes, no more and no less, and is no surrogate.
bool IsWellFormed(char32_t character, std::size_t length) {
  if (length == 3) return character >= 0x800 && (character < 0xD800 || character > 0xDFFF);
  if (length == 4) return character >= 0x10000 && character <= 0x10FFFF;
  return true;
}

// Most texts are ASCII alone, or in long runs: the first byte from `position` on that is none, or the end.
std::size_t SkipAscii(std::string_view text, std::size_t position) {
  while (position < text.size() && ByteAt(text, position) < 0x80) ++position;
  return position;
}

// Byte position of the code point number `count`, or the end of the text.
std::size_t PositionOf(std::string_view text, std::size_t count) {
  std::size_t position = 0;
  for (; count > 0 && position < text.size(); --count) NextCharacter(text, position);
  return position;
}

}  // namespace

char32_t NextCharacter(std::string_view text, std::size_t& position) {
  const unsigned char lead = ByteAt(text, position);
  if (lead < 0x80) {
    ++position;
    return lead;
  }
  const std::size_t length = SequenceLength(lead);
  if (length == 0 || length > text.size() - position) {
    ++position;
    return kReplacement;
  }
  char32_t character = lead & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned char next = ByteAt(text, position + i);
    if ((next & 0xC0) != 0x80) {
      ++position;
      return kReplacement;
    }
    character = (character << 6) | (next & 0x3Fu);
  }
  if (!IsWellFormed(character, length)) {
    ++position;
    return kReplacement;
  }
  position += length;
  return character;
}

std::size_t Length(std::string_view text) {
  std::size_t position = SkipAscii(text, 0);
  std::size_t count = position;
  for (; position < text.size(); ++count) NextCharacter(text, position);
  return count;
}

std::string Middle(std::string_view text, std::size_t start, std::size_t count) {
  const std::string_view rest = text.substr(PositionOf(text, start));
  return std::string(rest.substr(0, PositionOf(rest, count)));
}

std::string Left(std::string_view text, std::size_t count) { return Middle(text, 0, count); }

std::string Right(std::string_view text, std::size_t count) {
  const std::size_t length = Length(text);
  return Middle(text, length - std::min(count, length));
}

std::vector<std::string> Characters(std::string_view text) {
  std::vector<std::string> characters;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t start = position;
    NextCharacter(text, position);
    characters.emplace_back(text.substr(start, position - start));
  }
  return characters;
}

std::string Encode(char32_t character) {
  const auto byte = [](char32_t bits) { return static_cast<char>(static_cast<unsigned char>(bits)); };
  if (character < 0x80) return {byte(character)};
  if (character < 0x800) return {byte(0xC0 | (character >> 6)), byte(0x80 | (character & 0x3F))};
  if (character >= 0xD800 && character <= 0xDFFF) character = kReplacement;
  if (character < 0x10000) {
    return {byte(0xE0 | (character >> 12)), byte(0x80 | ((character >> 6) & 0x3F)),
            byte(0x80 | (character & 0x3F))};
  }
  if (character > 0x10FFFF) return Encode(kReplacement);
  return {byte(0xF0 | (character >> 18)), byte(0x80 | ((character >> 12) & 0x3F)),
          byte(0x80 | ((character >> 6) & 0x3F)), byte(0x80 | (character & 0x3F))};
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), LowerAscii);
  return lower;
}

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), UpperAscii);
  return upper;
}

std::string_view WithoutOuterBlanks(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  text.remove_suffix(text.size() - (text.find_last_not_of(kBlanks) + 1));
  return text;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

std::string Replace(std::string_view text, std::string_view what, std::string_view with) {
  std::string result;
  std::size_t start = 0;
  if (what.empty()) return std::string(text);
  for (std::size_t found = text.find(what); found != std::string_view::npos; found = text.find(what, start)) {
    result.append(text.substr(start, found - start)).append(with);
    start = found + what.size();
  }
  return result.append(text.substr(start));
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  std::size_t start = 0;
  for (std::size_t found = text.find(separator); found != std::string_view::npos && !separator.empty();
       found = text.find(separator, start)) {
    pieces.emplace_back(text.substr(start, found - start));
    start = found + separator.size();
  }
  pieces.emplace_back(text.substr(start));
  return pieces;
}

std::string ValidUtf8(std::string_view text) {
  // Nearly every text is valid: only one that is not is put together anew.
  std::string result;
  std::size_t copied = 0;
  for (std::size_t position = SkipAscii(text, 0); position < text.size();
       position = SkipAscii(text, position)) {
    const std::size_t start = position;
    if (NextCharacter(text, position) == kReplacement && position == start + 1) {
      result.append(text.substr(copied, start - copied)).append(Encode(kReplacement));
      copied = position;
    }
  }
  return result.append(text.substr(copied));
}

}  // namespace dossierkit::environment
