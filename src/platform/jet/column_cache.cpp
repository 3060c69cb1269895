#include "platform/jet/column_cache.h"

#include <utility>

#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::jet {

ColumnCache::ColumnCache(Engine engine) : engine_(std::move(engine)) {}

Statement ColumnCache::Translate(std::string_view statement, const Renderer& renderer) {
  const ColumnLookup lookup = [this](std::string_view table) { return ColumnsOf(table); };
  while (true) {
    try {
      Statement translated = jet::Translate(statement, lookup, renderer);
      const bool asks = translated.kind == Statement::Kind::kInsert && !engine_.refuses_wrong_values;
      if (!asks || !ForgetOldSchema()) return translated;
    } catch (const environment::Failure& failure) {
      // No column makes good a wrong syntax.
      if (failure.number() == environment::kSyntaxError || !ForgetOldSchema()) throw;
    }
  }
}

bool ColumnCache::ForgetOldSchema() {
  const std::int64_t version = engine_.version();
  if (version == known_version_) return false;
  tables_.clear();
  known_version_ = version;
  return true;
}

const TableColumns* ColumnCache::ColumnsOf(std::string_view table) {
  std::string key = environment::LowerCase(table);
  const auto known = tables_.find(key);
  if (known != tables_.end()) return &known->second;
  TableColumns columns = engine_.columns(key);
  return columns.empty() ? nullptr : &(tables_[std::move(key)] = std::move(columns));
}

}  // namespace dossierkit::jet
