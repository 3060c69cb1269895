// What looks like a mistake, is dangerous, and is required all the same.
#include <gtest/gtest.h>

#include <algorithm>

#include "metadata/field_items.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using environment::Failure;
using headless::Message;
using toolkit::kAnswerNo;
using toolkit::kAnswerYes;
using Texts = std::vector<std::string>;

std::string Of(const std::string& person) { return " where A00='" + person + "'"; }

TEST(RecordOneInTheFields, RequiredAfterAListWasLoadedWhateverRowIsOnShow) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    visit.database->RunScript("update A02 set A0299=A0299+10" + Of(kPerson) + ";update A02 set A0299=1" +
                              Of(kPerson) + " and A0299=13");
    visit.GoTo("A02");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 11);
    EXPECT_EQ(visit.Masked("A02_A0201").Text(), "1985年09月");
    EXPECT_EQ(environment::TextOf(visit.OnShow().FieldItems()->Item("A02_A0203")->Dmcod), "作物遗传育种");
    EXPECT_EQ(environment::TextOf(visit.OnShow().FieldItems()->Item("A02_A0204")->Dmcod), "209");
  });
}

TEST(RecordOneInTheFields, RequiredASaveWritesItsCodesIntoTheRowOnShow) {
  Visit visit;
  visit.database->RunScript("update A02 set A0299=A0299+10" + Of(kPerson) + ";update A02 set A0299=1" +
                            Of(kPerson) + " and A0299=13");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    EXPECT_EQ(visit.Text("A02_A0204").Text(),
              One(*visit.database, "select dmcpt from GB6864 where dmcod='409'"));
    visit.user.Press('S', toolkit::kCtrl);
  });
  EXPECT_EQ(Rows(*visit.database, "select A0203,A0204,A0299 from A02" + Of(kPerson) + " order by A0299"),
            (Texts{"农学|209|1", "作物遗传育种|309|2", "作物遗传育种|209|3"}));
}

TEST(RecordOneInTheFields, RequiredWhereThereIsNoneASaveEmptiesTheCodes) {
  Visit visit;
  visit.database->RunScript("update A02 set A0299=A0299+10" + Of(kPerson));
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    EXPECT_TRUE(visit.OnShow().FieldItems()->Item("A02_A0204")->Dmcod.IsUnset());
    visit.user.Press('S', toolkit::kCtrl);
  });
  EXPECT_EQ(Rows(*visit.database, "select A0203,A0204,A0299 from A02" + Of(kPerson) + " order by A0299"),
            (Texts{"农学||1", "作物遗传育种|309|2", "作物遗传育种|209|3"}));
}

TEST(RecordOneInTheFields, RequiredAlsoAfterADeleteWhileOtherPersonsHaveRecords) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    visit.script.WillAnswer(kAnswerYes);
    visit.user.ClickToolbar("Delete");
    // The first row left has another number than 1: the walk counted the rows of everybody.
    EXPECT_GT(visit.OnShow().WhInfo().id, 1);
    EXPECT_NE(visit.Text("A02_A0204").Text(), "");
    visit.user.Press('S', toolkit::kCtrl);
  });
  EXPECT_EQ(Rows(*visit.database, "select A0204,A0299 from A02" + Of(kPerson) + " order by A0299").front(),
            "|1");
}

TEST(RecordOneInTheFields, RequiredAClickOnTheRowReadsItsOwnCodes) {
  Visit visit;
  visit.database->RunScript("update A02 set A0299=A0299+10" + Of(kPerson));
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    visit.user.ClickRow(1);
    visit.user.Press('S', toolkit::kCtrl);
  });
  EXPECT_EQ(Rows(*visit.database, "select A0203,A0204,A0299 from A02" + Of(kPerson) + " order by A0299"),
            (Texts{"农学|409|1", "作物遗传育种|309|2", "作物遗传育种|209|3"}));
}

TEST(NewPersonWithAStoredId, RequiredASaveOfAListedRecordEmptiesItsCodes) {
  Visit visit;
  visit.component.OperationType = 0;
  visit.component.personID = kPerson;
  visit.Open([&] {
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改");
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "");
    visit.GoTo("A02");
    EXPECT_NE(visit.Text("A02_A0204").Text(), "");
    visit.user.Press('S', toolkit::kCtrl);
  });
  EXPECT_EQ(Rows(*visit.database, "select A0203,A0204 from A02" + Of(kPerson) + " order by A0299"),
            (Texts{"农学|", "作物遗传育种|309", "作物遗传育种|209"}));
}

TEST(NumbersOfDelete, RequiredCountTheRecordsOfEverybody) {
  Visit visit;
  visit.database->RunScript("delete from A04; insert into A04(A00,A0403,A0404,A0499) values('" + kPerson +
                            "','a','p1',1);"
                            "insert into A04(A00,A0403,A0404,A0499) values('Q','a','q1',1),('Q','a','q2',2);"
                            "insert into A04(A00,A0403,A0404,A0499) values('" +
                            kPerson + "','b','p2',2),('" + kPerson +
                            "','c','p3',3);"
                            "insert into A04(A00,A0403,A0404,A0499) values('Q','a','q3',3)");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.Window().GetUserCtrl()->WhInfo().id = 2;
    visit.script.WillAnswer(kAnswerYes);
    visit.user.ClickToolbar("Delete");
  });
  EXPECT_EQ(Rows(*visit.database, "select A0404,A0499 from A04 where A00='Q' order by A0499"),
            (Texts{"q1|1", "q2|2", "q3|3"}));
  EXPECT_EQ(Column(*visit.database, "select A0499 from A04" + Of(kPerson)), (Texts{"4", "4"}))
      << "the walk takes the rows of both persons";
}

TEST(NumbersOfDelete, RequiredBeyond32767TheSetCannotBeOpenedAgain) {
  Visit visit;
  visit.database->RunScript(
      "with recursive n(i) as (select 1 union all select i+1 from n where i<32767) "
      "insert into A04(A00,A0403,A0404,A0499) select 'Q','a','b',0 from n");
  const auto expect_overflow = [&](const std::function<void()>& scene) {
    try {
      visit.OpenPerson(kPerson, scene);
      ADD_FAILURE() << "the set was opened";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), environment::kOverflow);
      EXPECT_EQ(failure.description(), "溢出");
    }
    EXPECT_FALSE(visit.Window().Loaded());
  };
  visit.script.WillAnswer(kAnswerYes);
  expect_overflow([&] {
    visit.GoTo("A04");
    visit.user.ClickToolbar("Delete");
  });
  expect_overflow([&] { visit.GoTo("A04"); });
  // The person's other sets can.
  visit.OpenPerson(kPerson, [&] { visit.GoTo("A05"); });
}

TEST(RunningNumber, RequiredATableAt32767TakesNoNewPerson) {
  Visit visit;
  visit.database->RunScript("update A01 set A0199=32767" + Of(kPerson));
  const bool saved = visit.OpenNew([&] {
    visit.user.ClickToolbar("Save");
    EXPECT_TRUE(visit.Window().Loaded());
  });
  EXPECT_FALSE(saved);
  EXPECT_EQ(visit.script.messages, (std::vector<Message>{{"溢出", 0, "信息保存"}}));
}

TEST(CodesJustTyped, RequiredEnterInTheLastFieldSavesWithoutResolvingThem) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    visit.user.ClickRow(1);
    auto& box = visit.Text("A02_A0204");
    box.SetFocus();
    visit.user.Press('A', toolkit::kCtrl);
    visit.user.Type("309");
    visit.user.Press(toolkit::kKeyReturn);
  });
  // The record keeps the code it had.
  EXPECT_EQ(Rows(*visit.database, "select A0204 from A02" + Of(kPerson) + " and A0299=1"), (Texts{"409"}));
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(CodesJustTyped, RequiredTheShortCutOfSaveSavesWithoutResolvingThem) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    visit.user.Press('N', toolkit::kCtrl);
    visit.user.Type("199701");
    visit.user.Tab();
    visit.user.Tab();
    visit.user.Type("某大学");
    visit.user.Tab();
    visit.user.Type("某专业");
    visit.user.Tab();
    visit.user.Type("309");
    visit.user.Press('S', toolkit::kCtrl);
  });
  EXPECT_EQ(Rows(*visit.database, "select A0203,A0204 from A02" + Of(kPerson) + " and A0299=4"),
            (Texts{"某专业|"}));
}

TEST(EnterInTheLastField, RequiredGoesOnWithANewRecordThoughTheSaveFailed) {
  Visit visit;
  EXPECT_FALSE(visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    visit.Text("A02_A0202").SetText("");
    visit.Text("A02_A0204").SetFocus();
    visit.script.WillAnswer(kAnswerNo);
    visit.user.Press(toolkit::kKeyReturn);
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加");
    EXPECT_EQ(visit.Text("A02_A0203").Text(), "");
  }));
  EXPECT_EQ(visit.script.messages,
            (std::vector<Message>{{"就读院校 为必填项", 0, "错误信息"},
                                  {"数据被修改且未保存，是否保存？", 4, "DossierKit"}}));
  EXPECT_EQ(One(*visit.database, "select count(*) from A02" + Of(kPerson)), "2");
}

class AtTheLimit : public ::testing::Test {
 protected:
  const Message limit_{"此信息集最多只能录入5条记录。", 0, "人员维护"};
  Visit visit_;

  // Fills in the fifth and last record of A11.
  void FifthRecord() {
    visit_.database->RunScript("delete from A11" + Of(kPerson) +
                               ";insert into A11(A00,A1101,A1102,A1199) values('" + kPerson +
                               "','a','2020',1),('" + kPerson + "','b','2021',2),('" + kPerson +
                               "','c','2022',3),('" + kPerson + "','d','2023',4)");
    visit_.OpenPerson(kPerson, [&] {
      visit_.GoTo("A11");
      visit_.user.ClickToolbar("Add");
      visit_.user.Type("第五项");
      visit_.user.Tab();
      visit_.user.Type("2024");
      visit_.user.Tab();
      finish_();
      EXPECT_EQ(visit_.Caption("labOpt"), "当前操作：修改");
      EXPECT_TRUE(visit_.Enabled("Add"));
    });
    EXPECT_EQ(One(*visit_.database, "select A1101 from A11" + Of(kPerson) + " and A1199=5"), "第五项");
  }
  std::function<void()> finish_;
};

TEST_F(AtTheLimit, RequiredEnterInTheLastFieldTellsOfItTwice) {
  finish_ = [&] { visit_.user.Press(toolkit::kKeyReturn); };
  FifthRecord();
  EXPECT_EQ(visit_.script.messages, (std::vector<Message>{limit_, limit_}));
}

TEST_F(AtTheLimit, TheToolbarTellsOfItOnce) {
  finish_ = [&] { visit_.user.ClickToolbar("Save"); };
  FifthRecord();
  EXPECT_EQ(visit_.script.messages, (std::vector<Message>{limit_}));
}

TEST_F(AtTheLimit, RequiredAddLosesTheMarkOfEditsAndKeepsThemOnTheScreen) {
  visit_.database->RunScript("update s_infotable set maxnumber=3 where tblname='A11'");
  visit_.OpenPerson(kPerson, [&] {
    visit_.GoTo("A11");
    visit_.user.Type("改");
    EXPECT_TRUE(visit_.OnShow().WhInfo().IsChange);
    visit_.user.ClickToolbar("Add");
    EXPECT_FALSE(visit_.OnShow().WhInfo().IsChange);
    EXPECT_TRUE(visit_.Text("A11_A1101").Text().starts_with("改"));
    visit_.GoTo("A12");
  });
  EXPECT_EQ(visit_.script.messages, (std::vector<Message>{{"此信息集最多只能录入3条记录。", 0, "人员维护"}}));
}

TEST(DeleteBeforeTheCheck, RequiredARecordThatFailsItsCheckIsGoneUntilALaterSave) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.Text("A04_A0403").SetText("");
    visit.user.Press('S', toolkit::kCtrl);
    EXPECT_EQ(One(*visit.database, "select count(*) from A04" + Of(kPerson)), "3");
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
    visit.Text("A04_A0403").SetText("作物学会");
    visit.user.Press('S', toolkit::kCtrl);
  });
  EXPECT_EQ(visit.script.messages, (std::vector<Message>{{"任职单位名称 为必填项", 0, "错误信息"}}));
  EXPECT_EQ(One(*visit.database, "select A0403 from A04" + Of(kPerson) + " and A0499=1"), "作物学会");
}

TEST(CancelWithEdits, RequiredAsksTwiceAndTheSecondYesSaves) {
  for (const auto& [second, stored] : {std::pair(kAnswerYes, "理事长"), std::pair(kAnswerNo, "副理事长")}) {
    Visit visit;
    EXPECT_FALSE(visit.OpenPerson(kPerson, [&, answer = second] {
      visit.GoTo("A04");
      visit.Text("A04_A0404").SetText("理事长");
      visit.script.WillAnswer(kAnswerYes);
      visit.script.WillAnswer(answer);
      visit.user.ClickToolbar("Cancel");
    }));
    EXPECT_EQ(visit.script.messages,
              (std::vector<Message>{{"数据已被修改并且未被保存，是否取消？", 4, "人员维护"},
                                    {"数据被修改且未保存，是否保存？", 4, "人员维护"}}));
    EXPECT_EQ(One(*visit.database, "select A0404 from A04" + Of(kPerson) + " and A0499=1"), stored);
  }
}

TEST(ColumnsWithoutAField, RequiredDoNotSurviveASaveButInTheBasicData) {
  Visit visit;
  visit.database->RunScript(
      "alter table A04 add column A0488 varchar(9); update A04 set A0488='k';"
      "alter table A01 add column A0188 varchar(9); update A01 set A0188='k'");
  visit.OpenPerson(kPerson, [&] {
    visit.user.ClickToolbar("Save");
    visit.GoTo("A04");
    visit.user.Press('S', toolkit::kCtrl);
  });
  EXPECT_EQ(One(*visit.database, "select A0188 from A01" + Of(kPerson)), "k");
  EXPECT_EQ(Column(*visit.database, "select A0488 from A04" + Of(kPerson) + " order by A0499"),
            (Texts{"NULL", "k", "k", "k"}));
}

TEST(SetsOfTheMetadata, ASetThatIsNotListedFailsAfterItsPageWasBuilt) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.database->RunScript("delete from s_infotable where tblname='A12'");
    EXPECT_FALSE(IsMultSet("A12"));
    EXPECT_EQ(visit.Window().IsMaxNumber(visit.OnShow().WhInfo()), 0);
  });
  EXPECT_THROW(visit.OpenPerson(kPerson,
                                [&] {
                                  visit.database->RunScript("delete from s_infotable where tblname='A13'");
                                  visit.GoTo("A13");
                                }),
               Failure);
}

TEST(SetsOfTheMetadata, NoLimitIsZeroOrNotGiven) {
  for (const char* limit : {"0", "null", "-3"}) {
    Visit visit;
    visit.database->RunScript(std::string("update s_infotable set maxnumber=") + limit +
                              " where tblname='A11'");
    visit.OpenPerson(kPerson, [&] {
      visit.GoTo("A11");
      visit.user.ClickToolbar("Add");
      EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加");
    });
    EXPECT_TRUE(visit.Messages().empty());
  }
}

TEST(SetsOfTheMetadata, APersonStoredTwiceIsRefused) {
  Visit visit;
  visit.database->RunScript("insert into A01(A00,A0101,A0199) values('" + kPerson + "','同号',99)");
  EXPECT_THROW(visit.OpenPerson(kPerson, [] {}), Failure);
  EXPECT_EQ(visit.script.messages,
            (std::vector<Message>{{"无法维护此人信息。可能不存在此人Id号或Id号重复。", 0, "人员维护"}}));
}

TEST(FaultsOfTheMetadata, RequiredEachEndsTheVisit) {
  struct Fault {
    const char* script;
    int number;
  };
  const std::vector<Fault> faults = {
      {"update s_infoitem set FieldLength='viele' where itemname='A0403'", environment::kTypeMismatch},
      {"update s_infoitem set FldWidth=40000 where itemname='A0403'", environment::kOverflow},
      {"delete from s_infoitem where itemname='A0403'", environment::kInvalidCall},
      {"insert into s_infoitem(tblname,itemname) values('a04','a0403')", environment::kDuplicateKey},
      {"insert into s_infoitem(tblname,itemname) values('A04','A0477')", environment::kUnknownItem},
      {"update s_infoitem set CodeTable='NOSUCH' where itemname='A0403'", environment::kNoSuchTable},
      {"update s_infotable set orderfield='A0477' where tblname='A04'", environment::kUnknownName},
      {"drop table A04", environment::kNoSuchTable},
  };
  for (const Fault& fault : faults) {
    Visit visit;
    visit.database->RunScript(fault.script);
    try {
      visit.OpenPerson(kPerson, [&] { visit.GoTo("A04"); });
      ADD_FAILURE() << fault.script;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), fault.number) << fault.script << ": " << failure.what();
    }
    EXPECT_FALSE(visit.Window().Loaded());
    EXPECT_TRUE(visit.Messages().empty());
  }
}

}  // namespace
}  // namespace dossierkit::tests
