// Fields filled by keys alone: the picker opened by F4, and mistakes taken back by Ctrl+Z.
#include <gtest/gtest.h>

#include "codes/fm_grp_cod.h"
#include "metadata/field_items.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using toolkit::kAlt;
using toolkit::kCtrl;
using toolkit::kKeyBack;
using toolkit::kKeyDown;
using toolkit::kKeyF4;
using toolkit::kKeyReturn;

std::string Stored(Visit& visit, const std::string& column) {
  return One(*visit.database, "select " + column + " from A01 where A00='" + kPerson + "'");
}

TEST(Keys, F4OpensThePickerOnAnEmptyCodedFieldAndAltDownOnAFilledOne) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.user.Click("A01_A0103_v");
    visit.user.Press('A', kCtrl);
    visit.user.Press(kKeyBack);
    EXPECT_EQ(visit.Text("A01_A0103").Text(), "");
    visit.script.WillRun([&](toolkit::Form&) {
      // On the whole table, with nothing searched for.
      EXPECT_EQ(visit.user.Find<toolkit::TabStrip>("Tab1")->Tab(), 0);
      EXPECT_EQ(CodePicker().SearchText, "");
      visit.user.ClickNode("tvGrpCod", "G02");
      visit.user.Press(kKeyReturn);
    });
    visit.user.Press(kKeyF4);
    EXPECT_EQ(visit.Text("A01_A0103").Text(), "蒙古族");
    EXPECT_EQ(visit.Focus(), "A01_A0103_v");
    visit.script.WillRun([&](toolkit::Form&) {
      EXPECT_EQ(CodePicker().Dmcod, "02");
      visit.user.ClickNode("tvGrpCod", "G03");
      visit.user.Press(kKeyReturn);
    });
    visit.user.Press(kKeyDown, kAlt);
    EXPECT_EQ(visit.Text("A01_A0103").Text(), "回族");
    // A field without a code table has nothing to choose from.
    visit.user.Click("A01_A0101_v");
    visit.user.Press(kKeyF4);
    visit.user.ClickToolbar("Save");
  });
  EXPECT_TRUE(visit.script.AllUsed());
  EXPECT_TRUE(visit.Messages().empty());
  EXPECT_EQ(Stored(visit, "A0103"), "03");
}

TEST(Keys, CtrlZTakesBackToWhatTheProgramFilledInAndNoFurther) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    auto& name = visit.Text("A01_A0101");
    EXPECT_EQ(visit.Focus(), "A01_A0101_v");
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
    visit.user.Type("x");
    visit.user.Paste("误贴");
    EXPECT_EQ(name.Text(), "x误贴陆怀谷");
    visit.user.Press('Z', kCtrl);
    visit.user.Press('Z', kCtrl);
    visit.user.Press('Z', kCtrl);
    EXPECT_EQ(name.Text(), "陆怀谷");
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange) << "taking back is a change as well";
    // A code that was resolved is the program's text.
    visit.user.Click("A01_A0103_v");
    visit.user.Press('A', kCtrl);
    visit.user.Type("baz");
    visit.user.Tab();
    EXPECT_EQ(visit.Text("A01_A0103").Text(), "保安族");
    visit.user.Click("A01_A0103_v");
    visit.user.Press('Z', kCtrl);
    EXPECT_EQ(visit.Text("A01_A0103").Text(), "保安族");
    // So is a date that was formatted.
    auto& started = visit.Masked("A01_A0116");
    EXPECT_EQ(started.Text(), "1989年08月");
    visit.user.Click("A01_A0116_v");
    visit.user.Press(toolkit::kKeyHome);
    visit.user.Type("20");
    visit.user.Press('Z', kCtrl);
    EXPECT_EQ(started.Text(), "1989年08月");
    visit.user.Type("1991");
    EXPECT_EQ(started.Text(), "1991年08月");
    visit.user.Tab();
    visit.user.Click("A01_A0116_v");
    visit.user.Press('Z', kCtrl);
    EXPECT_EQ(started.Text(), "1991年08月");
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(Stored(visit, "A0101"), "陆怀谷");
  EXPECT_EQ(Stored(visit, "A0103"), "47");
}

}  // namespace
}  // namespace dossierkit::tests
