#include "adapters/odbc/engine.h"
#include "platform/environment/failure.h"

namespace dossierkit::odbc {

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
