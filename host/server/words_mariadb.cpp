// MariaDB 10.11.
#include "host/server/words.h"

namespace dossierkit::server {
namespace {

constexpr std::pair<std::string_view, std::string_view> kTypes[] = {
    {"ntext", "mediumtext"}, {"ntext", "longtext"},    {"ntext", "text"},        {"boolean", "tinyint(1)"},
    {"integer", "int("},     {"smallint", "smallint"}, {"datetime", "datetime"}, {"double", "double"},
};

// Columns of a key that "select *" does not show: a cluster wants one, and rows come back as they were
// entered.
#define DOSSIERKIT_KEY "entry_number bigint unsigned not null auto_increment invisible primary key, "
#define DOSSIERKIT_TABLE " engine = InnoDB character set utf8mb4 collate utf8mb4_general_nopad_ci"

// A connection draws an identifier by deleting all rows, adding one and reading it: each has rows of its own,
// on each node of a cluster. A view asks no variable, but a function.
constexpr std::string_view kIdentifiers[] = {
    "create or replace function dossierkit_node() returns varchar(255) character set utf8mb4 no sql "
    "return concat(@@hostname, ':', @@port)",
    "create table dossierkit_guid (" DOSSIERKIT_KEY
    "node varchar(255), connection bigint unsigned, id varchar(38) default %, val varchar(10), "
    "key (connection))" DOSSIERKIT_TABLE,
    "create trigger tr_dossierkit_guid before insert on dossierkit_guid for each row "
    "set new.node = dossierkit_node(), new.connection = connection_id()",
    "create view S_GUID as select id, val from dossierkit_guid "
    "where connection = connection_id() and node = dossierkit_node()",
};

constexpr std::string_view kTriggers[] = {
    "create trigger tr_A01_delete after delete on A01 for each row begin "
    "if not exists (select 1 from A01 where A00 = old.A00) then %end if; end",
};

constexpr std::string_view kDrops[] = {"drop view if exists S_GUID", "drop table if exists dossierkit_guid",
                                       "drop function if exists dossierkit_node"};

}  // namespace

const Words kMariadb{
    .engine = "MariaDB",
    .quote = "`",
    .small_names = false,
    .types = kTypes,
    .behind_text = "",
    .behind_table = DOSSIERKIT_TABLE,
    .first_column = DOSSIERKIT_KEY,
    .identifier =
        "(concat('{', substr(hex(random_bytes(4)), 1, 8), '-', hex(random_bytes(2)), '-4', "
        "substr(hex(random_bytes(2)), 2), '-', substr('89AB', 1 + (ord(random_bytes(1)) & 3), 1), "
        "substr(hex(random_bytes(2)), 2), '-', hex(random_bytes(6)), '}'))",
    // Its columns disregard case and have NULLs first; it has no index on a function.
    .fold = "",
    .length = "",
    .behind_item = "",
    .identifiers = kIdentifiers,
    .triggers = kTriggers,
    .drops = kDrops,
    .any_table =
        "select table_name from information_schema.tables where table_schema = database() "
        "order by table_name limit 1",
    // Each table brings its own.
    .unfit = "",
    .columns =
        "select c.table_name, c.column_name, c.column_type, if(c.is_nullable = 'NO', 1, 0) "
        "from information_schema.columns c join information_schema.tables t "
        "on t.table_schema = c.table_schema and t.table_name = c.table_name "
        "where c.table_schema = database() and (t.table_type = 'BASE TABLE' or c.table_name = 's_guid') "
        "and c.table_name not like 'dossierkit#_%' escape '#' and c.extra not like '%invisible%' "
        "order by c.table_name, c.ordinal_position",
    .indexes =
        "select index_name, table_name, column_name, 1 - non_unique from information_schema.statistics "
        "where table_schema = database() and index_name <> 'PRIMARY' "
        "and table_name not like 'dossierkit#_%' escape '#' order by table_name, index_name, seq_in_index",
};

#undef DOSSIERKIT_KEY
#undef DOSSIERKIT_TABLE

}  // namespace dossierkit::server
