#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

class ToolbarTest : public ToolkitTest {
 protected:
  // Runs `scene` with the focus in txtName; clicks are noted as "click Save".
  void WithBar(const std::function<void(Toolbar&)>& scene) {
    Visit([&] {
      const auto bar = form->Get<Toolbar>("TbMain");
      form->Get("txtName")->SetFocus();
      On(bar->ButtonClick, [this](ToolbarButton& button) { log.push_back("click " + button.Key()); });
      TakeLog();
      scene(*bar);
    });
  }
};

TEST_F(ToolbarTest, AddAndSaveLetTheFieldBeCheckedFirst) {
  WithBar([&](Toolbar&) {
    user.ClickToolbar("Add");
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate", "click Add"}));
    user.ClickToolbar("Save");
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate", "click Save"}));
    EXPECT_EQ(Focus(), "txtName");
  });
}

TEST_F(ToolbarTest, AddAndSaveAreDroppedIfTheCheckCancels) {
  WithBar([&](Toolbar&) {
    On(form->Get("txtName")->Validate, [](bool& cancel) { cancel = true; });
    user.ClickToolbar("Add");
    user.ClickToolbar("Save");
    user.Press('S', kAlt);
    EXPECT_EQ(TakeLog(), Log(3, "txtName.Validate"));
  });
}

TEST_F(ToolbarTest, TheOthersRunAtOnceSoThatABadValueCanBeLeft) {
  WithBar([&](Toolbar&) {
    On(form->Get("txtName")->Validate, [](bool& cancel) { cancel = true; });
    user.ClickToolbar("Delete");
    user.ClickToolbar("Exit");
    EXPECT_EQ(TakeLog(), (Log{"click Delete", "click Exit"}));
  });
}

TEST_F(ToolbarTest, ButtonsTakeNoFocus) {
  WithBar([&](Toolbar& bar) {
    user.ClickToolbar("Exit");
    EXPECT_TRUE(bar.UserMouseDown(kLeftButton, 0, 0, 0));
    EXPECT_EQ(Focus(), "txtName");
    EXPECT_FALSE(bar.TakesFocus());
  });
}

TEST_F(ToolbarTest, MnemonicsClickTheirButtons) {
  WithBar([&](Toolbar& bar) {
    EXPECT_EQ(bar.FindMnemonic('N'), 0);
    EXPECT_EQ(bar.FindMnemonic('X'), 4);
    EXPECT_EQ(bar.FindMnemonic('x'), 4);
    EXPECT_EQ(bar.FindMnemonic('Q'), -1);
    user.Press('N', kAlt);
    user.Press('D', kAlt);
    user.Press('Q', kAlt);
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate", "click Add", "click Delete"}));
  });
}

TEST_F(ToolbarTest, DisabledButtonDoesNothing) {
  WithBar([&](Toolbar& bar) {
    bar.Button("Save").SetEnabled(false);
    user.ClickToolbar("Save");
    user.Press('S', kAlt);
    EXPECT_EQ(bar.FindMnemonic('S'), -1);
    EXPECT_EQ(TakeLog(), Log{});
    bar.Button("Save").SetEnabled(true);
    user.ClickToolbar("Save");
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate", "click Save"}));
  });
}

TEST_F(ToolbarTest, ButtonThatTheCheckDisabledIsNotClicked) {
  WithBar([&](Toolbar& bar) {
    On(form->Get("txtName")->Validate, [&](bool&) { bar.Button("Save").SetEnabled(false); });
    user.ClickToolbar("Save");
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate"}));
  });
}

TEST_F(ToolbarTest, DisabledOrHiddenBarDoesNothing) {
  WithBar([&](Toolbar& bar) {
    bar.SetEnabled(false);
    user.ClickToolbar("Exit");
    bar.SetEnabled(true);
    bar.SetVisible(false);
    user.ClickToolbar("Exit");
    EXPECT_EQ(TakeLog(), Log{});
  });
}

TEST_F(ToolbarTest, SeparatorAndUnknownIndexDoNothing) {
  WithBar([&](Toolbar& bar) {
    ASSERT_TRUE(bar.Buttons()[3].IsSeparator());
    bar.UserClick(3);
    bar.UserClick(99);
    EXPECT_EQ(TakeLog(), Log{});
  });
}

TEST_F(ToolbarTest, ButtonsAreFoundByKeyWithoutRegardToCase) {
  WithBar([&](Toolbar& bar) {
    EXPECT_EQ(bar.Button("save").Caption(), "保存(&S)");
    EXPECT_EQ(bar.Button("Exit").ImageIndex(), 9);
    EXPECT_EQ(NumberOfFailure([&] { bar.Button("Print"); }), environment::kElementNotFound);
    EXPECT_EQ(NumberOfFailure([&] { bar.Button(""); }), environment::kElementNotFound);
  });
}

TEST_F(ToolbarTest, HandlerMayUnloadTheWindow) {
  WithBar([&](Toolbar& bar) {
    On(bar.ButtonClick, [&](ToolbarButton&) { form->Unload(); });
    user.ClickToolbar("Exit");
    EXPECT_TRUE(form->LoopEnded());
  });
}

TEST_F(ToolbarTest, NothingIsCheckedWhereNothingHasTheFocus) {
  Visit([&] {
    int clicks = 0;
    On(form->Get<Toolbar>("TbMain")->ButtonClick, [&](ToolbarButton&) { ++clicks; });
    user.ClickToolbar("Save");
    EXPECT_EQ(clicks, 1);
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
