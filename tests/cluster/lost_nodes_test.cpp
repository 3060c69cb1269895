// A host whose connection string names all nodes of a cluster, while one of them goes away.
#include <gtest/gtest.h>

#include <csignal>
#include <set>
#include <string>
#include <vector>

#include "adapters/sqlite/sqlite_connection.h"
#include "host/server/copy.h"
#include "platform/environment/text.h"
#include "tests/support/paths.h"
#include "tests/support/server_faults.h"
#include "tests/support/servers.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

constexpr char kDatabase[] = "lost_nodes";

// The number of the node that a connection is on.
std::size_t NodeOf(odbc::OdbcConnection& connection) {
  const std::string port = environment::TextOf(connection.RunNative("select @@port").ValueAt(0, 0));
  for (std::size_t node = 0; node < 3; ++node) {
    if (NodeString(node).find(":" + port + ";") != std::string::npos) return node;
  }
  return 3;
}

std::string Status(std::size_t node, const std::string& name) {
  return environment::TextOf(odbc::OdbcConnection(NodeString(node))
                                 .RunNative("select variable_value from information_schema.global_status "
                                            "where variable_name = '" +
                                            name + "'")
                                 .ValueAt(0, 0));
}

// All nodes are there and hold the same.
bool IsWhole() {
  try {
    for (std::size_t node = 0; node < 3; ++node) {
      if (Status(node, "wsrep_cluster_size") != "3" || Status(node, "wsrep_local_state_comment") != "Synced")
        return false;
    }
    return true;
  } catch (const environment::Failure&) {
    return false;
  }
}

class LostNodes : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(WaitUntil(IsWhole)) << "the cluster is not whole"; }
  void TearDown() override { ASSERT_TRUE(WaitUntil(IsWhole)) << "the cluster is not whole again"; }
};

TEST_F(LostNodes, OneThatIsKilledInTheMiddleOfSavesIsToldOnceAndNothingThatWasSavedIsLost) {
  MakeDatabase("galera", kDatabase);
  odbc::OdbcConnection host(ClusterString(kDatabase));
  host.RunNative("create table t (n integer primary key)");
  std::set<std::string> saved;
  std::vector<std::string> told;
  std::vector<std::size_t> nodes = {NodeOf(host)};
  int number = 0;
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 40; ++i) {
      if (i == 20) KillServer(NodeString(nodes.back()), SIGKILL);
      const std::string row = std::to_string(++number);
      const std::string failure = Told([&] { host.Run("insert into t(n) values(" + row + ")"); });
      if (failure.empty()) {
        saved.insert(row);
      } else {
        told.push_back(failure);
      }
    }
    nodes.push_back(NodeOf(host));
    EXPECT_NE(nodes[nodes.size() - 1], nodes[nodes.size() - 2]);
    ASSERT_TRUE(WaitUntil(IsWhole));
  }
  ASSERT_EQ(told.size(), 2U);
  for (const std::string& failure : told) EXPECT_TRUE(failure.starts_with(kLost)) << failure;
  EXPECT_EQ(saved.size(), 78U);
  for (std::size_t node = 0; node < 3; ++node) {
    odbc::OdbcConnection one(NodeString(node, kDatabase));
    const auto rows = Column(one, "select n from t");
    EXPECT_EQ(std::set<std::string>(rows.begin(), rows.end()), saved) << "on node " << node;
  }
}

TEST_F(LostNodes, OneThatTheOthersHaveLeftBehindIsNotUsed) {
  MakeDatabase("galera", kDatabase);
  odbc::OdbcConnection host(ClusterString(kDatabase));
  host.RunNative("create table t (n integer primary key)");
  ASSERT_EQ(NodeOf(host), 0U);
  odbc::OdbcConnection admin(NodeString(0));
  admin.RunNative("set global wsrep_provider_options = 'gmcast.isolate=1'");
  // Until it knows, it waits for the others.
  std::string told;
  EXPECT_TRUE(WaitUntil([&] {
    told = Told([&] { host.Run("insert into t(n) values(1)"); });
    return told != kBusy;
  }));
  EXPECT_EQ(told, kLost + std::string("WSREP has not yet prepared node for application use。"));
  host.Run("insert into t(n) values(2)");
  EXPECT_NE(NodeOf(host), 0U);
  odbc::OdbcConnection another(ClusterString(kDatabase));
  EXPECT_EQ(NodeOf(another), 1U);
  EXPECT_EQ(Column(another, "select n from t"), (std::vector<std::string>{"2"}));
  admin.RunNative("set global wsrep_provider_options = 'gmcast.isolate=0'");
  ASSERT_TRUE(WaitUntil(IsWhole));
  odbc::OdbcConnection back(NodeString(0, kDatabase));
  EXPECT_EQ(Column(back, "select n from t"), (std::vector<std::string>{"2"}));
}

// The component on a connection that names all nodes; the one that it is on is killed before the k-th of the
// statements that change anything.
class VisitOnACluster : public LostNodes {
 protected:
  void SetUp() override {
    LostNodes::SetUp();
    MakeDatabase("galera", kDatabase);
    sqlite::SqliteConnection sample(SampleDatabaseFile());
    host_ = std::make_shared<odbc::OdbcConnection>(ClusterString(kDatabase));
    server::CopyDatabase(server::StoreOf(sample), server::StoreOf(*host_));
  }
  static bool Changes(const std::string& statement) {
    return statement.starts_with("update ") || statement.starts_with("insert ") ||
           statement.starts_with("delete ");
  }
  void KillBefore(int change) {
    visit_.component.SetConnection(
        std::make_shared<ActingConnection>(host_, [this, change](const std::string& statement) {
          if (Changes(statement) && ++changes_ == change) KillServer(NodeString(NodeOf(*host_)), SIGKILL);
        }));
  }
  std::vector<std::string> Numbers() {
    return Column(*host_, "select A0499 from A04 where A00='" + kPerson + "' order by A0499");
  }
  void ExpectThatTheNextVisitWorks() {
    visit_.script.messages.clear();
    EXPECT_TRUE(visit_.OpenPerson(kPerson, [&] {
      visit_.GoTo("A13");
      visit_.Text("A13_A1302").SetText("8");
      visit_.user.ClickToolbar("Save");
    }));
    EXPECT_EQ(visit_.Messages(), std::vector<std::string>{});
    EXPECT_EQ(One(*host_, "select A1302 from A13 where A00='" + kPerson + "'"), "8");
  }

  std::shared_ptr<odbc::OdbcConnection> host_;
  Visit visit_;
  int changes_ = 0;
};

TEST_F(VisitOnACluster, TheWalkOfDeleteIsToldOnceAndTheNextVisitWorks) {
  host_->Run("delete from A04 where A00<>'" + kPerson + "'");
  ASSERT_EQ(Numbers(), (std::vector<std::string>{"1", "2", "3", "4"}));
  // delete, update 1, update 2 -> 2: the node goes before number 4 becomes 3.
  KillBefore(4);
  std::string thrown;
  try {
    visit_.OpenPerson(kPerson, [&] {
      visit_.GoTo("A04");
      visit_.user.ClickRow(2);
      visit_.script.WillAnswer(toolkit::kAnswerYes);
      visit_.user.ClickToolbar("Delete");
    });
  } catch (const environment::Failure& failure) {
    thrown = failure.description();
  }
  EXPECT_EQ(changes_, 4);
  int told = thrown.starts_with(kLost) ? 1 : 0;
  for (const std::string& message : visit_.Messages()) told += message.starts_with(kLost) ? 1 : 0;
  EXPECT_EQ(told, 1) << thrown << testing::PrintToString(visit_.Messages());
  EXPECT_EQ(Numbers(), (std::vector<std::string>{"1", "2", "4"})) << "what ran before the failure";
  ExpectThatTheNextVisitWorks();
}

// A record is deleted and stored anew, as required.
TEST_F(VisitOnACluster, ASaveThatMeetsItIsToldOnceAndSavingAgainWorks) {
  KillBefore(2);
  EXPECT_TRUE(visit_.OpenPerson(kPerson, [&] {
    visit_.GoTo("A13");
    visit_.Text("A13_A1302").SetText("7");
    visit_.user.ClickToolbar("Save");
    ASSERT_EQ(visit_.Messages().size(), 1U) << testing::PrintToString(visit_.Messages());
    EXPECT_TRUE(visit_.Messages()[0].starts_with(kLost)) << visit_.Messages()[0];
    visit_.user.ClickToolbar("Save");
    EXPECT_EQ(visit_.Messages().size(), 1U) << testing::PrintToString(visit_.Messages());
  }));
  EXPECT_EQ(One(*host_, "select A1302 from A13 where A00='" + kPerson + "'"), "7");
  ExpectThatTheNextVisitWorks();
}

}  // namespace
}  // namespace dossierkit::tests
