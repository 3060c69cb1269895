// Several clerks on the nodes of one cluster.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "host/server/copy.h"
#include "host/server/opened.h"
#include "host/server/own_rows.h"
#include "host/server/rights.h"
#include "platform/environment/text.h"
#include "tests/support/paths.h"
#include "tests/support/processes.h"
#include "tests/support/program.h"
#include "tests/support/server_faults.h"
#include "tests/support/servers.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

namespace fs = std::filesystem;

constexpr char kDatabase[] = "cluster";
constexpr std::size_t kNodes = 3;
constexpr int kClerks = 16;

std::shared_ptr<odbc::OdbcConnection> Open(std::size_t node) {
  return std::make_shared<odbc::OdbcConnection>(NodeString(node, kDatabase), kPatience);
}

// As the component draws an identifier.
std::string DrawIdentifier(ado::Connection& database) {
  database.Run(" delete from S_GUID ");
  database.Run("insert into S_GUID(val) values('a')");
  return One(database, "select id from S_GUID where val='a'");
}

// A new person, as the component stores him.
std::string InsertOf(const std::string& person, int number) {
  return "insert into A01( A00 ,A0136,A0199,A0101) values('" + person + "',1 ," + std::to_string(number) +
         ",'新人')";
}
int NextNumber(ado::Connection& database) {
  return std::stoi(One(database, "select iif(max(A0199) is null,0,max(A0199)) from a01  ")) + 1;
}

class Nodes : public testing::Test {
 protected:
  Nodes() {
    fs::create_directories(folder_);
    MakeDatabase("galera", kDatabase);
    sqlite::SqliteConnection sample(SampleDatabaseFile());
    const auto made = Open(0);
    server::CopyDatabase(server::StoreOf(sample), server::StoreOf(*made));
  }
  ~Nodes() override { fs::remove_all(folder_); }

  // Clerks in processes of their own, in turn on the nodes, each writing lines.
  std::vector<std::string> Work(const std::function<void(int clerk, ado::Connection&, std::ostream&)>& work) {
    const int failed = RunInProcesses(kClerks, [&](int clerk) {
      const auto database = Open(static_cast<std::size_t>(clerk) % kNodes);
      std::ofstream out(folder_ / std::to_string(clerk));
      work(clerk, *database, out);
    });
    EXPECT_EQ(failed, 0);
    std::vector<std::string> lines;
    for (int clerk = 0; clerk < kClerks; ++clerk) {
      for (const std::string& line : environment::Split(Read(folder_ / std::to_string(clerk)), "\n")) {
        if (!line.empty()) lines.push_back(line);
      }
    }
    return lines;
  }

  fs::path folder_ = fs::temp_directory_path() / ("dossier-nodes-" + std::to_string(getpid()));
};

TEST_F(Nodes, EveryTableHasAKey) {
  EXPECT_EQ(One(*Open(1), "select count(*) from A01"), "12");
  const auto without = Open(2)->RunNative(
      "select t.table_name from information_schema.tables t where t.table_schema = database() and "
      "t.table_type = 'BASE TABLE' and (t.engine <> 'InnoDB' or not exists (select 1 from "
      "information_schema.table_constraints c where c.table_schema = t.table_schema and "
      "c.table_name = t.table_name and c.constraint_type = 'PRIMARY KEY'))");
  EXPECT_EQ(without.RowCount(), 0U);
}

TEST_F(Nodes, WhatWasStoredOnOneIsReadOnAnother) {
  const std::shared_ptr<odbc::OdbcConnection> nodes[] = {Open(0), Open(1), Open(2)};
  for (std::size_t i = 0; i < 300; ++i) {
    const std::string number = std::to_string(i);
    nodes[i % kNodes]->Run("update A02 set A0204 = '" + number + "' where a00='" + kPerson +
                           "' and A0299 = 1");
    ASSERT_EQ(One(*nodes[(i + 1) % kNodes], "select A0204 from A02 where a00='" + kPerson + "' and A0299=1"),
              number);
  }
}

TEST_F(Nodes, ManyWhoDrawIdentifiersNeverDrawOneTwice) {
  const auto drawn = Work([](int, ado::Connection& database, std::ostream& out) {
    for (int i = 0; i < 200; ++i) out << DrawIdentifier(database) << "\n";
  });
  EXPECT_EQ(drawn.size(), 3200U);
  EXPECT_EQ(std::set<std::string>(drawn.begin(), drawn.end()).size(), 3200U);
}

TEST_F(Nodes, ConnectionsOfOneNumberHaveIdentifiersAndVisitsOfTheirOwn) {
  const auto number_of = [](odbc::OdbcConnection& connection) {
    return std::stol(environment::TextOf(connection.RunNative("select connection_id()").ValueAt(0, 0)));
  };
  server::PrepareRights(*Open(0));
  // To open one takes two numbers: of three nodes two can meet.
  std::shared_ptr<odbc::OdbcConnection> nodes[] = {Open(0), Open(1), Open(2)};
  std::size_t first = 0;
  std::size_t second = 0;
  // A node may need a number for itself meanwhile: which two can meet is looked at each time.
  for (int i = 0; i < 5000; ++i) {
    const long numbers[] = {number_of(*nodes[0]), number_of(*nodes[1]), number_of(*nodes[2])};
    const auto meet = [&](std::size_t a, std::size_t b) { return (numbers[a] - numbers[b]) % 2 == 0; };
    first = meet(0, 1) || meet(0, 2) ? 0 : 1;
    second = meet(0, 1) ? 1 : 2;
    if (numbers[first] == numbers[second]) break;
    const std::size_t behind = numbers[first] < numbers[second] ? first : second;
    nodes[behind] = Open(behind);
  }
  const auto& one = nodes[first];
  const auto& other = nodes[second];
  ASSERT_EQ(number_of(*one), number_of(*other));
  const std::string id = DrawIdentifier(*one);
  EXPECT_EQ(One(*other, "select count(*) from S_GUID"), "0");
  const std::string another = DrawIdentifier(*other);
  EXPECT_NE(another, id);
  EXPECT_EQ(One(*one, "select id from S_GUID where val='a'"), id);
  other->Run(" delete from S_GUID ");
  EXPECT_EQ(One(*one, "select count(*) from S_GUID"), "1");
  // And each sees the rows of its own visit.
  const std::string stranger = "56670B14-1509-4B0A-8BF1-3331CA118783";
  const std::string own = One(*one, "select count(*) from A03 where A00='" + kPerson + "'");
  const std::string strangers = One(*one, "select count(*) from A03 where A00='" + stranger + "'");
  ASSERT_NE(strangers, "0");
  const server::OwnRows visit(*one, kPerson);
  const server::OwnRows strangers_visit(*other, stranger);
  EXPECT_EQ(One(*one, "select count(*) from A03"), own);
  EXPECT_EQ(One(*other, "select count(*) from A03"), strangers);
}

TEST_F(Nodes, PersonsEnteredAtOnceHaveDifferentNumbersAndAConflictIsToldInOneSentence) {
  const auto lines = Work([](int clerk, ado::Connection& database, std::ostream& out) {
    for (int i = 0; i < 20; ++i) {
      const std::string person = "P" + std::to_string(clerk * 100 + i);
      std::string told;
      // Whoever is told so was overtaken by somebody who has saved: that ends.
      do {
        const int number = NextNumber(database);
        told = Told([&] { database.Run(InsertOf(person, number)); });
        if (!told.empty()) out << told << "\n";
      } while (!told.empty());
      out << "number " << One(database, "select A0199 from A01 where A00='" + person + "'") << "\n";
    }
  });
  std::set<std::string> numbers;
  int saved = 0;
  for (const std::string& line : lines) {
    if (line.starts_with("number ")) {
      ++saved;
      numbers.insert(line);
    } else {
      EXPECT_EQ(line, kBusy);
    }
  }
  EXPECT_EQ(saved, 320);
  EXPECT_EQ(numbers.size(), 320U);
  for (std::size_t node = 0; node < kNodes; ++node) {
    EXPECT_EQ(One(*Open(node), "select count(*) from A01"), "332");
    EXPECT_EQ(One(*Open(node), "select max(A0199) from A01"), "332") << "without a gap";
  }
}

TEST_F(Nodes, ANumberThatIsTakenOnTwoAtOnceIsToldAndSavingAgainWorks) {
  const auto one = Open(0);
  const auto other = Open(1);
  one->BeginTrans();
  one->Run(InsertOf("P", 13));
  other->Run(InsertOf("Q", 13));  // it cannot see the row on the other node, nor is it held up
  EXPECT_EQ(Told([&] { one->CommitTrans(); }), "数据库已经撤销了这个事务：请回滚后再重新开始。");
  one->RollbackTrans();
  EXPECT_EQ(One(*one, "select count(*) from A01 where A00='P'"), "0");
  one->Run(InsertOf("P", 13));
  EXPECT_EQ(One(*other, "select A0199 from A01 where A00='Q'"), "13");
  EXPECT_EQ(One(*other, "select A0199 from A01 where A00='P'"), "14");
}

TEST_F(Nodes, ASaveThatMeetsAConflictIsToldInTheSameSentenceAsALock) {
  std::set<std::string> told;
  // By itself a server tries once more. The other node changes the same record without a pause, until one of
  // the two was told.
  ASSERT_EQ(RunInProcesses(2,
                           [&](int clerk) {
                             const auto database = Open(static_cast<std::size_t>(clerk));
                             database->RunNative("set session wsrep_retry_autocommit = 0");
                             std::ofstream out(folder_ / std::to_string(clerk));
                             for (int i = 0; i < 400 || !fs::exists(folder_ / "told"); ++i) {
                               const std::string failure = Told([&] {
                                 database->Run("update A02 set A0204 = '" + std::to_string(clerk) + "." +
                                               std::to_string(i % 10) + "' where a00='" + kPerson +
                                               "' and A0299 = 1");
                               });
                               out << failure << "\n";
                               if (!failure.empty()) std::ofstream(folder_ / "told");
                             }
                           }),
            0);
  for (const char* clerk : {"0", "1"}) {
    for (const std::string& line : environment::Split(Read(folder_ / clerk), "\n")) {
      if (!line.empty()) told.insert(line);
    }
  }
  EXPECT_EQ(told, (std::set<std::string>{kBusy}));
  const auto one = Open(0);
  one->Run("update A02 set A0204 = 'x' where a00='" + kPerson + "' and A0299 = 1");
  EXPECT_EQ(One(*Open(2), "select A0204 from A02 where a00='" + kPerson + "' and A0299=1"), "x");
}

TEST_F(Nodes, AMarkAndTheRowsOfAVisitAreKnownToAllOfThem) {
  server::PrepareRights(*Open(0));
  const auto one = Open(1);
  const auto other = Open(2);
  EXPECT_EQ(server::MarkOpen(*one, "P", "张", std::chrono::seconds(60)), std::nullopt);
  EXPECT_EQ(server::MarkOpen(*other, "P", "李", std::chrono::seconds(60)), "张");
  const server::OwnRows visit(*one, kPerson);
  const std::string own = One(*one, "select count(*) from A02");
  EXPECT_EQ(own, One(*other, "select count(*) from A02 where A00='" + kPerson + "'"));
  EXPECT_NE(own, One(*other, "select count(*) from A02"));
}

}  // namespace
}  // namespace dossierkit::tests
