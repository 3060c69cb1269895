// How the picker fills itself while it loads.
#include "tests/codes/codes_test.h"

namespace dossierkit::tests {
namespace {

const std::string kTitle = "select codtbldsc from s_CodeTableDefine where dmgrp ='LEVELS' ";
const std::string kLevels = "select bit from s_CodeLevDefine where dmgrp ='LEVELS' order by levelnum";
const std::string kFirst =
    "select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr  from LEVELS where dmcod<>''  and "
    "dmcpt<>''    and len(dmcod) =1  order by dmcod";
const std::string kSecond =
    "select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr from LEVELS where  dmcod<>'' and "
    "dmcpt<>''  and len(dmcod) =2  order by dmcod";
const std::string kThird =
    "select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr from LEVELS where  dmcod<>'' and "
    "dmcpt<>''  and len(dmcod) =4  order by dmcod";
const std::string kSearchSd =
    "select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from LEVELS where dmattr =true and   "
    "dmcod<>''  and dmcpt<>''   and  ( DmCpt like '%s%d%' or   DmHnd like '%s%d%')     order by dmcod";

const Statements kTop = {">G1|农学||grey", ">G2|工学|2|black"};
const Statements kInner = {"G1>G11|作物|11|black", "G1>G12|园艺|12|black", "G2>G21|材料||grey"};
const Statements kLeaves = {"G11>G1101|水稻|1101|black", "G11>G1102|小麦||grey"};

class CodeTree : public CodesTest {
 protected:
  // The nodes of the table as the picker shows it.
  Statements NodesOf(const std::string& table) {
    Statements nodes;
    Show(table, "", [&] { nodes = Nodes(); });
    return nodes;
  }
};

// --- the load ------------------------------------------------------------------------------------

TEST_F(CodeTree, IsReadLevelByLevelBeforeTheWindowIsSeen) {
  EXPECT_EQ(During([&] {
              Show("LEVELS", "", [&] {
                EXPECT_EQ(visit.statements, (Statements{kTitle, kLevels, kFirst, kSecond, kThird}));
                EXPECT_EQ(visit.user.Window().Caption(), "层次代码表");
                EXPECT_EQ(FrontTab(), 0);
                EXPECT_EQ(Nodes(), Join({kTop, kInner, kLeaves}));
                EXPECT_EQ(SearchBox().Text(), "");
                EXPECT_TRUE(ListRows().empty());
              });
            }),
            (Statements{kTitle, kLevels, kFirst, kSecond, kThird}));
}

TEST_F(CodeTree, UnfoldingReadsNothingMore) {
  Show("LEVELS", "", [&] {
    EXPECT_TRUE(During([&] {
                  visit.user.Press(toolkit::kKeyRight);
                  visit.user.Press(toolkit::kKeyRight);
                  visit.user.Press(toolkit::kKeyRight);
                  EXPECT_EQ(Selected(), "G11");
                  EXPECT_TRUE(Tree().SelectedNode().Expanded());
                }).empty());
  });
}

TEST_F(CodeTree, ASearchTextIsSearchedBehindTheTree) {
  EXPECT_EQ(During([&] {
              Show("LEVELS", "sd", [&] {
                EXPECT_EQ(FrontTab(), 1);
                EXPECT_EQ(SearchBox().Text(), "sd");
                EXPECT_EQ(ListRows(), (Statements{"水稻"}));
                EXPECT_EQ(ListRows("lstDmCod"), (Statements{"1101"}));
                EXPECT_EQ(Captions().ListIndex(), 0);
                EXPECT_EQ(Nodes(), Join({kTop, kInner, kLeaves}));
              });
            }),
            (Statements{kTitle, kLevels, kFirst, kSecond, kThird, kSearchSd}));
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodeTree, ASearchTextThatFindsNothingStandsOnTheSecondTab) {
  Show("LEVELS", "zzz", [&] {
    EXPECT_EQ(FrontTab(), 1);
    EXPECT_EQ(SearchBox().Text(), "zzz");
    EXPECT_TRUE(ListRows().empty());
    EXPECT_EQ(Captions().ListIndex(), -1);
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodeTree, ASearchTextWithAnApostropheOpensOnAnEmptyListAndSaysNothing) {
  Show("LEVELS", "s'd", [&] {
    EXPECT_EQ(FrontTab(), 1);
    EXPECT_EQ(SearchBox().Text(), "s'd");
    EXPECT_TRUE(ListRows().empty());
    EXPECT_EQ(Nodes(), Join({kTop, kInner, kLeaves}));
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodeTree, TheDivisionsOfTheSampleHangTogether) {
  Show("GB2260", "", [&] {
    EXPECT_EQ(visit.user.Window().Caption(), "行政区划代码表");
    auto& nodes = Tree().Nodes();
    EXPECT_EQ(nodes.Count(), 3221);
    EXPECT_EQ(nodes.ChildCount(toolkit::kNoNode), 34);
    const int county = nodes.Find("G320481").Index();
    EXPECT_EQ(nodes.At(county).Text(), "溧阳市");
    EXPECT_EQ(nodes.At(county).Tag(), "320481");
    EXPECT_EQ(nodes.At(nodes.Parent(county)).Key(), "G3204");
    EXPECT_EQ(nodes.At(nodes.Parent(nodes.Parent(county))).Key(), "G32");
    EXPECT_EQ(nodes.Find("G1101").Tag(), "");
  });
}

// --- title ---------------------------------------------------------------------------------------

TEST_F(CodeTree, WithoutADescriptionTheTitleOfTheDesignStays) {
  Script("delete from s_CodeTableDefine where dmgrp='LEVELS'");
  Show("LEVELS", "", [&] {
    EXPECT_EQ(visit.user.Window().Caption(), "代码帮助窗口");
    EXPECT_EQ(Nodes().size(), 7U);
  });
  Script("insert into s_CodeTableDefine values('LEVELS',null)");
  Show("LEVELS", "", [&] { EXPECT_EQ(visit.user.Window().Caption(), "代码帮助窗口"); });
}

TEST_F(CodeTree, TheTitleOfAFormerShowingIsGone) {
  Show("LEVELS", "", [&] { EXPECT_EQ(visit.user.Window().Caption(), "层次代码表"); });
  Show("NOSUCH", "", [&] { EXPECT_EQ(visit.user.Window().Caption(), "代码帮助窗口"); });
}

TEST_F(CodeTree, AnEmptyDescriptionGivesTheBareEnding) {
  Script("update s_CodeTableDefine set codtbldsc='' where dmgrp='LEVELS'");
  Show("LEVELS", "", [&] { EXPECT_EQ(visit.user.Window().Caption(), "代码表"); });
}

// --- levels --------------------------------------------------------------------------------------

TEST_F(CodeTree, WithoutLevelsTheTreeIsEmptyAndTheSearchWorks) {
  Levels("LEVELS", "");
  EXPECT_EQ(During([&] {
              Show("LEVELS", "", [&] {
                EXPECT_TRUE(Nodes().empty());
                EXPECT_EQ(FrontTab(), 0);
                visit.user.SelectTab("Tab1", 1);
                Search("sd");
                EXPECT_EQ(ListRows(), (Statements{"水稻"}));
              });
            }),
            (Statements{kTitle, kLevels, kSearchSd}));
  Show("LEVELS", "sd", [&] {
    EXPECT_EQ(FrontTab(), 1);
    EXPECT_EQ(ListRows(), (Statements{"水稻"}));
  });
}

TEST_F(CodeTree, TheLevelsOfAFormerShowingAreGone) {
  EXPECT_EQ(NodesOf("LEVELS").size(), 7U);
  MakeTable("T", "('1','甲','j',1)");
  EXPECT_TRUE(NodesOf("T").empty());
}

TEST_F(CodeTree, OneLevelIsAFlatTree) {
  Levels("LEVELS", "2");
  EXPECT_EQ(NodesOf("LEVELS"), (Statements{">G11|作物|11|black", ">G12|园艺|12|black", ">G21|材料||grey"}));
}

TEST_F(CodeTree, TheOrderOfTheLevelsIsThatOfTheirNumbers) {
  Script(
      "delete from s_CodeLevDefine where dmgrp='LEVELS';"
      "insert into s_CodeLevDefine values('LEVELS',30,4),('LEVELS',10,1),('LEVELS',20,2)");
  EXPECT_EQ(NodesOf("LEVELS"), Join({kTop, kInner, kLeaves}));
}

TEST_F(CodeTree, RequiredAFirstLevelWithoutRowsDropsTheSearchText) {
  Script("delete from LEVELS where length(dmcod)=1");
  EXPECT_EQ(During([&] {
              Show("LEVELS", "sd", [&] {
                EXPECT_TRUE(Nodes().empty());
                EXPECT_EQ(FrontTab(), 0);
                EXPECT_EQ(SearchBox().Text(), "");
                EXPECT_TRUE(ListRows().empty());
                EXPECT_EQ(visit.user.Window().Caption(), "层次代码表");
              });
            }),
            (Statements{kTitle, kLevels, kFirst}));
}

TEST_F(CodeTree, AnInnerLevelWithoutRowsIsPassedOver) {
  Script("delete from LEVELS where length(dmcod)=4");
  Show("LEVELS", "yy", [&] {
    EXPECT_EQ(Nodes(), Join({kTop, kInner}));
    EXPECT_EQ(ListRows(), (Statements{"园艺"}));
  });
}

TEST_F(CodeTree, ALevelWithoutALengthHasNoRowsAndHidesTheParentsOfTheNext) {
  Script("update s_CodeLevDefine set \"bit\"=null where dmgrp='LEVELS' and levelnum=2");
  const auto statements = During([&] { EXPECT_EQ(NodesOf("LEVELS"), kTop); });
  ASSERT_EQ(statements.size(), 5U);
  EXPECT_EQ(statements[3],
            "select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr from LEVELS where  dmcod<>'' and "
            "dmcpt<>''  and len(dmcod) =0  order by dmcod");
  // The length behind it was read all the same.
  EXPECT_EQ(statements[4], kThird);
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodeTree, AFirstLevelWithoutALengthIsAnEmptyTree) {
  Script("update s_CodeLevDefine set \"bit\"=null where dmgrp='LEVELS' and levelnum=1");
  Show("LEVELS", "sd", [&] {
    EXPECT_TRUE(Nodes().empty());
    EXPECT_EQ(FrontTab(), 0);
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodeTree, AMissingTableIsAnEmptyTreeAndAnEmptyList) {
  Script(
      "insert into s_CodeTableDefine values('NOSUCH','没有');insert into s_CodeLevDefine "
      "values('NOSUCH',1,1)");
  for (const char* search : {"", "sd"}) {
    Show("NOSUCH", search, [&] {
      EXPECT_EQ(visit.user.Window().Caption(), "没有代码表");
      EXPECT_TRUE(Nodes().empty());
      EXPECT_TRUE(ListRows().empty());
      visit.user.Click("cmdDel");
    });
    EXPECT_EQ(Result(), "||taken");
  }
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodeTree, AnEmptyTableOpensAsWell) {
  Script("delete from LEVELS");
  EXPECT_TRUE(NodesOf("LEVELS").empty());
  EXPECT_EQ(Result(), kUntouched);
}

// --- nodes ---------------------------------------------------------------------------------------

TEST_F(CodeTree, RowsOfNoLevelAndHalfRowsAreNotInTheTree) {
  Script(
      "insert into LEVELS values('111','三位','sw',1),('11011','五位','ww',1),('','空','k',1),"
      "(null,'无','w',1),('3','','y',1),('4',null,'y',1)");
  EXPECT_EQ(NodesOf("LEVELS"), Join({kTop, kInner, kLeaves}));
}

TEST_F(CodeTree, NodesStandInCodeOrderAtEveryLevel) {
  MakeTable("T", "('21','丁','d',1),('2','乙','y',1),('12','丙','b',1),('11','戊','w',1),('1','甲','j',1)");
  Levels("T", "1,2");
  EXPECT_EQ(NodesOf("T"), (Statements{">G1|甲|1|black", ">G2|乙|2|black", "G1>G11|戊|11|black",
                                      "G1>G12|丙|12|black", "G2>G21|丁|21|black"}));
}

TEST_F(CodeTree, TheCodeOfAParentIsCutByCharacters) {
  MakeTable("T", "('甲','农','n',1),('甲一','稻','d',1),('乙','工','g',1),('乙一','机','j',1)");
  Levels("T", "1,2");
  EXPECT_EQ(NodesOf("T"), (Statements{">G乙|工|乙|black", ">G甲|农|甲|black", "G乙>G乙一|机|乙一|black",
                                      "G甲>G甲一|稻|甲一|black"}));
}

TEST_F(CodeTree, ATableWithoutSelectableRowsIsAllGrey) {
  Script("update LEVELS set dmattr=null");
  EXPECT_EQ(NodesOf("LEVELS"),
            (Statements{">G1|农学||grey", ">G2|工学||grey", "G1>G11|作物||grey", "G1>G12|园艺||grey",
                        "G2>G21|材料||grey", "G11>G1101|水稻||grey", "G11>G1102|小麦||grey"}));
}

TEST_F(CodeTree, RequiredARowWithoutAParentHangsUnderTheParentOfTheRowBefore) {
  Script("insert into LEVELS values('19','先','x',1),('31','孤','g',1),('91','儿','e',0)");
  const Statements nodes = NodesOf("LEVELS");
  ASSERT_EQ(nodes.size(), 10U);
  EXPECT_EQ(nodes[4], "G1>G19|先|19|black");
  EXPECT_EQ(nodes[5], "G2>G21|材料||grey");
  EXPECT_EQ(nodes[6], "G2>G31|孤|31|black");
  EXPECT_EQ(nodes[7], "G2>G91|儿||grey");
}

TEST_F(CodeTree, RequiredTheParentOutlivesItsLevel) {
  Script("delete from LEVELS where dmcod like '11%'; insert into LEVELS values('0901','孤','g',1)");
  EXPECT_EQ(NodesOf("LEVELS").back(), "G2>G0901|孤|0901|black");
}

TEST_F(CodeTree, RequiredARowWithoutAParentIsDroppedWhereThereWasNoneBefore) {
  MakeTable("T", "('5','甲','j',1),('11','孤','g',1),('21','儿','e',1),('51','乙','y',1),('61','丙','b',1)");
  Levels("T", "1,2");
  EXPECT_EQ(NodesOf("T"), (Statements{">G5|甲|5|black", "G5>G51|乙|51|black", "G5>G61|丙|61|black"}));
}

TEST_F(CodeTree, TheParentOfAFormerShowingIsGone) {
  EXPECT_EQ(NodesOf("LEVELS").size(), 7U);
  MakeTable("T", "('5','甲','j',1),('11','孤','g',1)");
  Levels("T", "1,2");
  EXPECT_EQ(NodesOf("T"), (Statements{">G5|甲|5|black"}));
}

TEST_F(CodeTree, RequiredASecondRowOfACodeGivesItsLookToTheNodeBefore) {
  MakeTable("T", "('1','甲','j',1),('1','乙','y',0),('2','丙','b',0),('2','丁','d',1)");
  Levels("T", "1");
  // The order of equal codes is the engine's.
  const Statements nodes = NodesOf("T");
  ASSERT_EQ(nodes.size(), 2U);
  EXPECT_TRUE(nodes[0] == ">G1|甲||grey" || nodes[0] == ">G1|乙|1|black") << nodes[0];
  EXPECT_TRUE(nodes[1] == ">G2|丙|2|black" || nodes[1] == ">G2|丁||grey") << nodes[1];
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodeTree, RequiredASecondRowOfAnInnerCodeToo) {
  Script("insert into LEVELS values('12','园艺二','yye',null)");
  const Statements nodes = NodesOf("LEVELS");
  ASSERT_EQ(nodes.size(), 7U);
  EXPECT_TRUE(nodes[3] == "G1>G12|园艺||grey" || nodes[3] == "G1>G12|园艺二|12|black") << nodes[3];
}

TEST_F(CodeTree, RequiredALevelOfTheSameLengthStylesTheNodeAddedLast) {
  // Every row of the third level is there already: its look, and the code it gives, go to the last node
  // of the second, row for row.
  Levels("LEVELS", "1,2,1");
  EXPECT_EQ(NodesOf("LEVELS"),
            Join({kTop, {"G1>G11|作物|11|black", "G1>G12|园艺|12|black", "G2>G21|材料|2|black"}}));
  Script("update LEVELS set dmattr=0 where dmcod='2'; update LEVELS set dmattr=1 where dmcod='1'");
  EXPECT_EQ(NodesOf("LEVELS").back(), "G2>G21|材料||grey");
}

TEST_F(CodeTree, ARowWhoseMarkCannotBeReadIsPlainAndNotSelectable) {
  if (!EngineOfThisRun().takes_any_value) GTEST_SKIP() << "this engine stores no text as a mark";
  MakeTable("T", "('1','甲','j',1),('3','丙','b',0)");
  Script("insert into T values('2','乙','y','x')");
  Levels("T", "1");
  EXPECT_EQ(NodesOf("T"), (Statements{">G1|甲|1|black", ">G2|乙||other", ">G3|丙||grey"}));
  EXPECT_TRUE(Shown().empty());
}

// --- failures ------------------------------------------------------------------------------------

struct Broken {
  std::string title;
  Statements nodes;
  int tab;
  std::string search;
  Statements list;
  Statements statements;
};

TEST_F(CodeTree, EveryFailureOfTheLoadIsSkipped) {
  const Statements all = Join({kTop, kInner, kLeaves});
  const Statements found = {"水稻"};
  const Statements whole = {kTitle, kLevels, kFirst, kSecond, kThird, kSearchSd};
  const std::vector<Broken> states = {
      {"层次代码表", all, 1, "sd", found, whole},                        // nothing fails
      {"代码帮助窗口", all, 1, "sd", found, whole},                      // the title
      {"层次代码表", {}, 1, "sd", found, {kTitle, kLevels, kSearchSd}},  // the levels
      {"层次代码表", {}, 0, "", {}, {kTitle, kLevels, kFirst}},          // the first level
      {"层次代码表", kTop, 1, "sd", found, whole},                       // the second
      {"层次代码表", Join({kTop, kInner}), 1, "sd", found, whole},       // the third
      {"层次代码表", all, 1, "sd", {}, whole},                           // the search
  };
  for (std::size_t k = 0; k < states.size(); ++k) {
    SCOPED_TRACE(k);
    const Broken& expected = states[k];
    visit.failing->FailAt(k);
    const auto statements = During([&] {
      Show("LEVELS", "sd", [&] {
        EXPECT_EQ(visit.failing->HasFailed(), k > 0);
        EXPECT_EQ(visit.user.Window().Caption(), expected.title);
        EXPECT_EQ(Nodes(), expected.nodes);
        EXPECT_EQ(FrontTab(), expected.tab);
        EXPECT_EQ(SearchBox().Text(), expected.search);
        EXPECT_EQ(ListRows(), expected.list);
        EXPECT_EQ(Captions().ListIndex(), expected.list.empty() ? -1 : 0);
        EXPECT_EQ(Focused(), !expected.nodes.empty() || expected.tab == 0 ? "tvGrpCod" : "txtDm");
      });
    });
    EXPECT_EQ(statements, expected.statements);
    EXPECT_EQ(Result(), kUntouched);
    EXPECT_TRUE(Shown().empty());
  }
  visit.failing->FailAt(states.size());
  Show("LEVELS", "sd", [&] { EXPECT_FALSE(visit.failing->HasFailed()); });
}

TEST_F(CodeTree, AFailureThatIsNoneOfTheEnvironmentsIsSkippedToo) {
  const Statements all = Join({kTop, kInner, kLeaves});
  struct Want {
    std::string statement;
    std::string title;
    Statements nodes;
    Statements list;
  };
  const Statements found = {"水稻"};
  for (const auto& want : std::vector<Want>{{kTitle, "代码帮助窗口", all, found},
                                            {kLevels, "层次代码表", {}, found},
                                            {kFirst, "层次代码表", {}, {}},
                                            {kSecond, "层次代码表", kTop, found},
                                            {kSearchSd, "层次代码表", all, {}}}) {
    visit.RunOutOfMemoryAt(want.statement);
    Show("LEVELS", "sd", [&] {
      EXPECT_EQ(visit.user.Window().Caption(), want.title) << want.statement;
      EXPECT_EQ(Nodes(), want.nodes) << want.statement;
      EXPECT_EQ(ListRows(), want.list) << want.statement;
    });
  }
  EXPECT_TRUE(Shown().empty());
}

}  // namespace
}  // namespace dossierkit::tests
