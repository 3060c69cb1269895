// A host whose connection string names all nodes of a cluster, while one of them goes away.
#include <gtest/gtest.h>

#include <csignal>
#include <set>
#include <string>
#include <vector>

#include "platform/environment/text.h"
#include "tests/support/faulty_visit.h"
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

// The nodes from `first` on are a cluster of so many, and hold the same.
bool Agree(std::size_t first, const std::string& count) {
  try {
    for (std::size_t node = first; node < 3; ++node) {
      if (Status(node, "wsrep_cluster_size") != count ||
          Status(node, "wsrep_local_state_comment") != "Synced")
        return false;
    }
    return true;
  } catch (const environment::Failure&) {
    return false;
  }
}

// All nodes are there and hold the same.
bool IsWhole() { return Agree(0, "3"); }

class LostNodes : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(WaitUntil(IsWhole)) << "the cluster is not whole"; }
  void TearDown() override { ASSERT_TRUE(WaitUntil(IsWhole)) << "the cluster is not whole again"; }
};

TEST_F(LostNodes, OneThatIsKilledInTheMiddleOfSavesIsToldAndNothingThatWasSavedIsLost) {
  MakeDatabase("galera", kDatabase);
  odbc::OdbcConnection host(ClusterString(kDatabase), kPatience);
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
  // One for each node that was killed; on a machine that is busy the others may take longer to agree.
  EXPECT_GE(told.size(), 2U);
  EXPECT_LE(told.size(), 10U);
  for (const std::string& failure : told)
    EXPECT_TRUE(failure.starts_with(kLost) || failure == kBusy) << failure;
  for (std::size_t node = 0; node < 3; ++node) {
    odbc::OdbcConnection one(NodeString(node, kDatabase), kPatience);
    const auto rows = Column(one, "select n from t");
    EXPECT_EQ(std::set<std::string>(rows.begin(), rows.end()), saved) << "on node " << node;
  }
}

TEST_F(LostNodes, OneThatTheOthersHaveLeftBehindIsNotUsed) {
  MakeDatabase("galera", kDatabase);
  odbc::OdbcConnection host(ClusterString(kDatabase), kPatience);
  host.RunNative("create table t (n integer primary key)");
  ASSERT_EQ(NodeOf(host), 0U);
  odbc::OdbcConnection admin(NodeString(0), kPatience);
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
  ASSERT_TRUE(WaitUntil([] { return Agree(1, "2"); }));
  odbc::OdbcConnection another(ClusterString(kDatabase), kPatience);
  EXPECT_EQ(NodeOf(another), 1U);
  EXPECT_EQ(Column(another, "select n from t"), (std::vector<std::string>{"2"}));
  admin.RunNative("set global wsrep_provider_options = 'gmcast.isolate=0'");
  ASSERT_TRUE(WaitUntil(IsWhole));
  odbc::OdbcConnection back(NodeString(0, kDatabase), kPatience);
  EXPECT_EQ(Column(back, "select n from t"), (std::vector<std::string>{"2"}));
}

// The component on a connection that names all nodes.
class VisitOnACluster : public LostNodes {
 protected:
  void SetUp() override {
    LostNodes::SetUp();
    MakeDatabase("galera", kDatabase);
    host_ = std::make_shared<odbc::OdbcConnection>(ClusterString(kDatabase), kPatience);
    visit_ = std::make_unique<FaultyVisit>(host_);
  }
  void KillItsNode() { KillServer(NodeString(NodeOf(*host_)), SIGKILL); }

  std::shared_ptr<odbc::OdbcConnection> host_;
  std::unique_ptr<FaultyVisit> visit_;
};

TEST_F(VisitOnACluster, TheWalkOfDeleteIsToldOnceAndTheNextVisitWorks) {
  visit_->FailBefore(4, [&] { KillItsNode(); });
  const std::string told = visit_->DeleteTheSecondPost();
  EXPECT_TRUE(told.starts_with(kLost)) << told;
  EXPECT_EQ(visit_->Posts(), (std::vector<std::string>{"1", "2", "4"})) << "what ran before the failure";
  EXPECT_EQ(visit_->SaveTheHours("8", 1), std::vector<std::string>{});
  EXPECT_EQ(visit_->Hours(), "8");
}

TEST_F(VisitOnACluster, ASaveThatMeetsItIsToldOnceAndSavingAgainWorks) {
  visit_->FailBefore(2, [&] { KillItsNode(); });
  const auto told = visit_->SaveTheHours("7", 2);
  ASSERT_EQ(told.size(), 1U) << testing::PrintToString(told);
  EXPECT_TRUE(told[0].starts_with(kLost)) << told[0];
  EXPECT_EQ(visit_->Hours(), "7");
}

}  // namespace
}  // namespace dossierkit::tests
