#include "pages/check_field_rule.h"

#include <vector>

#include "platform/environment/failure.h"
#include "platform/environment/format.h"
#include "platform/environment/numbers.h"
#include "platform/environment/text.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

using Values = std::vector<std::string>;

std::string Today(const char* pattern) { return environment::Format(TheRuntime().clock.Now(), pattern); }

std::string CheckLength(const cFieldItem& item, const Values& allowed, const std::string& value) {
  const auto length = static_cast<double>(environment::Length(value));
  std::string list;
  for (const std::string& entry : allowed) {
    if (!list.empty()) list += "或";
    list += entry;
    const auto number = environment::ParseNumber(entry);
    if (!number) throw environment::MakeFailure(environment::kTypeMismatch);
    if (*number == length) return "";
  }
  return item.ItemDesc + "长度应该为" + list + "位。";
}

std::string CheckBounds(const cFieldItem& item, const std::string& lower, const std::string& upper,
                        const std::string& text) {
  if (text >= lower && text <= upper) return "";
  return item.ItemDesc + "应该在" + lower + "至" + upper + "之间。";
}

// Required: for these styles the present date takes the place of the upper bound, with hyphens in any
// case.
std::string CheckDate(const cFieldItem& item, const Values& bounds, const std::string& value) {
  if (bounds.size() != 2) return "";
  std::string upper = bounds[1];
  if (item.Style == "yyyy.mm" || item.Style == "yyyy-mm") upper = Today("yyyy-mm");
  if (item.Style == "yyyy.mm.dd" || item.Style == "yyyy-mm-dd") upper = Today("yyyy-mm-dd");
  return CheckBounds(item, bounds[0], upper, environment::Format(value, item.Style));
}

std::string CheckText(const cFieldItem& item, const Values& bounds, const std::string& value) {
  if (bounds.size() < 2) throw environment::MakeFailure(environment::kSubscriptOutOfRange);
  return CheckBounds(item, bounds[0], item.Style == "yyyy" ? Today("yyyy") : bounds[1], value);
}

}  // namespace

std::string CheckFieldRule(const cFieldItem& item, const std::string& value) {
  const Values pieces = environment::Split(item.Check, " ");
  if (pieces.size() < 2) return "";
  const std::string kind = environment::UpperCase(pieces[0]);
  const Values values = environment::Split(pieces[1], ",");
  if (kind == "L") return CheckLength(item, values, value);
  if (kind != "B") return "";
  const std::string type = environment::LowerCase(item.FieldType);
  if (type == "datetime") return CheckDate(item, values, value);
  if (type == "varchar") return CheckText(item, values, value);
  return "";
}

}  // namespace dossierkit
