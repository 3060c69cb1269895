// Many clerks at once on a server or a cluster, each a process that works dossiers without a pause, beside as
// many processes that send the same statements bare through ODBC.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <sstream>

#include "bench/bench_visit.h"
#include "bench/measure.h"
#include "bench/server_visit.h"
#include "host/server/own_rows.h"
#include "host/server/rights.h"
#include "platform/ado/recordset.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/text_box.h"
#include "tests/support/paths.h"
#include "tests/support/processes.h"
#include "tests/support/servers.h"

namespace dossierkit::bench {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr char kDatabase[] = "bench_clerks";
constexpr const char* kEngines[] = {"postgresql", "mariadb", "galera"};
constexpr double kLeast = 0.8;  // statements a second, in times of the bare ones

fs::path FileOf(const std::string& what, int clerk) {
  return fs::path(BENCH_FOLDER) / (what + "-" + std::to_string(clerk));
}

// The clerks of a cluster work on all of its nodes.
std::string StringOf(const std::string& engine, int clerk) {
  return engine == "galera" ? tests::NodeString(clerk % 3, kDatabase)
                            : tests::ServerString(engine, kDatabase);
}

std::string PersonOf(int clerk) {
  std::string number = std::to_string(clerk);
  return "C1E4C000-0000-4000-8000-" + std::string(12 - number.size(), '0') + number;
}

// The sample with a person for each clerk, who has what the first person has.
void MakeDatabase(const std::string& engine, int clerks) {
  MakeCopyOnServer(engine, kDatabase, tests::SampleDatabaseFile());
  const auto server = tests::OpenServer(engine, kDatabase);
  server::PrepareRights(*server);
  server->BeginTrans();
  for (const std::string set : {"A01", "A02", "A03", "A04", "A12"}) {
    const auto rows = server->Execute("select * from " + set + " where A00='" + kPerson + "'");
    for (int clerk = 0; clerk < clerks; ++clerk) {
      rows->MoveFirst();
      for (std::int32_t row = 1; row <= rows->RecordCount(); ++row) {
        std::string columns;
        std::string values;
        for (std::size_t i = 0; i < rows->FieldCount(); ++i) {
          const environment::Value value = rows->ValueAt(row, i);
          const std::string name = rows->FieldName(i);
          std::string text = environment::TextOr(value, "");
          if (environment::EqualIgnoringCase(name, "A00")) text = PersonOf(clerk);
          if (environment::EqualIgnoringCase(name, "A0199")) text = std::to_string(100 + clerk);
          if (text.empty()) continue;
          columns += (columns.empty() ? "" : ",") + name;
          values += (values.empty() ? "'" : ",'") + environment::Replace(text, "'", "''") + "'";
        }
        server->Run("insert into " + set + "(" + columns + ") values(" + values + ")");
      }
    }
  }
  server->CommitTrans();
}

// What one clerk did.
struct Work {
  int visits = 0;
  int statements = 0;
  int failures = 0;
  std::vector<double> saves;             // milliseconds each
  std::vector<std::string> identifiers;  // that were drawn
  std::string last_saved;                // of what the window reported as saved

  void Write(const fs::path& file) const {
    std::ofstream out(file, std::ios::trunc);
    out << visits << " " << statements << " " << failures << " " << (last_saved.empty() ? "-" : last_saved)
        << "\n";
    for (const double save : saves) out << save << " ";
    out << "\n";
    for (const std::string& identifier : identifiers) out << identifier << " ";
    out << "\n";
  }
  static Work Read(const fs::path& file) {
    Work work;
    std::ifstream in(file);
    in >> work.visits >> work.statements >> work.failures >> work.last_saved;
    std::string line;
    std::getline(in, line);
    std::getline(in, line);
    std::istringstream saves(line);
    for (double save = 0; saves >> save;) work.saves.push_back(save);
    std::getline(in, line);
    std::istringstream identifiers(line);
    for (std::string one; identifiers >> one;) work.identifiers.push_back(one);
    return work;
  }
};

// A clerk's desk: the window on a person of his own, with own rows.
class Desk {
 public:
  Desk(const std::string& engine, int clerk)
      : server_(std::make_shared<odbc::OdbcConnection>(StringOf(engine, clerk))),
        person_(PersonOf(clerk)),
        own_rows_(*server_, person_),
        visit_(std::make_shared<ado::TracingConnection>(
            server_, [this](const ado::Trace& trace) { statements.push_back(trace.statement); })) {}

  // One dossier: some pages are looked at, a record of the work history and the achievements are changed, and
  // a new person is begun and left.
  void WorkOne(Work& work) {
    statements.clear();
    visit_.OpenPerson(person_, [&] {
      visit_.GoTo("A02");
      visit_.GoTo("A03");
      Save(work, "A03_A0302_v");
      visit_.GoTo("A04");
      visit_.GoTo("A12");
      Save(work, "A12_A1201_v");
    });
    visit_.OpenNew([&] { work.identifiers.push_back(visit_.Window().personID); });
    ++work.visits;
    work.statements += static_cast<int>(statements.size());
  }

  std::vector<std::string> statements;  // of the last dossier

 private:
  void Save(Work& work, const std::string& field) {
    const std::string text = std::to_string(work.saves.size() % 1000) + "号";
    visit_.user.Find<toolkit::TextBox>(field)->SetText(text);
    work.saves.push_back(Milliseconds([&] { visit_.user.ClickToolbar("Save"); }));
    if (!visit_.Window().IsSaved) ++work.failures;
    if (field.starts_with("A12")) work.last_saved = text;
  }

  std::shared_ptr<odbc::OdbcConnection> server_;
  std::string person_;
  server::OwnRows own_rows_;
  BenchVisit visit_;
};

// The same view of the tables on a bare link.
void ShowOwnRows(PlainOdbc& bare, const std::string& engine, const std::string& person) {
  if (engine == "postgresql") {
    bare.Run("set role dossierkit_visit");
    bare.Run("select set_config('dossierkit.persons', cast(array[lower('" + person + "')] as text), false)");
    return;
  }
  bare.Run("use " + std::string(kDatabase) + "_visit");
  bare.Run("insert into " + std::string(kDatabase) + ".dossierkit_visit values (connection_id(), " +
           kDatabase + ".dossierkit_node(), '" + person + "')");
}

// All start at the same moment, once each of them stands ready, and work for so long.
template <typename Prepare>
void WorkFor(int clerks, double seconds, Prepare prepare) {
  const auto start = Clock::now() + std::chrono::milliseconds(500 + 60 * clerks);
  const auto end =
      start + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
  const int failed = tests::RunInProcesses(clerks, [&](int clerk) {
    // Not all of them connect in the same moment.
    timespec turn{clerk * 40 / 1000, clerk * 40 % 1000 * 1'000'000L};
    nanosleep(&turn, nullptr);
    prepare(clerk, start, end);
  });
  if (failed > 0) throw std::runtime_error(std::to_string(failed) + " processes failed");
}

void WaitUntil(Clock::time_point moment) {
  timespec rest{0, 1'000'000};
  while (Clock::now() < moment) nanosleep(&rest, nullptr);
}

// What all clerks did in some rounds.
struct Sum {
  int visits = 0;
  int statements = 0;
  int bare = 0;  // statements of the bare processes
  int failures = 0;
  int lost = 0;
  Samples saves;
  std::size_t saved = 0;
  std::vector<std::string> identifiers;
};

void WorkAtDesks(const std::string& engine, int clerks, double seconds, Sum& sum) {
  WorkFor(clerks, seconds, [&](int clerk, Clock::time_point start, Clock::time_point end) {
    Desk desk(engine, clerk);
    Work warm;
    desk.WorkOne(warm);
    Work work;
    WaitUntil(start);
    while (Clock::now() < end) desk.WorkOne(work);
    work.identifiers.insert(work.identifiers.end(), warm.identifiers.begin(), warm.identifiers.end());
    if (work.last_saved.empty()) work.last_saved = warm.last_saved;
    work.Write(FileOf("clerk", clerk));
    std::ofstream texts(FileOf("statements", clerk), std::ios::trunc);
    Translator translator(engine, tests::OpenServer(engine, kDatabase));
    for (const std::string& statement : desk.statements) texts << translator.NativeOf(statement) << '\0';
  });
  const auto server = tests::OpenServer(engine, kDatabase);
  for (int clerk = 0; clerk < clerks; ++clerk) {
    const Work work = Work::Read(FileOf("clerk", clerk));
    sum.visits += work.visits;
    sum.statements += work.statements;
    sum.failures += work.failures;
    sum.saved += work.saves.size();
    for (const double save : work.saves) sum.saves.Add(save);
    sum.identifiers.insert(sum.identifiers.end(), work.identifiers.begin(), work.identifiers.end());
    const auto stored = server->Execute("select A1201 from A12 where A00='" + PersonOf(clerk) + "'");
    if (environment::TextOr(stored->Fields(0), "") != work.last_saved) ++sum.lost;
  }
}

void Replay(const std::string& engine, int clerks, double seconds, Sum& sum) {
  WorkFor(clerks, seconds, [&](int clerk, Clock::time_point start, Clock::time_point end) {
    const auto bare = OpenBare(engine, StringOf(engine, clerk));
    ShowOwnRows(*bare, engine, PersonOf(clerk));
    std::ifstream file(FileOf("statements", clerk));
    std::vector<std::string> statements;
    for (std::string text; std::getline(file, text, '\0');) statements.push_back(text);
    for (const std::string& statement : statements) bare->Run(statement);
    Work work;
    WaitUntil(start);
    while (Clock::now() < end) {
      for (const std::string& statement : statements) bare->Run(statement);
      work.statements += static_cast<int>(statements.size());
    }
    work.Write(FileOf("clerk", clerk));
  });
  for (int clerk = 0; clerk < clerks; ++clerk) sum.bare += Work::Read(FileOf("clerk", clerk)).statements;
}

// Gives false where the component is too slow or something was lost.
bool Measure(const std::string& engine, int clerks, double seconds) {
  // In turns, so that what the machine does besides is shared by both.
  constexpr int kRounds = 3;
  MakeDatabase(engine, clerks);
  Sum sum;
  for (int round = 0; round < kRounds; ++round) {
    WorkAtDesks(engine, clerks, seconds / kRounds, sum);
    Replay(engine, clerks, seconds / kRounds, sum);
  }
  const std::set<std::string> different(sum.identifiers.begin(), sum.identifiers.end());
  const std::size_t twice = sum.identifiers.size() - different.size();
  const double ratio = static_cast<double>(sum.statements) / sum.bare;
  const bool holds = ratio >= kLeast && sum.failures == 0 && sum.lost == 0 && twice == 0;
  std::cout << (holds ? "ok     " : "FAILED ") << engine << ", " << clerks
            << " at once: " << static_cast<int>(sum.visits * 60 / seconds) << " dossiers a minute, "
            << static_cast<int>(sum.statements / seconds) << " statements a second beside "
            << static_cast<int>(sum.bare / seconds) << " bare (" << ratio << ", at least " << kLeast
            << "); a Save takes " << sum.saves.Median() << " ms, the slowest hundredth "
            << sum.saves.Quantile(0.99) << " ms; " << sum.failures << " of " << sum.saved << " failed, "
            << sum.lost << " lost, " << twice << " of " << sum.identifiers.size() << " identifiers twice"
            << std::endl;
  return holds;
}

int Run(const std::vector<std::string>& arguments) {
  double seconds = 30;
  bool check = false;
  std::vector<int> counts;
  std::vector<std::string> engines;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] == "--check") {
      check = true;
    } else if (arguments[i] == "--seconds" && i + 1 < arguments.size()) {
      seconds = std::atof(arguments[++i].c_str());
    } else if (std::find(std::begin(kEngines), std::end(kEngines), arguments[i]) != std::end(kEngines)) {
      engines.push_back(arguments[i]);
    } else if (const int clerks = std::atoi(arguments[i].c_str()); clerks > 0) {
      counts.push_back(clerks);
    } else {
      seconds = 0;
    }
  }
  if (seconds <= 0) {
    std::cerr << "usage: clerks_bench [--check] [--seconds N] [postgresql|mariadb|galera..] [CLERKS..]\n";
    return 2;
  }
  if (counts.empty()) counts = {1, 8, 32, 128};
  if (engines.empty()) engines.assign(std::begin(kEngines), std::end(kEngines));
  fs::create_directories(BENCH_FOLDER);
  bool all = true;
  for (const std::string& engine : engines) {
    for (const int clerks : counts) all = Measure(engine, clerks, seconds) && all;
  }
  return check && !all ? 1 : 0;
}

}  // namespace
}  // namespace dossierkit::bench

int main(int argc, char** argv) {
  try {
    return dossierkit::bench::Run({argv + 1, argv + argc});
  } catch (const std::exception& failure) {
    std::cerr << "clerks_bench: " << failure.what() << "\n";
    return 1;
  }
}
