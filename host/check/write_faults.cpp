// What can only be told by writing, in a transaction that is rolled back: identifiers of new persons, and
// whether texts are compared without regard to case.
#include <exception>

#include "host/check/reading.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::check {
namespace {

// Rolls back whatever was tried.
class Trial {
 public:
  explicit Trial(ado::Connection& connection) : connection_(connection) { connection_.BeginTrans(); }
  ~Trial() {
    try {
      connection_.RollbackTrans();
    } catch (const std::exception&) {
      // The engine rolls back on its own what nobody commits.
    }
  }
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;

 private:
  ado::Connection& connection_;
};

// As a new person is started.
void CheckIdentifiers(ado::Connection& connection, Findings& findings) {
  const std::string meets = "，新人员无法录入；请参照示例数据库，让这一列在插入时自动生成带花括号的 GUID";
  try {
    connection.Run("delete from S_GUID");
    connection.Run("insert into S_GUID(val) values('a')");
    const ado::Snapshot rows = Read(connection, "select id from S_GUID where val='a'");
    if (rows.RowCount() == 0) {
      findings.Add("S_GUID", "", "id", "插入的行读不回来" + meets);
    } else if (rows.ValueAt(0, 0).IsNull()) {
      findings.Add("S_GUID", "", "id", "插入后没有自动生成值" + meets);
    } else if (const std::string id = TextAt(rows, 0, 0);
               environment::Length(id) != 38 || id.front() != '{' || id.back() != '}') {
      findings.Add(
          "S_GUID", "", "id",
          "自动生成的“" + id +
              "”不是带花括号的 38 个字符，新人员的标识会缺头少尾或重复；请参照示例数据库改正这一列的默认值");
    }
  } catch (const environment::Failure& failure) {
    findings.Add("S_GUID", "", "id", "无法插入一行（" + failure.description() + "）" + meets);
  }
}

// A value that a column of the kind takes. Of the kind of a text it is compared with its capital.
const char* ProbeOf(ado::ColumnKind kind) {
  switch (kind) {
    case ado::ColumnKind::kText: return "'a'";
    case ado::ColumnKind::kDate: return "'2000-01-01'";
    case ado::ColumnKind::kInteger:
    case ado::ColumnKind::kFloating:
    case ado::ColumnKind::kBoolean: return "'0'";
    case ado::ColumnKind::kUnknown: break;
  }
  return nullptr;
}

enum class Writing { kByTheComponent, kByOthers };

// Puts in one row with the same small letter in each text, and asks for its capital.
void CheckCase(ado::Connection& connection, const std::string& table, const std::string& meets,
               Writing writing, Findings& findings) {
  const auto columns = ColumnsOf(connection, table);
  if (!columns) return;
  std::string names;
  std::string values;
  std::string asked;
  std::string condition;
  std::vector<std::string> texts;
  for (const auto& [column, kind] : *columns) {
    const char* probe = ProbeOf(kind);
    if (!probe) continue;
    const std::string name = "[" + column + "]";
    names += (names.empty() ? "" : ",") + name;
    values += (values.empty() ? "" : ",") + std::string(probe);
    if (kind != ado::ColumnKind::kText) continue;
    asked += (asked.empty() ? "iif(" : ",iif(") + name + "='A',1,0)";
    condition += (condition.empty() ? "" : " and ") + name + "='a'";
    texts.push_back(column);
  }
  if (texts.empty()) return;
  try {
    connection.Run("insert into " + table + "(" + names + ") values(" + values + ")");
  } catch (const environment::Failure& failure) {
    if (writing == Writing::kByOthers) return;
    findings.Add(
        table, "", "",
        "不接受试写的一行（" + failure.description() + "），保存时可能同样失败；请检查表的约束和连接的权限");
    return;
  }
  const ado::Snapshot rows = Read(connection, "select " + asked + " from " + table + " where " + condition);
  for (std::size_t i = 0; rows.RowCount() > 0 && i < texts.size(); ++i) {
    if (TextAt(rows, rows.RowCount() - 1, i) == "1") continue;
    findings.Add(table, "", texts[i],
                 "比较文本时区分大小写，" + meets + "；请把这一列改为不区分大小写（collate nocase）");
  }
}

}  // namespace

void CheckByWriting(ado::Connection& connection, const std::vector<Set>& sets, const CodeTables& codes,
                    Findings& findings) {
  const Trial trial(connection);
  CheckIdentifiers(connection, findings);
  // Persons and codes first, to which the rows of the others may refer.
  for (const char* table : {"s_infotable", "s_infoitem", "s_CodeTableDefine", "s_CodeLevDefine"})
    CheckCase(connection, table, "写法不同的名称对不上，相应的内容读不出来", Writing::kByOthers, findings);
  CheckCase(connection, "S_GUID", "新人员可能无法录入", Writing::kByTheComponent, findings);
  for (const auto& [table, all] : codes)
    CheckCase(connection, table, "大小写不同的代码和拼音查不到", Writing::kByOthers, findings);
  for (const Set& set : sets)
    CheckCase(connection, set.name, "大小写不同的标识和代码对不上，排序也不对", Writing::kByTheComponent,
              findings);
}

}  // namespace dossierkit::check
