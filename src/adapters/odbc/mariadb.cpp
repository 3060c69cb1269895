// MariaDB 10.11, through MariaDB Connector/ODBC.
#include "adapters/odbc/engine.h"

namespace dossierkit::odbc {
namespace {

using What = jet::EngineFailure;

// What does not fit is refused; a backslash is a character like any other, in a pattern as well.
constexpr std::string_view kSqlMode =
    "set session sql_mode = 'STRICT_ALL_TABLES,NO_BACKSLASH_ESCAPES,ERROR_FOR_DIVISION_BY_ZERO,"
    "NO_ENGINE_SUBSTITUTION,PIPES_AS_CONCAT'";

// A node of a cluster shows what was stored on another one before. Not every build knows of clusters.
constexpr std::string_view kWaitForOtherNodes =
    "begin not atomic declare continue handler for 1193 begin end; "
    "execute immediate 'set session wsrep_sync_wait = 7'; end";

constexpr std::string_view kSession[] = {
    "set session innodb_lock_wait_timeout = %s",
    "set session lock_wait_timeout = %s",
    // Else an update holds what lies beside its rows as well: clerks of neighbouring persons would wait for
    // one another, and a cluster would undo what holds up another node's rows.
    "set session transaction isolation level read committed",
    kSqlMode,
    kWaitForOtherNodes,
};

constexpr Meaning kMeanings[] = {
    {"", 1146, What::kNoSuchTable, ".", "' doesn't exist"},
    {"", 1054, What::kUnknownField, "Unknown column '", "' in 'INSERT INTO'"},
    {"", 1054, What::kUnknownField, "Unknown column '", "' in 'SET'"},
    {"", 1054, What::kUnknownName, "Unknown column '", "' in"},
    {"", 1052, What::kAmbiguousName, "Column '", "' in"},
    {"", 1064, What::kIncomplete, "near '' at line"},
    {"", 1064, What::kErrorNear, "syntax to use near '", "' at line"},
    {"", 1205, What::kBusy},
    {"", 1213, What::kRolledBack},
    {"", 1290, What::kReadOnly},
    {"", 1792, What::kReadOnly},
    {"", 1021, What::kDiskFull},
    {"", 1114, What::kDiskFull},
    {"", 1037, What::kOutOfMemory},
    {"", 1406, What::kTooLong},
    {"", 1153, What::kTooLong},
    {"", 1142, What::kOther},
    {"", 1143, What::kOther},
    {"", 1053, What::kConnectionLost},
    {"", 1927, What::kConnectionLost},
    {"", 2006, What::kConnectionLost},
    {"", 2013, What::kConnectionLost},
    {"", 2055, What::kConnectionLost},
    {"23", 0, What::kConstraint},
    {"42", 0, What::kSyntax},
    {"08", 0, What::kConnectionLost},
};

}  // namespace

const Engine kMariadb{
    .name = "MariaDB",
    // Text columns have a collation that disregards case, and NULL comes first by itself.
    .renderer = {.iif = jet::Renderer::Iif{"if(", ",", ",", ")"},
                 .len = "char_length",
                 .like = jet::Renderer::Like{"like", "", "regexp", "not regexp", "(?s)\\A", "\\z"},
                 .is_strict = true,
                 .name_quote = "`",
                 .longest_name = 255},
    .attributes = "charset=utf8mb4",
    // Connector/ODBC 3.1 takes U+8FDB for half of a pair: for each of its kind it cuts a text short that it
    // reads, and writes behind its own memory where it sends one.
    .speaks_utf8 = true,
    // Before it runs another text it tells the server to forget the one before, and where the server has gone
    // it says so as something else.
    .keeps_statements = false,
    .session = kSession,
    .schema_version =
        "select cast(coalesce(sum(crc32(concat(table_name, ' ', column_name, ' ', column_type, ' ', "
        "ordinal_position))), 0) as signed) from information_schema.columns "
        "where table_schema = database()",
    .columns =
        "select column_name, if(data_type = 'tinyint', 'boolean', column_type) from "
        "information_schema.columns where table_schema = database() and table_name = % "
        "order by ordinal_position",
    .meanings = kMeanings,
    // A node that its cluster has left behind takes no statement on a table.
    .requirement = "select @@lower_case_table_names from information_schema.engines limit 1",
    .refused_answer = "0",
    .refusal = "数据库服务器区分表名的大小写，不能使用：请在 MariaDB 的配置中设 lower_case_table_names=1。",
};

}  // namespace dossierkit::odbc
