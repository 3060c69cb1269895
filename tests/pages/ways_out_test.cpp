// Every way out of the picker, and what it does to the field that opened it.
#include "tests/pages/entry_test.h"

namespace dossierkit::tests {
namespace {

using toolkit::kKeyReturn;

struct WayOut {
  const char* name;
  std::function<void(Visit&)> act;
  // Item, text and mark of the field then.
  const char* after_typing;
  const char* after_double_click;
};

const char* const kChosen = "2|女性: 女性, changed";
const char* const kEmptied = "|: , changed";
const char* const kKept = "1|男性: 男性";

const std::vector<WayOut> kWaysOut = {
    {"OkInTheTree",
     [](Visit& v) {
       ClickFemale(v);
       v.user.Click("cmdOK");
     },
     kChosen, kChosen},
    {"EnterInTheTree",
     [](Visit& v) {
       ClickFemale(v);
       v.user.Press(kKeyReturn);
     },
     kChosen, kChosen},
    {"DoubleClickInTheTree",
     [](Visit& v) {
       ClickFemale(v);
       v.user.DoubleClick("tvGrpCod");
     },
     kChosen, kChosen},
    {"OkInTheList",
     [](Visit& v) {
       SearchFemale(v);
       v.user.Click("cmdOK");
     },
     kChosen, kChosen},
    {"EnterInTheList",
     [](Visit& v) {
       SearchFemale(v);
       v.user.Press(kKeyReturn);
     },
     kChosen, kChosen},
    {"Clear",
     [](Visit& v) {
       ClickFemale(v);
       v.user.Click("cmdDel");
     },
     kEmptied, kEmptied},
    {"Cancel",
     [](Visit& v) {
       ClickFemale(v);
       v.user.Click("cmdCancel");
     },
     kEmptied, kKept},
    {"CloseBox",
     [](Visit& v) {
       ClickFemale(v);
       v.user.Close();
     },
     kEmptied, kKept},
};

class WaysOut : public EntryTest, public ::testing::WithParamInterface<WayOut> {
 protected:
  std::string After() {
    return Item("A01_A0102") + ": " + visit.Text("A01_A0102").Text() + (Changed() ? ", changed" : "");
  }
  void Act() {
    InPicker([this] {
      GetParam().act(visit);
      EXPECT_FALSE(CodePicker().Loaded());
    });
  }
};

TEST_P(WaysOut, OpenedByTyping) {
  Open([&] {
    Act();
    EnterAndLeave("A01_A0102", "nx");
    EXPECT_EQ(After(), GetParam().after_typing);
    EXPECT_EQ(visit.Focus(), "A01_A0103_v");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_P(WaysOut, OpenedByDoubleClick) {
  Open([&] {
    Act();
    visit.user.DoubleClick("A01_A0102_v");
    EXPECT_EQ(After(), GetParam().after_double_click);
    EXPECT_EQ(visit.Focus(), "A01_A0102_v");
  });
  EXPECT_TRUE(Shown().empty());
}

INSTANTIATE_TEST_SUITE_P(OfThePicker, WaysOut, ::testing::ValuesIn(kWaysOut),
                         [](const auto& way) { return std::string(way.param.name); });

using HalfAChoice = EntryTest;

TEST_F(HalfAChoice, ACaptionWithoutACodeIsNone) {
  Open([&] {
    visit.OnShow().FieldItems()->Item("A01_A0102")->Dmcod = "";
    InPicker([&] {
      EXPECT_EQ(CodePicker().Dmcpt, "男性");
      visit.user.Click("cmdCancel");
    });
    visit.user.DoubleClick("A01_A0102_v");
    EXPECT_EQ(visit.Text("A01_A0102").Text(), "");
    EXPECT_EQ(Item("A01_A0102"), "|");
  });
}

}  // namespace
}  // namespace dossierkit::tests
