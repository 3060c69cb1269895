// PostgreSQL 15.
#include "host/server/words.h"

namespace dossierkit::server {
namespace {

constexpr std::pair<std::string_view, std::string_view> kTypes[] = {
    {"varchar", "character varying"}, {"ntext", "text"},
    {"datetime", "timestamp(0)"},     {"datetime", "timestamp without time zone"},
    {"double", "double precision"},
};

// A connection draws an identifier by deleting all rows, adding one and reading it: each has rows of its own.
constexpr std::string_view kIdentifiers[] = {
    ("create table dossierkit_guid (connection integer not null default pg_backend_pid(), "
     "id varchar(38) default {identifier}, val varchar(10))"),
    "create index ix_dossierkit_guid on dossierkit_guid (connection)",
    "create view s_guid as select id, val from dossierkit_guid where connection = pg_backend_pid()",
};

constexpr std::string_view kTriggers[] = {
    ("create function tr_a01_delete() returns trigger language plpgsql as $$ begin "
     "if not exists (select 1 from a01 where lower(a00) = lower(old.a00)) then {deletions}end if; return "
     "null; end $$"),
    "create trigger tr_a01_delete after delete on a01 for each row execute function tr_a01_delete()",
    // Persons who are entered at once draw the same number. The lock is held until the first of them is
    // stored; only then can the next one see that his is taken.
    ("create function tr_a01_number() returns trigger language plpgsql as $$ begin "
     "if new.a0199 is null then return new; end if; "
     "perform pg_advisory_xact_lock(199, 199); "
     "if exists (select 1 from a01 where a0199 = new.a0199) then "
     "select max(a0199) + 1 into new.a0199 from a01; "
     "if new.a0199 > 32767 then raise exception '人员编号 A0199 已经用到 32767，不能再增加人员'; end if; "
     "end if; return new; end $$"),
    "create trigger tr_a01_number before insert on a01 for each row execute function tr_a01_number()",
    // Who has a person open; the case of persons is folded.
    ("create table dossierkit_open (person varchar(36) primary key, clerk varchar(128) not null, "
     "lease_end timestamp with time zone not null)"),
};

constexpr std::string_view kDrops[] = {"drop view if exists s_guid", "drop table if exists dossierkit_guid"};

}  // namespace

const Words kPostgresql{
    .engine = "PostgreSQL",
    .quote = "\"",
    .small_names = true,
    .types = kTypes,
    .behind_text = "",
    .behind_table = "",
    .first_column = "",
    .identifier = "('{' || upper(cast(gen_random_uuid() as text)) || '}')",
    .fold = "lower",
    .length = "length",
    .behind_item = " nulls first",
    .has_keys_in_tables = false,
    .identifiers = kIdentifiers,
    .triggers = kTriggers,
    .drops = kDrops,
    // Of this database alone.
    .claim = "select cast(pg_try_advisory_lock(199, 200) as integer)",
    .release = "select pg_advisory_unlock(199, 200)",
    .begin_making = "",
    .is_being_made = "",
    .end_making = "",
    .any_table =
        "select relname from pg_class where relnamespace = to_regnamespace(current_schema()) and "
        "relkind in ('r', 'p', 'v', 'm', 'f') order by relname limit 1",
    // Rows are wanted in the order of the bytes of their texts.
    .unfit =
        "select pg_encoding_to_char(encoding) || ', ' || datcollate from pg_database where "
        "datname = current_database() and not (pg_encoding_to_char(encoding) = 'UTF8' and "
        "datcollate in ('C', 'POSIX', 'C.UTF-8', 'C.utf8'))",
    .columns =
        "select c.relname, a.attname, format_type(a.atttypid, a.atttypmod), cast(a.attnotnull as integer) "
        "from pg_class c join pg_attribute a on a.attrelid = c.oid "
        "where c.relnamespace = to_regnamespace(current_schema()) "
        "and (c.relkind in ('r', 'p') or c.relname = 's_guid') and c.relname not like 'dossierkit#_%' escape "
        "'#' "
        "and a.attnum > 0 and not a.attisdropped order by c.oid, a.attnum",
    .indexes =
        "select i.relname, t.relname, pg_get_indexdef(x.indexrelid, k, true), cast(x.indisunique as integer) "
        "from pg_index x join pg_class i on i.oid = x.indexrelid join pg_class t on t.oid = x.indrelid "
        "cross join generate_series(1, x.indnkeyatts) k "
        "where t.relnamespace = to_regnamespace(current_schema()) and t.relname not like 'dossierkit#_%' "
        "escape '#' order by i.oid, k",
};

}  // namespace dossierkit::server
