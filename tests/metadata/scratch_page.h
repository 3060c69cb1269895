// ScratchPage: a page made by hand, to save controls of every kind under fields of every type.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "metadata/field_items.h"
#include "platform/toolkit/controls/basic_controls.h"
#include "platform/toolkit/controls/mask_ed_box.h"
#include "platform/toolkit/controls/text_box.h"
#include "visit/dossier_page.h"

namespace dossierkit::tests {

// A field of that column; optional and without codes.
inline cFieldItem FieldOf(const std::string& column, const std::string& type,
                          const std::string& label = "标签") {
  cFieldItem item;
  item.ItemName = column;
  item.FieldType = type;
  item.ItemDesc = label;
  item.IsNUll = true;
  return item;
}

inline cFieldItem RequiredFieldOf(const std::string& column, const std::string& type,
                                  const std::string& label = "标签") {
  cFieldItem item = FieldOf(column, type, label);
  item.IsNUll = false;
  return item;
}

inline std::shared_ptr<toolkit::MaskEdBox> MaskedBox(const std::string& mask, const std::string& text = {}) {
  auto box = std::make_shared<toolkit::MaskEdBox>("box");
  box->SetMask(mask);
  if (!text.empty()) box->SetText(text);
  return box;
}

class ScratchPage : public DossierPage {
 public:
  // A page of a set with one record per person.
  ScratchPage(const std::string& set, const std::string& person) : DossierPage("scratch") {
    info_.TabId = set;
    info_.personID = person;
  }

  static std::shared_ptr<ScratchPage> Single(const std::string& set, const std::string& person) {
    return std::make_shared<ScratchPage>(set, person);
  }
  // A page of a set with many records per person, on the record of that number.
  static std::shared_ptr<ScratchPage> Multi(const std::string& set, const std::string& person,
                                            std::int16_t number, const std::string& order) {
    auto page = Single(set, person);
    page->info_.IsMult = true;
    page->info_.id = number;
    page->info_.FldOrder = order;
    return page;
  }

  cWhInfo& WhInfo() override { return info_; }
  const std::shared_ptr<cFieldItems>& FieldItems() const override { return items_; }
  void SetFieldItems(std::shared_ptr<cFieldItems> items) override { items_ = std::move(items); }
  void setCtrl(const std::shared_ptr<cFieldItems>&) override {}
  void setDGItems() override {}

  toolkit::TextBox& AddText(cFieldItem field, const std::string& text) {
    const auto box = Controls().Make<toolkit::TextBox>(NameOf(field));
    box->SetText(text);
    AddField(std::move(field));
    return *box;
  }
  toolkit::MaskEdBox& AddMasked(cFieldItem field, const std::string& mask, const std::string& text = {}) {
    const auto box = Controls().Make<toolkit::MaskEdBox>(NameOf(field));
    box->SetMask(mask);
    if (!text.empty()) box->SetText(text);
    AddField(std::move(field));
    return *box;
  }
  toolkit::CheckBox& AddCheck(cFieldItem field, int value) {
    const auto box = Controls().Make<toolkit::CheckBox>(NameOf(field));
    box->SetValue(value);
    AddField(std::move(field));
    return *box;
  }
  void AddField(cFieldItem field) {
    const std::string key = info_.TabId + "_" + field.ItemName;
    auto item = std::make_shared<cFieldItem>(std::move(field));
    items_->Add(item, key);
  }

 private:
  std::string NameOf(const cFieldItem& field) const { return info_.TabId + "_" + field.ItemName + "_v"; }

  cWhInfo info_;
  std::shared_ptr<cFieldItems> items_ = std::make_shared<cFieldItems>();
};

}  // namespace dossierkit::tests
