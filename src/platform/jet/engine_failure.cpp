#include "platform/jet/engine_failure.h"

#include "platform/environment/text.h"

namespace dossierkit::jet {
namespace {

// "%" is the place of the detail.
struct Words {
  int number;
  const char* description;
};

Words WordsOf(EngineFailure what) {
  using environment::kEngineFailure;
  using environment::kSyntaxError;
  switch (what) {
    case EngineFailure::kNoSuchTable:
      return {environment::kNoSuchTable,
              "找不到输入表或查询“%”。确定它是否存在，以及它的名称的拼写是否正确。"};
    case EngineFailure::kUnknownName:
      return {environment::kUnknownName, "至少一个参数没有被指定值：未知的名称“%”。"};
    case EngineFailure::kUnknownField:
      return {environment::kUnknownName, "语句包含下列未知的字段名：“%”。确保输入的名称正确。"};
    case EngineFailure::kAmbiguousName: return {kSyntaxError, "特定字段“%”可以参考 SQL 语句中的多个表。"};
    case EngineFailure::kErrorNear: return {kSyntaxError, "SQL 语句语法错误：“%”附近有错。"};
    case EngineFailure::kIncomplete: return {kSyntaxError, "SQL 语句语法错误：语句不完整。"};
    case EngineFailure::kSeveralValues: return {kSyntaxError, "SQL 语句语法错误：只要一个值的地方有多个值。"};
    case EngineFailure::kSyntax: return {kSyntaxError, "SQL 语句语法错误：%。"};
    case EngineFailure::kBusy: return {kEngineFailure, "数据库正被占用，请稍后再试。"};
    case EngineFailure::kReadOnly: return {kEngineFailure, "不能更新：数据库是只读的。"};
    case EngineFailure::kDiskFull: return {kEngineFailure, "磁盘已满。"};
    case EngineFailure::kDiskError: return {kEngineFailure, "磁盘读写错误：%。"};
    case EngineFailure::kDamaged: return {kEngineFailure, "数据库已损坏：%。"};
    case EngineFailure::kNoDatabase: return {kEngineFailure, "文件不是数据库。"};
    case EngineFailure::kCannotOpen: return {kEngineFailure, "无法打开数据库文件。"};
    case EngineFailure::kConstraint: return {kEngineFailure, "违反了数据库的约束：%。"};
    case EngineFailure::kOutOfMemory: return {kEngineFailure, "内存不足。"};
    case EngineFailure::kTooLong: return {kEngineFailure, "语句或数据太长。"};
    case EngineFailure::kRolledBack:
      return {kEngineFailure, "数据库已经撤销了这个事务：请回滚后再重新开始。"};
    case EngineFailure::kConnectionLost: return {kEngineFailure, "与数据库服务器的连接已断开：%。"};
    case EngineFailure::kOther: break;
  }
  return {kEngineFailure, "数据库错误：%。"};
}

}  // namespace

environment::Failure FailureOf(EngineFailure what, const std::string& detail, const std::string& statement) {
  const Words words = WordsOf(what);
  return environment::Failure(
      words.number, environment::Replace(words.description, "%", environment::ValidUtf8(detail)), statement);
}

}  // namespace dossierkit::jet
