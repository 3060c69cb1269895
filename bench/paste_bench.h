// 2,000,000 characters pasted at once, on either views.
#pragma once

#include <functional>
#include <string>

#include "bench/bench_visit.h"
#include "bench/measure.h"
#include "platform/toolkit/controls/edit_box.h"
#include "platform/toolkit/controls/text_box.h"
#include "tests/support/paths.h"

namespace dossierkit::bench {

struct PasteCase {
  const char* name;
  const char* set;
  const char* field;  // the name of its control
  std::size_t max_length;
  const char* character;
};

// A box of one line without a length and with one, one of several lines, and a masked one.
inline constexpr PasteCase kPasteCases[] = {
    {"PasteIntoALine", "A03", "A03_A0302_v", 0, "中"},
    {"PasteIntoALimitedLine", "A03", "A03_A0302_v", 50, "中"},
    {"PasteIntoSeveralLines", "A12", "A12_A1201_v", 0, "x"},
    {"PasteIntoAMask", "A03", "A03_A0301_v", 0, "1"},
};

// Measures each paste until `painted` has returned.
inline void RegisterPastes(const std::function<void()>& painted) {
  for (const PasteCase& paste : kPasteCases) {
    const auto run = [paste, painted](benchmark::State& state) {
      const Copy copy(tests::SampleDatabaseFile());
      std::string text;
      for (int i = 0; i < 2'000'000; ++i) text += paste.character;
      Samples samples;
      BenchVisit visit(copy.Path());
      visit.Open([&] {
        visit.GoTo(paste.set);
        visit.user.Click(paste.field);
        if (auto* box = dynamic_cast<toolkit::TextBox*>(visit.user.Find(paste.field).get()))
          box->SetMaxLength(paste.max_length);
        visit.stage->GetPlatform().SetClipboardText(text);
        for (auto _ : state) {
          visit.user.Press('A', toolkit::kCtrl);
          Measure(state, samples, [&] {
            visit.user.Press('V', toolkit::kCtrl);
            painted();
          });
          visit.user.Press('Z', toolkit::kCtrl);
        }
      });
      state.counters["median_ms"] = samples.Median();
    };
    benchmark::RegisterBenchmark(paste.name, run)
        ->UseManualTime()
        ->Iterations(5)
        ->Unit(benchmark::kMillisecond);
  }
}

// What each of them may take.
inline std::vector<Limit> WithPasteLimits(std::vector<Limit> limits) {
  for (const PasteCase& paste : kPasteCases) limits.push_back({paste.name, "median_ms", 300});
  return limits;
}

}  // namespace dossierkit::bench
