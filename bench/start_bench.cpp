// The whole program, from its start to the first painted page, on an X display; and its memory then.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <fstream>
#include <stdexcept>

#include "bench/bench_visit.h"
#include "bench/measure.h"
#include "tests/support/paths.h"

namespace dossierkit::bench {
namespace {

// The boxes of coded fields are painted in this blue, and nothing else is.
constexpr QRgb kCodedField = qRgb(0xC9, 0xE0, 0xFC);
constexpr double kPatienceMs = 10'000;

bool PageIsPainted() {
  QScreen* screen = QGuiApplication::primaryScreen();
  const QRect all = screen->geometry();
  const QImage strip = screen->grabWindow(0, all.width() / 2 - 120, 0, 40, all.height()).toImage();
  for (int y = 0; y < strip.height(); ++y) {
    for (int x = 0; x < strip.width(); x += 8) {
      if ((strip.pixel(x, y) & RGB_MASK) == (kCodedField & RGB_MASK)) return true;
    }
  }
  return false;
}

double ResidentMebibytes(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  std::string word;
  while (status >> word) {
    if (word == "VmRSS:") {
      double kibibytes = 0;
      status >> kibibytes;
      return kibibytes / 1024;
    }
  }
  throw std::runtime_error("the program has gone");
}

struct Start {
  double milliseconds;
  double mebibytes;
};

Start StartProgram(const std::string& database) {
  while (PageIsPainted()) usleep(1000);
  const auto start = std::chrono::steady_clock::now();
  const auto elapsed = [&] {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
  };
  const std::string program = tests::DossierProgram();
  const pid_t process = fork();
  if (process == 0) {
    execl(program.c_str(), program.c_str(), "--database", database.c_str(), "--person", kPerson.c_str(),
          nullptr);
    _exit(127);
  }
  while (!PageIsPainted()) {
    if (elapsed() > kPatienceMs) throw std::runtime_error("no page was painted");
  }
  const double milliseconds = elapsed();
  usleep(300'000);
  const double mebibytes = ResidentMebibytes(process);
  kill(process, SIGKILL);
  waitpid(process, nullptr, 0);
  return {milliseconds, mebibytes};
}

void ProgramStart(benchmark::State& state, const std::string& database) {
  Samples samples;
  StartProgram(database);
  double mebibytes = 0;
  for (auto _ : state) {
    const Start start = StartProgram(database);
    samples.Add(start.milliseconds);
    state.SetIterationTime(start.milliseconds / 1000);
    mebibytes = std::max(mebibytes, start.mebibytes);
  }
  state.counters["median_ms"] = samples.Median();
  state.counters["resident_MiB"] = mebibytes;
}

void StartOnSample(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  ProgramStart(state, copy.Path());
}
BENCHMARK(StartOnSample)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

void StartOnLarge(benchmark::State& state) { ProgramStart(state, GeneratedDatabase(100'000, 10)); }
BENCHMARK(StartOnLarge)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace dossierkit::bench

int main(int argc, char** argv) {
  int count = 1;
  const QGuiApplication application(count, argv);
  return dossierkit::bench::RunBenchmarks(argc, argv,
                                          {{"StartOnSample", "median_ms", 110},
                                           {"StartOnSample", "resident_MiB", 80},
                                           {"StartOnLarge", "median_ms", 110},
                                           {"StartOnLarge", "resident_MiB", 80}});
}
