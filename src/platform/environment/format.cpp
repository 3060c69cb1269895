#include "platform/environment/format.h"

#include <algorithm>
#include <array>
#include <optional>

#include "platform/environment/dates.h"
#include "platform/environment/numbers.h"
#include "platform/environment/text.h"

namespace dossierkit::environment {
namespace {

struct DateToken {
  std::string_view text;
  int DateTime::*part;
  std::size_t digits;
};

// Longer tokens first, so that the first one that fits is the right one.
constexpr std::array<DateToken, 12> kDateTokens{{{"yyyy", &DateTime::year, 4},
                                                 {"yy", &DateTime::year, 2},
                                                 {"mm", &DateTime::month, 2},
                                                 {"m", &DateTime::month, 1},
                                                 {"dd", &DateTime::day, 2},
                                                 {"d", &DateTime::day, 1},
                                                 {"hh", &DateTime::hour, 2},
                                                 {"h", &DateTime::hour, 1},
                                                 {"nn", &DateTime::minute, 2},
                                                 {"n", &DateTime::minute, 1},
                                                 {"ss", &DateTime::second, 2},
                                                 {"s", &DateTime::second, 1}}};

const DateToken* DateTokenAt(std::string_view pattern) {
  for (const DateToken& token : kDateTokens) {
    if (EqualIgnoringCase(pattern.substr(0, token.text.size()), token.text)) return &token;
  }
  return nullptr;
}

bool IsDatePattern(std::string_view pattern) {
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (DateTokenAt(pattern.substr(i)) != nullptr) return true;
  }
  return false;
}

bool IsPlaceholder(char c) { return c == '0' || c == '#'; }

bool IsNumberPattern(std::string_view pattern) {
  return pattern.find_first_of("0#") != std::string_view::npos;
}

std::string FormatDate(const DateTime& date, std::string_view pattern) {
  std::string result;
  while (!pattern.empty()) {
    const DateToken* token = DateTokenAt(pattern);
    if (token == nullptr) {
      result += pattern.front();
      pattern.remove_prefix(1);
      continue;
    }
    std::string digits = std::to_string(date.*token->part);
    if (digits.size() < token->digits) digits.insert(0, token->digits - digits.size(), '0');
    // Only a year of two digits is ever cut.
    if (token->text == "yy") digits.erase(0, digits.size() - 2);
    result += digits;
    pattern.remove_prefix(token->text.size());
  }
  return result;
}

// A number as its decimal digits: no rounding error comes in on the way to the text.
struct Decimal {
  bool negative = false;
  std::string whole;     // without leading zeros; empty for 0
  std::string fraction;  // without the point
};

Decimal DecimalOf(std::string_view text) {
  Decimal decimal;
  std::string* digits = &decimal.whole;
  for (const char c : text) {
    if (c == '-') decimal.negative = true;
    if (c == '.') digits = &decimal.fraction;
    if (c >= '0' && c <= '9') *digits += c;
  }
  decimal.whole.erase(0, std::min(decimal.whole.find_first_not_of('0'), decimal.whole.size()));
  return decimal;
}

void TimesHundred(Decimal& decimal) {
  decimal.fraction.append(2, '0');
  decimal.whole += decimal.fraction.substr(0, 2);
  decimal.fraction.erase(0, 2);
  decimal.whole.erase(0, std::min(decimal.whole.find_first_not_of('0'), decimal.whole.size()));
}

// Keeps `places` digits behind the point, the last one rounded, halves away from zero.
void RoundTo(Decimal& decimal, std::size_t places) {
  if (decimal.fraction.size() <= places) return;
  bool carry = decimal.fraction[places] >= '5';
  decimal.fraction.erase(places);
  for (std::string* digits : {&decimal.fraction, &decimal.whole}) {
    for (auto digit = digits->rbegin(); carry && digit != digits->rend(); ++digit) {
      carry = *digit == '9';
      *digit = carry ? '0' : static_cast<char>(*digit + 1);
    }
  }
  if (carry) decimal.whole.insert(0, 1, '1');
}

// What a number pattern asks for, found in one look over it.
struct NumberPattern {
  std::size_t point = std::string_view::npos;  // place of the decimal point
  std::size_t first = std::string_view::npos;  // the first and the last placeholder before it
  std::size_t last = std::string_view::npos;
  std::size_t whole_places = 0;
  std::size_t fraction_places = 0;
  bool grouped = false;
  bool percent = false;
};

NumberPattern Look(std::string_view pattern) {
  NumberPattern look;
  look.point = pattern.find('.');
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == '%') look.percent = true;
    if (!IsPlaceholder(pattern[i])) continue;
    if (i > look.point) {
      ++look.fraction_places;
    } else {
      if (look.first == std::string_view::npos) look.first = i;
      look.last = i;
      ++look.whole_places;
    }
  }
  if (look.whole_places > 1) {
    look.grouped = pattern.substr(look.first, look.last - look.first).find(',') != std::string_view::npos;
  }
  return look;
}

void AppendWholeDigit(std::string& result, char digit, std::size_t digits_to_come, bool grouped) {
  result += digit;
  if (grouped && digits_to_come > 0 && digits_to_come % 3 == 0) result += ',';
}

std::string FormatNumber(std::string_view number, std::string_view pattern) {
  const NumberPattern look = Look(pattern);
  Decimal decimal = DecimalOf(number);
  if (look.percent) TimesHundred(decimal);
  RoundTo(decimal, look.fraction_places);
  // "#" behind the point shows no zeros at the end.
  while (!decimal.fraction.empty() && decimal.fraction.back() == '0') decimal.fraction.pop_back();

  std::string result;
  if (decimal.negative && !(decimal.whole.empty() && decimal.fraction.empty())) result += '-';
  std::size_t places_to_come = look.whole_places;
  std::size_t next_whole = 0;
  std::size_t next_fraction = 0;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const char c = pattern[i];
    if (i == look.point && look.whole_places == 0) result += decimal.whole;
    if (IsPlaceholder(c) && i > look.point) {
      if (next_fraction < decimal.fraction.size()) {
        result += decimal.fraction[next_fraction++];
      } else if (c == '0') {
        result += '0';
      }
    } else if (IsPlaceholder(c)) {
      // Digits stand to the right; the first placeholder takes those for which there is no other.
      if (c == '0' && decimal.whole.size() - next_whole < places_to_come) {
        AppendWholeDigit(result, '0', places_to_come - 1, look.grouped);
      }
      while (decimal.whole.size() - next_whole >= places_to_come) {
        const std::size_t to_come = decimal.whole.size() - next_whole - 1;
        AppendWholeDigit(result, decimal.whole[next_whole++], to_come, look.grouped);
      }
      --places_to_come;
    } else if (c != ',' || !look.grouped || i < look.first || i > look.last) {
      result += c;
    }
  }
  return result;
}

std::optional<DateTime> DateIn(const Value& value) {
  if (const auto* date = value.As<DateTime>()) return *date;
  if (const auto* text = value.As<std::string>()) return ParseDate(*text);
  return std::nullopt;
}

bool IsNumber(const Value& value) {
  if (const auto* text = value.As<std::string>()) return IsNumeric(*text);
  return value.As<std::int64_t>() != nullptr || value.As<double>() != nullptr;
}

}  // namespace

std::string Format(const Value& value, std::string_view pattern) {
  if (IsDatePattern(pattern)) {
    if (const auto date = DateIn(value)) return FormatDate(*date, pattern);
  } else if (IsNumberPattern(pattern) && IsNumber(value)) {
    return FormatNumber(TextOf(value), pattern);
  }
  return TextOr(value, "");
}

}  // namespace dossierkit::environment
