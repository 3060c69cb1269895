// The command line of the demo host.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace dossierkit::host {

struct Options {
  enum class Action {
    kPeople,
    kVisit,
    kTour,
    kCreateSample,
    kCreateEmpty,
    kCreateRights,
    kCreateAudit,
    kHistory,
    kRestore,
    kCopy,
    kCheck,
    kHelp,
    kVersion
  };
  Action action = Action::kPeople;
  std::string database;    // file; empty: the sample database
  std::string connection;  // connection string in place of a file
  std::string photos;      // folder; empty: a working copy of the sample's
  std::string person;      // A00; empty with --new
  std::int16_t operation_type = 0;
  std::optional<std::int16_t> person_type;  // by default the stored person's own, or 1
  std::string trace_file;
  bool own_rows = false;    // a visit sees its own person's rows only
  std::string clerk;        // who has a person open, for other clerks; empty: user and machine
  std::string folder;       // of the tour's pictures
  std::string file;         // of create-sample and create-empty, unless `connection` says where, and of check
  std::int64_t change = 0;  // of restore
  std::string from;         // of copy: a file or a connection string each
  std::string to;
  bool json = false;  // of check
};

// Arguments that cannot be understood; what() says which.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Reads the arguments behind the program's name. Throws UsageError.
Options ParseOptions(const std::vector<std::string>& arguments);

// What stands below the message where the arguments are wrong: how the command that they name is called.
std::string UsageOf(const std::vector<std::string>& arguments);

// The text of --help.
std::string Usage();

}  // namespace dossierkit::host
