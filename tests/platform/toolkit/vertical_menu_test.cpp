#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

class VerticalMenuTest : public ToolkitTest {
 protected:
  void WithMenu(const std::function<void(VerticalMenu&)>& scene) {
    Visit([&] {
      const auto menu = form->Get<VerticalMenu>("VMenu1");
      On(menu->MenuItemClick, [this](std::int32_t& group, std::int32_t& item) {
        log.push_back("click " + std::to_string(group) + "," + std::to_string(item));
      });
      TakeLog();
      scene(*menu);
    });
  }
};

TEST_F(VerticalMenuTest, HoldsItsDesignItems) {
  const VerticalMenu menu("VMenu1", "菜单", 16);
  EXPECT_EQ(menu.menucaption(), "菜单");
  EXPECT_EQ(menu.menuitemsmax(), 16);
  EXPECT_EQ(menu.menucur(), 1);
  EXPECT_EQ(menu.menuitemcur(), 1);
  EXPECT_EQ(menu.Items().front().caption, "Item1");
  EXPECT_EQ(menu.Items().back().caption, "Item16");
}

TEST_F(VerticalMenuTest, CurrentItemIsTheOneThatTheOtherPropertiesReadAndWrite) {
  VerticalMenu menu("VMenu1", "菜单", 3);
  menu.set_menucaption("信息集");
  menu.set_menuitemcur(2);
  menu.set_menuitemcaption("简历");
  menu.set_menuitemkey("A02");
  menu.set_menuitemicon("/没有/USER.ICO");
  menu.set_menuitemcur(1);
  EXPECT_EQ(menu.menuitemcaption(), "Item1");
  menu.set_menuitemcur(2);
  EXPECT_EQ(menu.menuitemcaption(), "简历");
  EXPECT_EQ(menu.menuitemkey(), "A02");
  EXPECT_EQ(menu.menuitemicon(), "/没有/USER.ICO");
  EXPECT_EQ(menu.menucaption(), "信息集");
}

TEST_F(VerticalMenuTest, NumbersOutOfRangeFail) {
  VerticalMenu menu("VMenu1", "菜单", 3);
  EXPECT_EQ(NumberOfFailure([&] { menu.set_menuitemcur(0); }), 9);
  EXPECT_EQ(NumberOfFailure([&] { menu.set_menuitemcur(4); }), 9);
  EXPECT_EQ(NumberOfFailure([&] { menu.set_menucur(2); }), 9);
  EXPECT_EQ(NumberOfFailure([&] { menu.set_menuitemsmax(-1); }), 9);
  menu.set_menuitemsmax(0);
  EXPECT_EQ(NumberOfFailure([&] { menu.set_menuitemcaption("x"); }), 9);
  EXPECT_EQ(menu.menuitemcur(), 1);
}

TEST_F(VerticalMenuTest, FewerItemsPullTheCurrentOneBack) {
  VerticalMenu menu("VMenu1", "菜单", 5);
  menu.set_menuitemcur(5);
  menu.set_menuitemsmax(2);
  EXPECT_EQ(menu.menuitemcur(), 2);
  EXPECT_EQ(menu.Marked(), 2);
  menu.set_menuitemsmax(3);
  EXPECT_EQ(menu.Items()[2].caption, "");
}

TEST_F(VerticalMenuTest, ClickTakesTheFocusSoThatTheFieldIsCheckedFirst) {
  WithMenu([&](VerticalMenu& menu) {
    form->Get("txtName")->SetFocus();
    TakeLog();
    user.ClickMenu(2);
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate", "txtName.LostFocus", "click 1,2"}));
    EXPECT_TRUE(menu.HasFocus());
    // The handler decides whether the current item follows.
    EXPECT_EQ(menu.menuitemcur(), 1);
  });
}

TEST_F(VerticalMenuTest, ClickOnTheCurrentItemIsOneToo) {
  WithMenu([&](VerticalMenu&) {
    user.ClickMenu(1);
    user.ClickMenu(1);
    EXPECT_EQ(TakeLog(), (Log{"click 1,1", "click 1,1"}));
  });
}

TEST_F(VerticalMenuTest, ArrowsMarkAnItemAndEnterClicksIt) {
  WithMenu([&](VerticalMenu& menu) {
    menu.SetFocus();
    user.Press(kKeyDown);
    user.Press(kKeyDown);
    EXPECT_EQ(menu.Marked(), 3);
    user.Press(kKeyDown);
    EXPECT_EQ(menu.Marked(), 3);
    user.Press(kKeyUp);
    EXPECT_EQ(menu.Marked(), 2);
    EXPECT_EQ(TakeLog(), Log{});
    EXPECT_EQ(menu.menuitemcur(), 1);
    user.Press(kKeyReturn);
    EXPECT_EQ(TakeLog(), (Log{"click 1,2"}));
    user.Press(kKeyUp);
    user.Press(kKeyUp);
    EXPECT_EQ(menu.Marked(), 1);
  });
}

TEST_F(VerticalMenuTest, CurrentItemMovesTheMark) {
  WithMenu([&](VerticalMenu& menu) {
    menu.UserMark(3);
    menu.set_menuitemcur(2);
    EXPECT_EQ(menu.Marked(), 2);
  });
}

TEST_F(VerticalMenuTest, ItemsThatAreNotThereAndADisabledMenuDoNothing) {
  WithMenu([&](VerticalMenu& menu) {
    user.ClickMenu(0);
    user.ClickMenu(4);
    menu.SetEnabled(false);
    user.ClickMenu(1);
    EXPECT_EQ(TakeLog(), Log{});
    EXPECT_FALSE(menu.HasFocus());
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
