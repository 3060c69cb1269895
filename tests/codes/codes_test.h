// CodesTest: the fixture of the tests of the codes, with a code table of its own beside the sample's.
#pragma once

#include <functional>
#include <string>

#include "codes/fm_grp_cod.h"
#include "platform/environment/text.h"
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {

using toolkit::kKeyReturn;

// The table LEVELS has codes of one, two and four characters: 1 (11 (1101, 1102), 12), 2 (21).
class CodesTest : public ShellTest {
 protected:
  CodesTest() {
    visit.runtime.connection = visit.component.Connection();
    MakeTable("LEVELS",
              "('1','农学','nx',0),('11','作物','zw',1),('1101','水稻','sd',1),('1102','小麦','xm',null),"
              "('12','园艺','yy',1),('2','工学','gx',1),('21','材料','cl',0)");
    Script("insert into s_CodeTableDefine values('LEVELS','层次')");
    Levels("LEVELS", "1,2,4");
  }

  // A code table with rows of code, caption, shorthand and whether it may be chosen.
  void MakeTable(const std::string& table, const std::string& rows) {
    Script("create table " + table +
           " (dmcod varchar(10) collate nocase, dmcpt varchar(60) collate nocase,"
           " dmhnd varchar(30) collate nocase, dmattr boolean)");
    if (!rows.empty()) Script("insert into " + table + " values" + rows);
  }
  // The lengths of a table's codes, top level first, joined by commas.
  void Levels(const std::string& table, const std::string& bits) {
    Script("delete from s_CodeLevDefine where dmgrp='" + table + "'");
    int level = 1;
    for (const auto& bit : environment::Split(bits, ","))
      Script("insert into s_CodeLevDefine values('" + table + "'," + std::to_string(level++) + "," + bit +
             ")");
  }

  // Shows the picker and plays `scene` in it.
  void Show(const std::string& table, const std::string& search, const std::function<void()>& scene) {
    fmGrpCod& picker = CodePicker();
    picker.DmGrp = table;
    picker.SearchText = search;
    picker.Cancelled = true;
    picker.Dmcod = "旧码";
    picker.Dmcpt = "旧名";
    visit.script.WillRun([scene](toolkit::Form&) { scene(); });
    picker.ShowModal();
  }
  // What the picker gives back: code, caption, and whether it says that it was cancelled.
  static std::string Result() {
    const fmGrpCod& picker = CodePicker();
    return picker.Dmcod + "|" + picker.Dmcpt + (picker.Cancelled ? "|cancelled" : "|taken");
  }
  static inline const std::string kUntouched = "旧码|旧名|cancelled";

  // --- the window on show ------------------------------------------------------------------------
  toolkit::TreeView& Tree() { return *visit.user.Find<toolkit::TreeView>("tvGrpCod"); }
  toolkit::ListBox& Captions() { return *visit.user.Find<toolkit::ListBox>("lstDmCpt"); }
  toolkit::TextBox& SearchBox() { return *visit.user.Find<toolkit::TextBox>("txtDm"); }
  int FrontTab() { return visit.user.Find<toolkit::TabStrip>("Tab1")->Tab(); }
  std::string Focused() {
    const auto& focus = visit.user.Window().ActiveControl();
    return focus ? focus->Name() : "";
  }
  std::string Selected() { return Tree().SelectedItem() < 0 ? "" : Tree().SelectedNode().Key(); }
  // The nodes in the order of their adding: key of the parent, key, text, tag, colour.
  Statements Nodes() {
    Statements lines;
    auto& nodes = Tree().Nodes();
    for (int i = 0; i < nodes.Count(); ++i) {
      const toolkit::Node node = nodes.At(i);
      const int parent = nodes.Parent(i);
      const auto color = node.ForeColor();
      lines.push_back((parent < 0 ? "" : nodes.At(parent).Key()) + ">" + node.Key() + "|" + node.Text() +
                      "|" + node.Tag() +
                      (color == 2147483666U   ? "|black"
                       : color == 2147483664U ? "|grey"
                                              : "|other"));
    }
    return lines;
  }
  // The rows of one of the two lists.
  Statements ListRows(const std::string& name) {
    const auto list = visit.user.Find<toolkit::ListBox>(name);
    Statements rows;
    for (int row = 0; row < list->ListCount(); ++row) rows.push_back(list->List(row));
    return rows;
  }
  Statements ListRows() { return ListRows("lstDmCpt"); }
  void Search(const std::string& text) {
    visit.user.Click("txtDm");
    visit.user.Press('A', toolkit::kCtrl);
    visit.user.Type(text);
    visit.user.Press(kKeyReturn);
  }
};

}  // namespace dossierkit::tests
