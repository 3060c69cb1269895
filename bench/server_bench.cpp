// The component on servers, beside the same statements sent bare through ODBC.
#include <stdexcept>

#include "bench/bench_visit.h"
#include "bench/measure.h"
#include "bench/server_visit.h"
#include "host/server/copy.h"
#include "host/server/own_rows.h"
#include "host/server/rights.h"
#include "host/server/schema.h"
#include "platform/environment/text.h"
#include "tests/support/paths.h"
#include "tests/support/servers.h"

namespace dossierkit::bench {
namespace {

constexpr char kSample[] = "bench_sample";
constexpr char kLarge[] = "bench_large";
constexpr char kBare[] = "bench_bare";

// The times of one thing and of the yardstick, in turns. A tenth of the turns is faster than what counts of
// each: what the machine does besides only ever adds to them, and in a few milliseconds seldom to both.
class Turns {
 public:
  void Add(double ours, double bare) {
    ours_.Add(ours);
    bare_.Add(bare);
  }
  void Tell(benchmark::State& state) const {
    const double ours = ours_.Quantile(kShare);
    const double bare = bare_.Quantile(kShare);
    state.counters["ours_ms"] = ours;
    state.counters["bare_ms"] = bare;
    state.counters["ratio"] = ours / bare;
  }

 private:
  static constexpr double kShare = 0.1;
  Samples ours_;
  Samples bare_;
};

const std::string& EngineOf(const benchmark::State& state) {
  return kServers.at(static_cast<std::size_t>(state.range(0)));
}

// 100,000 persons with 10 records each in A02.
std::string LargeFile() { return GeneratedDatabase(100'000, 10); }

// Made at its first use.
void RequireLarge(const std::string& engine) {
  try {
    tests::OpenServer(engine, kLarge)->Run("select count(*) from B01");
  } catch (const std::exception&) {
    MakeCopyOnServer(engine, kLarge, LargeFile());
  }
}

// The component on a database of a server, and a bare link to the same.
class ServerVisit {
 public:
  ServerVisit(const std::string& engine, const std::string& database)
      : server_(tests::OpenServer(engine, database)),
        bare_(OpenBare(engine, tests::ServerString(engine, database))),
        translator_(engine, tests::OpenServer(engine, database)),
        visit(std::make_shared<ado::TracingConnection>(
            server_, [this](const ado::Trace& trace) { traces.push_back(trace); })) {}

  // One turn: the work, and then the statements that it ran.
  void Turn(Turns& turns, const std::function<void()>& work) {
    traces.clear();
    const double ours = Milliseconds(work);
    std::vector<std::string> statements;
    for (const ado::Trace& trace : traces) statements.push_back(translator_.NativeOf(trace.statement));
    turns.Add(ours, Milliseconds([&] {
                for (const std::string& statement : statements) bare_->Run(statement);
              }));
  }

 private:
  std::shared_ptr<odbc::OdbcConnection> server_;
  std::unique_ptr<PlainOdbc> bare_;
  Translator translator_;

 public:
  std::vector<ado::Trace> traces;
  BenchVisit visit;

  odbc::OdbcConnection& Server() { return *server_; }
};

void Sample(benchmark::State& state) {
  MakeCopyOnServer(EngineOf(state), kSample, tests::SampleDatabaseFile());
}

void ChangeOfSet(benchmark::State& state) {
  Sample(state);
  Turns turns;
  ServerVisit server(EngineOf(state), kSample);
  server.visit.Open([&] {
    for (const std::string& set : AllSets()) server.visit.GoTo(set);
    for (auto _ : state) {
      server.Turn(turns, [&] {
        for (const std::string& set : AllSets()) server.visit.GoTo(set);
      });
      state.SetIterationTime(0.001);
    }
  });
  turns.Tell(state);
}
BENCHMARK(ChangeOfSet)->DenseRange(0, 1)->UseManualTime()->Iterations(100);

// A02 with as many rows as the person has in the sample, and the same among a million; in turns.
void ChangeOfSetLarge(benchmark::State& state) {
  Sample(state);
  RequireLarge(EngineOf(state));
  const std::string file = LargeFile();
  Turns turns;
  // The person has ten records in both.
  for (const char* database : {kSample, kLarge}) {
    const auto server = tests::OpenServer(EngineOf(state), database);
    server->Run("delete from A02 where A00='" + kPerson + "'");
    for (int i = 1; i <= 10; ++i) {
      server->Run("insert into A02(A00,A0202,A0299) values('" + kPerson + "','第" + std::to_string(i) +
                  "条','" + std::to_string(i) + "')");
    }
  }
  const auto times = [&](const char* database) {
    std::vector<double> milliseconds;
    ServerVisit server(EngineOf(state), database);
    server.visit.Open([&] {
      for (int i = 0; i < 12; ++i) {
        server.visit.GoTo("A03");
        milliseconds.push_back(Milliseconds([&] { server.visit.GoTo("A02"); }));
      }
    });
    return milliseconds;
  };
  for (auto _ : state) {
    const auto sample = times(kSample);
    const auto large = times(kLarge);
    for (std::size_t i = 0; i < sample.size(); ++i) turns.Add(large[i], sample[i]);
    state.SetIterationTime(0.001);
  }
  turns.Tell(state);
}
BENCHMARK(ChangeOfSetLarge)->DenseRange(0, 1)->UseManualTime()->Iterations(30);

// The toolbar's Save on an edited record of a person who has five, with the reload and the next new record.
void SaveOfFive(benchmark::State& state) {
  Sample(state);
  Turns turns;
  ServerVisit server(EngineOf(state), kSample);
  tests::User& user = server.visit.user;
  server.visit.Open([&] {
    server.visit.GoTo("A03");
    const auto save = [&] {
      user.ClickRow(1);
      user.Click("A03_A0302_v");
      user.Type("x");
      server.Turn(turns, [&] { user.ClickToolbar("Save"); });
      user.ClickRow(1);
      user.Click("A03_A0302_v");
      user.Press(toolkit::kKeyEnd);
      user.Press(toolkit::kKeyBack);
      server.Turn(turns, [&] { user.ClickToolbar("Save"); });
    };
    for (auto _ : state) {
      save();
      state.SetIterationTime(0.001);
    }
  });
  turns.Tell(state);
}
BENCHMARK(SaveOfFive)->DenseRange(0, 1)->UseManualTime()->Iterations(100);

// Delete on a person of eight records among a million, with own rows: the statements of the walk alone.
void WalkOfOwnRows(benchmark::State& state) {
  RequireLarge(EngineOf(state));
  server::PrepareRights(*tests::OpenServer(EngineOf(state), kLarge));
  ServerVisit server(EngineOf(state), kLarge);
  const auto fill = [&] {
    server.Server().Run("delete from A02 where A00='" + kPerson + "'");
    for (int i = 1; i <= 8; ++i) {
      server.Server().Run("insert into A02(A00,A0202,A0299) values('" + kPerson + "','第" +
                          std::to_string(i) + "条','" + std::to_string(i) + "')");
    }
  };
  Samples walk;
  const server::OwnRows own_rows(server.Server(), kPerson);
  fill();
  server.visit.Open([&] {
    for (auto _ : state) {
      fill();
      server.visit.GoTo("A02");
      server.traces.clear();
      server.visit.script.WillAnswer(toolkit::kAnswerYes);
      server.visit.user.ClickToolbar("Delete");
      double milliseconds = 0;
      int statements = 0;
      for (const ado::Trace& trace : server.traces) {
        if (!trace.statement.starts_with("select * from A02 order by") &&
            !trace.statement.starts_with("update A02 "))
          continue;
        milliseconds += trace.milliseconds;
        ++statements;
      }
      if (statements != 8) throw std::logic_error("the walk has " + std::to_string(statements));
      walk.Add(milliseconds);
      state.SetIterationTime(milliseconds / 1000);
    }
  });
  state.counters["median_ms"] = walk.Median();
}
BENCHMARK(WalkOfOwnRows)->DenseRange(0, 1)->UseManualTime()->Iterations(50);

// What `dossier copy` does with 100,000 persons, beside its own texts sent bare, in one transaction as well.
void CopyOfAHundredThousand(benchmark::State& state) {
  const std::string& engine = EngineOf(state);
  const std::string file = LargeFile();
  Turns turns;
  for (auto _ : state) {
    tests::MakeDatabase(engine, kLarge);
    std::vector<std::string> statements;
    const double ours = Milliseconds([&] {
      sqlite::SqliteConnection from(file);
      const auto to = tests::OpenServer(engine, kLarge);
      server::Store store = server::StoreOf(*to);
      const auto run = store.run_native;
      store.run_native = [&](const std::string& statement) {
        if (!statement.starts_with("select")) statements.push_back(statement);
        return run(statement);
      };
      server::CopyDatabase(server::StoreOf(from), store);
    });
    tests::MakeDatabase(engine, kBare);
    turns.Add(ours, Milliseconds([&] {
                const auto bare = OpenBare(engine, tests::ServerString(engine, kBare));
                bare->SetInTransaction(true);
                for (const std::string& statement : statements) bare->Run(statement);
                bare->Commit();
              }));
    state.SetIterationTime(ours / 1000);
    tests::OpenServer(engine)->RunNative("drop database " + std::string(kBare));
  }
  turns.Tell(state);
}
BENCHMARK(CopyOfAHundredThousand)->DenseRange(0, 1)->UseManualTime()->Iterations(1);

std::vector<Limit> OnBoth(const std::vector<Limit>& limits) {
  std::vector<Limit> all;
  for (const Limit& limit : limits) {
    for (const char* server : {"/0", "/1"})
      all.push_back({limit.benchmark + server, limit.counter, limit.most});
  }
  return all;
}

}  // namespace
}  // namespace dossierkit::bench

int main(int argc, char** argv) {
  using dossierkit::bench::OnBoth;
  return dossierkit::bench::RunBenchmarks(argc, argv,
                                          OnBoth({{"ChangeOfSet", "ratio", 1.5},
                                                  {"ChangeOfSetLarge", "ratio", 1.2},
                                                  {"SaveOfFive", "ratio", 1.5},
                                                  {"WalkOfOwnRows", "median_ms", 10},
                                                  {"CopyOfAHundredThousand", "ratio", 2}}));
}
