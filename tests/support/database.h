// Database: what a test needs of a database, on the engine that was named when its program was started.
#pragma once

#include <memory>
#include <string>

#include "platform/ado/connection.h"

namespace dossierkit::tests {

// The environment's variable that names the engine; unset or empty it is "sqlite".
inline constexpr char kEngineVariable[] = "DOSSIERKIT_ENGINE";

class Database : public ado::Connection {
 public:
  // Runs statements of SQL past the dialect, one after the other.
  virtual void RunScript(const std::string& script) = 0;
  // All that it holds, equal for as long as nothing has changed.
  virtual std::string Bytes() = 0;
  // From now on every statement fails.
  virtual void Close() = 0;
};

// An engine that tests can run on.
struct Engine {
  const char* name;
  // A column takes values that are not of its type.
  bool takes_any_value;
  // An updated row stays in its place among the others, where no order is asked for.
  bool updates_in_place;
  // A column by which rows come in the order in which they were written.
  const char* row_order;
  // A fresh copy of the sample database.
  std::shared_ptr<Database> (*sample)();
};

// The engine of that name. An unknown one ends the program with a sentence on standard error and exit code 2.
const Engine& EngineNamed(const std::string& name);

// The engine of this run.
const Engine& EngineOfThisRun();

// What the component is given of a connection to it: the connection itself but for "ado", where every
// statement goes through the objects of a host of COM.
std::shared_ptr<ado::Connection> AsGiven(std::shared_ptr<ado::Connection> connection);

// A fresh copy of the sample database on it.
std::shared_ptr<Database> SampleDatabase();

}  // namespace dossierkit::tests
