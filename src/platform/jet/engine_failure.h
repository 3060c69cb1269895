// EngineFailure: what an engine may fail with, in the users' words. An engine tells which of them it was.
#pragma once

#include <string>

#include "platform/environment/failure.h"

namespace dossierkit::jet {

// Each with what its detail is.
enum class EngineFailure {
  kNoSuchTable,     // the table's name
  kUnknownName,     // a column's name in a condition or a list
  kUnknownField,    // a column's name among those that are stored
  kAmbiguousName,   // the name
  kErrorNear,       // the word near which the syntax is wrong
  kIncomplete,      // none: the statement ends too early
  kSeveralValues,   // none: in the place of one value
  kSyntax,          // the engine's own words, or a reason in Chinese
  kBusy,            // none: somebody else is writing
  kReadOnly,        // none
  kDiskFull,        // none
  kDiskError,       // the engine's own words
  kDamaged,         // the engine's own words
  kNoDatabase,      // none: the file is something else
  kCannotOpen,      // none
  kConstraint,      // the engine's own words
  kOutOfMemory,     // none
  kTooLong,         // none: the statement or a text in it
  kRolledBack,      // none: the engine undid the transaction by itself
  kConnectionLost,  // the engine's own words
  kOther            // the engine's own words
};

environment::Failure FailureOf(EngineFailure what, const std::string& detail, const std::string& statement);

}  // namespace dossierkit::jet
