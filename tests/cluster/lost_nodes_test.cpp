// A host whose connection string names all nodes of a cluster, while one of them goes away.
#include <gtest/gtest.h>

#include <csignal>
#include <set>
#include <string>
#include <vector>

#include "platform/environment/text.h"
#include "tests/support/basic_data.h"
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

TEST_F(VisitOnACluster, ADossierIsTypedWhoseNodeIsKilledHalfWay) {
  using Texts = std::vector<std::string>;
  Visit& visit = visit_->Scenes();
  const auto fill = [&](const Texts& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      visit.user.Type(values[i]);
      if (i + 1 < values.size()) visit.user.Press(toolkit::kKeyReturn);
    }
  };
  const auto save = [&] { visit.user.Press('S', toolkit::kAlt); };
  const auto add = [&] { visit.user.Press('N', toolkit::kAlt); };
  std::string person;
  const std::string told = Told([&] {
    visit.OpenNew([&] {
      // "hz" is 汉族 and 回族, so the picker asks.
      visit.script.WillRun([&](toolkit::Form&) {
        visit.user.Tab();
        visit.user.Press(toolkit::kKeyReturn);
      });
      fill(kBasicDataAsTyped);
      save();
      person = visit.Window().personID;
      visit.GoTo("A03");
      fill({"199809", "200207", "江南大学"});
      save();
      add();
      fill({"200208", "200407", "酿造研究所"});
      KillItsNode();
      save();
    });
  });
  EXPECT_TRUE(told.starts_with(kLost)) << told;
  EXPECT_EQ(visit.Messages(), Texts());
  visit.OpenPerson(person, [&] {
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "钱三多");
    EXPECT_EQ(visit.Text("A01_A0103").Text(), "汉族");
    visit.GoTo("A03");
    EXPECT_EQ(visit.Text("A03_A0302").Text(), "江南大学");
    add();
    fill({"200208", "200407", "酿造研究所"});
    save();
    visit.GoTo("A12");
    fill({"成就"});
    save();
    visit.user.ClickToolbar("Exit");
  });
  EXPECT_EQ(visit.Messages(), Texts());
  ASSERT_TRUE(WaitUntil(IsWhole));
  const std::string where = " where A00='" + person + "'";
  for (std::size_t node = 0; node < 3; ++node) {
    odbc::OdbcConnection one(NodeString(node, kDatabase), kPatience);
    EXPECT_EQ(Rows(one, "select A0101,A0102,A0103,A0114,A0104 from A01" + where),
              (Texts{"钱三多|1|01|320481|1979/10/5"}))
        << "on node " << node;
    EXPECT_EQ(Rows(one, "select A0301,A0301A,A0302,A0399 from A03" + where + " order by A0399"),
              (Texts{"1998/9/1|2002/7/1|江南大学|1", "2002/8/1|2004/7/1|酿造研究所|2"}))
        << "on node " << node;
    EXPECT_EQ(Rows(one, "select A1201 from A12" + where), (Texts{"成就"})) << "on node " << node;
  }
}

}  // namespace
}  // namespace dossierkit::tests
