// The command Exit, and the close box.
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

using ExitCommand = ShellTest;

TEST_F(ExitCommand, WithoutEditsItNeverAsks) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickToolbar("Add");
    EXPECT_TRUE(During([&] { visit.user.ClickToolbar("Exit"); }).empty());
    EXPECT_FALSE(visit.Window().Loaded());
  });
  EXPECT_TRUE(Shown().empty());
  EXPECT_FALSE(visit.Window().InVisit());
}

TEST_F(ExitCommand, NoDropsTheEditsAndCloses) {
  visit.Open([&] {
    visit.Text("A01_A0109").SetText("农学");
    Answer(toolkit::kAnswerNo);
    EXPECT_TRUE(During([&] { visit.user.ClickToolbar("Exit"); }).empty());
    EXPECT_FALSE(visit.Window().Loaded());
  });
  EXPECT_EQ(Shown(), (Messages{{"数据被修改但未保存，是否保存？", kYesOrNo, "人员维护"}}));
  EXPECT_EQ(Value("select A0109 from A01 where A00='" + kPerson + "'"), "作物遗传育种");
}

TEST_F(ExitCommand, YesSavesAndCloses) {
  visit.Open([&] {
    visit.GoTo("A12");
    visit.Text("A12_A1201").SetText("改");
    Answer(toolkit::kAnswerYes);
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Exit"); }),
              (Statements{"delete from A12 where A00='" + kPerson + "' ",
                          "insert into A12( A00 ,A1201) values('" + kPerson + "','改')"}));
    EXPECT_FALSE(visit.Window().Loaded());
  });
}

TEST_F(ExitCommand, AFailedSaveKeepsTheWindowOpen) {
  visit.Open([&] {
    visit.Text("A01_A0101").SetText("");
    Answer(toolkit::kAnswerYes);
    visit.user.ClickToolbar("Exit");
    EXPECT_TRUE(visit.Window().Loaded());
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
    Answer(toolkit::kAnswerNo);
    visit.user.ClickToolbar("Exit");
    EXPECT_FALSE(visit.Window().Loaded());
  });
  EXPECT_EQ(Shown()[1], (Message{"姓名 为必填项", kOk, "错误信息"}));
}

TEST_F(ExitCommand, ItsMnemonicCloses) {
  visit.Open([&] {
    visit.user.Press('X', toolkit::kAlt);
    EXPECT_FALSE(visit.Window().Loaded());
  });
}

TEST_F(ExitCommand, RequiredTheCloseBoxDropsEditsWithoutAQuestion) {
  EXPECT_FALSE(visit.Open([&] {
    visit.GoTo("A12");
    visit.Text("A12_A1201").SetText("改");
    visit.Text("A12_A1201").SetFocus();
    const auto check = visit.Text("A12_A1201").Validate.Subscribe([](bool& cancel) { cancel = true; });
    EXPECT_TRUE(During([&] { visit.user.Close(); }).empty());
    EXPECT_FALSE(visit.Window().Loaded());
  }));
  EXPECT_TRUE(Shown().empty());
  EXPECT_NE(Value("select A1201 from A12 where A00='" + kPerson + "'"), "改");
}

TEST_F(ExitCommand, AfterTheCloseBoxASaveDoneBeforeStillCounts) {
  EXPECT_TRUE(visit.Open([&] {
    visit.user.ClickToolbar("Save");
    visit.user.Close();
  }));
}

TEST_F(ExitCommand, EscDoesNotClose) {
  visit.Open([&] {
    visit.user.Press(toolkit::kKeyEscape);
    EXPECT_TRUE(visit.Window().Loaded());
  });
}

TEST_F(ExitCommand, WhileAQuestionIsOnShowTheCloseBoxOnlyBeeps) {
  visit.script.on_message = [&](const Message&) { visit.Window().UserClose(); };
  visit.Open([&] {
    visit.GoTo("A04");
    Answer(toolkit::kAnswerNo);
    visit.user.ClickToolbar("Delete");
    EXPECT_TRUE(visit.Window().Loaded());
    EXPECT_EQ(visit.script.beeps, 1);
  });
}

}  // namespace
}  // namespace dossierkit::tests
