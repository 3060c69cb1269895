// What a visit has around it where several clerks share the database.
#pragma once

#include <memory>
#include <string>

#include "platform/ado/connection.h"

namespace dossierkit::host {

struct Sharing {
  bool own_rows = false;  // in the sets of many records a visit sees its own person's rows only
  std::string clerk;      // what others are told who want to open the same person
};

// Shows on that connection the rows of `person` alone, until what it gives has gone. Throws a Failure where
// the database is not prepared for it.
std::shared_ptr<void> ShowOwnRows(ado::Connection& database, const std::string& person);

// That a clerk has a person open, on a server; on a file it is nothing.
class OpenMark {
 public:
  // Throws a Failure. A person who is not there yet has no mark.
  OpenMark(ado::Connection& database, const std::string& person, const std::string& clerk);
  // Takes this clerk's own mark away.
  ~OpenMark();
  OpenMark(const OpenMark&) = delete;
  OpenMark& operator=(const OpenMark&) = delete;

  // Another clerk who has the person open; empty where there is none.
  const std::string& Another() const { return another_; }

 private:
  ado::Connection& database_;
  std::string person_;
  std::string clerk_;
  std::string another_;
};

}  // namespace dossierkit::host
