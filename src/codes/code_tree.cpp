// How the picker fills itself while it loads: title, levels, tree, first search. A statement that
// fails is given up and the next one runs; nobody is told.
#include <exception>

#include "codes/fm_grp_cod.h"
#include "platform/environment/text.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

template <typename Statement>
void SkipFailure(const Statement& statement) {
  try {
    statement();
  } catch (const std::exception&) {
    // Required: a window on a damaged table opens all the same.
  }
}

// The columns of both queries, read by their places: a table may have a hundred thousand rows.
constexpr std::size_t kCode = 0;
constexpr std::size_t kCaption = 1;
constexpr std::size_t kSelectable = 2;

std::string TopLevelQuery(const std::string& table, std::int16_t length) {
  return "select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr  from " + table +
         " where dmcod<>''  and dmcpt<>''    and len(dmcod) =" + std::to_string(length) + "  order by dmcod";
}

std::string InnerLevelQuery(const std::string& table, std::int16_t length) {
  return "select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr from " + table +
         " where  dmcod<>'' and dmcpt<>''  and len(dmcod) =" + std::to_string(length) + "  order by dmcod";
}

}  // namespace

void fmGrpCod::Form_Load() {
  SkipFailure([this] { ShowTitle(); });
  Tab1_->SetTab(0);
  LevelBits_.clear();
  SkipFailure([this] { ReadLevels(); });
  // Required: a first level without rows ends the load, and the search text is ignored.
  if (!BuildTree()) return;
  if (SearchText.empty()) {
    Tab1_->SetTab(0);
    return;
  }
  Tab1_->SetTab(1);
  txtDm_->SetText(SearchText);
  // The window is not visible yet, so that giving the list the focus fails behind the search.
  SkipFailure([this] { txtDm_KeyPress(toolkit::kKeyReturn); });
}

void fmGrpCod::ShowTitle() {
  ado::Recordset group;
  group.Open("select codtbldsc from s_CodeTableDefine where dmgrp ='" + DmGrp + "' ", gConnection());
  SetCaption(environment::TextOf(group.Fields("codtbldsc")) + "代码表");
  group.Close();
}

void fmGrpCod::ReadLevels() {
  ado::Recordset levels;
  levels.Open("select bit from s_CodeLevDefine where dmgrp ='" + DmGrp + "' order by levelnum",
              gConnection());
  LevelBits_.assign(static_cast<std::size_t>(levels.RecordCount()), 0);
  for (std::int16_t& bit : LevelBits_) {
    SkipFailure([&] { bit = environment::ToInt16(levels.Fields("bit")); });
    levels.MoveNext();
  }
  levels.Close();
}

// False where the first level has no rows.
bool fmGrpCod::BuildTree() {
  parent_.reset();
  added_.reset();
  for (std::size_t level = 0; level < LevelBits_.size(); ++level) {
    ado::Recordset rows;
    if (level == 0) {
      SkipFailure([&] { rows.Open(TopLevelQuery(DmGrp, LevelBits_[0]), gConnection()); });
      if (rows.State() == ado::kStateClosed || rows.RecordCount() < 1) return false;
      AddTopLevel(rows);
    } else {
      if (tvGrpCod_->Nodes().Count() < 1) break;
      SkipFailure([&] { rows.Open(InnerLevelQuery(DmGrp, LevelBits_[level]), gConnection()); });
      if (rows.State() == ado::kStateOpen) AddInnerLevel(rows, LevelBits_[level - 1]);
    }
  }
  return true;
}

void fmGrpCod::AddTopLevel(ado::Recordset& rows) {
  for (; !rows.EOF_(); rows.MoveNext()) {
    AddNode(toolkit::kNoNode, toolkit::Relation::kLast, environment::TextOf(rows.Fields(kCode)), rows);
  }
}

// Required: a row whose parent is missing goes under the parent of the row before it.
void fmGrpCod::AddInnerLevel(ado::Recordset& rows, std::int16_t parent_length) {
  const auto length = static_cast<std::size_t>(parent_length);
  tvGrpCod_->Nodes().Reserve(rows.RecordCount());
  std::string found;  // the key of the parent, which is mostly that of the row before
  for (; !rows.EOF_(); rows.MoveNext()) {
    const std::string code = environment::TextOf(rows.Fields(kCode));
    const std::string key = "G" + environment::Left(code, length);
    if (key != found) {
      SkipFailure([&] {
        parent_ = tvGrpCod_->Nodes().Find(key).Index();
        found = key;
      });
    }
    if (parent_) AddNode(*parent_, toolkit::Relation::kChild, code, rows);
  }
}

// Required: where the key is taken, the row's look goes to the node added last.
void fmGrpCod::AddNode(int parent, toolkit::Relation relation, const std::string& code,
                       const ado::Recordset& row) {
  SkipFailure([&] {
    added_ = tvGrpCod_->Nodes().Add(parent, relation, "G" + code, environment::TextOf(row.Fields(kCaption)));
  });
  if (!added_) return;
  SkipFailure([&] {
    const bool selectable = environment::ToBoolean(row.Fields(kSelectable));
    added_->SetForeColor(selectable ? toolkit::kButtonText : toolkit::kButtonShadow);
    added_->SetTag(selectable ? code : "");
  });
}

}  // namespace dossierkit
