// What a visit sees that sees its own person's rows only: the same on every engine. A program of tests
// includes this once and provides the database.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/server/own_rows.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/value.h"

namespace dossierkit::tests {

// A fresh copy of the sample, the same by a second connection, and a visit on the first.
struct SharedDatabase {
  std::shared_ptr<ado::Connection> connection;
  std::shared_ptr<ado::Connection> another;
  std::function<std::unique_ptr<server::OwnRows>(const std::string& person)> visit;
};
SharedDatabase OpenSharedDatabase();

class RowsOfAVisit : public testing::Test {
 protected:
  // P has the records 1, 2 and 3, and Q as well.
  RowsOfAVisit() {
    Run("delete from A02");
    for (const char* person : {"P", "Q"}) {
      for (const char* number : {"1", "2", "3"}) Add(person, number);
    }
  }

  void Run(const std::string& statement) { database_.connection->Run(statement); }
  void Add(const std::string& person, const std::string& number) {
    Run("insert into A02( A00 ,A0299,A0202) values('" + person + "','" + number + "','第" + number + "条')");
  }
  static std::string One(ado::Connection& connection, const std::string& query) {
    return environment::TextOr(connection.Execute(query)->Fields(0), "NULL");
  }
  std::string One(const std::string& query) { return One(*database_.connection, query); }
  std::string Numbers(const std::string& person) {
    const auto rows =
        database_.connection->Execute("select A0299 from A02 where A00='" + person + "' order by A0299");
    std::string numbers;
    for (std::int32_t row = 1; row <= rows->RecordCount(); ++row)
      numbers += (row > 1 ? "," : "") + environment::TextOf(rows->ValueAt(row, 0));
    return numbers;
  }
  // As the component deletes a record.
  void Delete(const std::string& person, const std::string& number) {
    Run("delete from A02 where A00='" + person + "'  and A0299 = " + number);
    const auto rows = database_.connection->Execute("select * from A02 order by A0299");
    for (std::int32_t i = 1; i <= rows->RecordCount(); ++i, rows->MoveNext()) {
      Run("update A02 set A0299 = " + std::to_string(i) + " where a00='" + person +
          "' and A0299 = " + environment::TextOf(rows->Fields("A0299")));
    }
  }
  // As the component draws an identifier.
  std::string Draw() {
    Run(" delete from S_GUID ");
    Run("insert into S_GUID(val) values('a')");
    return One("select id from S_GUID where val='a'").substr(1, 36);
  }

  SharedDatabase database_ = OpenSharedDatabase();
};

TEST_F(RowsOfAVisit, RequiredTheWalkOfDeleteCountsTheRowsOfAllPersons) {
  Delete("P", "2");
  EXPECT_EQ(Numbers("P"), "4,4");
  EXPECT_EQ(Numbers("Q"), "1,2,3");
}

TEST_F(RowsOfAVisit, TheWalkOfDeleteCountsTheOwnRowsAlone) {
  {
    const auto visit = database_.visit("P");
    Delete("P", "2");
    EXPECT_EQ(Numbers("P"), "1,2");
  }
  EXPECT_EQ(Numbers("P"), "1,2");
  EXPECT_EQ(Numbers("Q"), "1,2,3");
}

TEST_F(RowsOfAVisit, SetsOfManyRecordsShowTheOwnRowsAlone) {
  const std::string records = One("select count(*) from A03");
  EXPECT_NE(records, "0");
  {
    const auto visit = database_.visit("P");
    EXPECT_EQ(One("select count(*) from A02"), "3");
    EXPECT_EQ(One("select count(*) from A02 where A00='Q'"), "0");
    EXPECT_EQ(One("select count(*) from A02 where a00='p'"), "3") << "without regard to case";
    for (const char* set : {"A03", "A04", "A05", "A06", "A08", "A09", "A10", "A11", "A15", "A21"})
      EXPECT_EQ(One(std::string("select count(*) from ") + set), "0") << set;
  }
  EXPECT_EQ(One("select count(*) from A02"), "6");
  EXPECT_EQ(One("select count(*) from A03"), records);
}

TEST_F(RowsOfAVisit, EverythingElseStaysWhole) {
  std::vector<std::string> tables = {"A01", "A12",         "A13",        "A14",
                                     "B01", "s_infotable", "s_infoitem", "GB2261"};
  std::vector<std::string> before;
  for (const std::string& table : tables) before.push_back(One("select count(*) from " + table));
  const auto visit = database_.visit("P");
  for (std::size_t i = 0; i < tables.size(); ++i)
    EXPECT_EQ(One("select count(*) from " + tables[i]), before[i]) << tables[i];
  EXPECT_EQ(One("select iif(max(A0199) is null,0,max(A0199)) from a01  "), "12")
      << "the next number counts all";
  Draw();
  EXPECT_EQ(One("select count(*) from S_GUID"), "1");
}

TEST_F(RowsOfAVisit, WhatIsWrittenIsStoredForAll) {
  {
    const auto visit = database_.visit("P");
    Add("P", "4");
    Run("update A02 set A0202 = '改' where A00='P' and A0299 = 4");
    Run("delete from A02 where A00='P'  and A0299 = 1");
    Run("update A02 set A0299 = A0299 +200 where a00='P'");
    Run("insert into A12( A00 ,A1201) values('P','成就')");
    Run("insert into A01( A00 ,A0136,A0199) values('P',1 ,13)");
    Run("update A01 set A0101 = '甲' where A00='P'");
    EXPECT_EQ(Numbers("P"), "202,203,204");
  }
  EXPECT_EQ(One(*database_.another, "select A0202 from A02 where A00='P' and A0299 = 204"), "改");
  EXPECT_EQ(One(*database_.another, "select count(*) from A02"), "6");
  EXPECT_EQ(One(*database_.another, "select A1201 from A12 where A00='P'"), "成就");
  EXPECT_EQ(One(*database_.another, "select A0101 from A01 where A00='P'"), "甲");
}

TEST_F(RowsOfAVisit, AnotherConnectionSeesAllRowsMeanwhile) {
  const auto visit = database_.visit("P");
  EXPECT_EQ(One(*database_.another, "select count(*) from A02"), "6");
}

TEST_F(RowsOfAVisit, ANewPersonIsItsOwn) {
  const auto visit = database_.visit("");
  EXPECT_EQ(One("select count(*) from A02"), "0");
  const std::string person = Draw();
  ASSERT_EQ(person.size(), 36U);
  Run("insert into A01( A00 ,A0136,A0199) values('" + person + "',1 ,13)");
  for (const char* number : {"1", "2", "3"}) Add(person, number);
  Delete(person, "1");
  EXPECT_EQ(Numbers(person), "1,2");
}

// After the deletion of a person the window goes on with a new one.
TEST_F(RowsOfAVisit, APersonBegunInTheMiddleIsItsOwnAsWell) {
  const auto visit = database_.visit("P");
  Run("insert into A01( A00 ,A0136,A0199) values('P',1 ,13)");
  Run("delete from A01 where A00='P' ");
  EXPECT_EQ(One("select count(*) from A02"), "0") << "his rows go with him";
  const std::string first = Draw();
  const std::string second = Draw();
  Add(first, "1");
  for (const char* number : {"1", "2"}) Add(second, number);
  EXPECT_EQ(Numbers(first), "1");
  EXPECT_EQ(Numbers(second), "1,2");
  EXPECT_EQ(One("select count(*) from A02"), "3");
}

TEST_F(RowsOfAVisit, OneVisitFollowsTheOther) {
  for (const char* person : {"P", "Q", "it's"}) {
    const auto visit = database_.visit(person);
    EXPECT_EQ(One("select count(*) from A02"), std::string(person) == "it's" ? "0" : "3") << person;
  }
  EXPECT_EQ(One("select count(*) from A02"), "6");
  const std::string drawn = Draw();
  const auto visit = database_.visit("P");
  Run("delete from A02 where A00='P' ");
  EXPECT_EQ(One("select count(*) from A02"), "0") << "what was drawn before is not its own: " << drawn;
}

}  // namespace dossierkit::tests
