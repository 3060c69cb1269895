// Texts that are assigned or entered and stand there already; presses whose control goes.
#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

using EditsWithoutChange = ToolkitTest;

TEST_F(EditsWithoutChange, AreNotTakenBack) {
  Visit([&] {
    auto& date = *form->Get<MaskEdBox>("mskDate");
    date.SetFocus();
    date.UserType("1990");
    EXPECT_EQ(date.Text(), "1990年__月");
    date.Select(0, 0);
    date.UserType("1");
    EXPECT_EQ(date.Text(), "1990年__月");
    date.UserCommand(EditCommand::kUndo);
    EXPECT_EQ(date.Text(), "____年__月") << "what was typed before";
    EXPECT_FALSE(date.ContextMenu().at(0).enabled) << "nothing is left";
  });
}

TEST_F(EditsWithoutChange, AnEqualTextThatTheProgramAssignsPutsTheCaretOfAMaskFirst) {
  Visit([&] {
    auto& date = *form->Get<MaskEdBox>("mskDate");
    date.SetText("1990年03月");
    date.Select(5, 2);
    int changes = 0;
    On(date.Change, [&] { ++changes; });
    date.SetText("1990年03月");
    EXPECT_EQ(date.GetSelection(), (Selection{0, 0}));
    EXPECT_EQ(changes, 0);
  });
}

TEST_F(EditsWithoutChange, APressThatDropsItsPageGoesNoFurther) {
  Visit([&] {
    const auto box = form->Get("txtName");
    EXPECT_TRUE(box->UserMouseDown(kLeftButton, 0, 0, 0));
    On(box->MouseDown, [&](int, int, int, int) { form->RemovePage(); });
    EXPECT_FALSE(box->UserMouseDown(kLeftButton, 0, 0, 0));
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
