#include "platform/environment/value.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/environment/failure.h"
#include "platform/environment/format.h"
#include "platform/environment/numbers.h"
#include "platform/environment/text.h"

namespace dossierkit::environment {
namespace {

// Plain decimal text of 15 significant digits, as many as every such text keeps exactly: what was
// read as 0.3 is shown as 0.3, also after arithmetic.
std::string TextOfNumber(double number) {
  std::array<char, 400> buffer{};
  const auto rounded =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::scientific, 14);
  double shown = number;
  std::from_chars(buffer.data(), rounded.ptr, shown);
  if (shown == 0) shown = 0;  // no negative zero
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), shown, std::chars_format::fixed).ptr;
  return std::string(buffer.data(), end);
}

std::string TextOfDate(const DateTime& date) {
  const bool has_time = date.hour != 0 || date.minute != 0 || date.second != 0;
  return Format(date, has_time ? "yyyy/m/d h:nn:ss" : "yyyy/m/d");
}

double RoundHalfToEven(double number) {
  const double below = std::floor(number);
  const double part = number - below;
  if (part < 0.5) return below;
  if (part > 0.5) return below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

double ToNumber(const Value& value) {
  if (value.IsNull()) throw MakeFailure(kInvalidUseOfNull);
  if (value.IsUnset()) return 0;
  if (const auto* held = value.As<bool>()) return *held ? -1 : 0;
  if (const auto* held = value.As<std::int64_t>()) return static_cast<double>(*held);
  if (const auto* held = value.As<double>()) return *held;
  if (const auto* held = value.As<std::string>()) {
    if (const auto number = ParseNumber(*held)) return *number;
  }
  throw MakeFailure(kTypeMismatch);
}

template <typename Integer>
Integer ToInteger(const Value& value) {
  const double rounded = RoundHalfToEven(ToNumber(value));
  // Written so that what is no number at all fails too.
  if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max())) {
    throw MakeFailure(kOverflow);
  }
  return static_cast<Integer>(rounded);
}

}  // namespace

std::string TextOf(const Value& value) {
  if (value.IsNull()) throw MakeFailure(kInvalidUseOfNull);
  if (const auto* held = value.As<std::string>()) return *held;
  if (const auto* held = value.As<std::int64_t>()) return std::to_string(*held);
  if (const auto* held = value.As<bool>()) return *held ? "True" : "False";
  if (const auto* held = value.As<double>()) return TextOfNumber(*held);
  if (const auto* held = value.As<DateTime>()) return TextOfDate(*held);
  return {};
}

std::string TextOr(const Value& value, const std::string& if_null) {
  return value.IsNull() ? if_null : TextOf(value);
}

std::int16_t ToInt16(const Value& value) { return ToInteger<std::int16_t>(value); }

std::int32_t ToInt32(const Value& value) { return ToInteger<std::int32_t>(value); }

bool ToBoolean(const Value& value) {
  if (const auto* held = value.As<std::string>()) {
    if (EqualIgnoringCase(*held, "True")) return true;
    if (EqualIgnoringCase(*held, "False")) return false;
  }
  return ToNumber(value) != 0;
}

}  // namespace dossierkit::environment
