// Random visits: a user who does anything at all, and what must hold whatever he does.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <random>
#include <string>

#include "tests/random/player.h"
#include "tests/random/shrink.h"

namespace dossierkit::random {
namespace {

struct Options {
  std::uint64_t seed = 0;
  bool seeded = false;
  long actions = 10'000;
  long length = 60;  // of a visit
  std::string replay;
  bool verbose = false;
};

int ShowHelp() {
  std::cout
      << "random_visits [--seed N] [--actions N] [--length N] [--verbose]\n"
         "random_visits --replay FILE\n"
         "\n"
         "Plays visits of random actions, each visit on a fresh copy of the sample database, and checks "
         "after\n"
         "each action what must hold. Without --seed a seed is drawn and printed. Visit k of a run plays "
         "the\n"
         "seed plus k.\n"
         "\n"
         "Where a rule is broken the actions are shrunk, printed and written to a file that --replay takes.\n"
         "Ends with 0 where all rules held, 1 where one was broken, 2 for a wrong argument.\n"
         "\n"
         "  --actions N  how many actions in all, 10000 unless told\n"
         "  --length N   how many actions in a visit, 60 unless told\n"
         "  --verbose    prints each visit's seed before it and what happened how often at the end\n";
  return 0;
}

void Print(const Violation& violation) {
  std::cout << "broken rule: " << violation.rule << "\n  " << violation.what << "\n";
}

int Replay(const Options& options, const tests::PhotoFolder& folder) {
  std::ifstream file(options.replay);
  if (!file) {
    std::cerr << "cannot read " << options.replay << "\n";
    return 2;
  }
  Tally tally;
  const Actions actions = ReadActions(file);
  const auto violation = Play(actions, folder, tally);
  if (violation) {
    Print(*violation);
  } else {
    std::cout << "all rules held\n";
  }
  return violation ? 1 : 0;
}

void Report(std::uint64_t seed, long length, const Violation& violation, const Actions& all,
            const tests::PhotoFolder& folder) {
  std::cout << "seed " << seed << ", after " << all.size() << " actions\n";
  Print(violation);
  const Actions few = Shrink(all, [&](const Actions& actions) {
    Tally ignored;
    const auto found = Play(actions, folder, ignored);
    return found && found->rule == violation.rule;
  });
  const std::string path = "random-visit-" + std::to_string(seed) + ".txt";
  std::ofstream file(path);
  file << "# seed " << seed << ", broken rule: " << violation.rule << "\n";
  WriteActions(file, few);
  std::cout << "shrunk to " << few.size() << " actions:\n";
  WriteActions(std::cout, few);
  std::cout << "replay with: random_visits --replay " << path << "\n"
            << "or the whole visit with: random_visits --seed " << seed << " --length " << length
            << " --actions 1\n";
}

int Run(const Options& options, const tests::PhotoFolder& folder) {
  Tally tally;
  long played = 0;
  std::uint64_t seed = options.seed;
  std::cout << "seed " << seed << ", " << options.actions << " actions\n" << std::flush;
  for (; played < options.actions; ++seed) {
    if (options.verbose) std::cout << "visit with seed " << seed << "\n" << std::flush;
    Generator generator(seed);
    Actions actions;
    const auto violation = Play(
        [&](Place place) -> std::optional<Action> {
          if (actions.size() == static_cast<std::size_t>(options.length)) return std::nullopt;
          return actions.emplace_back(generator.Draw(place));
        },
        folder, tally);
    played += static_cast<long>(actions.size());
    if (violation) {
      Report(seed, options.length, *violation, actions, folder);
      return 1;
    }
  }
  if (options.verbose) {
    for (const auto& [what, count] : tally) std::cout << count << "\t" << what << "\n";
  }
  std::cout << played << " actions in " << seed - options.seed << " visits, " << tally["statements"]
            << " statements: all rules held\n";
  return 0;
}

bool Parse(int count, char** arguments, Options& options) {
  for (int i = 1; i < count; ++i) {
    const std::string name = arguments[i];
    if (name == "--verbose") {
      options.verbose = true;
      continue;
    }
    if (i + 1 == count) return false;
    const std::string value = arguments[++i];
    char* end = nullptr;
    if (name == "--replay") {
      options.replay = value;
    } else if (name == "--seed") {
      options.seed = std::strtoull(value.c_str(), &end, 10);
      options.seeded = true;
    } else if (name == "--actions") {
      options.actions = std::strtol(value.c_str(), &end, 10);
    } else if (name == "--length") {
      options.length = std::strtol(value.c_str(), &end, 10);
    } else {
      return false;
    }
    if (end != nullptr && (value.empty() || *end != '\0')) return false;
  }
  return options.actions > 0 && options.length > 0;
}

int Main(int count, char** arguments) {
  if (count == 2 && std::string(arguments[1]) == "--help") return ShowHelp();
  Options options;
  if (!Parse(count, arguments, options)) {
    std::cerr << "random_visits --help tells the arguments\n";
    return 2;
  }
  if (!options.seeded) options.seed = std::random_device()();
  const tests::PhotoFolder folder("random-visits");
  MakeChoices(folder);
  return options.replay.empty() ? Run(options, folder) : Replay(options, folder);
}

}  // namespace
}  // namespace dossierkit::random

int main(int count, char** arguments) {
  try {
    return dossierkit::random::Main(count, arguments);
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << "\n";
    return 2;
  }
}
