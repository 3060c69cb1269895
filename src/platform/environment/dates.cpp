#include "platform/environment/dates.h"

#include <initializer_list>

#include "platform/environment/text.h"

namespace dossierkit::environment {
namespace {

// Reads a date from left to right; every step says whether it found what it looked for.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  bool AtEnd() const { return rest_.empty(); }

  // A number of `least` to `most` digits.
  bool Number(std::size_t least, std::size_t most, int& number) {
    std::size_t count = 0;
    int value = 0;
    while (count < most && count < rest_.size() && rest_[count] >= '0' && rest_[count] <= '9') {
      value = value * 10 + (rest_[count] - '0');
      ++count;
    }
    if (count < least) return false;
    rest_.remove_prefix(count);
    number = value;
    return true;
  }

  bool OneOf(std::initializer_list<std::string_view> marks) {
    for (const std::string_view mark : marks) {
      if (rest_.starts_with(mark)) {
        rest_.remove_prefix(mark.size());
        return true;
      }
    }
    return false;
  }

 private:
  std::string_view rest_;
};

bool ReadTime(Reader& reader, DateTime& date) {
  if (!reader.Number(1, 2, date.hour) || !reader.OneOf({":"}) || !reader.Number(2, 2, date.minute)) {
    return false;
  }
  if (reader.OneOf({":"}) && !reader.Number(2, 2, date.second)) return false;
  return reader.AtEnd() && date.hour < 24 && date.minute < 60 && date.second < 60;
}

bool IsLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

bool Exists(const DateTime& date) {
  return date.year >= 100 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
         date.day <= DaysInMonth(date.year, date.month);
}

bool ReadDate(Reader& reader, DateTime& date) {
  if (!reader.Number(4, 4, date.year) || !reader.OneOf({"年", "-", "/", "."}) ||
      !reader.Number(1, 2, date.month)) {
    return false;
  }
  date.day = 1;
  if (reader.AtEnd()) return true;
  // A month may end the text; any other mark promises a day.
  const bool month_mark = reader.OneOf({"月"});
  if (month_mark && reader.AtEnd()) return true;
  if (!month_mark && !reader.OneOf({"-", "/", "."})) return false;
  if (!reader.Number(1, 2, date.day)) return false;
  reader.OneOf({"日"});
  return reader.AtEnd() || (reader.OneOf({" "}) && ReadTime(reader, date));
}

}  // namespace

int DaysInMonth(int year, int month) {
  if (month == 2) return IsLeapYear(year) ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

std::optional<DateTime> ParseDate(std::string_view text) {
  Reader reader(WithoutOuterBlanks(text));
  DateTime date;
  if (!ReadDate(reader, date) || !Exists(date)) return std::nullopt;
  return date;
}

bool IsDate(std::string_view text) { return ParseDate(text).has_value(); }

}  // namespace dossierkit::environment
