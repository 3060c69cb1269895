// The Enter key in the fields of a page.
#include <gtest/gtest.h>

#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using toolkit::kKeyReturn;

class EnterRule : public ::testing::Test {
 protected:
  // Plays the scene on the page of that set of the sample person.
  void On(const std::string& set, const std::function<void()>& scene) {
    bool played = false;
    visit.OpenPerson(kPerson, [&] {
      if (set != "A01") visit.GoTo(set);
      visit.statements.clear();
      scene();
      played = true;
    });
    EXPECT_TRUE(played);
  }

  void Focus(const std::string& field) { visit.user.Find(field + "_v")->SetFocus(); }
  // Enter in the field; the name of the control that has the focus then.
  std::string EnterIn(const std::string& field) {
    Focus(field);
    visit.user.Press(kKeyReturn);
    return visit.Focus();
  }
  // What the rule leaves of a key in that control.
  char32_t LeftOf(char32_t key, const std::string& name) {
    const auto control = visit.user.Find(name);
    control->Raise(control->KeyPress, key);
    return key;
  }
  // Puts the menu on its last item, under that key, while the page stays.
  void PretendSet(const std::string& key) {
    auto& menu = visit.Window().VMenu1();
    menu.set_menuitemcur(menu.menuitemsmax());
    menu.set_menuitemkey(key);
  }
  std::size_t Ran(const std::string& beginning) const {
    std::size_t count = 0;
    for (const auto& statement : visit.statements) count += statement.starts_with(beginning) ? 1U : 0U;
    return count;
  }

  Visit visit;
};

TEST_F(EnterRule, MovesOnAndSelectsTheWholeTextOfTheNextField) {
  On("A03", [&] {
    EXPECT_EQ(EnterIn("A03_A0301"), "A03_A0301A_v");
    EXPECT_EQ(visit.Masked("A03_A0301A").SelStart(), 0U);
    EXPECT_EQ(visit.Masked("A03_A0301A").SelLength(), 8U);
    EXPECT_EQ(EnterIn("A03_A0301A"), "A03_A0302_v");
    EXPECT_EQ(visit.Text("A03_A0302").SelStart(), 0U);
    EXPECT_EQ(visit.Text("A03_A0302").SelLength(), 8U);
    EXPECT_EQ(visit.Text("A03_A0302").Text(), "溧阳市良种繁育场");
    EXPECT_EQ(EnterIn("A03_A0302"), "A03_A0304_v");
    EXPECT_TRUE(visit.statements.empty());
  });
}

TEST_F(EnterRule, TheControlDoesNotSeeTheKey) {
  On("A03", [&] {
    EXPECT_EQ(LeftOf(13, "A03_A0301_v"), U'\0');
    EXPECT_EQ(LeftOf(13, "A03_A0302_v"), U'\0');
  });
}

TEST_F(EnterRule, OtherKeysPassUntouched) {
  On("A03", [&] {
    for (const char32_t key : {U'a', U'\n', U'\t', U' ', U'\x1b', U'中'}) {
      EXPECT_EQ(LeftOf(key, "A03_A0301_v"), key);
      EXPECT_EQ(LeftOf(key, "A03_A0302_v"), key);
      EXPECT_EQ(LeftOf(key, "A03_A0303_v"), key);
    }
    EXPECT_TRUE(visit.statements.empty());
  });
}

TEST_F(EnterRule, ACheckBoxMovesOn) {
  On("A03", [&] {
    const auto box = visit.OnShow().Controls().Make<toolkit::CheckBox>("check");
    box->SetTabIndex(1);
    ControlItems items;
    items.AddControl(box);
    box->SetFocus();
    visit.user.Press(kKeyReturn);
    EXPECT_EQ(visit.Focus(), "A03_A0301A_v");
    EXPECT_EQ(visit.Masked("A03_A0301A").SelLength(), 8U);
    EXPECT_EQ(LeftOf(13, "check"), U'\0');
    EXPECT_EQ(LeftOf(U' ', "check"), U' ');
  });
}

TEST_F(EnterRule, RequiredAMaskedFieldMovesOnEvenAsTheLastOne) {
  On("A09", [&] {
    visit.Masked("A09_A0907").SetTag("End");
    EXPECT_EQ(EnterIn("A09_A0907"), "A09_A0908_v");
    EXPECT_TRUE(visit.statements.empty());
  });
}

TEST_F(EnterRule, RequiredAMultiLineBoxMovesOnAndTakesNoLineBreak) {
  On("A05", [&] {
    auto& box = visit.Text("A05_A0505");
    ASSERT_TRUE(box.MultiLine());
    const std::string before = box.Text();
    EXPECT_EQ(EnterIn("A05_A0505"), "DGItems");
    EXPECT_EQ(box.Text(), before);
  });
}

TEST_F(EnterRule, RequiredTheWholeTextOfManyLinesIsSelectedAndTheNextKeyReplacesIt) {
  On("A05", [&] {
    auto& box = visit.Text("A05_A0505");
    box.SetText("第一行\r\n第二行");
    visit.OnShow().WhInfo().IsChange = false;
    EXPECT_EQ(EnterIn("A05_A0504"), "A05_A0505_v");
    EXPECT_EQ(box.SelStart(), 0U);
    EXPECT_EQ(box.SelLength(), 8U);
    visit.user.Type("x");
    EXPECT_EQ(box.Text(), "x");
  });
}

TEST_F(EnterRule, OnlyTheExactTagEndsAPage) {
  On("A02", [&] {
    EXPECT_EQ(visit.Text("A02_A0202").Tag(), " ");
    EXPECT_EQ(EnterIn("A02_A0202"), "A02_A0203_v");
    for (const char* tag : {"end", "END", "End ", "Begin"}) {
      visit.Text("A02_A0203").SetTag(tag);
      EXPECT_EQ(EnterIn("A02_A0203"), "A02_A0204_v") << tag;
    }
    EXPECT_TRUE(visit.statements.empty());
  });
}

TEST_F(EnterRule, TheFirstFieldOfTheBasicDataMovesOn) {
  On("A01", [&] {
    EXPECT_EQ(visit.Text("A01_A0101").Tag(), "Begin");
    EXPECT_EQ(EnterIn("A01_A0101"), "A01_A0102_v");
  });
}

TEST_F(EnterRule, TheUnitsRecommendationTakesALineBreak) {
  On("B01", [&] {
    auto& box = visit.Text("B01_B0102");
    box.SetText("上下");
    Focus("B01_B0102");
    box.Select(1, 0);
    visit.user.Press(kKeyReturn);
    EXPECT_EQ(visit.Focus(), "B01_B0102_v");
    EXPECT_EQ(box.Text(), "上\r\n下");
    EXPECT_TRUE(visit.statements.empty());
  });
}

TEST_F(EnterRule, OnThatPageEnterInALineDoesNothing) {
  On("B01", [&] {
    const std::string before = visit.Text("B01_B0101").Text();
    EXPECT_EQ(EnterIn("B01_B0101"), "B01_B0101_v");
    EXPECT_EQ(visit.Text("B01_B0101").Text(), before);
    EXPECT_EQ(LeftOf(13, "B01_B0101_v"), U'\r');
  });
}

TEST_F(EnterRule, TheMenuDecidesWhereALineBreakStays) {
  On("A05", [&] {
    for (const char* key : {"B01", "B02", "B03"}) {
      PretendSet(key);
      auto& box = visit.Text("A05_A0505");
      box.SetText("");
      box.SetTag("End");
      EXPECT_EQ(EnterIn("A05_A0505"), "A05_A0505_v") << key;
      EXPECT_EQ(box.Text(), "\r\n") << key;
    }
    EXPECT_TRUE(visit.statements.empty());
    for (const char* key : {"B04", "b01", "", "A05"}) {
      PretendSet(key);
      visit.Text("A05_A0505").SetTag("");
      EXPECT_EQ(EnterIn("A05_A0505"), "DGItems") << key;
    }
  });
}

TEST_F(EnterRule, AMaskedFieldMovesOnInThoseSetsToo) {
  On("A05", [&] {
    PretendSet("B02");
    EXPECT_EQ(EnterIn("A05_A0501"), "A05_A0502_v");
  });
}

TEST_F(EnterRule, TheLastFieldSavesAndOpensANewRecord) {
  On("A03", [&] {
    visit.Text("A03_A0302").SetText("新单位");
    EXPECT_EQ(EnterIn("A03_A0303"), "A03_A0301_v");
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加");
    EXPECT_EQ(visit.Text("A03_A0302").Text(), "");
    EXPECT_FALSE(visit.Enabled("Add"));
    EXPECT_EQ(Ran("insert into A03"), 1U);
    // Once: the second Add finds its button disabled.
    EXPECT_EQ(Ran("select iif(max(A0399) is null,0,max(A0399))+1"), 1U);
  });
  EXPECT_TRUE(visit.Messages().empty());
  EXPECT_EQ(One(*visit.database, "select count(*) from A03 where A0302='新单位' and A00='" + kPerson + "'"),
            "1");
}

TEST_F(EnterRule, TheLastFieldSavesThoughTheSaveButtonIsDisabled) {
  On("A03", [&] {
    visit.Window().TbMain().Button("Save").SetEnabled(false);
    EnterIn("A03_A0303");
    EXPECT_EQ(Ran("insert into A03"), 1U);
  });
}

TEST_F(EnterRule, WhereNoFurtherRecordMayBeMadeTheLastFieldSavesAlone) {
  On("A13", [&] {
    visit.Text("A13_A1304").SetTag("End");
    EXPECT_FALSE(visit.Enabled("Add"));
    EnterIn("A13_A1304");
    EXPECT_EQ(Ran("insert into A13"), 1U);
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改");
    EXPECT_FALSE(visit.Enabled("Add"));
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST_F(EnterRule, AfterAFailedSaveAnEnabledAddIsStillCalled) {
  On("A03", [&] {
    visit.Text("A03_A0302").SetText("");
    EXPECT_TRUE(visit.Enabled("Add"));
    // Add asks about the edits; No drops them.
    visit.script.WillAnswer(toolkit::kAnswerNo);
    EnterIn("A03_A0303");
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加");
  });
  EXPECT_EQ(visit.Messages(),
            (std::vector<std::string>{"工作单位 为必填项", "数据被修改且未保存，是否保存？"}));
}

TEST_F(EnterRule, RequiredTheLastFieldKeepsTheKey) {
  On("A13", [&] {
    visit.Text("A13_A1304").SetTag("End");
    EXPECT_EQ(LeftOf(13, "A13_A1304_v"), U'\r');
    EXPECT_EQ(Ran("insert into A13"), 1U);
  });
}

TEST_F(EnterRule, RequiredTheLastFieldSavesWithoutItsCheck) {
  On("A03", [&] {
    bool checked = false;
    const auto hook = visit.Text("A03_A0303").Validate.Subscribe([&](bool& cancel) {
      checked = true;
      cancel = true;
    });
    EnterIn("A03_A0303");
    EXPECT_FALSE(checked);
    EXPECT_EQ(Ran("insert into A03"), 1U);
  });
}

}  // namespace
}  // namespace dossierkit::tests
