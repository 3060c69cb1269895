// Codes entered by people: typed, browsed, searched, given up; and a date that does not exist.
#include <gtest/gtest.h>

#include "codes/fm_grp_cod.h"
#include "metadata/field_items.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using toolkit::kCtrl;
using toolkit::kKeyDown;
using toolkit::kKeyEscape;
using toolkit::kKeyReturn;
using toolkit::kKeyRight;

class CodeEntry : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_TRUE(visit_.script.AllUsed()) << "a window did not open"; }

  void Open(const std::function<void()>& scene) { visit_.OpenPerson(kPerson, scene); }
  void InPicker(const std::function<void()>& scene) {
    visit_.script.WillRun([scene](toolkit::Form&) { scene(); });
  }
  void Enter(const std::string& field, const std::string& text) {
    visit_.user.Click(field + "_v");
    visit_.user.Press('A', kCtrl);
    visit_.user.Type(text);
  }
  std::string Shown(const std::string& field) { return visit_.Text(field).Text(); }
  std::string Item(const std::string& field) {
    const auto& item = visit_.OnShow().FieldItems()->Item(field);
    return environment::TextOf(item->Dmcod) + "|" + item->Dmcpt;
  }
  std::string Stored(const std::string& column) {
    return One(*visit_.database, "select " + column + " from A01 where A00='" + kPerson + "'");
  }
  std::string PickerFocus() {
    const auto& focus = visit_.user.Window().ActiveControl();
    return focus ? focus->Name() : "";
  }
  std::string Selected() { return visit_.user.Find<toolkit::TreeView>("tvGrpCod")->SelectedNode().Key(); }
  int FrontTab() { return visit_.user.Find<toolkit::TabStrip>("Tab1")->Tab(); }
  // Walks down the tree to the node.
  void DownTo(const std::string& key) {
    for (int i = 0; i < 60 && Selected() != key; ++i) visit_.user.Press(kKeyDown);
    EXPECT_EQ(Selected(), key);
  }

  Visit visit_;
};

TEST_F(CodeEntry, AShorthandIsTypedAndSaved) {
  Open([&] {
    Enter("A01_A0103", "baz");
    visit_.user.Tab();
    EXPECT_EQ(Shown("A01_A0103"), "保安族");
    EXPECT_EQ(visit_.Focus(), "A01_A0114_v");
    visit_.user.ClickToolbar("Save");
    EXPECT_EQ(Shown("A01_A0103"), "保安族");
  });
  EXPECT_TRUE(visit_.Messages().empty());
  EXPECT_EQ(Stored("A0103"), "47");
}

TEST_F(CodeEntry, OfAnAmbiguousShorthandTheCodeIsChosenByKeyboardAlone) {
  Open([&] {
    Enter("A01_A0102", "nx");
    InPicker([&] {
      EXPECT_EQ(FrontTab(), 1);
      // The keys still go to the tree behind.
      EXPECT_EQ(PickerFocus(), "tvGrpCod");
      visit_.user.Press(kKeyReturn);
      EXPECT_TRUE(CodePicker().Loaded());
      visit_.user.Tab();
      EXPECT_EQ(PickerFocus(), "lstDmCpt");
      visit_.user.Press(kKeyDown);
      visit_.user.Press(kKeyReturn);
      EXPECT_FALSE(CodePicker().Loaded());
    });
    visit_.user.Tab();
    EXPECT_EQ(Shown("A01_A0102"), "女性");
    EXPECT_EQ(visit_.Focus(), "A01_A0103_v");
    visit_.user.ClickToolbar("Save");
  });
  EXPECT_TRUE(visit_.Messages().empty());
  EXPECT_EQ(Stored("A0102"), "2");
}

TEST_F(CodeEntry, ThreeLevelsAreBrowsedByKeyboard) {
  Open([&] {
    InPicker([&] {
      EXPECT_EQ(PickerFocus(), "tvGrpCod");
      DownTo("G32");
      visit_.user.Press(kKeyRight);
      visit_.user.Press(kKeyRight);
      EXPECT_EQ(Selected(), "G3201");
      DownTo("G3204");
      visit_.user.Press(kKeyRight);
      DownTo("G320413");
      visit_.user.Press(kKeyReturn);
    });
    visit_.user.DoubleClick("A01_A0114_v");
    EXPECT_EQ(Item("A01_A0114"), "320413|金坛区");
    EXPECT_EQ(Shown("A01_A0114"), "金坛区");
    EXPECT_EQ(visit_.Focus(), "A01_A0114_v");
    visit_.user.ClickToolbar("Save");
  });
  EXPECT_TRUE(visit_.Messages().empty());
  EXPECT_EQ(Stored("A0114"), "320413");
}

TEST_F(CodeEntry, ThreeLevelsAreBrowsedByMouse) {
  Open([&] {
    InPicker([&] {
      visit_.user.FoldNode("tvGrpCod", "G11");
      visit_.user.ClickNode("tvGrpCod", "G1101");
      // A heading is not chosen: it opens.
      visit_.user.Click("cmdOK");
      visit_.user.DoubleClick("tvGrpCod");
      EXPECT_TRUE(CodePicker().Loaded());
      visit_.user.ClickNode("tvGrpCod", "G110102");
      visit_.user.DoubleClick("tvGrpCod");
      EXPECT_FALSE(CodePicker().Loaded());
    });
    visit_.user.DoubleClick("A01_A0114_v");
    EXPECT_EQ(Item("A01_A0114"), "110102|西城区");
  });
  EXPECT_TRUE(visit_.Messages().empty());
}

TEST_F(CodeEntry, ACodeIsSearchedInThePickerByMouse) {
  Open([&] {
    InPicker([&] {
      visit_.user.SelectTab("Tab1", 1);
      visit_.user.Click("txtDm");
      visit_.user.Type("l'ys");
      EXPECT_EQ(visit_.user.Find<toolkit::TextBox>("txtDm")->Text(), "lys");
      visit_.user.Press(kKeyReturn);
      EXPECT_EQ(PickerFocus(), "lstDmCpt");
      EXPECT_GT(visit_.user.Find<toolkit::ListBox>("lstDmCpt")->ListCount(), 1);
      visit_.user.ClickListRow("lstDmCpt", 1);
      visit_.user.DoubleClick("lstDmCpt");
      EXPECT_TRUE(CodePicker().Loaded());
      visit_.user.Click("cmdOK");
    });
    visit_.user.DoubleClick("A01_A0114_v");
    EXPECT_EQ(Item("A01_A0114"),
              Rows(*visit_.database,
                   "select dmcod,dmcpt from GB2260 where dmattr=1 and (dmcpt like '%l%y%s%' or dmhnd like "
                   "'%l%y%s%') order by dmcod")
                  .at(1));
  });
  EXPECT_EQ(visit_.script.beeps, 1);
}

TEST_F(CodeEntry, APickerThatIsGivenUpEmptiesATypedFieldAndKeepsADoubleClickedOne) {
  visit_.database->RunScript("update s_infoitem set [IsNUll] = 1 where CodeTable is not null");
  Open([&] {
    InPicker([&] {
      visit_.user.Press(kKeyEscape);
      EXPECT_TRUE(CodePicker().Loaded());
      visit_.user.Close();
    });
    visit_.user.DoubleClick("A01_A0102_v");
    EXPECT_EQ(Shown("A01_A0102"), "男性");
    EXPECT_FALSE(visit_.OnShow().WhInfo().IsChange);
    InPicker([&] { visit_.user.Click("cmdCancel"); });
    Enter("A01_A0102", "nx");
    visit_.user.Tab();
    EXPECT_EQ(Shown("A01_A0102"), "");
    EXPECT_EQ(visit_.Focus(), "A01_A0103_v");
    InPicker([&] { visit_.user.Click("cmdDel"); });
    visit_.user.DoubleClick("A01_A0103_v");
    EXPECT_EQ(Shown("A01_A0103"), "");
    visit_.user.ClickToolbar("Save");
  });
  EXPECT_TRUE(visit_.Messages().empty());
  EXPECT_EQ(Stored("A0102") + Stored("A0103"), "");
}

TEST_F(CodeEntry, ADateThatDoesNotExistKeepsTheFocus) {
  Open([&] {
    Enter("A01_A0104", "19680230");
    visit_.user.Tab();
    EXPECT_EQ(visit_.Focus(), "A01_A0104_v");
    EXPECT_EQ(visit_.Masked("A01_A0104").Text(), "1968年02月30日");
    visit_.user.Click("A01_A0101_v");
    EXPECT_EQ(visit_.Focus(), "A01_A0104_v");
    visit_.user.ClickToolbar("Save");
    EXPECT_EQ(visit_.Focus(), "A01_A0104_v");
    Enter("A01_A0104", "19680312");
    visit_.user.Tab();
    EXPECT_EQ(visit_.Focus(), "A01_A0105_v");
  });
  const headless::Message refused = {"出生日期录入数据不规范！", 0, "错误信息"};
  EXPECT_EQ(visit_.script.messages, (std::vector<headless::Message>{refused, refused, refused}));
  EXPECT_EQ(Stored("A0104"), "1968/3/12");
}

}  // namespace
}  // namespace dossierkit::tests
