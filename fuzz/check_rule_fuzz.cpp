// The rule of a field. Lines: rule, field type, style, label; the rest is the value.
#include <string>

#include "adapters/headless/headless_platform.h"
#include "fuzz/fuzz.h"
#include "pages/check_field_rule.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/files/files.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

class FixedClock : public environment::Clock {
 public:
  environment::DateTime Now() const override { return {2026, 11, 5, 10, 20, 30}; }
};

void InstallFixedRuntime() {
  static headless::HeadlessPlatform platform;
  static toolkit::Desktop desktop(platform);
  static const FixedClock clock;
  static files::LocalFiles local_files;
  static Runtime runtime{desktop, clock, local_files, "", nullptr, nullptr};
  InstallRuntime(runtime);
}

void Check(const cFieldItem& item, const std::string& value) {
  const std::string kind = item.Check.substr(0, item.Check.find(' '));
  const bool is_length = kind == "L" || kind == "l";
  const bool is_bounds = kind == "B" || kind == "b";
  std::string message;
  try {
    message = CheckFieldRule(item, value);
  } catch (const environment::Failure& failure) {
    REQUIRE((is_length && failure.number() == environment::kTypeMismatch) ||
            (is_bounds && failure.number() == environment::kSubscriptOutOfRange));
    return;
  }
  if (item.Check.find(' ') == std::string::npos || (!is_length && !is_bounds)) REQUIRE(message.empty());
  if (!message.empty()) {
    REQUIRE(message.starts_with(item.ItemDesc));
    REQUIRE(message.ends_with(is_length ? "位。" : "之间。"));
  }
  // The length of the value alone decides, whatever its characters are.
  if (is_length) REQUIRE(CheckFieldRule(item, std::string(environment::Length(value), 'x')) == message);
  REQUIRE(CheckFieldRule(item, value) == message);
}

}  // namespace
}  // namespace dossierkit

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  dossierkit::InstallFixedRuntime();
  std::string_view text = dossierkit::fuzz::TextOf(data, size);
  dossierkit::cFieldItem item;
  item.Check = dossierkit::fuzz::TakeLine(text);
  item.FieldType = dossierkit::fuzz::TakeLine(text);
  item.Style = dossierkit::fuzz::TakeLine(text);
  item.ItemDesc = dossierkit::fuzz::TakeLine(text);
  dossierkit::Check(item, std::string(text));
  return 0;
}
