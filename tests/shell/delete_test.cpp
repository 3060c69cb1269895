// The command Delete and its walk over the numbers.
#include <filesystem>

#include "tests/shell/shell_test.h"
#include "tests/support/photo_folder.h"

namespace dossierkit::tests {
namespace {

const std::string kOther = "56670B14-1509-4B0A-8BF1-3331CA118783";

class DeleteCommand : public ShellTest {
 protected:
  // Leaves no other person's rows in the set of the part-time posts.
  void AloneInA04() { Script("delete from A04 where A00<>'" + kPerson + "'"); }
  void ClickDelete(toolkit::MessageAnswer answer) {
    Answer(answer);
    visit.user.ClickToolbar("Delete");
  }
  std::string Posts() { return Value("select count(*) from A04 where A00='" + kPerson + "'"); }
};

TEST_F(DeleteCommand, ARecordOfManyIsDeletedAndTheRestNumberedByTheseStatements) {
  AloneInA04();
  visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickRow(2);
    EXPECT_EQ(During([&] { ClickDelete(toolkit::kAnswerYes); }),
              Join({{"delete from A04 where A00='" + kPerson + "'  and A0499 = 2",
                     "select * from A04 order by A0499",
                     "update A04 set A0499 = 1 where a00='" + kPerson + "' and A0499 = 1",
                     "update A04 set A0499 = 2 where a00='" + kPerson + "' and A0499 = 3",
                     "update A04 set A0499 = 3 where a00='" + kPerson + "' and A0499 = 4"},
                    kOpenA04}));
    EXPECT_EQ(State(), "当前操作：修改 on on on");
    // The first record is on show, not a neighbour of the deleted one.
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
    EXPECT_EQ(visit.Text("A04_A0403").Text(), "江淮省作物学会");
    EXPECT_EQ(visit.OnShow().AdodcRs()->RecordCount(), 3);
  });
  EXPECT_EQ(Numbers("A04"), (Statements{"1", "2", "3"}));
  EXPECT_EQ(Shown(), (Messages{{"是否删除此条记录？", kYesOrNo, "人员维护"}}));
}

TEST_F(DeleteCommand, OfThreeRecordsWithoutTheSecondTheNumbersAreOneAndTwo) {
  AloneInA04();
  Script("delete from A04 where A0499 = 4");
  visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickRow(2);
    ClickDelete(toolkit::kAnswerYes);
  });
  EXPECT_EQ(Numbers("A04"), (Statements{"1", "2"}));
}

TEST_F(DeleteCommand, RequiredTheWalkTakesTheRowsOfAllPersonsAndCountsThem) {
  Script(
      "delete from A04;"
      "insert into A04 (A00,A0401,A0403,A0404,A0499) values "
      "('" +
      kPerson + "','2001-01-01','a','P1',1), ('" + kOther +
      "','2001-01-01','a','Q1',1),"
      "('" +
      kPerson + "','2002-01-01','a','P2',2), ('" + kOther +
      "','2002-01-01','a','Q2',2),"
      "('" +
      kPerson + "','2003-01-01','a','P3',3), ('" + kOther + "','2003-01-01','a','Q3',3)");
  visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickRow(2);
    const auto statements = During([&] { ClickDelete(toolkit::kAnswerYes); });
    ASSERT_GE(statements.size(), 7u);
    EXPECT_EQ(Statements(statements.begin(), statements.begin() + 7),
              (Statements{
                  "delete from A04 where A00='" + kPerson + "'  and A0499 = 2",
                  "select * from A04 order by A0499",
                  "update A04 set A0499 = 1 where a00='" + kPerson + "' and A0499 = 1",
                  "update A04 set A0499 = 2 where a00='" + kPerson + "' and A0499 = 1",
                  "update A04 set A0499 = 3 where a00='" + kPerson + "' and A0499 = 2",
                  "update A04 set A0499 = 4 where a00='" + kPerson + "' and A0499 = 3",
                  "update A04 set A0499 = 5 where a00='" + kPerson + "' and A0499 = 3",
              }));
    EXPECT_EQ(visit.OnShow().WhInfo().id, 4);
  });
  EXPECT_EQ(Numbers("A04"), (Statements{"4", "4"}));
  EXPECT_EQ(Numbers("A04", kOther), (Statements{"1", "2", "3"}));
}

TEST_F(DeleteCommand, RequiredAWalkBeyondSixteenBitsGoesOnAndTheSetNeverOpensAgain) {
  Script(
      "delete from A04;"
      "insert into A04 (A00,A0401,A0403,A0404,A0499) values "
      "('" +
      kPerson + "','2001-01-01','a','P1',1), ('" + kPerson +
      "','2002-01-01','a','P2',2);"
      "with recursive n(i) as (select 1 union all select i + 1 from n where i < 33000) "
      "insert into A04 (A00,A0403,A0404,A0499) select '" +
      kOther + "','a','Q',i from n");
  try {
    visit.Open([&] {
      visit.GoTo("A04");
      visit.user.ClickRow(2);
      ClickDelete(toolkit::kAnswerYes);
    });
    ADD_FAILURE() << "the reload did not fail";
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.number(), environment::kOverflow);
    EXPECT_EQ(failure.description(), "溢出");
  }
  EXPECT_EQ(Numbers("A04"), Statements{"33001"});
  EXPECT_EQ(NumberOfFailure([&] { visit.Open([&] { visit.GoTo("A04"); }); }), environment::kOverflow);
  visit.Open([&] { visit.GoTo("A03"); });
}

TEST_F(DeleteCommand, NoLeavesEverything) {
  visit.Open([&] {
    visit.GoTo("A04");
    EXPECT_TRUE(During([&] { ClickDelete(toolkit::kAnswerNo); }).empty());
    visit.GoTo("A01");
    EXPECT_TRUE(During([&] { ClickDelete(toolkit::kAnswerNo); }).empty());
  });
  EXPECT_EQ(Shown(), (Messages{{"是否删除此条记录？", kYesOrNo, "人员维护"},
                               {"此操作将删除此人所有信息，是否删除？", kYesOrNo, "人员维护"}}));
}

TEST_F(DeleteCommand, TheLastRecordLeavesABlankForm) {
  AloneInA04();
  Script("delete from A04 where A0499 > 1");
  visit.Open([&] {
    visit.GoTo("A04");
    ClickDelete(toolkit::kAnswerYes);
    EXPECT_EQ(State(), "当前操作：增加 on off off");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
  });
  EXPECT_EQ(Posts(), "0");
}

// --- edits pending -------------------------------------------------------------------------------------

TEST_F(DeleteCommand, RequiredEditsAreAskedAboutOnlyByTheReload) {
  AloneInA04();
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("理事");
    Answer(toolkit::kAnswerYes);
    Answer(toolkit::kAnswerNo);
    visit.user.ClickToolbar("Delete");
    EXPECT_EQ(visit.Text("A04_A0403").Text(), "稻作科学编辑部");
  });
  EXPECT_EQ(Shown(),
            (Messages{{"是否删除此条记录？", kYesOrNo, "人员维护"}, {kSaveEdits, kYesOrNo, kWindow}}));
  EXPECT_EQ(Posts(), "3");
}

TEST_F(DeleteCommand, RequiredAYesThereBringsTheRecordBackAndTakesAnother) {
  AloneInA04();
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("理事");
    Answer(toolkit::kAnswerYes);
    Answer(toolkit::kAnswerYes);
    visit.user.ClickToolbar("Delete");
  });
  // Its number had gone to the next record, which the save replaced.
  EXPECT_EQ(Column(*visit.database, "select A0404 from A04 where A00='" + kPerson + "' order by A0499"),
            (Statements{"理事", "水稻专业组组长", "兼职博士生导师"}));
}

TEST_F(DeleteCommand, RequiredAYesAfterThePersonWasDeletedFailsForWantOfARowAndThePageStays) {
  visit.Open([&] {
    visit.Text("A01_A0109").SetText("稻作学");
    Answer(toolkit::kAnswerYes);
    Answer(toolkit::kAnswerYes);
    visit.user.ClickToolbar("Delete");
    EXPECT_EQ(State(), "当前操作：修改 on on on");
    EXPECT_EQ(visit.Text("A01_A0109").Text(), "稻作学");
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
    EXPECT_EQ(visit.Window().personID, kPerson);
  });
  EXPECT_EQ(Shown(),
            (Messages{{"此操作将删除此人所有信息，是否删除？", kYesOrNo, "人员维护"},
                      {kSaveEdits, kYesOrNo, kWindow},
                      {"BOF 或 EOF 中有一个是“真”，或者当前的记录已被删除，所需的操作要求一个当前的记录。",
                       kOk, "信息保存"}}));
  EXPECT_EQ(Value("select count(*) from A01 where A00='" + kPerson + "'"), "0");
}

// --- single sets -----------------------------------------------------------------------------------------

TEST_F(DeleteCommand, OnAnotherSingleSetOnlyCodeCanReachIt) {
  visit.Open([&] {
    visit.GoTo("A12");
    EXPECT_TRUE(During([&] { visit.user.ClickToolbar("Delete"); }).empty());
    Answer(toolkit::kAnswerYes);
    EXPECT_EQ(During([&] { visit.Window().TbMain_ButtonClick(visit.Window().TbMain().Button("Delete")); }),
              (Statements{
                  "delete from A12 where A00='" + kPerson + "' ",
                  "select count(A00) from a01 where a00 ='" + kPerson + "'",
                  " select Property from s_infotable  where TblName ='A12'",
                  " select * from s_infoitem  where tblname ='A12'",
                  "select * from A12 where a00 ='" + kPerson + "'",
                  "select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where "
                  "tblname ='A12'  "
                  "and orderfield<>'' ",
                  "select count(*) from A12 where A00 ='" + kPerson + "'",
                  " select * from s_infoitem  where tblname ='A12'",
                  "select * from A12 where a00 ='" + kPerson + "'",
                  "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A12'",
              }));
    EXPECT_EQ(State(), "当前操作：增加 on off off");
  });
  EXPECT_EQ(Shown(), (Messages{{"是否删除此条记录？", kYesOrNo, "人员维护"}}));
}

TEST_F(DeleteCommand, RequiredAPersonIsDeletedFromTheBasicSetAloneAndAFreshOneBegins) {
  Script("drop trigger tr_A01_delete");
  EXPECT_FALSE(visit.Open([&] {
    const auto statements = During([&] { ClickDelete(toolkit::kAnswerYes); });
    const std::string id = visit.Window().personID;
    EXPECT_EQ(statements, (Statements{
                              "delete from A01 where A00='" + kPerson + "' ",
                              "select count(A00) from a01 where a00 ='" + kPerson + "'",
                              " select Property from s_infotable  where TblName ='A01'",
                              " select * from s_infoitem  where tblname ='A01'",
                              "select * from A01 where a00 ='" + kPerson + "'",
                              "select iif(orderfield is null , '',orderfield) as orderfield  from "
                              "s_infotable where tblname ='A01'  "
                              "and orderfield<>'' ",
                              "select count(*) from A01 where A00 ='" + kPerson + "'",
                              " delete from S_GUID ",
                              "insert into S_GUID(val) values('a')",
                              "select id from S_GUID where val='a'",
                              " select * from s_infoitem  where tblname ='A01'",
                              "select * from A01 where a00 ='" + id + "'",
                              "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A01'",
                          }));
    EXPECT_NE(id, kPerson);
    EXPECT_EQ(visit.Window().DealType, 0);
    EXPECT_EQ(visit.Caption("labPersonName"), "");
    EXPECT_EQ(State(), "当前操作：增加 on off off");
  }));
  EXPECT_EQ(Shown(), (Messages{{"此操作将删除此人所有信息，是否删除？", kYesOrNo, "人员维护"}}));
  EXPECT_EQ(Value("select count(*) from A01 where A00='" + kPerson + "'"), "0");
  EXPECT_EQ(Posts(), "4");
}

TEST_F(DeleteCommand, TheRowsAreThoseOfThePagesPerson) {
  AloneInA04();
  Script("delete from A04 where A0499 > 2; insert into A04(A00,A0499) values('Q',1)");
  visit.Open([&] {
    visit.GoTo("A04");
    visit.OnShow().WhInfo().personID = "Q";
    const auto statements = During([&] { ClickDelete(toolkit::kAnswerYes); });
    ASSERT_GE(statements.size(), 5U);
    EXPECT_EQ(Statements(statements.begin(), statements.begin() + 5),
              (Statements{
                  "delete from A04 where A00='Q'  and A0499 = 1",
                  "select * from A04 order by A0499",
                  "update A04 set A0499 = 1 where a00='Q' and A0499 = 1",
                  "update A04 set A0499 = 2 where a00='Q' and A0499 = 2",
                  // The reload is that of the window's person.
                  "select count(A00) from a01 where a00 ='" + kPerson + "'",
              }));
  });
}

// --- failures ----------------------------------------------------------------------------------------------

TEST_F(DeleteCommand, RequiredAFailureInTheMiddleLeavesTheStepsDone) {
  const std::vector<Statements> left = {
      {"1", "2", "3", "4"},                   // the delete failed
      {"2", "3", "4"},                        // the reading failed
      {"2", "3", "4"},                        // the first number failed
      {"1", "3", "4"},      {"1", "2", "4"},  // the second, the third
      {"1", "2", "3"},                        // the reload failed
  };
  for (std::size_t i = 0; i < left.size(); ++i) {
    Visit each;
    each.database->RunScript("delete from A04 where A00<>'" + kPerson + "'");
    EXPECT_EQ(NumberOfFailure([&] {
                each.Open([&] {
                  each.GoTo("A04");
                  each.script.WillAnswer(toolkit::kAnswerYes);
                  each.failing->FailAt(i + 1);
                  each.user.ClickToolbar("Delete");
                });
              }),
              environment::kEngineFailure)
        << i;
    EXPECT_EQ(Column(*each.database, "select A0499 from A04 where A00='" + kPerson + "' order by A0499"),
              left[i])
        << i;
    EXPECT_EQ(each.script.messages.size(), 1u);
    EXPECT_FALSE(each.Window().InVisit());
  }
}

// --- the photograph ----------------------------------------------------------------------------------------

class PhotoOfDelete : public DeleteCommand {
 protected:
  void SetUp() override { visit.component.PhotoPath = folder.Photos().string(); }
  std::filesystem::path Photo(const std::string& person = kPerson) { return folder.Photo(person); }
  void MakePhoto(const std::string& person = kPerson) { PhotoFolder::Write(Photo(person), Jpeg("photo")); }

  PhotoFolder folder;
};

TEST_F(PhotoOfDelete, TheFileGoesBeforeTheRow) {
  MakePhoto();
  MakePhoto(kOther);
  bool gone_before = false;
  visit.component.SetConnection(
      std::make_shared<ado::TracingConnection>(visit.failing, [&](const ado::Trace& trace) {
        if (trace.statement == "delete from A01 where A00='" + kPerson + "' ")
          gone_before = !std::filesystem::exists(Photo());
      }));
  visit.Open([&] { ClickDelete(toolkit::kAnswerYes); });
  EXPECT_TRUE(gone_before);
  EXPECT_FALSE(std::filesystem::exists(Photo()));
  EXPECT_TRUE(std::filesystem::exists(Photo(kOther)));
  EXPECT_EQ(Shown().size(), 1u);
}

TEST_F(PhotoOfDelete, RequiredTheFileIsGoneAlsoWhenTheRowCannotBeDeleted) {
  MakePhoto();
  EXPECT_EQ(NumberOfFailure([&] {
              visit.Open([&] {
                visit.failing->FailAt(1);
                ClickDelete(toolkit::kAnswerYes);
              });
            }),
            environment::kEngineFailure);
  EXPECT_FALSE(std::filesystem::exists(Photo()));
  EXPECT_EQ(Value("select count(*) from A01 where A00='" + kPerson + "'"), "1");
}

TEST_F(PhotoOfDelete, AWriteProtectedFileGoesToo) {
  MakePhoto();
  PhotoFolder::Protect(Photo());
  visit.Open([&] { ClickDelete(toolkit::kAnswerYes); });
  EXPECT_FALSE(std::filesystem::exists(Photo()));
}

TEST_F(PhotoOfDelete, WithoutAFileTheRowGoesWithoutAMessage) {
  visit.Open([&] { ClickDelete(toolkit::kAnswerYes); });
  EXPECT_EQ(Shown(), (Messages{{"此操作将删除此人所有信息，是否删除？", kYesOrNo, "人员维护"}}));
  EXPECT_EQ(Value("select count(*) from A01 where A00='" + kPerson + "'"), "0");
}

TEST_F(PhotoOfDelete, NoKeepsTheFile) {
  MakePhoto();
  visit.Open([&] { ClickDelete(toolkit::kAnswerNo); });
  EXPECT_TRUE(std::filesystem::exists(Photo()));
}

TEST_F(PhotoOfDelete, ARecordOfAnotherSetKeepsTheFile) {
  MakePhoto();
  visit.Open([&] {
    visit.GoTo("A04");
    ClickDelete(toolkit::kAnswerYes);
  });
  EXPECT_TRUE(std::filesystem::exists(Photo()));
}

TEST_F(PhotoOfDelete, TheFileIsThatOfThePagesPerson) {
  MakePhoto();
  MakePhoto(kOther);
  visit.Open([&] {
    visit.OnShow().WhInfo().personID = kOther;
    ClickDelete(toolkit::kAnswerYes);
  });
  EXPECT_TRUE(std::filesystem::exists(Photo()));
  EXPECT_FALSE(std::filesystem::exists(Photo(kOther)));
}

}  // namespace
}  // namespace dossierkit::tests
