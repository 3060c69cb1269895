// The words in which the failures of engines are told.
#include "platform/jet/engine_failure.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/ado/connection.h"

namespace dossierkit::jet {
namespace {

TEST(EngineFailure, EachHasItsNumberAndWords) {
  const struct {
    EngineFailure what;
    const char* told;
  } kFailures[] = {
      {EngineFailure::kNoSuchTable,
       "-2147217865 找不到输入表或查询“x%y”。确定它是否存在，以及它的名称的拼写是否正确。"},
      {EngineFailure::kUnknownName, "-2147217904 至少一个参数没有被指定值：未知的名称“x%y”。"},
      {EngineFailure::kUnknownField, "-2147217904 语句包含下列未知的字段名：“x%y”。确保输入的名称正确。"},
      {EngineFailure::kAmbiguousName, "-2147217900 特定字段“x%y”可以参考 SQL 语句中的多个表。"},
      {EngineFailure::kErrorNear, "-2147217900 SQL 语句语法错误：“x%y”附近有错。"},
      {EngineFailure::kIncomplete, "-2147217900 SQL 语句语法错误：语句不完整。"},
      {EngineFailure::kSeveralValues, "-2147217900 SQL 语句语法错误：只要一个值的地方有多个值。"},
      {EngineFailure::kSyntax, "-2147217900 SQL 语句语法错误：x%y。"},
      {EngineFailure::kBusy, "-2147467259 数据库正被占用，请稍后再试。"},
      {EngineFailure::kReadOnly, "-2147467259 不能更新：数据库是只读的。"},
      {EngineFailure::kDiskFull, "-2147467259 磁盘已满。"},
      {EngineFailure::kDiskError, "-2147467259 磁盘读写错误：x%y。"},
      {EngineFailure::kDamaged, "-2147467259 数据库已损坏：x%y。"},
      {EngineFailure::kNoDatabase, "-2147467259 文件不是数据库。"},
      {EngineFailure::kCannotOpen, "-2147467259 无法打开数据库文件。"},
      {EngineFailure::kConstraint, "-2147467259 违反了数据库的约束：x%y。"},
      {EngineFailure::kOutOfMemory, "-2147467259 内存不足。"},
      {EngineFailure::kTooLong, "-2147467259 语句或数据太长。"},
      {EngineFailure::kRolledBack, "-2147467259 数据库已经撤销了这个事务：请回滚后再重新开始。"},
      {EngineFailure::kConnectionLost, "-2147467259 与数据库服务器的连接已断开：x%y。"},
      {EngineFailure::kOther, "-2147467259 数据库错误：x%y。"},
  };
  for (const auto& one : kFailures) {
    const environment::Failure failure = FailureOf(one.what, "x%y", "select a from t");
    EXPECT_EQ(std::to_string(failure.number()) + " " + failure.description(), one.told);
    EXPECT_EQ(failure.statement(), "select a from t");
  }
}

TEST(EngineFailure, BadBytesOfTheEnginesWordsAreReplaced) {
  EXPECT_EQ(FailureOf(EngineFailure::kOther, "a\xFF", {}).description(), "数据库错误：a\xEF\xBF\xBD。");
}

TEST(Busy, EveryEngineWaitsFiveSeconds) { EXPECT_EQ(ado::kBusyTimeout.count(), 5000); }

}  // namespace
}  // namespace dossierkit::jet
