// SQLite 3.40, as data/schema.sql writes it.
#include "host/server/words.h"

namespace dossierkit::server {
namespace {

constexpr std::string_view kTriggers[] = {
    "create trigger tr_A01_delete after delete on A01 when not exists (select 1 from A01 where A00 = "
    "old.A00) "
    "begin {deletions} end"};

}  // namespace

const Words kSqlite{
    .engine = "SQLite",
    .quote = "\"",
    .small_names = false,
    .types = {},
    .behind_text = " collate nocase",
    .behind_table = "",
    .first_column = "",
    .identifier =
        "('{' || hex(randomblob(4)) || '-' || hex(randomblob(2)) || '-4' || substr(hex(randomblob(2)), 2) || "
        "'-' || substr('89AB', 1 + (random() & 3), 1) || substr(hex(randomblob(2)), 2) || '-' || "
        "hex(randomblob(6)) || '}')",
    .fold = "",
    .length = "length",
    .behind_item = "",
    .has_keys_in_tables = false,
    .identifiers = {},
    .triggers = kTriggers,
    .drops = {},
    .claim = "",
    .release = "",
    .begin_making = "",
    .is_being_made = "",
    .end_making = "",
    .any_table = "",
    .unfit = "",
    .columns = "",
    .indexes = "",
};

}  // namespace dossierkit::server
