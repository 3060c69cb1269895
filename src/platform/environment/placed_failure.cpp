#include "platform/environment/placed_failure.h"

namespace dossierkit::environment {

void PlacedFailure::Add(const Place& place) {
  const auto fill = [](std::string& part, const std::string& known) {
    if (part.empty()) part = known;
  };
  fill(place_.set, place.set);
  fill(place_.field, place.field);
  fill(place_.doing, place.doing);
  fill(place_.statement, place.statement);
}

std::string DetailsOf(const Failure& failure) {
  const auto* placed = dynamic_cast<const PlacedFailure*>(&failure);
  const Place place = placed ? placed->place() : Place{.statement = failure.statement()};
  std::string details = "错误 " + std::to_string(failure.number()) + "：" + failure.description();
  const auto add = [&details](const char* name, const std::string& part) {
    if (!part.empty()) details += "\n" + std::string(name) + "：" + part;
  };
  add("信息集", place.set);
  add("字段", place.field);
  add("正在", place.doing);
  add("语句", place.statement);
  return details;
}

}  // namespace dossierkit::environment
