// The keys of a page: its short cuts and its filter of the apostrophe.
#include <gtest/gtest.h>

#include "tests/pages/sixteen_pages.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using toolkit::kAlt;
using toolkit::kCtrl;
using toolkit::kShift;

constexpr int kComma = 188;
constexpr int kPoint = 190;

// The first text box of the page on show.
toolkit::TextBox& FirstText(Visit& visit) {
  for (const auto& control : visit.OnShow().Controls()) {
    if (auto* box = dynamic_cast<toolkit::TextBox*>(control.get())) return *box;
  }
  throw std::logic_error("no text box");
}

TEST(Apostrophe, IsDroppedOnThePagesThatPreviewTheirKeysAndTypedOnTheOthers) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const Page& page : SixteenPages()) {
      visit.GoTo(page.set);
      auto& box = FirstText(visit);
      box.SetFocus();
      box.SetText("");
      visit.user.Type("a'b'");
      EXPECT_EQ(box.Text(), page.Has(kKeyPreview) ? "ab" : "a'b'") << page.set;
      visit.OnShow().WhInfo().IsChange = false;
    }
  });
}

TEST(Apostrophe, RequiredAPasteBringsItInEverywhere) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const Page& page : SixteenPages()) {
      visit.GoTo(page.set);
      auto& box = FirstText(visit);
      box.SetFocus();
      box.SetText("");
      visit.user.Paste("a'b");
      EXPECT_EQ(box.Text(), "a'b") << page.set;
      visit.OnShow().WhInfo().IsChange = false;
    }
  });
}

TEST(Apostrophe, OtherQuotationMarksAreTyped) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    auto& box = visit.Text("A04_A0403");
    box.SetFocus();
    box.SetText("");
    visit.user.Type("\"‘’`＇");
    EXPECT_EQ(box.Text(), "\"‘’`＇");
  });
}

TEST(Apostrophe, IsKeptFromTheListAsWell) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const char* set : {"A04", "A11"}) {
      visit.GoTo(set);
      const auto grid = visit.user.Find("DGItems");
      grid->SetFocus();
      std::u32string heard;
      const auto hook = grid->KeyPress.Subscribe([&](char32_t& key) { heard += key; });
      visit.user.Type("a'b");
      EXPECT_EQ(heard, std::string(set) == "A04" ? U"ab" : U"a'b") << set;
    }
  });
}

TEST(ShortCutOfAdd, OpensANewRecordOnThePagesThatPreviewTheirKeys) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const char* set : {"A02", "A03", "A04", "A05", "A06", "A08", "A09", "A10"}) {
      visit.GoTo(set);
      visit.user.Press('N', kCtrl);
      EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加") << set;
    }
    for (const char* set : {"A01", "A11", "A15", "A21"}) {
      visit.GoTo(set);
      visit.user.Press('N', kCtrl);
      EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改") << set;
    }
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(ShortCutOfAdd, DoesNothingWhileTheButtonIsDisabled) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("B01");
    EXPECT_FALSE(visit.Enabled("Add"));
    const auto before = visit.statements.size();
    visit.user.Press('N', kCtrl);
    EXPECT_EQ(visit.statements.size(), before);
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改");
    visit.GoTo("A04");
    visit.user.Press('N', kCtrl);
    visit.user.Type("2020");
    visit.user.Press('N', kCtrl);
    EXPECT_EQ(visit.Masked("A04_A0401").Text(), "2020年__月");
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(ShortCutOfSave, SavesWhereTheButtonIsEnabled) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("B01");
    visit.Window().TbMain().Button("Save").SetEnabled(false);
    visit.user.Press('S', kCtrl);
    EXPECT_FALSE(visit.Window().IsSaved);
    visit.Window().TbMain().Button("Save").SetEnabled(true);
    visit.user.Press('S', kCtrl);
    EXPECT_TRUE(visit.Window().IsSaved);
  });
}

TEST(ShortCutOfSave, IsWithoutEffectOnAPageWithoutPreview) {
  Visit visit;
  EXPECT_FALSE(visit.OpenPerson(kPerson, [&] {
    for (const char* set : {"A01", "A11", "A12", "A13", "A14", "A15", "A21"}) {
      visit.GoTo(set);
      const auto before = visit.statements.size();
      visit.user.Press('S', kCtrl);
      EXPECT_EQ(visit.statements.size(), before) << set;
    }
  }));
}

TEST(ShortCuts, ActWithCtrlAlone) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    const auto before = visit.statements.size();
    for (const int shift : {0, int{kShift}, kCtrl | kShift, kCtrl | kAlt, kCtrl | kShift | kAlt}) {
      for (const int key : {int{'N'}, int{'S'}, kComma, kPoint}) visit.user.Press(key, shift);
    }
    EXPECT_EQ(visit.statements.size(), before);
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改");
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(ShortCuts, WorkWhileTheListHasTheFocus) {
  Visit visit;
  EXPECT_TRUE(visit.OpenPerson(kPerson, [&] {
    // Where no field is tagged as the end Enter leads into the list.
    for (const char* set : {"A04", "A05", "A06", "A08", "A10"}) {
      visit.GoTo(set);
      visit.user.Find("DGItems")->SetFocus();
      visit.user.Press(kPoint, kCtrl);
      EXPECT_EQ(visit.OnShow().WhInfo().id, 2) << set;
      visit.user.Find("DGItems")->SetFocus();
      visit.user.Press(kComma, kCtrl);
      EXPECT_EQ(visit.OnShow().WhInfo().id, 1) << set;
      visit.user.Find("DGItems")->SetFocus();
      visit.user.Press('N', kCtrl);
      EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加") << set;
    }
    visit.GoTo("A04");
    visit.user.Find("DGItems")->SetFocus();
    const auto before = visit.statements.size();
    visit.user.Press('S', kCtrl);
    EXPECT_GT(visit.statements.size(), before);
  }));
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(ShortCuts, GoOnToTheControlWithTheFocus) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    std::vector<int> heard;
    auto& box = visit.Text("A04_A0403");
    const auto hook = box.KeyDown.Subscribe([&](int& key, int) { heard.push_back(key); });
    // A save that fails and an Add leave the page in its place.
    box.SetFocus();
    box.SetText("");
    visit.user.Press('S', kCtrl);
    visit.OnShow().WhInfo().IsChange = false;
    box.SetFocus();
    visit.user.Press('N', kCtrl);
    EXPECT_EQ(heard, (std::vector<int>{'S', 'N'}));
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加");
  });
  EXPECT_EQ(visit.Messages(), std::vector<std::string>{"任职单位名称 为必填项"});
}

TEST(ShortCuts, OtherKeysDoNothing) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    const auto before = visit.statements.size();
    for (int key = 'A'; key <= 'Z'; ++key) {
      if (key != 'N' && key != 'S') visit.user.Press(key, kCtrl);
    }
    for (const int key : {0, 110, 115, 187, 189, 191}) visit.user.Press(key, kCtrl);
    EXPECT_EQ(visit.statements.size(), before);
  });
}

TEST(ShortCutsOfMoving, GoToTheNextAndThePreviousRecordAndStopAtBothEnds) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    std::vector<int> shown;
    const auto press = [&](int key) {
      visit.user.Press(key, kCtrl);
      shown.push_back(visit.OnShow().WhInfo().id);
      EXPECT_EQ(visit.OnShow().AdodcRs()->AbsolutePosition(), visit.OnShow().WhInfo().id);
      EXPECT_EQ(visit.Focus(), "A04_A0401_v");
    };
    press(kComma);
    for (int i = 0; i < 4; ++i) press(kPoint);
    for (int i = 0; i < 4; ++i) press(kComma);
    EXPECT_EQ(shown, (std::vector<int>{1, 2, 3, 4, 4, 3, 2, 1, 1}));
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改 ");
  });
}

TEST(ShortCutsOfMoving, AtAnEndNothingRuns) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.OnShow().WhInfo().IsChange = true;
    auto before = visit.statements.size();
    visit.user.Press(kComma, kCtrl);
    EXPECT_EQ(visit.statements.size(), before);
    visit.OnShow().WhInfo().IsChange = false;
    visit.user.ClickRow(4);
    visit.OnShow().WhInfo().IsChange = true;
    before = visit.statements.size();
    visit.user.Press(kPoint, kCtrl);
    EXPECT_EQ(visit.statements.size(), before);
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(ShortCutsOfMoving, BehindTheLastRowNothingMovesOn) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    auto& rows = *visit.OnShow().AdodcRs();
    rows.SetAbsolutePosition(4);
    // The form cannot follow there.
    EXPECT_THROW(rows.MoveNext(), environment::Failure);
    ASSERT_TRUE(rows.EOF_());
    const auto before = visit.statements.size();
    visit.user.Press(kPoint, kCtrl);
    EXPECT_EQ(visit.statements.size(), before);
    EXPECT_TRUE(rows.EOF_());
    EXPECT_FALSE(visit.Window().LoopEnded());
  });
}

TEST(ShortCutsOfMoving, WithTwoRecordsBothMove) {
  Visit visit;
  visit.database->RunScript("delete from A04 where A00='" + kPerson + "' and A0499>2");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.user.Press(kPoint, kCtrl);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 2);
    visit.user.Press(kComma, kCtrl);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
  });
}

TEST(ShortCutsOfMoving, WithOneRecordOrNoneNeitherMoves) {
  for (const char* left : {"1", "0"}) {
    Visit visit;
    visit.database->RunScript("delete from A04 where A00='" + kPerson + "' and A0499>" + left);
    visit.OpenPerson(kPerson, [&] {
      visit.GoTo("A04");
      const auto before = visit.statements.size();
      visit.user.Press(kPoint, kCtrl);
      visit.user.Press(kComma, kCtrl);
      EXPECT_EQ(visit.statements.size(), before) << left;
    });
  }
}

TEST(ShortCutsOfMoving, DoNothingOnASetOfOneRecord) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("B01");
    const auto before = visit.statements.size();
    visit.user.Press(kPoint, kCtrl);
    visit.user.Press(kComma, kCtrl);
    EXPECT_EQ(visit.statements.size(), before);
    EXPECT_EQ(visit.Focus(), "B01_B0101_v");
  });
}

TEST(ShortCutsOfMoving, DoNothingOnAPageWithoutPreview) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const char* set : {"A11", "A15", "A21"}) {
      visit.GoTo(set);
      visit.user.Press(kPoint, kCtrl);
      EXPECT_EQ(visit.OnShow().WhInfo().id, 1) << set;
    }
  });
}

TEST(ShortCutsOfMoving, AskAboutEditsLikeAClick) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.user.Type("1");
    visit.script.WillAnswer(toolkit::kAnswerNo);
    visit.user.Press(kPoint, kCtrl);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
    EXPECT_EQ(visit.Masked("A04_A0401").Text(), "2008年05月");
    visit.user.Type("1");
    visit.script.WillAnswer(toolkit::kAnswerYes);
    visit.user.Press(kPoint, kCtrl);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 2);
  });
  EXPECT_EQ(visit.script.messages,
            (std::vector<headless::Message>(2, {"数据已被修改并未保存，是否继续？", 4, "DossierKit"})));
}

TEST(ShortCutsOfMoving, GoOnFromTheRowOfTheListWhileANewRecordIsOnShow) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.user.ClickRow(2);
    visit.user.Press('N', kCtrl);
    visit.user.Press(kPoint, kCtrl);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 3);
    EXPECT_TRUE(visit.Enabled("Add"));
  });
}

TEST(EnterInTheLastField, MovesOnIntoTheListWhereNoFieldIsTaggedAsTheEnd) {
  const std::vector<std::pair<std::string, std::string>> last = {{"A04", "A04_A0404"}, {"A05", "A05_A0505"},
                                                                 {"A06", "A06_A0605"}, {"A08", "A08_A0805"},
                                                                 {"A10", "A10_A1007"}, {"A21", "A21_A2113"}};
  Visit visit;
  EXPECT_FALSE(visit.OpenPerson(kPerson, [&] {
    for (const auto& [set, field] : last) {
      visit.GoTo(set);
      visit.Text(field).SetFocus();
      const std::string text = visit.Text(field).Text();
      const auto before = visit.statements.size();
      visit.user.Press(toolkit::kKeyReturn);
      EXPECT_EQ(visit.Focus(), "DGItems");
      EXPECT_EQ(visit.Text(field).Text(), text);
      EXPECT_EQ(visit.statements.size(), before);
    }
  }));
}

TEST(EnterInTheLastField, SavesFromEachFieldTaggedAsTheEnd) {
  const std::vector<std::pair<std::string, std::string>> tagged = {
      {"A02", "A02_A0204"}, {"A03", "A03_A0303"}, {"A09", "A09_A0905"}, {"A09", "A09_A0906"},
      {"A09", "A09_A0908"}, {"A09", "A09_A0909"}, {"A11", "A11_A1103"}, {"A15", "A15_A1505"}};
  for (const auto& [set, field] : tagged) {
    Visit visit;
    EXPECT_TRUE(visit.OpenPerson(kPerson, [&, set = set, field = field] {
      visit.GoTo(set);
      visit.Text(field).SetFocus();
      visit.user.Press(toolkit::kKeyReturn);
      EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加") << field;
    })) << field;
    EXPECT_TRUE(visit.Messages().empty()) << field;
  }
}

TEST(EnterInTheLastField, RequiredATagOfOneBlankIsNotTheEnd) {
  Visit visit;
  EXPECT_FALSE(visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    visit.Text("A02_A0202").SetFocus();
    visit.user.Press(toolkit::kKeyReturn);
    EXPECT_EQ(visit.Focus(), "A02_A0203_v");
  }));
}

}  // namespace
}  // namespace dossierkit::tests
