// The numbers of a person's records after one of them was saved.
#include "tests/metadata/save_test.h"

namespace dossierkit::tests {
namespace {

class Renumbering : public SaveTest {
 protected:
  // Saves a record of person P in the conferences, by its number, date and host.
  bool SaveConference(std::int16_t number, const std::string& date, const std::string& host,
                      const std::string& order = "A0601") {
    auto page = ScratchPage::Multi("A06", "P", number, order);
    page->AddText(FieldOf("A0601", "datetime"), date);
    page->AddText(FieldOf("A0602", "Varchar"), host);
    return Save(page);
  }
  void Store(const std::string& rows) {
    visit.database->RunScript("insert into A06(A00,A0699,A0601,A0602) values " + rows);
  }
  Lines Numbers() { return Rows("select A0699,A0602 from A06 where A00='P' order by A0699,A0602"); }
};

TEST_F(Renumbering, ARecordWhoseSortValueComesFirstGetsNumberOne) {
  Store("('P',1,'2001-01-01','a'),('P',2,'2002-01-01','b')");
  InWindow([&] {
    EXPECT_TRUE(SaveConference(3, "2000年01月", "c"));
    EXPECT_EQ(Statements(visit.statements.begin() + 2, visit.statements.end()),
              (Statements{
                  "update A06 set A0699 = A0699 +200 where a00='P'",
                  "select * from A06 where A00 ='P' order by A0601",
                  "update A06 set A0699 = 1 where a00='P' and A0699 = 203",
                  "update A06 set A0699 = 2 where a00='P' and A0699 = 201",
                  "update A06 set A0699 = 3 where a00='P' and A0699 = 202",
              }));
  });
  EXPECT_EQ(Numbers(), (Lines{"1|c", "2|a", "3|b"}));
}

TEST_F(Renumbering, TheOnlyRecordBecomesNumberOne) {
  InWindow([&] { EXPECT_TRUE(SaveConference(7, "2000年01月", "a")); });
  EXPECT_EQ(Numbers(), Lines{"1|a"});
}

TEST_F(Renumbering, GapsAreClosed) {
  Store("('P',4,'2001-01-01','a'),('P',9,'2002-01-01','b')");
  InWindow([&] { EXPECT_TRUE(SaveConference(12, "2003年01月", "c")); });
  EXPECT_EQ(Numbers(), (Lines{"1|a", "2|b", "3|c"}));
}

TEST_F(Renumbering, RecordsWithoutASortValueComeFirst) {
  Store("('P',1,'2001-01-01','a')");
  InWindow([&] { EXPECT_TRUE(SaveConference(2, "", "b")); });
  EXPECT_EQ(Numbers(), (Lines{"1|b", "2|a"}));
}

TEST_F(Renumbering, TheSortExpressionMayRunBackwards) {
  Store("('P',1,'2001-01-01','a'),('P',2,'2002-01-01','b')");
  InWindow([&] { EXPECT_TRUE(SaveConference(3, "2003年01月", "c", "A0601 desc")); });
  EXPECT_EQ(Numbers(), (Lines{"1|c", "2|b", "3|a"}));
}

TEST_F(Renumbering, TheSortExpressionMayHoldANameInBrackets) {
  visit.database->RunScript("alter table A06 add column \"会议 级别\" varchar(9)");
  Store("('P',1,'2001-01-01','a'),('P',2,'2002-01-01','b')");
  visit.database->RunScript("update A06 set \"会议 级别\" = 5 - A0699 where A00='P'");
  InWindow([&] { EXPECT_TRUE(SaveConference(3, "2003年01月", "c", "[会议 级别] desc,[A0601]")); });
  EXPECT_EQ(Numbers(), (Lines{"1|a", "2|b", "3|c"}));
  InWindow([&] { EXPECT_FALSE(SaveConference(4, "2004年01月", "d", "会议 级别")); });
}

TEST_F(Renumbering, BySortingOnTheNumberItselfTheOrderStays) {
  Store("('P',1,'2003-01-01','a'),('P',3,'2001-01-01','c')");
  InWindow([&] { EXPECT_TRUE(SaveConference(2, "2002年01月", "b", "A0699")); });
  EXPECT_EQ(Numbers(), (Lines{"1|a", "2|b", "3|c"}));
}

TEST_F(Renumbering, EqualSortValuesAreNumberedInTheOrderOfTheDatabase) {
  Store("('P',1,'2001-01-01','a'),('P',2,'2001-01-01','b')");
  Lines order;
  visit.failing->FailAt(1, environment::kEngineFailure, "", [&](const std::string& statement) {
    if (statement == "select * from A06 where A00 ='P' order by A0601")
      order = Column(*visit.database, "select A0602 from A06 where A00 ='P' order by A0601");
    return false;
  });
  InWindow([&] { EXPECT_TRUE(SaveConference(3, "2001年01月", "c")); });
  ASSERT_EQ(order.size(), 3U);
  EXPECT_EQ(Numbers(), (Lines{"1|" + order[0], "2|" + order[1], "3|" + order[2]}));
}

TEST_F(Renumbering, OtherPersonsKeepTheirNumbers) {
  Store("('Q',5,'1999-01-01','q'),('P',1,'2001-01-01','a')");
  InWindow([&] { EXPECT_TRUE(SaveConference(2, "2002年01月", "b")); });
  EXPECT_EQ(Rows("select A0699 from A06 where A00='Q'"), Lines{"5"});
}

TEST_F(Renumbering, AFailureInItsMiddleLeavesNumbersAbove200UntilTheNextSave) {
  Store("('P',1,'2001-01-01','a'),('P',2,'2002-01-01','b')");
  InWindow([&] {
    visit.failing->FailAt(2, environment::kEngineFailure, "磁盘或网络错误。",
                          [](const std::string& statement) {
                            return statement.starts_with("update A06 set A0699 = ") &&
                                   statement.find("+200") == std::string::npos;
                          });
    EXPECT_FALSE(SaveConference(3, "2003年01月", "c"));
    EXPECT_EQ(Numbers(), (Lines{"1|a", "202|b", "203|c"}));
    ExpectMessage("磁盘或网络错误。", "信息保存");
    EXPECT_TRUE(SaveConference(4, "2004年01月", "d"));
  });
  EXPECT_EQ(Numbers(), (Lines{"1|a", "2|b", "3|c", "4|d"}));
}

TEST_F(Renumbering, AFailingRaiseLeavesTheRecordWritten) {
  Store("('P',1,'2001-01-01','a')");
  InWindow([&] {
    visit.failing->FailAt(3);
    EXPECT_FALSE(SaveConference(2, "2000年01月", "b"));
  });
  ExpectMessage("磁盘或网络错误。", "信息保存");
  EXPECT_EQ(Numbers(), (Lines{"1|a", "2|b"}));
}

// Stores the records 1 to `count`, whose hosts are the same numbers.
std::string RecordsUpTo(int count) {
  std::string rows;
  for (int i = 1; i <= count; ++i) {
    const std::string number = std::to_string(i);
    const std::string host = number.size() < 3 ? std::string(3 - number.size(), '0') + number : number;
    rows += (i > 1 ? ",('P'," : "('P',") + number + ",'" + host + "')";
  }
  return "insert into A06(A00,A0699,A0602) values " + rows;
}

TEST_F(Renumbering, TwoHundredRecordsBackwardsAreNumberedWithoutADouble) {
  visit.database->RunScript(RecordsUpTo(199));
  InWindow([&] { EXPECT_TRUE(SaveConference(200, "", "200", "A0602 desc")); });
  const Lines numbers = Numbers();
  ASSERT_EQ(numbers.size(), 200U);
  EXPECT_EQ(numbers.front(), "1|200");
  EXPECT_EQ(numbers.back(), "200|001");
  EXPECT_EQ(One("select count(*) from (select distinct A0699 from A06 where A00='P') as x"), "200");
}

TEST_F(Renumbering, RequiredItCountsIn16Bits) {
  visit.database->RunScript(RecordsUpTo(32766));
  InWindow([&] {
    EXPECT_TRUE(SaveConference(32767, "", "", "A0699"));
    EXPECT_EQ(visit.statements.size(), 4U + 32767U);
    EXPECT_EQ(visit.statements.back(), "update A06 set A0699 = 32767 where a00='P' and A0699 = 32967");
    EXPECT_TRUE(visit.script.messages.empty());
    visit.database->RunScript("insert into A06(A00,A0699) values('P', 32767)");
    visit.statements.clear();
    EXPECT_FALSE(SaveConference(1, "", "", "A0699"));
  });
  EXPECT_EQ(visit.statements.size(), 4U) << "no row was numbered";
  EXPECT_EQ(Rows("select min(A0699),max(A0699),count(*) from A06 where A00='P'"), Lines{"201|32967|32768"});
  ExpectMessage("溢出", "信息保存");
}

TEST_F(Renumbering, RequiredMoreThanTwoHundredRecordsAreRaisedBy200AllTheSame) {
  visit.database->RunScript(RecordsUpTo(204));
  InWindow([&] { EXPECT_TRUE(SaveConference(205, "", "205", "A0602 desc")); });
  // Record 205 - k + 1 becomes number k. From 201 on a new number meets a raised one that still waits,
  // and the later row takes both along.
  EXPECT_EQ(Rows("select A0602,A0699 from A06 where A00='P' and A0602 < '007' order by A0602"),
            (Lines{"001|205", "002|204", "003|203", "004|204", "005|205", "006|200"}));
  EXPECT_EQ(One("select A0699 from A06 where A0602='205' and A00='P'"), "1");
}

}  // namespace
}  // namespace dossierkit::tests
