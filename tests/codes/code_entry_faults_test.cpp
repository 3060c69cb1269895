// Coded fields with the connection failing at its k-th statement, for every k: the lookup tells of it,
// the picker's load is silent, the picker's search ends the visit, and the database never changes.
#include <algorithm>

#include "tests/pages/entry_test.h"

namespace dossierkit::tests {
namespace {

using toolkit::kKeyReturn;

const Message kLookupBroken = {"磁盘或网络错误。", 48, "信息校对"};
const std::string kBroken = "磁盘或网络错误。";

const std::string kExact =
    "select * from GB2261 where dmattr =true and  (dmcod='nx' or dmcpt ='nx' or dmhnd='nx')";
const std::string kLike =
    "select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from GB2261 where  dmattr =true and   "
    "dmcod<>''  and dmcpt<>''   and  ( DmCpt like '%n%x%' or   DmHnd like '%n%x%')     order by dmcod";
const std::string kTitle = "select codtbldsc from s_CodeTableDefine where dmgrp ='GB2261' ";
const std::string kLevels = "select bit from s_CodeLevDefine where dmgrp ='GB2261' order by levelnum";
const std::string kTop =
    "select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr  from GB2261 where dmcod<>''  and "
    "dmcpt<>''    and len(dmcod) =1  order by dmcod";
const std::string kSearch =
    "select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from GB2261 where dmattr =true and   "
    "dmcod<>''  and dmcpt<>''   and  ( DmCpt like '%n%x%' or   DmHnd like '%n%x%')     order by dmcod";

// The run with the failure at statement k; k = 0 is the one without.
struct FaultRun {
  std::string window;     // the picker when it opened: title, nodes, tab in front, rows of the list
  Statements statements;  // those of the whole entry
  Messages messages;
  std::string field;   // item, text and mark of the field in the end
  std::string thrown;  // what left the visit
};

class CodeEntryFaults : public EntryTest {
 protected:
  std::string Window() {
    return visit.user.Window().Caption() + ", " +
           std::to_string(visit.user.Find<toolkit::TreeView>("tvGrpCod")->Nodes().Count()) + " nodes, tab " +
           std::to_string(visit.user.Find<toolkit::TabStrip>("Tab1")->Tab()) + ", " +
           std::to_string(visit.user.Find<toolkit::ListBox>("lstDmCpt")->ListCount()) + " rows";
  }
  std::string Field() {
    return Item("A01_A0102") + ": " + visit.Text("A01_A0102").Text() + (Changed() ? ", changed" : "");
  }
  // Searches where nothing was found yet, and takes the second row if there is one.
  void ChooseFromList() {
    if (visit.user.Find<toolkit::TabStrip>("Tab1")->Tab() == 0) SearchFemale(visit);
    if (visit.user.Window().LoopEnded()) return;  // the search failed
    if (visit.user.Find<toolkit::ListBox>("lstDmCpt")->ListCount() > 0)
      visit.user.ClickListRow("lstDmCpt", 1);
    visit.user.Click("cmdOK");
  }
  // Plays the entry with the failure at statement k, and looks at what came of it.
  void Play(std::size_t k, const FaultRun& expected, const std::function<void()>& act) {
    SCOPED_TRACE("failure at statement " + std::to_string(k));
    visit.script.messages.clear();
    const auto before = Rows(*visit.database, "select * from A01");
    std::string thrown;
    Statements statements;
    try {
      Open([&] {
        Enter("A01_A0102", "nx");
        InPicker([&] {
          EXPECT_EQ(Window(), expected.window);
          ChooseFromList();
        });
        visit.failing->FailAt(k);
        statements = During(act);
        EXPECT_EQ(visit.failing->HasFailed(), k > 0);
        visit.failing->FailAt(0);
        EXPECT_EQ(Field(), expected.field);
        EXPECT_EQ(visit.Window().LoopEnded(), !expected.thrown.empty());
        EXPECT_FALSE(CodePicker().Loaded());
      });
    } catch (const std::exception& failure) {
      thrown = failure.what();
    }
    EXPECT_EQ(thrown, expected.thrown);
    EXPECT_EQ(statements, expected.statements);
    EXPECT_EQ(Shown(), expected.messages);
    EXPECT_EQ(Rows(*visit.database, "select * from A01"), before);
    EXPECT_FALSE(visit.Window().Loaded());
    // The next visit works.
    visit.OpenPerson(kPerson, [&] {
      EXPECT_EQ(Field(), "1|男性: 男性");
      EnterAndLeave("A01_A0102", "wz");
      EXPECT_EQ(Field(), "0|未知的性别: 未知的性别, changed");
    });
  }
};

const std::string kWhole = "性别代码表, 4 nodes, tab 1, 2 rows";
const std::string kFemale = "2|女性: 女性, changed";
const std::string kEmpty = "|: , changed";
const Message kChoose = {"请选择代码。", 0, "DossierKit"};

TEST_F(CodeEntryFaults, LeavingAFieldByTyping) {
  const Statements load = {kTitle, kLevels, kTop, kSearch};
  const Statements all = {kExact, kLike, kTitle, kLevels, kTop, kSearch};
  const std::vector<FaultRun> runs = {
      {kWhole, all, {}, kFemale, ""},
      {kWhole, Join({{kExact}, load}), {kLookupBroken}, kFemale, ""},
      {kWhole, all, {kLookupBroken}, kFemale, ""},
      {"代码帮助窗口, 4 nodes, tab 1, 2 rows", all, {}, kFemale, ""},
      {"性别代码表, 0 nodes, tab 1, 2 rows", {kExact, kLike, kTitle, kLevels, kSearch}, {}, kFemale, ""},
      // The search text is ignored; the user searches by hand.
      {"性别代码表, 0 nodes, tab 0, 0 rows", all, {}, kFemale, ""},
      {"性别代码表, 4 nodes, tab 1, 0 rows", all, {kChoose}, kEmpty, ""},
  };
  for (std::size_t k = 0; k < runs.size(); ++k) Play(k, runs[k], [&] { visit.user.Tab(); });
}

TEST_F(CodeEntryFaults, DoubleClickAndSearch) {
  const Statements all = {kTitle, kLevels, kTop, kSearch};
  const std::string tree = "性别代码表, 4 nodes, tab 0, 0 rows";
  const std::vector<FaultRun> runs = {
      {tree, all, {}, kFemale, ""},
      {"代码帮助窗口, 4 nodes, tab 0, 0 rows", all, {}, kFemale, ""},
      {"性别代码表, 0 nodes, tab 0, 0 rows", {kTitle, kLevels, kSearch}, {}, kFemale, ""},
      {"性别代码表, 0 nodes, tab 0, 0 rows", all, {}, kFemale, ""},
      // Nobody traps the search of the user: both windows end, and the field is as it was typed.
      {tree, all, {}, "1|男性: nx, changed", kBroken},
  };
  for (std::size_t k = 0; k < runs.size(); ++k)
    Play(k, runs[k], [&] { visit.user.DoubleClick("A01_A0102_v"); });
}

TEST_F(CodeEntryFaults, ATypedTextThatOneRowMatches) {
  const std::vector<Messages> shown = {{}, {kLookupBroken}, {kLookupBroken}};
  for (std::size_t k = 0; k < shown.size(); ++k) {
    SCOPED_TRACE(k);
    visit.script.messages.clear();
    Open([&] {
      Enter("A01_A0102", "wz");
      if (k > 0) {
        // A failure of the lookup is no match: the picker opens on the text.
        InPicker([&] {
          EXPECT_EQ(Window(), "性别代码表, 4 nodes, tab 1, 1 rows");
          visit.user.Click("cmdCancel");
        });
      }
      visit.failing->FailAt(k);
      visit.user.Tab();
      EXPECT_EQ(Field(), k == 0 ? "0|未知的性别: 未知的性别, changed" : kEmpty);
      EXPECT_EQ(visit.Focus(), "A01_A0103_v");
    });
    EXPECT_EQ(Shown(), shown[k]);
  }
}

}  // namespace
}  // namespace dossierkit::tests
