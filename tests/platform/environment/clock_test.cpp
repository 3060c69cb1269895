// The clock of the system: the local date and time, whatever the zone.
#include "platform/environment/clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

#include "tests/support/variables.h"

namespace dossierkit::environment {
namespace {

// The time in a zone so many hours ahead, by the calendar of the language.
DateTime At(std::chrono::system_clock::time_point now, int hours) {
  using namespace std::chrono;
  const auto local = floor<seconds>(now) + std::chrono::hours(hours);
  const auto day = floor<days>(local);
  const year_month_day date(day);
  const hh_mm_ss time(local - day);
  return {int(date.year()),
          static_cast<int>(unsigned(date.month())),
          static_cast<int>(unsigned(date.day())),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count())};
}

class SystemClockTest : public testing::Test {
 protected:
  void SetUp() override {
    if (const char* zone = std::getenv("TZ")) former_ = zone;
  }
  void TearDown() override {
    if (former_) {
      tests::SetVariable("TZ", former_->c_str());
    } else {
      tests::UnsetVariable("TZ");
    }
    tzset();
  }
  static void UseZone(const char* zone) {
    tests::SetVariable("TZ", zone);
    tzset();
  }

 private:
  std::optional<std::string> former_;
};

// One of these zones has another day than the other at every moment.
TEST_F(SystemClockTest, NowIsTheLocalDateAndTime) {
  const std::pair<const char*, int> zones[] = {{"UTC0", 0}, {"AHD-14", 14}, {"BHD12", -12}};
  for (const auto& [zone, hours] : zones) {
    UseZone(zone);
    bool met = false;
    // A second may pass between the two looks.
    for (int i = 0; i < 100 && !met; ++i) {
      const auto before = std::chrono::system_clock::now();
      const DateTime now = SystemClock().Now();
      met = now == At(before, hours);
    }
    EXPECT_TRUE(met) << zone;
  }
}

}  // namespace
}  // namespace dossierkit::environment
