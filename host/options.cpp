#include "host/options.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/environment/text.h"

namespace dossierkit::host {
namespace {

constexpr std::size_t kLongestClerk = 128;

constexpr char kVisitUsage[] =
    "dossier [--database FILE | --connection STRING] [--photos DIR]\n"
    "               [--person ID | --new] [--operation-type N] [--person-type N]\n"
    "               [--own-rows] [--clerk NAME] [--trace-sql FILE] [--tour DIR]";

constexpr std::array<std::pair<std::string_view, const char*>, 9> kCommandUsages = {{
    {"check", "dossier check [FILE | --database FILE | --connection STRING] [--photos DIR] [--json]"},
    {"create-sample", "dossier create-sample FILE | --connection STRING"},
    {"create-empty", "dossier create-empty FILE | --connection STRING"},
    {"create-server", "dossier create-server --connection STRING"},
    {"create-rights", "dossier create-rights --connection STRING"},
    {"create-audit", "dossier create-audit --connection STRING"},
    {"history", "dossier history --person ID --connection STRING"},
    {"restore", "dossier restore --change N --connection STRING"},
    {"copy", "dossier copy --from FILE|STRING --to FILE|STRING"},
}};

std::int16_t ParseNumber(const std::string& option, const std::string& text) {
  std::int16_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw UsageError(option + " takes a number from -32768 to 32767, not '" + text + "'");
  }
  return number;
}

// As history shows it.
std::int64_t ParseChange(const std::string& text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 1)
    throw UsageError("--change takes a number that history shows, not '" + text + "'");
  return number;
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  std::optional<std::int16_t> operation_type;
  bool new_person = false;
  bool visit_options = false;
  std::size_t next = 0;
  const auto value_of = [&](const std::string& option) -> const std::string& {
    // An empty one is what a script hands over that lost its variable.
    if (next >= arguments.size() || arguments[next].empty()) throw UsageError(option + " takes a value");
    return arguments[next++];
  };
  // The rest of a command that takes two options, and cannot do without either.
  using Target = std::pair<const char*, std::string*>;
  const auto take_both = [&](const Target& one, const Target& other) {
    const std::string both = arguments.front() + " takes " + one.first + std::string(" and ") + other.first;
    while (next < arguments.size()) {
      const std::string& which = arguments[next++];
      if (which != one.first && which != other.first) throw UsageError(both);
      *(which == one.first ? one : other).second = value_of(which);
    }
    if (one.second->empty() || other.second->empty()) throw UsageError(both);
  };
  while (next < arguments.size()) {
    const std::string& argument = arguments[next++];
    if (argument == "--help") {
      options.action = Options::Action::kHelp;
      return options;
    }
    if (argument == "--version") {
      options.action = Options::Action::kVersion;
      return options;
    }
    if (argument.starts_with("create-") && next == 1) {
      if (argument == "create-empty") {
        options.action = Options::Action::kCreateEmpty;
      } else if (argument == "create-rights") {
        options.action = Options::Action::kCreateRights;
      } else if (argument == "create-audit") {
        options.action = Options::Action::kCreateAudit;
      } else if (argument == "create-sample" || argument == "create-server") {
        options.action = Options::Action::kCreateSample;
      } else {
        throw UsageError("unknown argument '" + argument + "'");
      }
      const bool is_on_server = next < arguments.size() && arguments[next] == "--connection";
      if (argument != "create-sample" && argument != "create-empty" && !is_on_server)
        throw UsageError(argument + " takes --connection");
      if (is_on_server) ++next;
      (is_on_server ? options.connection : options.file) = value_of(is_on_server ? "--connection" : argument);
      if (next != arguments.size())
        throw UsageError(argument + (is_on_server ? " takes one connection string" : " takes one file"));
      return options;
    }
    if (argument == "history" && next == 1) {
      options.action = Options::Action::kHistory;
      take_both({"--person", &options.person}, {"--connection", &options.connection});
      return options;
    }
    if (argument == "restore" && next == 1) {
      options.action = Options::Action::kRestore;
      std::string number;
      take_both({"--change", &number}, {"--connection", &options.connection});
      options.change = ParseChange(number);
      return options;
    }
    if (argument == "copy" && next == 1) {
      options.action = Options::Action::kCopy;
      take_both({"--from", &options.from}, {"--to", &options.to});
      return options;
    }
    if (argument == "check" && next == 1) {
      options.action = Options::Action::kCheck;
    } else if (argument == "--json") {
      options.json = true;
    } else if (argument == "--database") {
      options.database = value_of(argument);
    } else if (argument == "--connection") {
      options.connection = value_of(argument);
    } else if (argument == "--photos") {
      options.photos = value_of(argument);
    } else if (argument == "--person") {
      options.person = value_of(argument);
    } else if (argument == "--new") {
      new_person = true;
    } else if (argument == "--operation-type") {
      operation_type = ParseNumber(argument, value_of(argument));
      visit_options = true;
    } else if (argument == "--person-type") {
      options.person_type = ParseNumber(argument, value_of(argument));
    } else if (argument == "--own-rows") {
      options.own_rows = true;
    } else if (argument == "--clerk") {
      options.clerk = value_of(argument);
      if (environment::Length(options.clerk) > kLongestClerk)
        throw UsageError("--clerk takes a name of at most 128 characters");
    } else if (argument == "--trace-sql") {
      options.trace_file = value_of(argument);
    } else if (argument == "--tour" && options.action != Options::Action::kCheck) {
      options.action = Options::Action::kTour;
      options.folder = value_of(argument);
    } else if (options.action == Options::Action::kCheck && options.file.empty() && !argument.empty() &&
               argument[0] != '-') {
      options.file = argument;
    } else {
      throw UsageError("unknown argument '" + argument + "'");
    }
  }
  if (!options.database.empty() && !options.connection.empty()) {
    throw UsageError("--database and --connection exclude one another");
  }
  if (options.action == Options::Action::kCheck && !options.file.empty()) {
    if (!options.database.empty() || !options.connection.empty())
      throw UsageError("check takes one database: a file, --database or --connection");
    options.database = options.file;
  }
  if (!options.person.empty() && new_person) throw UsageError("--person and --new exclude one another");
  const bool visit = !options.person.empty() || new_person;
  const bool is_shared = options.own_rows || !options.clerk.empty();
  if (options.action == Options::Action::kCheck) {
    if (visit || visit_options || is_shared || options.person_type || !options.trace_file.empty())
      throw UsageError("check takes a file, --database, --connection, --photos and --json");
    return options;
  }
  if (options.json) throw UsageError("--json goes with check");
  if (options.action == Options::Action::kTour) {
    if (visit || visit_options) throw UsageError("--tour chooses its own person");
    if (is_shared) throw UsageError("--own-rows and --clerk do not go with --tour");
    return options;
  }
  if (visit_options && !visit) throw UsageError("--operation-type goes with --person or --new");
  if (visit) options.action = Options::Action::kVisit;
  options.operation_type = operation_type.value_or(new_person ? 0 : 3);
  return options;
}

std::string UsageOf(const std::vector<std::string>& arguments) {
  const char* usage = kVisitUsage;
  for (const auto& [command, own] : kCommandUsages) {
    if (!arguments.empty() && arguments.front() == command) usage = own;
  }
  return std::string("usage: ") + usage + "\n'dossier --help' says more.\n";
}

std::string Usage() {
  std::string usage = std::string("usage: ") + kVisitUsage + "\n";
  for (const auto& [command, own] : kCommandUsages) usage.append("       ").append(own).append("\n");
  return usage + R"(       dossier --help | --version

Without --person or --new: a window with the people of the database.

  --database FILE       the database file; without it, a working copy of the sample database
  --connection STRING   in its place a connection string, as in "Driver=SQLite3;Database=FILE"; for a
                        database on a server, PostgreSQL or MariaDB, the one of its ODBC driver, as in
                        "Driver=PostgreSQL Unicode;Server=HOST;Database=NAME;Uid=USER;Pwd=PASSWORD"
  --photos DIR          the folder of the photographs; without it, a working copy of the sample's
  --person ID           opens the dossier of one person and ends with it
  --new                 opens the dossier of a new person and ends with it
  --operation-type N    0 new person, 3 stored person; by default as --new or --person says
  --person-type N       1, 2 or 3: which recommendation joins the menu; by default
                        the stored person's own (A0136), and 1 for a new one
  --own-rows            in the sets of many records a visit sees its own person's rows only; a server must have been
                        prepared by create-rights
  --clerk NAME          what another clerk is told who opens the same person on a server; by default USER@MACHINE
  --trace-sql FILE      writes one JSON object per statement of the component
  --tour DIR            plays a tour through the window and writes its pictures into DIR; its copies of
                        database and photographs lie in DIR/tour-data
  check FILE            says what is wrong in a database, one line for each fault, and changes nothing;
                        --json gives one JSON object per line; the photographs are checked where --photos
                        names them, or with the working copy of the sample
  create-sample FILE    writes a fresh copy of the sample database; refuses a file that is there
  create-empty FILE     the same without people: tables, metadata and code tables alone;
                        both make it in the empty database of a server where --connection names one
  create-server         the same as create-sample, on a server; docs/servers.md tells how one is set up
  create-rights         makes on a server the role dossierkit_clerk, which may work dossiers and nothing else, and
                        what a visit needs that sees its own person's rows only
  create-audit          has every change of a record on a server written down from now on
  history               shows who changed a person's records when, with each row before and after
  restore               brings a record back as it stood before the change of that number, which history shows; in a
                        set of many records it overwrites none, and is numbered behind them where its number is taken
  copy                  moves a database between a file and a server, or two servers, each named by a file or a
                        connection string; the target must be empty, and both sides are compared

The working copies lie in $XDG_DATA_HOME/dossierkit, by default in ~/.local/share/dossierkit; on Windows, where there
are the check, create-sample, create-empty and the tour alone, in %LOCALAPPDATA%\dossierkit.
Prints "ShowDossier returned True" or "... False" and exits with 0; exits with 1 where a call failed
and with 2 on wrong arguments. The check exits with 0 without faults, with 1 with faults and with 2
where it cannot read.
)";
}

}  // namespace dossierkit::host
