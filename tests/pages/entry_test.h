// EntryTest: the fixture of the tests that type into fields and leave them.
#pragma once

#include <functional>
#include <string>

#include "codes/fm_grp_cod.h"
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {

class EntryTest : public ShellTest {
 protected:
  // Opens the sample person on A01, plays `scene` and drops the edits.
  void Open(const std::function<void()>& scene) { visit.OpenPerson(kPerson, scene); }
  // Puts the focus into the field, as in "A01_A0102", and types over what it holds.
  void Enter(const std::string& field, const std::string& text) {
    visit.user.Find(field + "_v")->SetFocus();
    visit.user.Press('A', toolkit::kCtrl);
    if (text.empty()) {
      visit.user.Press(toolkit::kKeyDelete);
    } else {
      visit.user.Type(text);
    }
  }
  void EnterAndLeave(const std::string& field, const std::string& text) {
    Enter(field, text);
    visit.user.Tab();
  }
  // Code and caption of the field's item.
  std::string Item(const std::string& field) {
    const auto& item = visit.OnShow().FieldItems()->Item(field);
    return environment::TextOf(item->Dmcod) + "|" + item->Dmcpt;
  }
  bool Changed() { return visit.OnShow().WhInfo().IsChange; }
  // What happens in the picker that opens next.
  void InPicker(const std::function<void()>& scene) {
    visit.script.WillRun([scene](toolkit::Form&) { scene(); });
  }
  std::string Stored(const std::string& columns, const std::string& set = "A01") {
    return Rows(*visit.database, "select " + columns + " from " + set + " where A00='" + kPerson + "'").at(0);
  }
};

// Selects 女性 in the tree, or in the list, of the picker on GB2261.
inline void ClickFemale(Visit& visit) {
  visit.user.SelectTab("Tab1", 0);
  visit.user.ClickNode("tvGrpCod", "G2");
}

inline void SearchFemale(Visit& visit) {
  visit.user.SelectTab("Tab1", 1);
  if (visit.user.Find<toolkit::ListBox>("lstDmCpt")->ListCount() == 0) {
    visit.user.Click("txtDm");
    visit.user.Type("nx");
    visit.user.Press(toolkit::kKeyReturn);
  }
  visit.user.ClickListRow("lstDmCpt", 1);
}

}  // namespace dossierkit::tests
