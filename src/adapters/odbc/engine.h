// Engine: a server's ways, as plain data. A server is added by a file of its own with one of these and a line
// in engines.cpp.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/jet/engine_failure.h"
#include "platform/jet/renderer.h"

namespace dossierkit::odbc {

// A failure as the server tells it, and what it is. The first one that fits counts: a state that begins so,
// the server's number unless 0, and words with `before` and `behind` in them, between which the detail
// stands; without `before` all of the words are the detail.
struct Meaning {
  std::string_view state;
  int number;
  jet::EngineFailure what;
  std::string_view before = {};
  std::string_view behind = {};
};

struct Understood {
  jet::EngineFailure what;
  std::string detail;
  bool is_cut;  // the detail is a piece of the words, as a name
};

struct Engine {
  // As the driver tells the server's name.
  std::string_view name;
  jet::Renderer renderer;
  // Attributes of a connection string, for what the host leaves open.
  std::string_view attributes;
  // Its driver's UTF-16 is not to be trusted: it is spoken to in UTF-8, past the W functions.
  bool speaks_utf8;
  // A statement of its driver runs one text after the other as well as a new one for each.
  bool keeps_statements;
  // What a session begins with; "%ms" and "%s" are how long it waits for another's lock.
  std::span<const std::string_view> session;
  // A question whose answer changes with every change of a table.
  std::string_view schema_version;
  // The columns of the table "%", a literal in small letters: names and declared types, in their order.
  std::string_view columns;
  std::span<const Meaning> meanings;
  // A question, the answer that shows that the server cannot be used, and the sentence that tells why.
  std::string_view requirement = {};
  std::string_view refused_answer = {};
  std::string_view refusal = {};
};

// Each in a file of its own.
extern const Engine kPostgresql;
extern const Engine kMariadb;

// What the first meaning says that fits; kOther with all of the words where none does.
Understood UnderstoodBy(const Engine& engine, std::string_view state, int number, const std::string& words);

// The engine of that name. Throws a Failure with the name for a server that is not known.
const Engine& EngineNamed(const std::string& dbms_name);

}  // namespace dossierkit::odbc
