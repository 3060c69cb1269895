// PostgreSQL 15, through psqlODBC.
#include "adapters/odbc/engine.h"

namespace dossierkit::odbc {
namespace {

using What = jet::EngineFailure;

constexpr std::string_view kSession[] = {
    "set lock_timeout = %ms",
    // A backslash is a character like any other.
    "set standard_conforming_strings = on",
    "set datestyle = ISO",
};

constexpr Meaning kMeanings[] = {
    {"42P01", 0, What::kNoSuchTable, "relation \"", "\" does not exist"},
    {"42703", 0, What::kUnknownField, "column \"", "\" of relation"},
    {"42703", 0, What::kUnknownName, "column \"", "\" does not exist"},
    {"42703", 0, What::kUnknownName, "column ", " does not exist"},
    {"42702", 0, What::kAmbiguousName, "column reference \"", "\" is ambiguous"},
    {"42601", 0, What::kErrorNear, "syntax error at or near \"", "\""},
    {"42601", 0, What::kIncomplete, "syntax error at end of input"},
    // In the words of another language, of which these are Chinese, the state tells what it is.
    {"42P01", 0, What::kSyntax, "FROM"},
    {"42P01", 0, What::kNoSuchTable, "\"", "\""},
    {"42P01", 0, What::kNoSuchTable},
    {"42703", 0, What::kUnknownField, "的列 \"", "\""},
    {"42703", 0, What::kUnknownName, "\"", "\""},
    {"42703", 0, What::kUnknownName, "列 ", " 不存在"},
    {"42703", 0, What::kUnknownName},
    {"42702", 0, What::kAmbiguousName, "\"", "\""},
    {"42601", 0, What::kErrorNear, "，位置在 \"", "\""},
    {"42601", 0, What::kIncomplete, "，位置在输入末尾"},
    {"42501", 0, What::kOther},
    {"42", 0, What::kSyntax},
    {"55P03", 0, What::kBusy},
    {"40", 0, What::kBusy},
    {"25006", 0, What::kReadOnly},
    {"53100", 0, What::kDiskFull},
    {"53200", 0, What::kOutOfMemory},
    {"58030", 0, What::kDiskError},
    {"XX001", 0, What::kDamaged},
    {"XX002", 0, What::kDamaged},
    {"23", 0, What::kConstraint},
    {"22001", 0, What::kTooLong},
    {"54", 0, What::kTooLong},
    {"08", 0, What::kConnectionLost},
    {"57P0", 0, What::kConnectionLost},
    // What psqlODBC says once the server has gone.
    {"HY000", 0, What::kConnectionLost, "no connection to the server"},
    {"HY000", 0, What::kConnectionLost, "server closed the connection"},
};

}  // namespace

const Engine kPostgresql{
    .name = "PostgreSQL",
    .renderer = {.iif = jet::Renderer::Iif{"case when ", " then ", " else ", " end"},
                 .len = "length",
                 .like = jet::Renderer::Like{"ilike", " escape ''", "~*", "!~*", "^", "$"},
                 .fold = "lower",
                 .nulls_first = " nulls first",
                 .nulls_last = " nulls last",
                 .date = "timestamp ",
                 .is_strict = true,
                 .name_quote = "\"",
                 // Longer names are cut without a word.
                 .longest_name = 63},
    // A Boolean is no text; all rows at once; a statement that fails in a transaction is undone by itself;
    // the driver keeps no log, in which a password might stand.
    .attributes = "BoolsAsChar=0;UseDeclareFetch=0;Protocol=7.4-2;Debug=0;CommLog=0",
    .speaks_utf8 = false,
    .keeps_statements = true,
    .session = kSession,
    // The tables of users are numbered from 16384 on.
    .schema_version =
        "select cast(coalesce(sum(cast(cast(xmin as text) as bigint) + "
        "cast(attrelid as bigint) * attnum), 0) as bigint) from pg_attribute where attrelid >= 16384",
    .columns =
        "select attname, format_type(atttypid, atttypmod) from pg_attribute where attrelid = "
        "to_regclass(quote_ident(%)) and attnum > 0 and not attisdropped order by attnum",
    .meanings = kMeanings,
};

}  // namespace dossierkit::odbc
