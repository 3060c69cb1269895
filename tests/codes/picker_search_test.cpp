// The picker's search, its list and the tooltip of the list.
#include "tests/codes/codes_test.h"

namespace dossierkit::tests {
namespace {

using PickerSearch = CodesTest;

const std::string kNotSet = "对象变量或 With 块变量未设置";
const std::string kSearch =
    "select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from LEVELS where dmattr =true and   "
    "dmcod<>''  and dmcpt<>''   and  ( DmCpt like '%s%d%' or   DmHnd like '%s%d%')     order by dmcod";

// --- search --------------------------------------------------------------------------------------

TEST_F(PickerSearch, EnterSearchesAndTheListTakesTheFocus) {
  Show("LEVELS", "", [&] {
    visit.user.SelectTab("Tab1", 1);
    visit.user.Click("txtDm");
    EXPECT_TRUE(During([&] { visit.user.Type("sd"); }).empty());
    EXPECT_EQ(During([&] { visit.user.Press(kKeyReturn); }), (Statements{kSearch}));
    EXPECT_EQ(ListRows(), (Statements{"水稻"}));
    EXPECT_EQ(ListRows("lstDmCod"), (Statements{"1101"}));
    EXPECT_EQ(Captions().ListIndex(), 0);
    EXPECT_EQ(Focused(), "lstDmCpt");
    EXPECT_EQ(FrontTab(), 1);
  });
}

TEST_F(PickerSearch, TheRowsStandInCodeOrderAndOnlySelectableOnes) {
  MakeTable("T",
            "('30','乙x','b',1),('10','丙x','c',1),('20','甲x','a',1),('05','丁x','d',0),"
            "('06','戊x','e',null),('','己x','f',1),('07','','x',1)");
  Show("T", "x", [&] {
    EXPECT_EQ(ListRows(), (Statements{"丙x", "甲x", "乙x"}));
    EXPECT_EQ(ListRows("lstDmCod"), (Statements{"10", "20", "30"}));
  });
}

TEST_F(PickerSearch, ARowOfALengthOfNoLevelIsInTheList) {
  Script("insert into LEVELS values('111','三位','sw',1)");
  Show("LEVELS", "sw", [&] {
    EXPECT_EQ(ListRows(), (Statements{"三位"}));
    visit.user.Tab();
    visit.user.Press(kKeyReturn);
  });
  EXPECT_EQ(Result(), "111|三位|taken");
}

TEST_F(PickerSearch, EnterInAnEmptySearchDoesNothing) {
  Show("LEVELS", "sd", [&] {
    visit.user.Click("txtDm");
    visit.user.Press('A', toolkit::kCtrl);
    visit.user.Press(toolkit::kKeyDelete);
    EXPECT_TRUE(During([&] { visit.user.Press(kKeyReturn); }).empty());
    EXPECT_EQ(ListRows(), (Statements{"水稻"}));
    EXPECT_EQ(Focused(), "txtDm");
  });
}

TEST_F(PickerSearch, ASearchThatFindsNothingEmptiesTheListAndKeepsTheFocus) {
  Show("LEVELS", "sd", [&] {
    Search("zzz");
    EXPECT_TRUE(ListRows().empty());
    EXPECT_TRUE(ListRows("lstDmCod").empty());
    EXPECT_EQ(Captions().ListIndex(), -1);
    EXPECT_EQ(Focused(), "txtDm");
    EXPECT_EQ(SearchBox().Text(), "zzz");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(PickerSearch, ASecondSearchReplacesTheList) {
  Show("LEVELS", "sd", [&] {
    Search("y");
    EXPECT_EQ(ListRows(), (Statements{"园艺"}));
    Search("%");
    EXPECT_EQ(ListRows(), (Statements{"作物", "水稻", "园艺", "工学"}));
    EXPECT_EQ(ListRows("lstDmCod"), (Statements{"11", "1101", "12", "2"}));
  });
}

TEST_F(PickerSearch, RequiredAFailingSearchEndsTheWindowAndIsThrown) {
  EXPECT_EQ(NumberOfFailure([&] {
              Show("LEVELS", "", [&] {
                visit.user.SelectTab("Tab1", 1);
                visit.user.Click("txtDm");
                visit.user.Paste("s'd");
                visit.user.Press(kKeyReturn);
                EXPECT_TRUE(visit.user.Window().LoopEnded());
              });
            }),
            environment::kSyntaxError);
  EXPECT_FALSE(CodePicker().Loaded());
  EXPECT_FALSE(CodePicker().Shown());
  EXPECT_EQ(Result(), kUntouched);
  EXPECT_TRUE(Shown().empty());
  Show("LEVELS", "sd", [&] { EXPECT_EQ(ListRows(), (Statements{"水稻"})); });
}

// --- tooltip ---------------------------------------------------------------------------------

class ToolTip : public CodesTest {
 protected:
  ToolTip() { MakeTable("T", "('1','甲x','jx',1),('2','乙x','',1),('3','丙x',null,1),('4','丁x','dx',1)"); }
  // The tooltip once the pointer went over that row.
  std::string Over(int row, int button = 0) {
    Captions().UserMouseMove(button, 0, 60, row * headless::kRowHeight + 30);
    return Captions().ToolTipText();
  }
};

TEST_F(ToolTip, TellsTheShorthandOfTheRowUnderThePointer) {
  Show("T", "x", [&] {
    EXPECT_EQ(Captions().ToolTipText(), "");
    EXPECT_EQ(Over(0), "拼音输入代码： jx");
    EXPECT_EQ(Over(3), "拼音输入代码： dx");
    EXPECT_EQ(Captions().ListIndex(), 0);
  });
}

TEST_F(ToolTip, RequiredARowWithoutAShorthandLeavesTheLastOne) {
  Show("T", "x", [&] {
    EXPECT_EQ(Over(1), "");
    EXPECT_EQ(Over(3), "拼音输入代码： dx");
    EXPECT_EQ(Over(1), "拼音输入代码： dx");
    EXPECT_EQ(Over(2), "拼音输入代码： dx");
    EXPECT_EQ(Over(40), "拼音输入代码： dx");
  });
}

TEST_F(ToolTip, StaysWhileAButtonIsPressed) {
  Show("T", "x", [&] {
    EXPECT_EQ(Over(0), "拼音输入代码： jx");
    for (const int button : {1, 2, 4}) EXPECT_EQ(Over(3, button), "拼音输入代码： jx");
  });
}

TEST_F(ToolTip, FollowsTheListOfASecondSearch) {
  Show("T", "x", [&] {
    Search("d");
    EXPECT_EQ(ListRows(), (Statements{"丁x"}));
    EXPECT_EQ(Over(0), "拼音输入代码： dx");
    EXPECT_EQ(Over(1), "拼音输入代码： dx");
  });
}

TEST_F(ToolTip, AnEmptyListHasNone) {
  Show("T", "zzz", [&] { EXPECT_EQ(Over(0), ""); });
}

// --- ClearCollection -----------------------------------------------------------------------------

TEST_F(CodesTest, ClearCollectionRemovesAllMembers) {
  const auto collection = std::make_shared<Collection>(Collection{"a", "b", "c"});
  ClearCollection(collection);
  EXPECT_TRUE(collection->empty());
  ClearCollection(collection);
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodesTest, ClearCollectionShowsThatThereIsNone) {
  ClearCollection(nullptr);
  EXPECT_EQ(Shown(), (Messages{{kNotSet, 48, "错误信息"}}));
}

}  // namespace
}  // namespace dossierkit::tests
