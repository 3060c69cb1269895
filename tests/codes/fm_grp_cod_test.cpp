// The picker: its design, and what its buttons, keys and clicks do.
#include "codes/fm_grp_cod.h"

#include <map>
#include <new>

#include "tests/codes/codes_test.h"

namespace dossierkit::tests {
namespace {

using toolkit::kKeyDown;
using toolkit::kKeyEscape;
using toolkit::kKeyRight;

using FmGrpCod = CodesTest;

const std::string kNotSet = "对象变量或 With 块变量未设置";

// --- design --------------------------------------------------------------------------------------

TEST_F(FmGrpCod, HasTheRequiredDesign) {
  Show("NOSUCH", "", [&] {
    auto& window = visit.user.Window();
    EXPECT_EQ(window.Name(), "fmGrpCod");
    EXPECT_EQ(window.Caption(), "代码帮助窗口");
    EXPECT_TRUE(window.KeyPreview());
    EXPECT_TRUE(window.CenteredOnOwner());
    EXPECT_EQ(window.DesignWidth(), 5055);
    EXPECT_EQ(window.DesignHeight(), 6555);
    const auto strip = visit.user.Find<toolkit::TabStrip>("Tab1");
    ASSERT_TRUE(strip);
    ASSERT_EQ(strip->TabCount(), 2);
    EXPECT_EQ(strip->TabCaption(0), "浏览查询");
    EXPECT_EQ(strip->TabCaption(1), "录入查询");
    EXPECT_EQ(strip->TabPage(Tree()), 0);
    EXPECT_EQ(strip->TabPage(SearchBox()), 1);
    EXPECT_EQ(strip->TabPage(Captions()), 1);
    EXPECT_EQ(SearchBox().Text(), "");
    EXPECT_FALSE(SearchBox().MultiLine());
  });
}

TEST_F(FmGrpCod, NothingOfATableStaysInMemoryBehindTheWindow) {
  std::weak_ptr<toolkit::Control> tree;
  std::weak_ptr<toolkit::Control> list;
  Show("LEVELS", "", [&] {
    tree = visit.user.Find("tvGrpCod");
    list = visit.user.Find("lstDmCpt");
  });
  EXPECT_TRUE(tree.expired());
  EXPECT_TRUE(list.expired());
}

TEST_F(FmGrpCod, TheButtonsAreNeitherDefaultNorCancel) {
  const std::map<std::string, std::string> captions = {
      {"cmdOK", "确定"}, {"cmdCancel", "取消"}, {"cmdDel", "清空"}};
  Show("LEVELS", "", [&] {
    const auto place = [&](const char* name) { return visit.user.Find(name)->Place(); };
    for (const auto& [name, caption] : captions) {
      const auto button = visit.user.Find<toolkit::CommandButton>(name);
      ASSERT_TRUE(button) << name;
      EXPECT_EQ(button->Caption(), caption);
      EXPECT_FALSE(button->Default()) << name;
      EXPECT_FALSE(button->Cancel()) << name;
    }
    EXPECT_LT(place("cmdDel").left + place("cmdDel").width, place("cmdOK").left);
    EXPECT_LT(place("cmdOK").left + place("cmdOK").width, place("cmdCancel").left);
  });
}

TEST_F(FmGrpCod, TheListOfCodesIsOutOfSightAndNoTabStop) {
  Show("LEVELS", "", [&] {
    const auto codes = visit.user.Find<toolkit::ListBox>("lstDmCod");
    ASSERT_TRUE(codes);
    EXPECT_GE(codes->Place().left, 5055);
    EXPECT_FALSE(codes->TabStop());
  });
}

TEST_F(FmGrpCod, ThereIsOneForTheWholeComponent) {
  const fmGrpCod* first = &CodePicker();
  Show("LEVELS", "", [&] { EXPECT_EQ(&visit.user.Window(), first); });
  EXPECT_EQ(&CodePicker(), first);
}

TEST_F(FmGrpCod, ItsFiveVariablesStayReadableBehindIt) {
  Show("LEVELS", "sd", [] {});
  const fmGrpCod& picker = CodePicker();
  EXPECT_FALSE(picker.Loaded());
  EXPECT_EQ(picker.DmGrp, "LEVELS");
  EXPECT_EQ(picker.SearchText, "sd");
  EXPECT_EQ(Result(), kUntouched);
}

TEST_F(FmGrpCod, ItIsLoadedAfreshEachTime) {
  Show("LEVELS", "", [&] {
    visit.user.SelectTab("Tab1", 1);
    Search("sd");
    EXPECT_EQ(ListRows(), (Statements{"水稻"}));
  });
  Script("insert into LEVELS values('3','医学','yx',1)");
  Show("LEVELS", "", [&] {
    EXPECT_EQ(FrontTab(), 0);
    EXPECT_EQ(SearchBox().Text(), "");
    EXPECT_TRUE(ListRows().empty());
    EXPECT_EQ(Tree().Nodes().Find("G3").Text(), "医学");
    EXPECT_EQ(Selected(), "G1");
  });
}

// --- the first focus -----------------------------------------------------------------------------

TEST_F(FmGrpCod, OpensOnTheTreeWithItsFirstNodeSelectedAndClosed) {
  Show("LEVELS", "", [&] {
    EXPECT_EQ(Focused(), "tvGrpCod");
    EXPECT_EQ(Selected(), "G1");
    EXPECT_FALSE(Tree().SelectedNode().Expanded());
  });
}

class ActivatedAgain : public fmGrpCod {
 public:
  using fmGrpCod::fmGrpCod;
  using fmGrpCod::Form_Activate;
};

TEST_F(FmGrpCod, AnActivationClosesTheSelectedNodeAndGivesTheTreeTheFocus) {
  const auto picker = std::make_shared<ActivatedAgain>(visit.desktop);
  picker->DmGrp = "LEVELS";
  visit.script.WillRun([&](toolkit::Form&) {
    visit.user.Press(kKeyRight);
    EXPECT_TRUE(Tree().SelectedNode().Expanded());
    visit.user.Find("cmdOK")->SetFocus();
    picker->Form_Activate();
    EXPECT_EQ(Focused(), "tvGrpCod");
    EXPECT_EQ(Selected(), "G1");
    EXPECT_FALSE(Tree().SelectedNode().Expanded());
  });
  picker->ShowModal();
}

TEST_F(FmGrpCod, RequiredTheFocusIsOnTheTreeOfTheHiddenTabBehindASearch) {
  Show("LEVELS", "sd", [&] {
    EXPECT_EQ(FrontTab(), 1);
    EXPECT_EQ(Focused(), "tvGrpCod");
    EXPECT_EQ(Selected(), "G1");
    // The keys go there: the arrow moves in the tree, Enter chooses nothing.
    visit.user.Press(kKeyDown);
    EXPECT_EQ(Selected(), "G2");
    EXPECT_EQ(Captions().ListIndex(), 0);
    visit.user.Press(kKeyReturn);
    EXPECT_FALSE(visit.user.Window().LoopEnded());
    EXPECT_EQ(Result(), kUntouched);
    // Tab leads to the list, where Enter chooses.
    visit.user.Tab();
    EXPECT_EQ(Focused(), "lstDmCpt");
    visit.user.Press(kKeyReturn);
    EXPECT_EQ(Result(), "1101|水稻|taken");
  });
}

TEST_F(FmGrpCod, ATreeOfOneNodeTakesTheFocusToo) {
  MakeTable("T", "('1','水稻','sd',1)");
  Levels("T", "1");
  Show("T", "sd", [&] {
    EXPECT_EQ(FrontTab(), 1);
    EXPECT_EQ(Focused(), "tvGrpCod");
    EXPECT_EQ(Selected(), "G1");
  });
}

TEST_F(FmGrpCod, AnEmptyTreeWithASearchLeavesTheFocusOnTheFrontTab) {
  Levels("LEVELS", "");
  Show("LEVELS", "sd", [&] {
    EXPECT_EQ(FrontTab(), 1);
    EXPECT_EQ(Focused(), "txtDm");
  });
}

// --- cmdOK ---------------------------------------------------------------------------------------

TEST_F(FmGrpCod, OkTakesTheSelectedNode) {
  Show("LEVELS", "", [&] {
    visit.user.ClickNode("tvGrpCod", "G2");
    visit.user.Click("cmdOK");
    EXPECT_FALSE(CodePicker().Loaded());
  });
  EXPECT_EQ(Result(), "2|工学|taken");
  EXPECT_TRUE(Shown().empty());
}

TEST_F(FmGrpCod, OkOnAHeadingDoesNothing) {
  Show("LEVELS", "", [&] {
    visit.user.Click("cmdOK");
    EXPECT_FALSE(visit.user.Window().LoopEnded());
    EXPECT_EQ(Result(), kUntouched);
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(FmGrpCod, OkWithoutASelectedNodeIsShownUnderTheTitleOfTheWindow) {
  Script("delete from LEVELS");
  Show("LEVELS", "", [&] {
    visit.user.Click("cmdOK");
    EXPECT_FALSE(visit.user.Window().LoopEnded());
  });
  EXPECT_EQ(Shown(), (Messages{{kNotSet, 48, "层次代码表"}}));
  Show("NOSUCH", "", [&] { visit.user.Click("cmdOK"); });
  EXPECT_EQ(Shown().back(), (Message{kNotSet, 48, "代码帮助窗口"}));
  EXPECT_EQ(Result(), kUntouched);
}

TEST_F(FmGrpCod, OkTakesTheSelectedRowOfTheList) {
  Show("LEVELS", "%", [&] {
    visit.user.ClickListRow("lstDmCpt", 2);
    visit.user.Click("cmdOK");
  });
  EXPECT_EQ(Result(), "12|园艺|taken");
}

TEST_F(FmGrpCod, OkOnTheListTakesItsRowAndNotTheNode) {
  Show("LEVELS", "", [&] {
    visit.user.ClickNode("tvGrpCod", "G2");
    visit.user.SelectTab("Tab1", 1);
    Search("sd");
    visit.user.Click("cmdOK");
  });
  EXPECT_EQ(Result(), "1101|水稻|taken");
}

TEST_F(FmGrpCod, OkOnTheTreeTakesItsNodeAndNotTheRow) {
  Show("LEVELS", "sd", [&] {
    visit.user.SelectTab("Tab1", 0);
    visit.user.ClickNode("tvGrpCod", "G2");
    visit.user.Click("cmdOK");
  });
  EXPECT_EQ(Result(), "2|工学|taken");
}

TEST_F(FmGrpCod, OkOnTheListWithoutARowAsksForOne) {
  Show("LEVELS", "", [&] {
    visit.user.SelectTab("Tab1", 1);
    visit.user.Click("cmdOK");
    EXPECT_FALSE(visit.user.Window().LoopEnded());
    Search("zzz");
    visit.user.Click("cmdOK");
    EXPECT_FALSE(visit.user.Window().LoopEnded());
  });
  EXPECT_EQ(Shown(), (Messages{{"请选择代码。", 0, "DossierKit"}, {"请选择代码。", 0, "DossierKit"}}));
  EXPECT_EQ(Result(), kUntouched);
}

TEST_F(FmGrpCod, AFailureOfOkThatIsNoneOfTheEnvironmentsIsShownToo) {
  visit.script.on_message = [](const Message& message) {
    if (message.text == "请选择代码。") throw std::bad_alloc();
  };
  Show("LEVELS", "", [&] {
    visit.user.SelectTab("Tab1", 1);
    visit.user.Click("cmdOK");
    EXPECT_FALSE(visit.user.Window().LoopEnded());
  });
  EXPECT_EQ(Shown(),
            (Messages{{"请选择代码。", 0, "DossierKit"}, {std::bad_alloc().what(), 48, "层次代码表"}}));
  EXPECT_EQ(Result(), kUntouched);
}

// --- the other ways out --------------------------------------------------------------------------

TEST_F(FmGrpCod, ClearEmptiesBothVariables) {
  Show("LEVELS", "sd", [&] { visit.user.Click("cmdDel"); });
  EXPECT_EQ(Result(), "||taken");
  EXPECT_FALSE(CodePicker().Loaded());
}

TEST_F(FmGrpCod, CancelAndTheCloseBoxTouchNothing) {
  Show("LEVELS", "sd", [&] {
    visit.user.Click("cmdCancel");
    EXPECT_FALSE(CodePicker().Loaded());
  });
  EXPECT_EQ(Result(), kUntouched);
  Show("LEVELS", "", [&] {
    visit.user.ClickNode("tvGrpCod", "G2");
    visit.user.Close();
    EXPECT_FALSE(CodePicker().Loaded());
  });
  EXPECT_EQ(Result(), kUntouched);
}

TEST_F(FmGrpCod, EscHasNoMeaning) {
  for (const char* control : {"tvGrpCod", "txtDm", "lstDmCpt", "cmdOK", "cmdCancel", "cmdDel"}) {
    Show("LEVELS", "sd", [&] {
      visit.user.Find(control)->SetFocus();
      visit.user.Press(kKeyEscape);
      EXPECT_FALSE(visit.user.Window().LoopEnded()) << control;
    });
    EXPECT_EQ(Result(), kUntouched) << control;
  }
}

// --- keys ----------------------------------------------------------------------------------------

TEST_F(FmGrpCod, EnterTakesTheSelectedNode) {
  Show("LEVELS", "", [&] {
    visit.user.Press(kKeyRight);
    visit.user.Press(kKeyRight);
    EXPECT_EQ(Selected(), "G11");
    visit.user.Press(kKeyReturn);
    EXPECT_FALSE(CodePicker().Loaded());
  });
  EXPECT_EQ(Result(), "11|作物|taken");
}

TEST_F(FmGrpCod, EnterOnAHeadingDoesNothing) {
  Show("LEVELS", "", [&] {
    visit.user.Press(kKeyReturn);
    EXPECT_FALSE(visit.user.Window().LoopEnded());
    EXPECT_EQ(Selected(), "G1");
    EXPECT_FALSE(Tree().SelectedNode().Expanded());
  });
  EXPECT_EQ(Result(), kUntouched);
  EXPECT_TRUE(Shown().empty());
}

TEST_F(FmGrpCod, OtherKeysInTheTreeAndTheListChooseNothing) {
  Show("LEVELS", "%", [&] {
    visit.user.Find("lstDmCpt")->SetFocus();
    visit.user.Type("x ");
    visit.user.SelectTab("Tab1", 0);
    visit.user.ClickNode("tvGrpCod", "G2");
    visit.user.Type("x ");
    EXPECT_FALSE(visit.user.Window().LoopEnded());
  });
  EXPECT_EQ(Result(), kUntouched);
}

TEST_F(FmGrpCod, EnterTakesTheSelectedRow) {
  Show("LEVELS", "%", [&] {
    visit.user.Tab();
    visit.user.Press(kKeyDown);
    EXPECT_EQ(Captions().ListIndex(), 1);
    visit.user.Press(kKeyReturn);
    EXPECT_FALSE(CodePicker().Loaded());
  });
  EXPECT_EQ(Result(), "1101|水稻|taken");
}

TEST_F(FmGrpCod, EnterInAListWithoutARowSaysNothing) {
  Show("LEVELS", "", [&] {
    visit.user.SelectTab("Tab1", 1);
    visit.user.Find("lstDmCpt")->SetFocus();
    visit.user.Press(kKeyReturn);
    EXPECT_FALSE(visit.user.Window().LoopEnded());
  });
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(Result(), kUntouched);
}

TEST_F(FmGrpCod, EnterInATreeWithoutNodesDoesNothing) {
  Show("NOSUCH", "", [&] {
    EXPECT_EQ(Focused(), "tvGrpCod");
    visit.user.Press(kKeyReturn);
    EXPECT_FALSE(visit.user.Window().LoopEnded());
  });
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(Result(), kUntouched);
}

TEST_F(FmGrpCod, AnApostropheIsNowhereTypedAndBeeps) {
  for (const char* control : {"txtDm", "tvGrpCod", "lstDmCpt", "cmdOK", "Tab1"}) {
    Show("LEVELS", "sd", [&] {
      visit.user.Find(control)->SetFocus();
      const int beeps = visit.script.beeps;
      visit.user.Type("'");
      EXPECT_EQ(visit.script.beeps, beeps + 1) << control;
      EXPECT_EQ(SearchBox().Text(), "sd");
    });
  }
  Show("LEVELS", "", [&] {
    visit.user.SelectTab("Tab1", 1);
    visit.user.Click("txtDm");
    const int beeps = visit.script.beeps;
    visit.user.Type("a'b\"%_;-");
    EXPECT_EQ(SearchBox().Text(), "ab\"%_;-");
    EXPECT_EQ(visit.script.beeps, beeps + 1);
  });
}

// --- the mouse -----------------------------------------------------------------------------------

TEST_F(FmGrpCod, ADoubleClickTakesANode) {
  Show("LEVELS", "", [&] {
    visit.user.ClickNode("tvGrpCod", "G2");
    visit.user.DoubleClick("tvGrpCod");
    EXPECT_FALSE(CodePicker().Loaded());
  });
  EXPECT_EQ(Result(), "2|工学|taken");
}

TEST_F(FmGrpCod, ADoubleClickOnAHeadingOnlyFoldsIt) {
  Show("LEVELS", "", [&] {
    visit.user.DoubleClick("tvGrpCod");
    EXPECT_TRUE(Tree().Nodes().Find("G1").Expanded());
    visit.user.DoubleClick("tvGrpCod");
    EXPECT_FALSE(Tree().Nodes().Find("G1").Expanded());
  });
  EXPECT_EQ(Result(), kUntouched);
  EXPECT_TRUE(Shown().empty());
}

TEST_F(FmGrpCod, ADoubleClickInATreeWithoutNodesIsShown) {
  Show("NOSUCH", "", [&] {
    visit.user.DoubleClick("tvGrpCod");
    EXPECT_FALSE(visit.user.Window().LoopEnded());
  });
  EXPECT_EQ(Shown(), (Messages{{kNotSet, 48, "代码帮助窗口"}}));
}

TEST_F(FmGrpCod, RequiredADoubleClickInTheListChoosesNothing) {
  Show("LEVELS", "%", [&] {
    visit.user.ClickListRow("lstDmCpt", 1);
    visit.user.DoubleClick("lstDmCpt");
    EXPECT_FALSE(visit.user.Window().LoopEnded());
  });
  EXPECT_EQ(Result(), kUntouched);
  EXPECT_TRUE(Shown().empty());
}

}  // namespace
}  // namespace dossierkit::tests
