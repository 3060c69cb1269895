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
    ("create or replace function dossierkit_node() returns varchar(255) character set utf8mb4 "
     "deterministic no sql return concat(@@hostname, ':', @@port)"),
    // The rows of a connection lie together, so that no two of them ever wait for one another.
    ("create table dossierkit_guid (connection bigint unsigned not null default 0, "
     "node varchar(255) not null default '', entry_number bigint unsigned not null auto_increment, "
     "id varchar(38) default {identifier}, val varchar(10), "
     "primary key (connection, node, entry_number), key (entry_number))" DOSSIERKIT_TABLE),
    ("create trigger tr_dossierkit_guid before insert on dossierkit_guid for each row "
     "set new.node = dossierkit_node(), new.connection = connection_id()"),
    ("create view S_GUID as select id, val from dossierkit_guid "
     "where connection = connection_id() and node = dossierkit_node()"),
};

constexpr std::string_view kTriggers[] = {
    ("create trigger tr_A01_delete after delete on A01 for each row begin "
     "if not exists (select 1 from A01 where A00 = old.A00) then {deletions}end if; end"),
    // Persons who are entered at once draw the same number. The row is held until the first of them is
    // stored; only then can the next one see that his is taken. On another node of a cluster the change of
    // that row is a conflict.
    ("create table if not exists dossierkit_number (" DOSSIERKIT_KEY
     "drawn bigint unsigned)" DOSSIERKIT_TABLE),
    "insert into dossierkit_number (entry_number, drawn) values (1, 0) on duplicate key update drawn = 0",
    ("create trigger tr_A01_number before insert on A01 for each row begin declare taken int; "
     "if new.A0199 is not null then "
     "update dossierkit_number set drawn = drawn + 1 where entry_number = 1; "
     "select count(*) into taken from A01 where A0199 = new.A0199 lock in share mode; "
     "if taken > 0 then "
     "set new.A0199 = (select max(A0199) + 1 from A01); "
     "if new.A0199 > 32767 then signal sqlstate '45000' "
     "set message_text = '人员编号 A0199 已经用到 32767，不能再增加人员'; end if; "
     "end if; end if; end"),
    // Who has a person open; the case of persons is folded.
    ("create table if not exists dossierkit_open (person varchar(36) primary key, "
     "clerk varchar(128) not null, lease_end datetime(6) not null)" DOSSIERKIT_TABLE),
};

constexpr std::string_view kDrops[] = {"drop view if exists S_GUID", "drop table if exists dossierkit_guid",
                                       "drop function if exists dossierkit_node",
                                       "drop table if exists dossierkit_number",
                                       "drop table if exists dossierkit_open"};

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
    .has_keys_in_tables = true,
    .identifiers = kIdentifiers,
    .triggers = kTriggers,
    .drops = kDrops,
    .claim = "select get_lock(md5(database()), 0)",
    .release = "select release_lock(md5(database()))",
    .begin_making = "create table dossierkit_unfinished (entry_number integer primary key) engine = InnoDB",
    .is_being_made =
        "select 1 from information_schema.tables where table_schema = database() and table_name = "
        "'dossierkit_unfinished'",
    .end_making = "drop table if exists dossierkit_unfinished",
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
