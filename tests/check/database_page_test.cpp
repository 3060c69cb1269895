// The pages of what a database must hold, and the script of the schema: each says what the other says.
#include <fstream>
#include <map>
#include <regex>
#include <set>

#include "pages/compiled_pages.h"
#include "platform/environment/text.h"
#include "tests/check/check_test.h"
#include "tests/support/paths.h"

namespace dossierkit::tests {
namespace {

// Of one column what is declared of it, in the order of its table.
using Declared = std::vector<std::pair<std::string, std::string>>;

std::vector<std::string> LinesOf(const std::string& page) {
  std::ifstream in(SourceFolder() + "/docs/" + page);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

// A page that declares columns: "| `tblname` | varchar(10) | .." under "### `s_infotable`..".
std::map<std::string, Declared> TablesOf(const std::string& page) {
  const std::regex heading("### `(\\w+)`.*");
  const std::regex row("\\| `(\\w+)` \\| ([a-z]+(?:\\(\\d+\\))?) \\| .*");
  std::map<std::string, Declared> tables;
  std::string table;
  for (const std::string& line : LinesOf(page)) {
    std::smatch match;
    if (std::regex_match(line, match, heading)) table = match[1];
    if (std::regex_match(line, match, row)) tables[table].emplace_back(match[1], match[2]);
  }
  return tables;
}

// Of each set: "| `A03` | .. | `A0301` 起始年月 datetime `####`; .. |".
std::map<std::string, Declared> SetsOf(const std::string& page,
                                       std::map<std::string, std::set<std::string>>& masked,
                                       std::map<std::string, std::string>* captions = nullptr) {
  const std::regex row("\\| `([AB]\\d\\d)` \\| [^|]+ \\| (.*) \\|");
  const std::regex column("`(\\w+)` (?:([^ a-z]+) )?([a-z]+(?:\\(\\d+\\))?)( `#[^`]*`)?");
  std::map<std::string, Declared> sets;
  for (const std::string& line : LinesOf(page)) {
    std::smatch match;
    if (!std::regex_match(line, match, row)) continue;
    for (const std::string& piece : environment::Split(std::string(match[2]), "; ")) {
      std::smatch part;
      if (!std::regex_match(piece, part, column)) ADD_FAILURE() << piece;
      sets[match[1]].emplace_back(part[1], part[3]);
      if (part[4].matched) masked[match[1]].insert(part[1]);
      if (captions) (*captions)[part[1]] = part[2];
    }
  }
  return sets;
}

class DatabasePage : public Check {
 protected:
  Declared InTheSchema(const std::string& table) {
    database->RunScript(
        "drop view if exists declared; create view declared as select name, type from pragma_table_info('" +
        table + "')");
    Declared columns;
    for (const std::string& row : Rows(*database, "select name,type from declared")) {
      const auto pieces = environment::Split(row, "|");
      columns.emplace_back(pieces[0], environment::LowerCase(pieces[1]));
    }
    return columns;
  }
};

const std::vector<std::string> kPages = {"database.md", "database.zh-CN.md"};

TEST_F(DatabasePage, DeclaresEveryColumnOfTheMetadataAsTheScriptDoes) {
  for (const std::string& page : kPages) {
    const auto tables = TablesOf(page);
    ASSERT_EQ(tables.size(), 6U) << page;
    for (const auto& [table, columns] : tables)
      EXPECT_EQ(columns, InTheSchema(table)) << page << " " << table;
    for (const std::string& table : Column(*database, "select dmgrp from s_CodeTableDefine"))
      EXPECT_EQ(tables.at("GB2261"), InTheSchema(table)) << page << " " << table;
  }
}

TEST_F(DatabasePage, DeclaresEveryColumnOfTheSetsAsTheScriptDoes) {
  for (const std::string& page : kPages) {
    std::map<std::string, std::set<std::string>> masked;
    const auto sets = SetsOf(page, masked);
    ASSERT_EQ(sets.size(), 16U) << page;
    for (const auto& [set, columns] : sets) {
      Declared all = {{"A00", "varchar(36)"}};
      all.insert(all.end(), columns.begin(), columns.end());
      EXPECT_EQ(all, InTheSchema(set)) << page << " " << set;
    }
  }
}

TEST_F(DatabasePage, CaptionsEveryFieldAsTheSampleDoes) {
  std::map<std::string, std::string> wanted = {{"A0136", ""}, {"A0199", ""}};
  for (const std::string& row : Rows(*database, "select itemname,itemdesc from s_infoitem")) {
    const auto pieces = environment::Split(row, "|");
    wanted[pieces[0]] = pieces[1];
  }
  ASSERT_EQ(wanted.size(), 113U);
  for (const std::string& page : kPages) {
    std::map<std::string, std::set<std::string>> masked;
    std::map<std::string, std::string> captions;
    SetsOf(page, masked, &captions);
    EXPECT_EQ(captions, wanted) << page;
  }
}

TEST_F(DatabasePage, NamesTheColumnsOfEveryPageAndTheMaskedOnes) {
  for (const std::string& page : kPages) {
    std::map<std::string, std::set<std::string>> masked;
    const auto sets = SetsOf(page, masked);
    for (const CompiledPage& compiled : CompiledPages()) {
      std::set<std::string> named;
      for (const auto& [column, type] : sets.at(compiled.set)) named.insert(column);
      for (const char* hidden : {"A0136", "A0199"}) named.erase(hidden);
      std::set<std::string> shown;
      std::set<std::string> with_mask;
      for (const CompiledField& field : compiled.fields) {
        shown.insert(field.column);
        if (field.masked) with_mask.insert(field.column);
      }
      named.erase(compiled.set + "99");
      EXPECT_EQ(named, shown) << page << " " << compiled.set;
      EXPECT_EQ(masked[compiled.set], with_mask) << page << " " << compiled.set;
    }
  }
}

TEST_F(DatabasePage, NamesEveryIndexOfTheScript) {
  const Texts codes = Column(*database, "select dmgrp from s_CodeTableDefine");
  const std::set<std::string> code_tables(codes.begin(), codes.end());
  std::set<std::string> wanted;
  for (const std::string& sql : Column(*database, "select sql from sqlite_master where type='index'")) {
    std::string index = sql.substr(sql.find(" on ") + 4);
    const std::string table = index.substr(0, index.find(' '));
    if (code_tables.contains(table)) index = "GB2261" + index.substr(table.size());
    wanted.insert(index);
  }
  ASSERT_EQ(wanted.size(), 25U);
  const std::regex named("`(\\w+ \\([^`]+\\))`");
  for (const std::string& page : kPages) {
    std::set<std::string> found;
    for (const std::string& line : LinesOf(page)) {
      for (std::sregex_iterator match(line.begin(), line.end(), named), end; match != end; ++match)
        found.insert((*match)[1]);
    }
    EXPECT_EQ(found, wanted) << page;
  }
}

}  // namespace
}  // namespace dossierkit::tests
