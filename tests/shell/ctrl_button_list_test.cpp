// The strip of buttons that no window places.
#include "shell/ctrl_button_list.h"

#include <gtest/gtest.h>

#include "adapters/headless/headless_platform.h"
#include "pages/ctrl_user.h"
#include "shell/component.h"
#include "tests/pages/sixteen_pages.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

class Strip : public ::testing::Test {
 protected:
  const toolkit::Toolbar& Bar() { return dynamic_cast<const toolkit::Toolbar&>(*strip->Controls().At(0)); }

  std::shared_ptr<ctrlButtonList> strip = std::make_shared<ctrlButtonList>("strip");
};

TEST_F(Strip, HoldsElevenButtons) {
  struct Row {
    const char* key;
    const char* caption;
    int image;
  };
  const std::vector<Row> rows = {
      {"PrePerson", "上一人", 1}, {"NextPerson", "下一人", 2}, {"", "", 0},
      {"Add", "增加", 3},         {"Modify", "修改", 4},       {"Delete", "删除", 5},
      {"Save", "保存", 6},        {"Cancel", "取消", 7},       {"", "", 0},
      {"PreItem", "上一条", 1},   {"NextItem", "下一条", 2},
  };
  EXPECT_EQ(strip->Controls().Count(), 1u);
  EXPECT_EQ(Bar().Name(), "Toolbar1");
  ASSERT_EQ(Bar().Buttons().size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(Bar().Buttons()[i].Key(), rows[i].key) << i;
    EXPECT_EQ(Bar().Buttons()[i].Caption(), rows[i].caption) << i;
    EXPECT_EQ(Bar().Buttons()[i].ImageIndex(), rows[i].image) << i;
    EXPECT_EQ(Bar().Buttons()[i].IsSeparator(), i == 2 || i == 8) << i;
  }
}

TEST_F(Strip, KeepsAnObjectByReference) {
  EXPECT_EQ(strip->UControl(), nullptr);
  const auto label = std::make_shared<toolkit::Label>("label");
  strip->SetUControl(label);
  EXPECT_EQ(strip->UControl(), label);
}

TEST_F(Strip, TellsOfEachResize) {
  int resizes = 0;
  const auto hook = strip->Resize.Subscribe([&] { ++resizes; });
  strip->Move({0, 0, 5000, 600});
  EXPECT_EQ(resizes, 1);
  strip->Move({100, 100, 5000, 600});
  EXPECT_EQ(resizes, 1) << "moved, not resized";
  strip->Move({100, 100, 5000, 500});
  EXPECT_EQ(resizes, 2);
}

TEST_F(Strip, TellsOfEachClickAndDoesNothingElse) {
  Visit visit;
  visit.Open([&] {
    visit.desktop.RegisterClass("Test.Strip", [&](const std::string&) { return strip; });
    visit.Window().Controls().Add("Test.Strip", "strip");
    std::vector<std::string> clicked;
    const auto hook = strip->ButtonClick.Subscribe(
        [&](const toolkit::ToolbarButton& button) { clicked.push_back(button.Key()); });
    visit.statements.clear();
    auto& bar = const_cast<toolkit::Toolbar&>(Bar());
    for (std::size_t i = 0; i < bar.Buttons().size(); ++i) bar.UserClick(i);
    EXPECT_EQ(clicked, (std::vector<std::string>{"PrePerson", "NextPerson", "Add", "Modify", "Delete", "Save",
                                                 "Cancel", "PreItem", "NextItem"}));
    EXPECT_TRUE(visit.statements.empty());
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST_F(Strip, NoWindowPlacesOne) {
  Visit visit;
  visit.Open([&] {
    for (const auto& control : visit.Window().Controls()) {
      EXPECT_EQ(dynamic_cast<const ctrlButtonList*>(control.get()), nullptr);
    }
  });
}

TEST(ClassesOfTheComponent, AreTheSixteenPagesAndTheStrip) {
  headless::HeadlessPlatform platform;
  const Component component(platform, "/opt/dossier");
  const toolkit::Desktop& desktop = TheRuntime().desktop;
  for (const Page& page : SixteenPages()) {
    const auto made = desktop.Create("DossierKit.ctrlUser" + page.set, "page");
    EXPECT_TRUE(std::dynamic_pointer_cast<ctrlUser>(made)) << page.set;
  }
  const auto strip =
      std::dynamic_pointer_cast<ctrlButtonList>(desktop.Create("DossierKit.ctrlButtonList", "s"));
  ASSERT_TRUE(strip);
  EXPECT_EQ(strip->Name(), "s");
}

}  // namespace
}  // namespace dossierkit::tests
