#include "pages/stored_properties.h"

#include <utility>

namespace dossierkit {
namespace {

DesignBag Defaults(const toolkit::Font& surrounding) {
  return {{"BackColor", std::int32_t{0}}, {"ForeColor", std::int32_t{0}}, {"Enabled", false},
          {"Font", surrounding},          {"BackStyle", std::int16_t{0}}, {"BorderStyle", std::int16_t{0}}};
}

}  // namespace

void StoredProperties::Set(const std::string& name, DesignValue value) {
  values_[name] = std::move(value);
  changed_.insert(name);
}

void StoredProperties::InitProperties(const toolkit::Font& surrounding) { values_ = Defaults(surrounding); }

void StoredProperties::WriteProperties(DesignBag& bag, const toolkit::Font& surrounding) {
  for (const auto& [name, value] : Defaults(surrounding)) {
    const auto stored = values_.find(name);
    if (stored != values_.end() && stored->second != value) bag[name] = stored->second;
  }
  changed_.clear();
}

void StoredProperties::ReadProperties(const DesignBag& bag, const toolkit::Font& surrounding) {
  values_ = Defaults(surrounding);
  for (auto& [name, value] : values_) {
    const auto read = bag.find(name);
    if (read != bag.end() && read->second.index() == value.index()) value = read->second;
  }
}

}  // namespace dossierkit
