// StoredProperties: the design properties that a page stores for its designer. They do not touch the
// look of the page.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <variant>

#include "platform/toolkit/controls/control.h"

namespace dossierkit {

// What a designer keeps of a control, by the name of the property.
using DesignValue = std::variant<std::int32_t, std::int16_t, bool, toolkit::Font>;
using DesignBag = std::map<std::string, DesignValue>;

class StoredProperties {
 public:
  // Setting one only stores it, and marks it as changed.
  std::int32_t BackColor() const { return Get<std::int32_t>("BackColor"); }
  void SetBackColor(std::int32_t color) { Set("BackColor", color); }
  std::int32_t ForeColor() const { return Get<std::int32_t>("ForeColor"); }
  void SetForeColor(std::int32_t color) { Set("ForeColor", color); }
  bool Enabled() const { return Get<bool>("Enabled"); }
  void SetEnabled(bool enabled) { Set("Enabled", enabled); }
  toolkit::Font Font() const { return Get<toolkit::Font>("Font"); }
  void SetFont(const toolkit::Font& font) { Set("Font", font); }
  std::int16_t BackStyle() const { return Get<std::int16_t>("BackStyle"); }
  void SetBackStyle(std::int16_t style) { Set("BackStyle", style); }
  std::int16_t BorderStyle() const { return Get<std::int16_t>("BorderStyle"); }
  void SetBorderStyle(std::int16_t style) { Set("BorderStyle", style); }

  // The names of the properties that were set since they were last written.
  const std::set<std::string>& Changed() const { return changed_; }

  // `surrounding` is the font of the form around the page, the default of Font; the other defaults are
  // 0 and False. Writing leaves out what equals its default, reading takes the default for what is
  // left out.
  void InitProperties(const toolkit::Font& surrounding);
  void WriteProperties(DesignBag& bag, const toolkit::Font& surrounding);
  void ReadProperties(const DesignBag& bag, const toolkit::Font& surrounding);

 private:
  template <typename T>
  T Get(const std::string& name) const {
    const auto found = values_.find(name);
    return found == values_.end() ? T{} : std::get<T>(found->second);
  }
  void Set(const std::string& name, DesignValue value);

  DesignBag values_;
  std::set<std::string> changed_;
};

}  // namespace dossierkit
