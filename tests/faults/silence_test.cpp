// A network that swallows everything without a word: no statement waits for ever.
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "tests/faults/proxy.h"
#include "tests/support/server_faults.h"
#include "tests/support/servers.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using std::chrono::seconds;
using Clock = std::chrono::steady_clock;

constexpr char kDatabase[] = "silence";
// How long the hosts of this test wait for a lock.
constexpr seconds kBusyTimeout{1};

// What the system and the drivers do by themselves takes minutes, or has no end.
constexpr double kOfTheSystem = 60;

struct Ended {
  std::string told;
  double seconds;
};

class Silence : public testing::Test {
 protected:
  Silence() {
    MakeDatabase(engine_, kDatabase);
    OpenServer(engine_, kDatabase)->RunNative("create table t (n integer)");
  }

  std::string String() const { return ServerString(engine_, kDatabase); }
  std::string Sleep(const std::string& length) const {
    return (engine_ == "postgresql" ? "select pg_sleep(" : "select sleep(") + length + ")";
  }
  // As soon as the machine has the time for it.
  static std::unique_ptr<odbc::OdbcConnection> Connect(const Proxy& proxy) {
    std::unique_ptr<odbc::OdbcConnection> host;
    const auto connect = [&] { host = std::make_unique<odbc::OdbcConnection>(proxy.String(), kBusyTimeout); };
    EXPECT_TRUE(WaitUntil([&] { return Told(connect).empty(); }));
    return host;
  }
  static Ended Timed(const std::function<void()>& act, Clock::time_point begin = Clock::now()) {
    const std::string told = Told(act);
    return {told, std::chrono::duration<double>(Clock::now() - begin).count()};
  }

  const std::string engine_ = ServerOfThisRun();
};

// All of them at once, since each takes its time.
TEST_F(Silence, IsToldAfterFourTimesTheWaitForALockAndASlowStatementGoesOn) {
  // The statement was heard, and its answer is swallowed.
  auto waiting = std::async(std::launch::async, [&] {
    Proxy proxy(String());
    const auto begin = Clock::now();  // before the server is heard for the last time
    const auto host = Connect(proxy);
    proxy.ActBehind(0, [&] { proxy.Swallow(); });
    return Timed([&] { host->RunNative(Sleep("1")); }, begin);
  });
  // The statement itself is swallowed; afterwards the network comes back.
  auto sending = std::async(std::launch::async, [&] {
    Proxy proxy(String());
    const auto begin = Clock::now();
    const auto host = Connect(proxy);
    proxy.Swallow();
    Ended ended = Timed([&] { host->Run("insert into t(n) values('1')"); }, begin);
    proxy.Mend();
    EXPECT_TRUE(WaitUntil([&] { return Told([&] { host->Run("select n from t"); }).empty(); }));
    host->Run("insert into t(n) values('2')");
    return ended;
  });
  auto slow = std::async(std::launch::async, [&] {
    Proxy proxy(String());
    const auto host = Connect(proxy);
    return Timed([&] { host->RunNative(Sleep("6")); });
  });
  for (auto* silent : {&waiting, &sending}) {
    const Ended ended = silent->get();
    EXPECT_TRUE(ended.told.starts_with(kLost)) << ended.told;
    EXPECT_GT(ended.seconds, 3);
    EXPECT_LT(ended.seconds, kOfTheSystem);
  }
  const Ended ended = slow.get();
  EXPECT_EQ(ended.told, "");
  EXPECT_GT(ended.seconds, 5.9);
  EXPECT_EQ(Column(*OpenServer(engine_, kDatabase), "select n from t"), std::vector<std::string>{"2"});
}

// Nobody is there, or whoever is there says nothing.
TEST_F(Silence, IsToldByAConnectionThatIsToBeMade) {
  for (const bool is_greeted : {false, true}) {
    Proxy proxy(String());
    if (is_greeted) {
      proxy.ActBehind(0, [&] { proxy.Swallow(); });
    } else {
      proxy.Swallow();
    }
    const Ended ended = Timed([&] { odbc::OdbcConnection(proxy.String(), kBusyTimeout); });
    EXPECT_TRUE(ended.told.starts_with(kUnreachable)) << ended.told;
    EXPECT_LT(ended.seconds, kOfTheSystem);
  }
}

}  // namespace
}  // namespace dossierkit::tests
