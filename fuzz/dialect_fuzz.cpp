// The dialect: the input is one statement.
#include <sqlite3.h>

#include <string>
#include <vector>

#include "adapters/odbc/engine.h"
#include "adapters/sqlite/sqlite_functions.h"
#include "fuzz/fuzz.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/jet/statement.h"
#include "platform/jet/tokens.h"
#include "tests/platform/jet/strict_renderer.h"
#include "tests/support/memory_database.h"

namespace dossierkit {
namespace {

using environment::Failure;
using Kind = jet::Statement::Kind;

// The dialect's own ways.
const jet::Renderer kDialect;

constexpr char kSchema[] =
    "create table A01(A00 varchar(50) collate nocase, n integer, s smallint, d datetime, b bit, f double);"
    "create table A02(A00 varchar(50) collate nocase, A0201 varchar(255), x);"
    "insert into A01 values('p1', 1, 2, '1990-03-01', 1, 0.5), ('p2', null, null, null, 0, null);"
    "insert into A02 values('p1', 'a', 1), ('p1', 'b', 2);";

const jet::TableColumns kA01 = {
    jet::ColumnOfDeclaration("A00", "varchar(50)"), jet::ColumnOfDeclaration("n", "integer"),
    jet::ColumnOfDeclaration("s", "smallint"),      jet::ColumnOfDeclaration("d", "datetime"),
    jet::ColumnOfDeclaration("b", "bit"),           jet::ColumnOfDeclaration("f", "double")};

const jet::TableColumns* Columns(std::string_view table) {
  return environment::EqualIgnoringCase(table, "A01") ? &kA01 : nullptr;
}
const jet::TableColumns* NoColumns(std::string_view) { return nullptr; }

// Every refusal is a Failure of these numbers, with the statement.
void RequireRefusal(const Failure& failure, std::string_view statement) {
  REQUIRE(failure.number() == environment::kSyntaxError || failure.number() == environment::kDataMismatch ||
          failure.number() == environment::kOverflow);
  REQUIRE(failure.statement() == statement);
  REQUIRE(!failure.description().empty());
}

bool IsBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == std::string_view::npos; }

// The tokens are the statement, with nothing but blanks between them.
void CheckTokens(std::string_view statement, const std::vector<jet::Token>& tokens) {
  REQUIRE(!tokens.empty());
  std::size_t end = 0;
  for (const jet::Token& token : tokens) {
    REQUIRE(token.position >= end && !token.text.empty());
    REQUIRE(token.text == statement.substr(token.position, token.text.size()));
    REQUIRE(IsBlank(statement.substr(end, token.position - end)));
    if (token.kind == jet::TokenKind::kLiteral) {
      REQUIRE(jet::LiteralOf(jet::TextOfLiteral(token.text)) == token.text);
    } else if (token.text[0] == '[') {
      REQUIRE(token.kind == jet::TokenKind::kWord && token.text == "[" + std::string(token.Name()) + "]");
      REQUIRE(!IsBlank(token.Name()) &&
              token.Name().find_first_of(std::string_view("[]\0", 3)) == std::string_view::npos);
    } else {
      REQUIRE(token.text.find_first_of(std::string_view("'\";[]\0", 6)) == std::string_view::npos);
    }
    end = token.End();
  }
  const std::string_view rest = statement.substr(end);
  REQUIRE(IsBlank(rest) ||
          (rest[rest.find_first_not_of(" \t\r\n")] == ';' && IsBlank(rest.substr(rest.find(';') + 1))));
}

// Any text, written as a literal, is one literal again.
void CheckQuoting(std::string_view text) {
  const std::string literal = jet::LiteralOf(text);
  REQUIRE(jet::TextOfLiteral(literal) == text);
  if (text.find('\0') != std::string_view::npos) return;
  const auto tokens = jet::Tokenize(literal);
  REQUIRE(tokens.size() == 1 && tokens[0].kind == jet::TokenKind::kLiteral && tokens[0].text == literal);
}

std::vector<std::string> Literals(const std::vector<jet::Token>& tokens) {
  std::vector<std::string> literals;
  for (const auto& token : tokens) {
    if (token.kind == jet::TokenKind::kLiteral) literals.emplace_back(token.text);
  }
  return literals;
}

bool IsSubsequence(const std::vector<std::string>& part, const std::vector<std::string>& whole) {
  std::size_t next = 0;
  for (const auto& item : whole) {
    if (next < part.size() && part[next] == item) ++next;
  }
  return next == part.size();
}

void CheckTranslation(std::string_view source, const std::vector<jet::Token>& tokens,
                      const jet::Statement& translated) {
  const auto translated_tokens = jet::Tokenize(translated.text);
  REQUIRE(environment::EqualIgnoringCase(translated_tokens[0].text, tokens[0].text));
  REQUIRE(tokens[0].Is("select") == (translated.kind == Kind::kSelect));
  REQUIRE(tokens[0].Is("insert") == (translated.kind == Kind::kInsert));
  REQUIRE(tokens[0].Is("update") == (translated.kind == Kind::kUpdate));
  REQUIRE(tokens[0].Is("delete") == (translated.kind == Kind::kDelete));

  if (translated.kind == Kind::kSelect) {
    // Only format loses a literal, its pattern.
    REQUIRE(IsSubsequence(Literals(translated_tokens), Literals(tokens)));
  } else {
    REQUIRE(jet::Translate(source, NoColumns, kDialect).text == source.substr(0, tokens.back().End()));
  }
  // What was translated stays as it is.
  REQUIRE(jet::Translate(translated.text, Columns, kDialect).text == translated.text);
}

// With "?" for its constants a text has no literal, no second statement and no comment, and its parentheses
// are pairs; names stand in the engine's quotes.
void CheckShape(const std::string& shape, std::string_view quote) {
  int depth = 0;
  bool in_name = false;
  for (std::size_t i = 0; i < shape.size(); ++i) {
    if (shape[i] == quote[0]) in_name = !in_name;
    if (in_name) continue;
    const std::string_view two = std::string_view(shape).substr(i, 2);
    REQUIRE(two != "--" && two != "/*" && shape[i] != '\'' && shape[i] != ';');
    if (shape[i] == '(') ++depth;
    if (shape[i] == ')') REQUIRE(--depth >= 0);
  }
  REQUIRE(depth == 0 && !in_name);
}

// What is rendered for a server is one statement as well, with the same literals.
void CheckServer(std::string_view source, const jet::ColumnLookup& lookup, const jet::Renderer& renderer) {
  const jet::Statement plain = jet::Translate(source, lookup, kDialect);
  jet::Statement strict;
  try {
    strict = jet::Translate(source, lookup, renderer);
  } catch (const Failure& failure) {
    RequireRefusal(failure, source);
    return;
  }
  REQUIRE(strict.kind == plain.kind);
  CheckShape(environment::Replace(strict.WithParameters(), "escape ''", ""), renderer.name_quote);
  const auto literals = Literals(jet::Tokenize(plain.text));
  auto literal = literals.begin();
  for (const jet::Constant& constant : strict.constants) {
    const std::string text = strict.text.substr(constant.position, constant.size);
    const environment::Value constant_value = strict.ValueOf(constant);
    const auto* value = constant_value.As<std::string>();
    if (value == nullptr) {
      REQUIRE(text.starts_with(std::string(renderer.date) + "'") || text.find('\'') == std::string::npos);
      continue;
    }
    REQUIRE(text == jet::LiteralOf(*value));
    // A number that is compared as a text, or a pattern with a set.
    if (value->find_first_not_of("0123456789.-") == std::string::npos ||
        value->starts_with(renderer.like->begin))
      continue;
    while (literal != literals.end() && *literal != text) ++literal;
    REQUIRE(literal != literals.end());
    ++literal;
  }
}

sqlite3* Engine() {
  static sqlite3* const database = [] {
    sqlite3* opened = nullptr;
    REQUIRE(sqlite3_open(":memory:", &opened) == SQLITE_OK);
    sqlite::RegisterFunctions(opened);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    REQUIRE(sqlite3_exec(opened, kSchema, nullptr, nullptr, nullptr) == SQLITE_OK);
    return opened;
  }();
  return database;
}

// The engine takes the whole text as one statement that reads or writes as its first word says, or
// refuses it.
void CheckEngine(const jet::Statement& translated) {
  sqlite3_stmt* prepared = nullptr;
  const char* tail = nullptr;
  const int result = sqlite3_prepare_v2(Engine(), translated.text.data(),
                                        static_cast<int>(translated.text.size()), &prepared, &tail);
  if (result == SQLITE_OK) {
    REQUIRE(prepared != nullptr && tail == translated.text.data() + translated.text.size());
    REQUIRE((sqlite3_stmt_readonly(prepared) != 0) == (translated.kind == Kind::kSelect));
    REQUIRE(sqlite3_bind_parameter_count(prepared) == 0);
  } else {
    REQUIRE(prepared == nullptr);
  }
  sqlite3_finalize(prepared);
}

// Running it gives rows or a Failure with the statement; the schema stays.
void CheckRun(const std::string& statement) {
  static const auto connection = [] {
    auto made = tests::OpenInMemory();
    made->RunScript(kSchema);
    return made;
  }();
  const std::string schema = connection->Pragma("schema_version");
  connection->RunScript("begin");
  try {
    connection->Run(statement);
  } catch (const Failure& failure) {
    REQUIRE(failure.statement() == statement);
  }
  connection->RunScript("rollback");
  REQUIRE(connection->Pragma("schema_version") == schema);
}

void CheckStatement(const std::string& statement) {
  CheckQuoting(statement);
  std::vector<jet::Token> tokens;
  jet::Statement translated;
  try {
    tokens = jet::Tokenize(statement);
    CheckTokens(statement, tokens);
    translated = jet::Translate(statement, Columns, kDialect);
  } catch (const Failure& failure) {
    RequireRefusal(failure, statement);
    return;
  }
  CheckTranslation(statement, tokens, translated);
  for (const jet::Renderer* renderer :
       {&jet::kStrictRenderer, &odbc::kPostgresql.renderer, &odbc::kMariadb.renderer}) {
    CheckServer(statement, Columns, *renderer);
    CheckServer(statement, NoColumns, *renderer);
  }
  CheckEngine(jet::Translate(statement, Columns, sqlite::kRenderer));
  // As it is stored past a view of the same name.
  jet::Renderer in_file = sqlite::kRenderer;
  in_file.stored_in = "main.";
  CheckEngine(jet::Translate(statement, Columns, in_file));
  CheckRun(statement);
}

}  // namespace
}  // namespace dossierkit

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  dossierkit::CheckStatement(std::string(dossierkit::fuzz::TextOf(data, size)));
  return 0;
}
