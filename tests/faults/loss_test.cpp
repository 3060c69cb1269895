// Saves, while the server is killed, stopped or cut off: nothing that was reported saved is lost.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <thread>

#include "tests/faults/proxy.h"
#include "tests/support/server_faults.h"
#include "tests/support/servers.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

constexpr char kDatabase[] = "loss";

// The rows of a set as the statements that came back left them.
using Rows = std::map<int, std::string>;

class Loss : public testing::Test {
 protected:
  Loss() {
    MakeDatabase(engine_, kDatabase);
    OpenServer(engine_, kDatabase)
        ->RunNative("create table A02 (A00 varchar(36), A0202 varchar(60), A0299 integer)");
  }

  // The next change, as the component writes it, and what it makes of the rows.
  std::string NextChange(Rows& rows) {
    const int kind = number_ % 3;
    ++number_;
    const std::string text = std::to_string(number_);
    if (kind == 0 || rows.size() < 2) {
      rows[number_] = text;
      return "insert into A02( A00 ,A0202,A0299) values('P','" + text + "','" + text + "')";
    }
    if (kind == 1) {
      rows.rbegin()->second = text;
      return "update A02 set A0202='" + text +
             "' where A00='P' and A0299 = " + std::to_string(rows.rbegin()->first);
    }
    const int first = rows.begin()->first;
    rows.erase(rows.begin());
    return "delete from A02 where A00='P'  and A0299 = " + std::to_string(first);
  }

  Rows Stored() {
    odbc::OdbcConnection database(ServerString(engine_, kDatabase), kPatience);
    Rows rows;
    for (const std::string& row : tests::Rows(database, "select A0299, A0202 from A02")) {
      const std::size_t bar = row.find('|');
      rows[std::stoi(row)] = row.substr(bar + 1);
    }
    return rows;
  }

  // Saves until a failure comes; `fault` comes in the middle. The host's connection outlives all rounds.
  void PlayRounds(odbc::OdbcConnection& host, int rounds, const std::function<void()>& fault,
                  const std::function<void()>& mend) {
    std::mt19937 random(20261122);
    for (int round = 0; round < rounds; ++round) {
      SCOPED_TRACE("round " + std::to_string(round));
      const auto delay = std::chrono::microseconds(random() % 20000);
      std::thread faulting([&] {
        std::this_thread::sleep_for(delay);
        fault();
      });
      Rows before = rows_;
      std::string told;
      while (told.empty()) {
        before = rows_;
        const std::string change = NextChange(rows_);
        told = Told([&] { host.Run(change); });
      }
      faulting.join();
      EXPECT_TRUE(told.starts_with(kLost)) << told;
      mend();
      const Rows stored = Stored();
      // The last one may have been stored, although that could not be reported any more.
      EXPECT_TRUE(stored == before || stored == rows_)
          << testing::PrintToString(stored) << " is neither " << testing::PrintToString(before) << " nor "
          << testing::PrintToString(rows_);
      rows_ = stored;
      ASSERT_EQ(Told([&] { host.Run(NextChange(rows_)); }), "") << "the next save works";
      ASSERT_EQ(Stored(), rows_);
      if (HasFailure()) return;
    }
  }

  void WaitUntilBack() {
    ASSERT_TRUE(WaitUntil([&] { return Answers(ServerString(engine_, kDatabase)); }));
  }

  const std::string engine_ = ServerOfThisRun();
  Rows rows_;
  int number_ = 0;
};

TEST_F(Loss, NothingIsLostWhereTheServerIsKilled) {
  odbc::OdbcConnection host(ServerString(engine_, kDatabase), kPatience);
  PlayRounds(
      host, 20, [&] { KillServer(ServerString(engine_), SIGKILL); }, [&] { WaitUntilBack(); });
}

TEST_F(Loss, NothingIsLostWhereTheServerIsStopped) {
  odbc::OdbcConnection host(ServerString(engine_, kDatabase), kPatience);
  // PostgreSQL calls SIGINT the fast way.
  PlayRounds(
      host, 10, [&] { KillServer(ServerString(engine_), engine_ == "postgresql" ? SIGINT : SIGTERM); },
      [&] { WaitUntilBack(); });
}

TEST_F(Loss, NothingIsLostWhereTheNetworkIsCut) {
  Proxy proxy(ServerString(engine_, kDatabase));
  odbc::OdbcConnection host(proxy.String(), kPatience);
  PlayRounds(
      host, 70, [&] { proxy.Cut(); },
      [&] {
        const std::string told = Told([&] { host.Run("select count(*) from A02"); });
        EXPECT_TRUE(told.starts_with(kUnreachable)) << told;
        proxy.Mend();
        // The server may still be storing what was on its way.
        ASSERT_TRUE(WaitUntilAtRest(ServerString(engine_, kDatabase)));
      });
}

}  // namespace
}  // namespace dossierkit::tests
