// The command Add, and what is common to all commands.
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

using AddCommand = ShellTest;

TEST_F(AddCommand, WithoutAPageNoCommandDoesAnything) {
  visit.Open([&] {
    RemoveUCtrl(visit.Window(), "ctrlUser");
    const auto statements = During([&] {
      for (const char* key : {"Add", "Delete", "Save", "Cancel", "Exit"}) {
        visit.Window().TbMain_ButtonClick(visit.Window().TbMain().Button(key));
      }
    });
    EXPECT_TRUE(statements.empty());
    EXPECT_TRUE(visit.Window().Loaded());
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(AddCommand, AnUnknownKeyDoesNothing) {
  toolkit::Toolbar strip("strip");
  for (const char* key : {"PrePerson", "NextPerson", "Modify", "PreItem", "NextItem", "add", "SAVE"}) {
    strip.AddButton(key, key, 1);
  }
  visit.Open([&] {
    visit.OnShow().WhInfo().IsChange = true;
    const auto statements = During([&] {
      for (const auto& button : strip.Buttons()) visit.Window().TbMain_ButtonClick(button);
    });
    EXPECT_TRUE(statements.empty());
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(AddCommand, OpensABlankFormForTheNextNumber) {
  visit.Open([&] {
    visit.GoTo("A04");
    const auto page = visit.Window().GetUserCtrl();
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Add"); }), AddA04("5"));
    EXPECT_EQ(visit.OnShow().WhInfo().id, 5);
    EXPECT_EQ(visit.Text("A04_A0403").Text(), "");
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
    EXPECT_EQ(State(), "当前操作：增加 on off off");
    // The page stays, and so does its list.
    EXPECT_EQ(visit.Window().GetUserCtrl(), page);
    EXPECT_EQ(visit.OnShow().AdodcRs()->RecordCount(), 4);
    EXPECT_EQ(visit.OnShow().AdodcRs()->AbsolutePosition(), 1);
  });
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(Numbers("A04"), (Statements{"1", "2", "3", "4"}));
}

TEST_F(AddCommand, TheListShowsNoRowUntilAStoredRecordIsOnShowAgain) {
  visit.Open([&] {
    const auto shows = [&] { return visit.user.Find<toolkit::DataGrid>("DGItems")->ShowsRow(); };
    visit.GoTo("A04");
    EXPECT_TRUE(shows());
    visit.user.ClickToolbar("Add");
    EXPECT_FALSE(shows());
    visit.user.ClickRow(1);
    EXPECT_TRUE(shows());
    EXPECT_EQ(State(), "当前操作：修改  on on on");
    visit.user.ClickToolbar("Add");
    EXPECT_FALSE(shows());
    visit.user.ClickToolbar("Cancel");
    EXPECT_TRUE(shows());
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(AddCommand, TheNextNumberIsOneAboveTheHighestAlsoWhenOneBelowIsFree) {
  visit.Open([&] {
    Script("delete from A04 where A00='" + kPerson + "' and A0499 > 2");
    visit.GoTo("A04");
    visit.user.ClickToolbar("Add");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 3);
    Script("update A04 set A0499 = 7 where A00='" + kPerson + "' and A0499 = 2");
    visit.GoTo("A04");
    visit.user.ClickToolbar("Add");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 8);
    Script("delete from A04 where A00='" + kPerson + "'");
    visit.GoTo("A04");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
  });
}

TEST_F(AddCommand, ANumberBeyondSixteenBitsOverflows) {
  Script("update A04 set A0499 = 32767 where A00='" + kPerson + "' and A0499 = 4");
  EXPECT_EQ(NumberOfFailure([&] {
              visit.Open([&] {
                visit.GoTo("A04");
                visit.user.ClickToolbar("Add");
              });
            }),
            environment::kOverflow);
}

TEST_F(AddCommand, YesSavesTheEditsFirst) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("理事");
    Answer(toolkit::kAnswerYes);
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Add"); }),
              Join({kLimitA04,
                    {"delete from A04 where A00='" + kPerson + "'  and A0499 = 1",
                     "insert into A04( A00 ,A0499,A0401,A0402,A0403,A0404) values('" + kPerson +
                         "','1','2008年05月','2018年04月','江淮省作物学会','理事')",
                     "update A04 set A0499 = A0499 +200 where a00='" + kPerson + "'",
                     "select * from A04 where A00 ='" + kPerson + "' order by A0401",
                     "update A04 set A0499 = 1 where a00='" + kPerson + "' and A0499 = 201",
                     "update A04 set A0499 = 2 where a00='" + kPerson + "' and A0499 = 202",
                     "update A04 set A0499 = 3 where a00='" + kPerson + "' and A0499 = 203",
                     "update A04 set A0499 = 4 where a00='" + kPerson + "' and A0499 = 204"},
                    NextA04("5")}));
    EXPECT_EQ(State(), "当前操作：增加 on off off");
  });
}

TEST_F(AddCommand, RequiredItsQuestionAloneHasNoTitleOfItsOwn) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("理事");
    Answer(toolkit::kAnswerNo);
    visit.user.ClickToolbar("Add");
  });
  EXPECT_EQ(Shown(), (Messages{{"数据被修改且未保存，是否保存？", kYesOrNo, "DossierKit"}}));
}

TEST_F(AddCommand, NoDropsTheEdits) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("理事");
    Answer(toolkit::kAnswerNo);
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Add"); }), AddA04("5"));
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "");
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
  });
  EXPECT_EQ(Value("select A0404 from A04 where A00='" + kPerson + "' and A0499=1"), "副理事长");
}

TEST_F(AddCommand, AFailedSaveStopsIt) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0403").SetText("");
    Answer(toolkit::kAnswerYes);
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Add"); }),
              Join({kLimitA04, {"delete from A04 where A00='" + kPerson + "'  and A0499 = 1"}}));
    EXPECT_EQ(State(), "当前操作：修改 on on on");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
  });
  EXPECT_EQ(Shown(),
            (Messages{{kSaveEdits, kYesOrNo, "DossierKit"}, {"任职单位名称 为必填项", kOk, "错误信息"}}));
}

TEST_F(AddCommand, OnTheBasicSetANewPersonBegins) {
  visit.Open([&] {
    const auto statements = During([&] { visit.user.ClickToolbar("Add"); });
    EXPECT_EQ(statements, (Statements{" delete from S_GUID ", "insert into S_GUID(val) values('a')",
                                      "select id from S_GUID where val='a'",
                                      " select * from s_infoitem  where tblname ='A01'",
                                      "select * from A01 where a00 ='" + visit.Window().personID + "'"}));
    EXPECT_EQ(State(), "当前操作：增加 on off off");
  });
}

TEST_F(AddCommand, RequiredOnASingleSetItShowsTheStoredRowAsANewRecord) {
  visit.Open([&] {
    visit.GoTo("A12");
    const std::string stored = visit.Text("A12_A1201").Text();
    EXPECT_TRUE(During([&] { visit.user.ClickToolbar("Add"); }).empty()) << "the button is disabled";
    EXPECT_EQ(During([&] { visit.Window().TbMain_ButtonClick(visit.Window().TbMain().Button("Add")); }),
              (Statements{" select * from s_infoitem  where tblname ='A12'",
                          "select * from A12 where a00 ='" + kPerson + "'"}));
    EXPECT_EQ(visit.OnShow().WhInfo().id, 0);
    EXPECT_EQ(visit.Text("A12_A1201").Text(), stored);
    EXPECT_EQ(State(), "当前操作：增加 on off off");
  });
}

TEST_F(AddCommand, ADisabledButtonIsNotClickedButCodeMayCallTheCommand) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickToolbar("Add");
    EXPECT_TRUE(During([&] { visit.user.ClickToolbar("Add"); }).empty());
    EXPECT_TRUE(During([&] { visit.user.Press('N', toolkit::kAlt); }).empty());
    EXPECT_TRUE(During([&] { visit.user.Press('N', toolkit::kCtrl); }).empty());
    EXPECT_EQ(During([&] { visit.Window().TbMain_ButtonClick(visit.Window().TbMain().Button("Add")); }),
              AddA04("5"));
  });
}

TEST_F(AddCommand, AFailureAtAnyStatementReachesTheHostAndWritesNothing) {
  const auto before = visit.database->Bytes();
  for (std::size_t k = 1; k <= AddA04("5").size(); ++k) {
    EXPECT_EQ(NumberOfFailure([&] {
                visit.Open([&] {
                  visit.GoTo("A04");
                  visit.failing->FailAt(k);
                  visit.user.ClickToolbar("Add");
                });
              }),
              environment::kEngineFailure)
        << k;
    EXPECT_FALSE(visit.Window().InVisit()) << k;
  }
  EXPECT_EQ(visit.database->Bytes(), before);
}

// --- the check of the field with the focus -----------------------------------------------------------

TEST_F(AddCommand, AddAndSaveAreDroppedWhenTheFieldWithTheFocusRefuses) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0403").SetFocus();
    int checks = 0;
    const auto check = visit.Text("A04_A0403").Validate.Subscribe([&](bool& cancel) {
      ++checks;
      cancel = true;
    });
    const auto statements = During([&] {
      visit.user.ClickToolbar("Add");
      visit.user.ClickToolbar("Save");
      visit.user.Press('N', toolkit::kAlt);
      visit.user.Press('S', toolkit::kAlt);
    });
    EXPECT_TRUE(statements.empty());
    EXPECT_EQ(checks, 4);
    EXPECT_EQ(visit.Focus(), "A04_A0403_v");
  });
}

TEST_F(AddCommand, ToolbarButtonsTakeNoFocus) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0403").SetFocus();
    int left = 0;
    const auto lost = visit.Text("A04_A0403").LostFocus.Subscribe([&] { ++left; });
    visit.user.ClickToolbar("Add");
    EXPECT_EQ(left, 0);
    EXPECT_EQ(visit.Focus(), "A04_A0403_v");
  });
}

TEST_F(AddCommand, DeleteCancelAndExitRunWithoutACheck) {
  visit.Open([&] {
    int checks = 0;
    const auto refuse = [&](bool& cancel) {
      ++checks;
      cancel = true;
    };
    visit.GoTo("A04");
    visit.Text("A04_A0403").SetFocus();
    auto check = visit.Text("A04_A0403").Validate.Subscribe(refuse);
    Answer(toolkit::kAnswerNo);
    visit.user.ClickToolbar("Delete");
    EXPECT_EQ(Shown().size(), 1u);
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Cancel"); }), kOpenA04);
    visit.Text("A04_A0403").SetFocus();
    check = visit.Text("A04_A0403").Validate.Subscribe(refuse);
    visit.user.ClickToolbar("Exit");
    EXPECT_FALSE(visit.Window().Loaded());
    EXPECT_EQ(checks, 0);
  });
}

TEST_F(AddCommand, RequiredTheShortCutsRunWithoutACheck) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0403").SetFocus();
    const auto check = visit.Text("A04_A0403").Validate.Subscribe([&](bool& cancel) { cancel = true; });
    EXPECT_EQ(During([&] { visit.user.Press('N', toolkit::kCtrl); }), AddA04("5"));
  });
}

TEST_F(AddCommand, TheLimitTheNumberAndTheValuesAreThoseOfThePagesPerson) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.OnShow().WhInfo().personID = "Q";
    EXPECT_EQ(
        During([&] { visit.user.ClickToolbar("Add"); }),
        (Statements{
            "select iif(maxnumber is null,0,maxnumber) as maxnumber from  s_infotable  where tblname ='A04'",
            "select count(*) from A04 where a00='Q'",
            "select iif(max(A0499) is null,0,max(A0499))+1  from A04 where A00 ='Q' ",
            " select * from s_infoitem  where tblname ='A04'",
            "select * from A04 where a00 ='Q' and A0499=1",
        }));
    EXPECT_EQ(visit.Window().personID, kPerson);
  });
}

TEST_F(AddCommand, OnASingleSetTheRecordIsNumberZero) {
  visit.Open([&] {
    visit.GoTo("A12");
    visit.OnShow().WhInfo().id = 7;
    EXPECT_EQ(During([&] { visit.Window().TbMain_ButtonClick(visit.Window().TbMain().Button("Add")); }),
              (Statements{" select * from s_infoitem  where tblname ='A12'",
                          "select * from A12 where a00 ='" + kPerson + "'"}));
    EXPECT_EQ(visit.OnShow().WhInfo().id, 0);
  });
}

}  // namespace
}  // namespace dossierkit::tests
