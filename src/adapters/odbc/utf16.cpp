#include "adapters/odbc/utf16.h"

#include <cstddef>

#include "platform/environment/text.h"

namespace dossierkit::odbc {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kHighFirst = 0xD800;
constexpr char32_t kLowFirst = 0xDC00;
constexpr char32_t kLowLast = 0xDFFF;
constexpr char32_t kBehindOneUnit = 0x10000;
constexpr char32_t kHalf = 0x400;  // each unit of a pair holds ten bits

}  // namespace

Wide ToWide(std::string_view text) {
  Wide wide;
  wide.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    // Most of a statement.
    if (const auto byte = static_cast<unsigned char>(text[position]); byte < 0x80) {
      wide += byte;
      ++position;
      continue;
    }
    const char32_t character = environment::NextCharacter(text, position);
    if (character < kBehindOneUnit) {
      wide.push_back(static_cast<SQLWCHAR>(character));
    } else {
      const char32_t bits = character - kBehindOneUnit;
      wide.push_back(static_cast<SQLWCHAR>(kHighFirst + bits / kHalf));
      wide.push_back(static_cast<SQLWCHAR>(kLowFirst + bits % kHalf));
    }
  }
  return wide;
}

void AppendUtf8(const SQLWCHAR* text, std::size_t units, std::string& to) {
  for (std::size_t i = 0; i < units; ++i) {
    char32_t character = text[i];
    if (character < 0x80) {
      to += static_cast<char>(character);
      continue;
    }
    if (character >= kHighFirst && character <= kLowLast) {
      const bool pair =
          character < kLowFirst && i + 1 < units && text[i + 1] >= kLowFirst && text[i + 1] <= kLowLast;
      character =
          pair ? kBehindOneUnit + (character - kHighFirst) * kHalf + (text[++i] - kLowFirst) : kReplacement;
    }
    to += environment::Encode(character);
  }
}

std::string ToUtf8(const Wide& text) {
  std::string utf8;
  AppendUtf8(text.data(), text.size(), utf8);
  return utf8;
}

}  // namespace dossierkit::odbc
