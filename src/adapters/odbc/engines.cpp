#include <cstddef>
#include <optional>
#include <string_view>

#include "adapters/odbc/engine.h"
#include "platform/environment/failure.h"

namespace dossierkit::odbc {
namespace {

// The detail that the words of a failure hold; nothing where they are others.
std::optional<std::string> DetailOf(std::string_view words, const Meaning& meaning) {
  if (meaning.before.empty()) return std::string(words);
  const std::size_t found = words.find(meaning.before);
  if (found == std::string_view::npos) return {};
  const std::string_view rest = words.substr(found + meaning.before.size());
  if (meaning.behind.empty()) return std::string(words);
  const std::size_t end = rest.find(meaning.behind);
  return end == std::string_view::npos ? std::nullopt : std::optional<std::string>(rest.substr(0, end));
}

}  // namespace

Understood UnderstoodBy(const Engine& engine, std::string_view state, int number, const std::string& words) {
  for (const Meaning& meaning : engine.meanings) {
    if (!state.starts_with(meaning.state)) continue;
    if (meaning.number != 0 && meaning.number != number) continue;
    if (const auto detail = DetailOf(words, meaning)) return {meaning.what, *detail, !meaning.behind.empty()};
  }
  return {jet::EngineFailure::kOther, words, false};
}

const Engine& EngineNamed(const std::string& dbms_name) {
  static constexpr const Engine* kEngines[] = {&kPostgresql, &kMariadb};
  std::string known;
  for (const Engine* engine : kEngines) {
    if (engine->name == dbms_name) return *engine;
    known += (known.empty() ? "" : "、") + std::string(engine->name);
  }
  throw environment::Failure(environment::kEngineFailure,
                             "不支持数据库服务器“" + dbms_name + "”，可以使用的是：" + known + "。");
}

}  // namespace dossierkit::odbc
