#include "adapters/sqlite/sqlite_functions.h"

#include <exception>
#include <memory>
#include <string_view>

#include "platform/jet/engine_failure.h"
#include "platform/jet/like.h"

namespace dossierkit::sqlite {
namespace {

// The value as text; empty where memory ran out.
std::string_view TextOf(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return text == nullptr ? std::string_view()
                         : std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

// like(pattern, text): how SQLite calls "text like pattern".
void Like(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL) {
    return sqlite3_result_null(context);
  }
  try {
    // A constant pattern is taken apart once for all rows.
    const auto* pattern = static_cast<const jet::LikePattern*>(sqlite3_get_auxdata(context, 0));
    std::unique_ptr<jet::LikePattern> made;
    if (pattern == nullptr) {
      made = std::make_unique<jet::LikePattern>(TextOf(arguments[0]));
      pattern = made.get();
    }
    sqlite3_result_int(context, pattern->Matches(TextOf(arguments[1])) ? 1 : 0);
    if (made) {
      sqlite3_set_auxdata(context, 0, made.release(),
                          [](void* old) { delete static_cast<jet::LikePattern*>(old); });
    }
  } catch (const std::exception&) {
    sqlite3_result_error_nomem(context);
  }
}

// The piece of `message` behind `start` and before `end`; false where it does not begin so.
bool Cut(std::string_view message, std::string_view start, std::string_view end, std::string& piece) {
  const std::size_t found = message.find(start);
  if (found == std::string_view::npos) return false;
  const std::string_view rest = message.substr(found + start.size());
  piece = std::string(end.empty() ? rest : rest.substr(0, rest.find(end)));
  return true;
}

// Failures that SQLite tells by its message alone.
environment::Failure FailureOfMessage(const std::string& message, const std::string& statement) {
  using What = jet::EngineFailure;
  struct Meaning {
    std::string_view start;
    std::string_view end;
    What what;
  };
  static constexpr Meaning kMeanings[] = {{"no such table: ", "", What::kNoSuchTable},
                                          {"no such column: ", "", What::kUnknownName},
                                          {"has no column named ", "", What::kUnknownField},
                                          {"ambiguous column name: ", "", What::kAmbiguousName},
                                          {"near \"", "\": syntax error", What::kErrorNear},
                                          {"incomplete input", "", What::kIncomplete},
                                          {"row value misused", "", What::kSeveralValues}};
  for (const Meaning& meaning : kMeanings) {
    std::string piece;
    if (Cut(message, meaning.start, meaning.end, piece))
      return jet::FailureOf(meaning.what, piece, statement);
  }
  return jet::FailureOf(What::kSyntax, message, statement);
}

}  // namespace

void RegisterFunctions(sqlite3* database) {
  constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  sqlite3_create_function(database, "like", 2, kFlags, nullptr, Like, nullptr, nullptr);
}

environment::Failure FailureOf(sqlite3* database, const std::string& statement) {
  using What = jet::EngineFailure;
  const std::string message = sqlite3_errmsg(database);
  const auto failure = [&](What what) { return jet::FailureOf(what, message, statement); };
  switch (sqlite3_errcode(database) & 0xFF) {
    case SQLITE_ERROR: return FailureOfMessage(message, statement);
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return failure(What::kBusy);
    case SQLITE_READONLY: return failure(What::kReadOnly);
    case SQLITE_FULL: return failure(What::kDiskFull);
    case SQLITE_IOERR: return failure(What::kDiskError);
    case SQLITE_CORRUPT: return failure(What::kDamaged);
    case SQLITE_NOTADB: return failure(What::kNoDatabase);
    case SQLITE_CANTOPEN: return failure(What::kCannotOpen);
    case SQLITE_CONSTRAINT: return failure(What::kConstraint);
    case SQLITE_NOMEM: return failure(What::kOutOfMemory);
    case SQLITE_TOOBIG: return failure(What::kTooLong);
    default: return failure(What::kOther);
  }
}

}  // namespace dossierkit::sqlite
