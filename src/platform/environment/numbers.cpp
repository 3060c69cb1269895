#include "platform/environment/numbers.h"

#include <charconv>
#include <system_error>

#include "platform/environment/text.h"

namespace dossierkit::environment {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Digits with at most one point, at least one digit.
bool IsPlainDecimal(std::string_view text) {
  bool digit = false;
  bool point = false;
  for (const char c : text) {
    if (IsDigit(c)) {
      digit = true;
    } else if (c == '.' && !point) {
      point = true;
    } else {
      return false;
    }
  }
  return digit;
}

}  // namespace

std::optional<double> ParseNumber(std::string_view text) {
  text = WithoutOuterBlanks(text);
  const bool negative = !text.empty() && text.front() == '-';
  if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
  if (!IsPlainDecimal(text)) return std::nullopt;

  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc::result_out_of_range) {
    // Too many digits before the point are beyond every number; too many zeros behind it are zero.
    const std::string_view whole = text.substr(0, text.find('.'));
    if (whole.find_first_not_of('0') != std::string_view::npos) return std::nullopt;
    number = 0;
  } else if (error != std::errc{}) {
    return std::nullopt;
  }
  return negative ? -number : number;
}

bool IsNumeric(std::string_view text) { return ParseNumber(text).has_value(); }

}  // namespace dossierkit::environment
