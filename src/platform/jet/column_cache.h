// ColumnCache: the columns of an engine's tables, read once for each version of its schema.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/jet/coerce.h"
#include "platform/jet/renderer.h"
#include "platform/jet/statement.h"

namespace dossierkit::jet {

class ColumnCache {
 public:
  // What an engine answers. `version` is another number after every change of a table, by whomever; `columns`
  // are those of a table, its name in small letters; none for a table that does not exist.
  struct Engine {
    std::function<std::int64_t()> version;
    std::function<TableColumns(const std::string& table)> columns;
    // It refuses a value that is not of its column's kind, so that nobody need ask for the version before.
    bool refuses_wrong_values = false;
  };
  explicit ColumnCache(Engine engine);

  // Translates by the columns that are known. What is inserted is translated by the tables as they are
  // declared now, and so is a constant that does not fit: it may by now. For other statements nobody asks for
  // the version; where an update stores by an old one, the engine must refuse it. The same
  // holds for inserts where the engine refuses wrong values. The same select is not translated twice: most of
  // them ask for metadata, at every change of a set. All calls must come with one renderer.
  Statement Translate(std::string_view statement, const Renderer& renderer);

  // Nothing is known any more: the tables may just have been changed.
  void Forget();
  // True, and nothing is known any more, where the version is another one than the columns were read by. What
  // failed by another reason (a lock that was waited for, say) is then not tried a second time.
  bool ForgetOldSchema();

 private:
  const TableColumns* ColumnsOf(std::string_view table);
  void Keep(std::string_view statement, const Statement& translated);

  Engine engine_;
  std::optional<std::int64_t> known_version_;              // none before columns are read
  std::map<std::string, TableColumns> tables_;             // by name in small letters
  std::map<std::string, Statement, std::less<>> selects_;  // translated by those tables
};

}  // namespace dossierkit::jet
