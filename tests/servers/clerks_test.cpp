// Several clerks on one server: identifiers and numbers of persons who are entered at once.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "adapters/sqlite/sqlite_connection.h"
#include "host/server/copy.h"
#include "host/server/opened.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "tests/support/paths.h"
#include "tests/support/processes.h"
#include "tests/support/program.h"
#include "tests/support/servers.h"

namespace dossierkit::tests {
namespace {

namespace fs = std::filesystem;

constexpr char kDatabase[] = "clerks";
constexpr int kClerks = 16;

std::string One(ado::Connection& database, const std::string& query) {
  return environment::TextOr(database.Execute(query)->Fields(0), "NULL");
}

// As the component draws an identifier.
std::string DrawIdentifier(ado::Connection& database) {
  database.Run(" delete from S_GUID ");
  database.Run("insert into S_GUID(val) values('a')");
  return One(database, "select id from S_GUID where val='a'");
}

class Clerks : public testing::Test {
 protected:
  Clerks() {
    fs::create_directories(folder_);
    MakeDatabase(engine_, kDatabase);
    sqlite::SqliteConnection sample(SampleDatabaseFile());
    const auto made = Open();
    server::CopyDatabase(server::StoreOf(sample), server::StoreOf(*made));
  }
  ~Clerks() override { fs::remove_all(folder_); }

  std::shared_ptr<odbc::OdbcConnection> Open() const { return OpenServer(engine_, kDatabase); }
  fs::path FileOf(int clerk) const { return folder_ / std::to_string(clerk); }
  // The lines that all clerks wrote.
  std::vector<std::string> Written() const {
    std::vector<std::string> lines;
    for (int clerk = 0; clerk < kClerks; ++clerk) {
      for (const std::string& line : environment::Split(Read(FileOf(clerk)), "\n")) {
        if (!line.empty()) lines.push_back(line);
      }
    }
    return lines;
  }
  // A new person, as the component stores him; the number that he was given, or why he was not.
  static std::string AddPerson(ado::Connection& database, const std::string& person) {
    const int highest = environment::ToInt32(
        database.Execute("select iif(max(A0199) is null,0,max(A0199)) from a01  ")->Fields(0));
    if (highest >= 32767) return "溢出";
    try {
      database.Run("insert into A01( A00 ,A0136,A0199,A0101) values('" + person + "',1 ," +
                   std::to_string(highest + 1) + ",'新人')");
    } catch (const environment::Failure& failure) {
      return failure.description();
    }
    return One(database, "select A0199 from A01 where A00='" + person + "'");
  }

  const std::string engine_ = ServerOfThisRun();
  fs::path folder_ = fs::temp_directory_path() / ("dossier-clerks-" + std::to_string(getpid()));
};

TEST_F(Clerks, ManyWhoDrawIdentifiersAtOnceNeverDrawOneTwice) {
  ASSERT_EQ(RunInProcesses(kClerks,
                           [&](int clerk) {
                             const auto database = Open();
                             std::ofstream out(FileOf(clerk));
                             for (int i = 0; i < 200; ++i) out << DrawIdentifier(*database) << "\n";
                           }),
            0);
  const auto drawn = Written();
  EXPECT_EQ(drawn.size(), 3200U);
  EXPECT_EQ(std::set<std::string>(drawn.begin(), drawn.end()).size(), 3200U);
  for (const std::string& id : drawn) ASSERT_EQ(id.size(), 38U) << id;
}

TEST_F(Clerks, EachSeesTheRowOfItsOwnConnection) {
  const auto one = Open();
  const auto other = Open();
  const std::string id = DrawIdentifier(*one);
  EXPECT_EQ(One(*other, "select count(*) from S_GUID"), "0");
  const std::string another = DrawIdentifier(*other);
  EXPECT_NE(another, id);
  EXPECT_EQ(One(*one, "select id from S_GUID where val='a'"), id);
  EXPECT_EQ(One(*one, "select count(*) from S_GUID"), "1");
  one->Run("update S_GUID set val = 'b'");
  EXPECT_EQ(One(*other, "select val from S_GUID"), "a");
}

TEST_F(Clerks, PersonsEnteredAtOnceHaveDifferentNumbers) {
  ASSERT_EQ(RunInProcesses(kClerks,
                           [&](int clerk) {
                             const auto database = Open();
                             std::ofstream out(FileOf(clerk));
                             for (int i = 0; i < 10; ++i) {
                               out << AddPerson(*database, "P" + std::to_string(clerk * 100 + i)) << "\n";
                             }
                           }),
            0);
  const auto numbers = Written();
  ASSERT_EQ(numbers.size(), 160U);
  std::set<int> different;
  for (const std::string& number : numbers) different.insert(std::atoi(number.c_str()));
  EXPECT_EQ(different.size(), 160U);
  EXPECT_EQ(*different.begin(), 13);
  EXPECT_EQ(*different.rbegin(), 172) << "without a gap behind the twelve of the sample";
}

TEST_F(Clerks, ANumberThatIsFreeStaysAsItIs) {
  const auto database = Open();
  database->Run("insert into A01(A00,A0199) values('P',500)");
  database->Run("insert into A01(A00) values('Q')");
  EXPECT_EQ(One(*database, "select A0199 from A01 where A00='P'"), "500");
  EXPECT_EQ(One(*database, "select A0199 from A01 where A00='Q'"), "NULL") << "as big test data have it";
  database->Run("insert into A01(A00,A0199) values('R',500)");
  EXPECT_EQ(One(*database, "select A0199 from A01 where A00='R'"), "501");
}

// A transaction that began before the other's was stored, and on MariaDB sees its rows no more.
TEST_F(Clerks, ANumberThatWasTakenSinceATransactionBeganIsSeen) {
  const auto one = Open();
  if (engine_ != "postgresql") one->RunNative("set session transaction isolation level repeatable read");
  one->BeginTrans();
  EXPECT_EQ(One(*one, "select max(A0199) from A01"), "12");
  Open()->Run("insert into A01(A00,A0199) values('P',13)");
  one->Run("insert into A01(A00,A0199) values('Q',13)");
  one->CommitTrans();
  EXPECT_EQ(One(*one, "select A0199 from A01 where A00='Q'"), "14");
}

// Who has none does not wait for those who have.
TEST_F(Clerks, APersonWithoutANumberWaitsForNobody) {
  const auto one = Open();
  odbc::OdbcConnection other(ServerString(engine_, kDatabase), kPatience);
  one->BeginTrans();
  one->Run("insert into A01(A00,A0199) values('P',13)");
  other.Run("insert into A01(A00) values('Q')");
  EXPECT_EQ(One(other, "select count(*) from A01"), "13") << "the first one is not stored yet";
  one->CommitTrans();
}

// Persons are the same without regard to case.
TEST_F(Clerks, TheRecordsOfAPersonGoWithHisLastRow) {
  const auto one = Open();
  one->Run("insert into A01(A00,A0199) values('P',13)");
  one->Run("insert into A01(A00,A0199) values('p',14)");
  one->Run("insert into A03(A00,A0399) values('P','1')");
  one->Run("delete from A01 where A0199=13");
  EXPECT_EQ(One(*one, "select count(*) from A03 where A00='P'"), "1");
  one->Run("delete from A01 where A0199=14");
  EXPECT_EQ(One(*one, "select count(*) from A03 where A00='P'"), "0");
}

TEST_F(Clerks, NoNumberGoesBeyondTheLargest) {
  Open()->Run("insert into A01(A00,A0199) values('P',32760)");
  ASSERT_EQ(RunInProcesses(kClerks,
                           [&](int clerk) {
                             const auto database = Open();
                             std::ofstream(FileOf(clerk))
                                 << AddPerson(*database, "Q" + std::to_string(clerk)) << "\n";
                           }),
            0);
  const auto database = Open();
  EXPECT_EQ(One(*database, "select max(A0199) from A01"), "32767");
  EXPECT_EQ(One(*database, "select count(*) from A01 where A0199>32760"), "7");
  auto told = Written();
  ASSERT_EQ(told.size(), 16U);
  std::erase_if(told, [](const std::string& line) { return line.starts_with("327"); });
  EXPECT_EQ(told.size(), 9U);
  for (const std::string& line : told) {
    EXPECT_TRUE(line == "溢出" || line == "数据库错误：人员编号 A0199 已经用到 32767，不能再增加人员。")
        << line;
  }
  // The trigger by itself.
  try {
    database->Run("insert into A01(A00,A0199) values('R',32767)");
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.description(), "数据库错误：人员编号 A0199 已经用到 32767，不能再增加人员。");
  }
  EXPECT_EQ(One(*database, "select count(*) from A01 where A00='R'"), "0");
}

// By the numbers of their records their rows lie beside one another.
TEST_F(Clerks, ClerksOfNeighbouringPersonsNeverWaitForOneAnother) {
  Open()->Run("delete from A03");
  for (const char* person : {"P1", "P2", "P3"})
    Open()->Run("insert into A03(A00,A0302,A0399) values('" + std::string(person) + "','甲','1')");
  const auto one = Open();
  odbc::OdbcConnection other(ServerString(engine_, kDatabase), kPatience);
  one->BeginTrans();
  one->Run("update A03 set A0399 = A0399 +200 where a00='P2'");
  one->Run("delete from A03 where A00='P2'  and A0399 = 201");
  for (const char* person : {"P1", "P3"}) {
    other.Run("update A03 set A0399 = A0399 +200 where a00='" + std::string(person) + "'");
    other.Run("insert into A03(A00,A0302,A0399) values('" + std::string(person) + "','乙','2')");
    other.Run("delete from A03 where A00='" + std::string(person) + "'  and A0399 = 201");
  }
  one->CommitTrans();
  EXPECT_EQ(One(other, "select count(*) from A03"), "2");
}

TEST_F(Clerks, ASecondClerkIsToldWhoHasAPersonOpen) {
  using std::chrono::seconds;
  const auto one = Open();
  const auto other = Open();
  EXPECT_EQ(server::MarkOpen(*one, "P", "张@甲机", seconds(60)), std::nullopt);
  EXPECT_EQ(server::MarkOpen(*other, "p", "李@乙机", seconds(60)), "张@甲机");
  EXPECT_EQ(server::MarkOpen(*one, "P", "张@甲机", seconds(60)), std::nullopt) << "his own begins anew";
  EXPECT_EQ(server::MarkOpen(*other, "Q", "李@乙机", seconds(60)), std::nullopt);
  server::UnmarkOpen(*other, "P", "李@乙机");
  EXPECT_EQ(server::MarkOpen(*other, "P", "李@乙机", seconds(60)), "张@甲机") << "another's mark stays";
  server::UnmarkOpen(*one, "P", "张@甲机");
  EXPECT_EQ(server::MarkOpen(*other, "P", "李@乙机", seconds(60)), std::nullopt);
}

TEST_F(Clerks, AMarkEndsWithItsLease) {
  using std::chrono::seconds;
  const auto one = Open();
  EXPECT_EQ(server::MarkOpen(*one, "P", "张", seconds(-1)), std::nullopt);
  EXPECT_EQ(server::MarkOpen(*one, "P", "李", seconds(60)), std::nullopt);
  EXPECT_EQ(server::MarkOpen(*one, "P", "张", seconds(60)), "李");
}

TEST_F(Clerks, WhoIsToldOfAnotherDoesNotProlongHisLease) {
  using std::chrono::seconds;
  const auto one = Open();
  EXPECT_EQ(server::MarkOpen(*one, "P", "张", seconds(600)), std::nullopt);
  EXPECT_EQ(server::MarkOpen(*one, "P", "李", seconds(36000)), "张");
  const std::string ends =
      engine_ == "postgresql" ? "clock_timestamp() + interval '600 seconds'" : "now(6) + interval 600 second";
  const auto rows = one->RunNative("select count(*) from dossierkit_open where lease_end <= " + ends);
  EXPECT_EQ(environment::TextOf(rows.ValueAt(0, 0)), "1");
}

TEST_F(Clerks, MarkingAPersonAgainBeginsTheLeaseAnew) {
  using std::chrono::seconds;
  const auto one = Open();
  EXPECT_EQ(server::MarkOpen(*one, "P", "张", seconds(1)), std::nullopt);
  EXPECT_EQ(server::MarkOpen(*one, "P", "张", seconds(60)), std::nullopt);
  std::this_thread::sleep_for(std::chrono::milliseconds(1200));
  EXPECT_EQ(server::MarkOpen(*one, "P", "李", seconds(60)), "张");
}

TEST_F(Clerks, OfSeveralWhoOpenAPersonAtOnceOneIsTheFirst) {
  ASSERT_EQ(RunInProcesses(kClerks,
                           [&](int clerk) {
                             const auto database = Open();
                             const auto other = server::MarkOpen(
                                 *database, "P", "clerk" + std::to_string(clerk), std::chrono::seconds(60));
                             std::ofstream(FileOf(clerk)) << other.value_or("first") << "\n";
                           }),
            0);
  const auto told = Written();
  ASSERT_EQ(told.size(), 16U);
  EXPECT_EQ(std::count(told.begin(), told.end(), "first"), 1);
  EXPECT_EQ(std::set<std::string>(told.begin(), told.end()).size(), 2U) << "all others are told one name";
}

}  // namespace
}  // namespace dossierkit::tests
