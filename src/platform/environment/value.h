// Value: what a column of the database or a property without a fixed type holds.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <utility>
#include <variant>

namespace dossierkit::environment {

// A date of the proleptic Gregorian calendar, years 100 to 9999, with a time of day in seconds.
struct DateTime {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  auto operator<=>(const DateTime&) const = default;
};

struct Unset {
  bool operator==(const Unset&) const = default;
};
struct Null {
  bool operator==(const Null&) const = default;
};

// One of: unset, Null, Boolean, integer, floating, date, text (UTF-8).
class Value {
 public:
  Value() = default;
  Value(Null) : held_(Null{}) {}
  Value(bool held) : held_(held) {}
  Value(int held) : held_(std::int64_t{held}) {}
  Value(std::int64_t held) : held_(held) {}
  Value(double held) : held_(held) {}
  Value(const DateTime& held) : held_(held) {}
  Value(std::string held) : held_(std::move(held)) {}
  Value(const char* held) : held_(std::string(held)) {}

  bool IsUnset() const { return std::holds_alternative<Unset>(held_); }
  bool IsNull() const { return std::holds_alternative<Null>(held_); }

  // The alternative of type T, or nullptr.
  template <typename T>
  const T* As() const {
    return std::get_if<T>(&held_);
  }

  bool operator==(const Value&) const = default;

 private:
  std::variant<Unset, Null, bool, std::int64_t, double, DateTime, std::string> held_;
};

// The value as text: unset is empty, a Boolean True or False, a date yyyy/m/d (with h:nn:ss behind a
// blank if it has a time), a number in plain decimal. Throws 94 on Null.
std::string TextOf(const Value& value);

// As TextOf, with Null read as `if_null`.
std::string TextOr(const Value& value, const std::string& if_null);

// A 16-bit integer, halves rounded to even; a Boolean gives -1 or 0, unset 0. Throws 6 beyond the
// range, 13 where the text is no number, 94 on Null.
std::int16_t ToInt16(const Value& value);

// The same for 32 bits.
std::int32_t ToInt32(const Value& value);

// False for unset, 0 and the text "False"; throws 13 for other text that is neither "True" nor a
// number, 94 on Null.
bool ToBoolean(const Value& value);

}  // namespace dossierkit::environment
