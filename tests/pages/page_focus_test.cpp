// Where the focus of a page goes, the help text that follows it, and the caret of a mask that gets it.
#include <gtest/gtest.h>

#include "tests/pages/sixteen_pages.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

TEST(FocusOfAPage, StandsInTheFirstFieldOfEveryPage) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const Page& page : SixteenPages()) {
      visit.GoTo(page.set);
      EXPECT_EQ(visit.Focus(), FieldOf(page.fields.front()) + "_v");
    }
  });
}

TEST(FocusOfAPage, GoesToTheLowestTabIndexWhateverTheOrderOfTheControls) {
  class Reversed : public ctrlUser {
   public:
    explicit Reversed(const std::string& name) : ctrlUser(name, *FindPageDesign("A04")) {
      Controls().Find("A04_A0404_v")->SetTabIndex(-5);
    }
  };
  Visit visit;
  visit.desktop.RegisterClass("DossierKit.ctrlUserA04",
                              [](const std::string& name) { return std::make_shared<Reversed>(name); });
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    EXPECT_EQ(visit.Focus(), "A04_A0404_v");
  });
}

TEST(FocusOfAPage, GoesToTheFirstOfEqualTabIndexes) {
  class Equal : public ctrlUser {
   public:
    explicit Equal(const std::string& name) : ctrlUser(name, *FindPageDesign("A04")) {
      for (const char* field : {"A04_A0403_v", "A04_A0404_v"}) Controls().Find(field)->SetTabIndex(-5);
    }
  };
  Visit visit;
  visit.desktop.RegisterClass("DossierKit.ctrlUserA04",
                              [](const std::string& name) { return std::make_shared<Equal>(name); });
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    EXPECT_EQ(visit.Focus(), "A04_A0403_v");
  });
}

TEST(FocusOfAPage, AFieldThatCannotTakeItIsNoFailure) {
  class Disabled : public ctrlUser {
   public:
    explicit Disabled(const std::string& name) : ctrlUser(name, *FindPageDesign("A04")) {
      Controls().Find("A04_A0401_v")->SetEnabled(false);
    }
  };
  Visit visit;
  visit.desktop.RegisterClass("DossierKit.ctrlUserA04",
                              [](const std::string& name) { return std::make_shared<Disabled>(name); });
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.user.ClickRow(2);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 2);
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(FocusOfAPage, ShowComesOnceForEachPage) {
  static int shows = 0;
  class Counting : public ctrlUser {
   public:
    explicit Counting(const std::string& name) : ctrlUser(name, *FindPageDesign("A04")) {}
    void UserControl_Show() override {
      ++shows;
      ctrlUser::UserControl_Show();
    }
  };
  shows = 0;
  Visit visit;
  visit.desktop.RegisterClass("DossierKit.ctrlUserA04",
                              [](const std::string& name) { return std::make_shared<Counting>(name); });
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    EXPECT_EQ(shows, 1);
    visit.user.ClickRow(2);
    visit.user.Tab();
    visit.user.Press('N', toolkit::kCtrl);
    EXPECT_EQ(shows, 1);
    visit.GoTo("A04");
    EXPECT_EQ(shows, 2);
  });
}

TEST(HelpText, FollowsTheFieldWithTheFocus) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A03");
    EXPECT_EQ(visit.Caption("labExplain"), "填写到任的年月，例如：1996年08月。");
    visit.user.Tab();
    EXPECT_EQ(visit.Caption("labExplain"), "填写离任的年月，仍在任的不填，例如：2003年06月。");
    visit.user.ClickRow(1);
    EXPECT_EQ(visit.Caption("labExplain"), "填写到任的年月，例如：1996年08月。");
    visit.user.BackTab();
    EXPECT_EQ(visit.Focus(), "VMenu1");
    EXPECT_EQ(visit.Caption("labExplain"), "");
  });
}

// Moves the focus by the program through all fields of the page on show and gives what the caret of each
// became that stood behind the first character before.
std::vector<std::string> CaretsOf(Visit& visit, const Page& page) {
  std::vector<std::string> carets;
  for (const std::string& line : page.fields) {
    const auto control = visit.user.Find(FieldOf(line) + "_v");
    // Away from the first field, which has the focus.
    if (visit.Focus() == control->Name()) visit.user.Find(FieldOf(page.fields.back()) + "_v")->SetFocus();
    const auto caret = [&](auto& box) {
      box.Select(1, 1);
      control->SetFocus();
      carets.push_back(line.substr(0, line.find('|', line.find('|') + 1)) + " " +
                       std::to_string(box.SelStart()) + "+" + std::to_string(box.SelLength()));
    };
    if (auto* text = dynamic_cast<toolkit::TextBox*>(control.get())) {
      text->SetText("文字文字");
      visit.OnShow().WhInfo().IsChange = false;
      caret(*text);
    } else {
      caret(dynamic_cast<toolkit::MaskEdBox&>(*control));
    }
  }
  return carets;
}

TEST(CaretStep, PutsTheCaretOfEveryMaskFirstAndLeavesThatOfATextWhereItStood) {
  Visit visit;
  int masks = 0;
  visit.OpenPerson(kPerson, [&] {
    for (const Page& page : SixteenPages()) {
      if (!page.Has(kCaretStep) || page.fields.size() < 2) continue;
      visit.GoTo(page.set);
      for (const std::string& caret : CaretsOf(visit, page)) {
        const bool mask = caret.find("|M ") != std::string::npos;
        masks += mask ? 1 : 0;
        EXPECT_TRUE(caret.ends_with(mask ? " 0+0" : " 1+1")) << caret;
      }
      visit.OnShow().WhInfo().IsChange = false;
    }
  });
  EXPECT_EQ(masks, 17);
  EXPECT_EQ(SetsWith(kCaretStep).size(), 11U);
}

TEST(CaretStep, IsNotMadeOnTheOtherPages) {
  class WithMask : public ctrlUser {
   public:
    explicit WithMask(const std::string& name) : ctrlUser(name, *FindPageDesign("A12")) {
      const auto box = Controls().Make<toolkit::MaskEdBox>("A12_A1299_m");
      box->SetMask("####");
      box->SetTabIndex(900);
    }
  };
  Visit visit;
  visit.desktop.RegisterClass("DossierKit.ctrlUserA12",
                              [](const std::string& name) { return std::make_shared<WithMask>(name); });
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A12");
    visit.user.Find<toolkit::MaskEdBox>("A12_A1299_m")->Select(2, 1);
    visit.user.Tab();
    EXPECT_EQ(visit.Focus(), "A12_A1299_m");
    EXPECT_EQ(visit.user.Find<toolkit::MaskEdBox>("A12_A1299_m")->SelStart(), 2U);
  });
}

}  // namespace
}  // namespace dossierkit::tests
