// Every record of every sample person, opened, touched, left field by field and saved: nothing of it
// may be lost or changed.
#include <gtest/gtest.h>

#include <algorithm>

#include "metadata/field_items.h"
#include "platform/environment/text.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using Texts = std::vector<std::string>;

// The rows of a person in a set, without the number of the record.
Texts RecordsOf(Database& database, const std::string& set, const std::string& person) {
  const auto rows = database.Execute("select * from " + set + " where A00='" + person + "'");
  Texts records;
  for (std::int32_t row = 1; row <= rows->RecordCount(); ++row) {
    std::string line;
    for (std::size_t column = 0; column < rows->FieldCount(); ++column) {
      if (set != "A01" && environment::EqualIgnoringCase(rows->FieldName(column), set + "99")) continue;
      line += rows->FieldName(column) + "=" + environment::TextOr(rows->ValueAt(row, column), "NULL") + "|";
    }
    records.push_back(line);
  }
  std::ranges::sort(records);
  return records;
}

// Appends a character to the first plain text of the page and takes it back.
void Touch(Visit& visit) {
  const auto& items = *visit.OnShow().FieldItems();
  for (const auto& control : visit.OnShow().Controls()) {
    const std::string& name = control->Name();
    auto* box = dynamic_cast<toolkit::TextBox*>(control.get());
    if (!box || !items.Item(std::string_view(name).substr(0, name.size() - 2))->CodeTable.empty()) continue;
    box->SetFocus();
    box->Select(0, 0);
    visit.user.Type("1");
    visit.user.Press(toolkit::kKeyBack);
    return;
  }
}

// Leaves field after field, from the first of the page on.
void LeaveEveryField(Visit& visit) {
  std::size_t fields = 0;
  std::shared_ptr<toolkit::Control> first;
  for (const auto& control : visit.OnShow().Controls()) {
    if (!control->Name().ends_with("_v")) continue;
    ++fields;
    if (!first || control->TabIndex() < first->TabIndex()) first = control;
  }
  first->SetFocus();
  for (std::size_t i = 0; i < fields; ++i) visit.user.Tab();
}

class EveryRecord : public ::testing::TestWithParam<const char*> {};

TEST_P(EveryRecord, OfEverySamplePersonSurvivesASave) {
  const std::string set = GetParam();
  Visit visit;
  for (const auto& person : Column(*visit.database, "select A00 from A01")) {
    const Texts before = RecordsOf(*visit.database, set, person);
    for (std::size_t row = 1; row <= before.size(); ++row) {
      SCOPED_TRACE(person + " row " + std::to_string(row));
      visit.script.messages.clear();
      const bool saved = visit.OpenPerson(person, [&] {
        visit.GoTo(set);
        if (visit.OnShow().WhInfo().IsMult) visit.user.ClickRow(static_cast<int>(row));
        Touch(visit);
        EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
        LeaveEveryField(visit);
        visit.user.ClickToolbar("Save");
      });
      EXPECT_TRUE(saved);
      // At the limit the user is told that no further record can be added.
      std::erase(visit.script.messages, headless::Message{"此信息集最多只能录入5条记录。", 0, "人员维护"});
      for (const auto& message : visit.script.messages) ADD_FAILURE() << message.text;
      const Texts after = RecordsOf(*visit.database, set, person);
      EXPECT_EQ(after, before);
      if (HasFailure()) return;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Sets, EveryRecord,
                         ::testing::Values("A01", "A02", "A03", "A04", "A05", "A06", "A08", "A09", "A10",
                                           "A11", "A12", "A13", "A14", "A15", "A21", "B01"),
                         [](const auto& tested) { return std::string(tested.param); });

}  // namespace
}  // namespace dossierkit::tests
