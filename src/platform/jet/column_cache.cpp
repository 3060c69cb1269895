#include "platform/jet/column_cache.h"

#include <utility>

#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::jet {

ColumnCache::ColumnCache(Engine engine) : engine_(std::move(engine)) {}

Statement ColumnCache::Translate(std::string_view statement, const Renderer& renderer) {
  if (const auto known = selects_.find(statement); known != selects_.end()) return known->second;
  bool has_all_tables = true;
  const ColumnLookup lookup = [&](std::string_view table) {
    const TableColumns* columns = ColumnsOf(table);
    has_all_tables = has_all_tables && columns != nullptr;
    return columns;
  };
  while (true) {
    try {
      Statement translated = jet::Translate(statement, lookup, renderer);
      const bool asks = translated.kind == Statement::Kind::kInsert && !engine_.refuses_wrong_values;
      if (asks && ForgetOldSchema()) continue;
      // A table that is missing may be there the next time.
      if (translated.kind == Statement::Kind::kSelect && has_all_tables) Keep(statement, translated);
      return translated;
    } catch (const environment::Failure& failure) {
      // No column makes good a wrong syntax.
      if (failure.number() == environment::kSyntaxError || !ForgetOldSchema()) throw;
    }
  }
}

bool ColumnCache::ForgetOldSchema() {
  if (!known_version_) return false;
  const std::int64_t version = engine_.version();
  if (version == known_version_) return false;
  Forget();
  known_version_ = version;
  return true;
}

void ColumnCache::Forget() {
  known_version_.reset();
  tables_.clear();
  selects_.clear();
}

void ColumnCache::Keep(std::string_view statement, const Statement& translated) {
  constexpr std::size_t kMost = 256;
  constexpr std::size_t kLongest = 1024;
  if (statement.size() > kLongest) return;
  if (selects_.size() == kMost) selects_.clear();
  selects_.emplace(statement, translated);
}

const TableColumns* ColumnCache::ColumnsOf(std::string_view table) {
  std::string key = environment::LowerCase(table);
  const auto known = tables_.find(key);
  if (known != tables_.end()) return &known->second;
  if (!known_version_) known_version_ = engine_.version();
  TableColumns columns = engine_.columns(key);
  return columns.empty() ? nullptr : &(tables_[std::move(key)] = std::move(columns));
}

}  // namespace dossierkit::jet
