// fmGrpCod: the window in which the user chooses a code, in a tree or from a searched list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/ado/recordset.h"
#include "platform/toolkit/controls/list_box.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/text_box.h"
#include "platform/toolkit/controls/tree_view.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit {

using Collection = std::vector<std::string>;

// The caller sets the five variables, shows the window and reads Dmcod and Dmcpt: chosen, both empty
// after "清空", or untouched.
class fmGrpCod : public toolkit::Form {
 public:
  explicit fmGrpCod(toolkit::Desktop& desktop);

  // They survive the window's unloading.
  std::string DmGrp;  // the code table, and its name in the two tables that describe it
  std::string Dmcpt;
  std::string Dmcod;
  bool Cancelled = false;
  std::string SearchText;  // searched for at once; empty to open on the tree

 protected:
  void BuildDesign() override;
  void ForgetDesign() override;  // a large table does not stay in memory
  void Form_Load() override;     // skips every failure
  void Form_Activate() override;
  void Form_KeyPress(char32_t& KeyAscii) override;

 private:
  void ShowTitle();
  void ReadLevels();
  bool BuildTree();
  void AddTopLevel(ado::Recordset& rows);
  void AddInnerLevel(ado::Recordset& rows, std::int16_t parent_length);
  void AddNode(int parent, toolkit::Relation relation, const std::string& code, const ado::Recordset& row);

  void cmdOK_Click();
  void cmdCancel_Click() { Unload(); }
  void cmdDel_Click();
  void txtDm_KeyPress(char32_t KeyAscii);
  void lstDmCpt_KeyPress(char32_t KeyAscii);
  void lstDmCpt_MouseMove(int Button, int X, int Y);
  void lstDmCpt_DblClick() {}  // required: a double click in the list does not choose
  void tvGrpCod_KeyPress(char32_t KeyAscii);
  void tvGrpCod_DblClick() { cmdOK_Click(); }

  void TakeFromList();
  void TakeFromTree();
  void Take(const std::string& code, const std::string& caption);

  std::vector<std::int16_t> LevelBits_;                                   // length of the codes of each level
  std::shared_ptr<Collection> HndList_ = std::make_shared<Collection>();  // shorthands, row for row
  // While the tree is built; neither is cleared between rows.
  std::optional<int> parent_;
  std::optional<toolkit::Node> added_;

  // The controls, while the window is loaded.
  std::shared_ptr<toolkit::TabStrip> Tab1_;
  std::shared_ptr<toolkit::TreeView> tvGrpCod_;
  std::shared_ptr<toolkit::TextBox> txtDm_;
  std::shared_ptr<toolkit::ListBox> lstDmCpt_;
  std::shared_ptr<toolkit::ListBox> lstDmCod_;  // codes, row for row; out of sight
  std::vector<environment::Subscription> hooks_;
};

// The one picker of the component.
fmGrpCod& CodePicker();

// Removes all members. An absent collection is a failure, which is shown.
void ClearCollection(const std::shared_ptr<Collection>& collection);

}  // namespace dossierkit
