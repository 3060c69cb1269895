#!/bin/sh
# Builds the sample database from schema.sql and the CSV files beside this script.
#
#   build-sample.sh [--no-people] FILE
#
# FILE is replaced only when everything went well.
# --no-people leaves the information sets empty.
set -eu
export LC_ALL=C

people=1
if [ "${1-}" = --no-people ]; then people=0; shift; fi
if [ $# -ne 1 ] || [ -z "$1" ]; then
	echo "usage: $0 [--no-people] FILE" >&2
	exit 2
fi

case $1 in
	/*) out=$1 ;;
	*)  out=$PWD/$1 ;;
esac
here=$(cd "$(dirname "$0")" && pwd)
cd "$here"

fail() {
	echo "build-sample: $*" >&2
	exit 1
}

[ ! -d "$out" ] || fail "$out is a folder"
work=$(mktemp -d "$out.XXXXXX") || fail "cannot write beside $out"
trap 'rm -rf "$work"' EXIT
trap 'exit 1' HUP INT TERM
db=$work/new.db

# Runs an SQL file on the new database; anything said on standard error is a failure.
run() {
	if ! sqlite3 -init /dev/null -batch -bail "$db" <"$1" >"$work/out" 2>"$work/err" || [ -s "$work/err" ]; then
		cat "$work/err" >&2
		fail "$2"
	fi
}

{
	echo 'begin;'
	cat schema.sql
	echo 'commit;'
	# the tables with their columns, as the header rows of the CSV files must have them
	echo "select m.name || '|' || group_concat(c.name, ',') from sqlite_master m, pragma_table_info(m.name) c"
	echo "where m.type = 'table' group by m.name order by m.rowid;"
} >"$work/schema.sql"
run "$work/schema.sql" 'the schema failed'
mv "$work/out" "$work/tables"

: >"$work/import"
: >"$work/count"
while IFS='|' read -r table columns; do
	case $table in
		S_GUID) continue ;;
		s_*) file=metadata/$table.csv ;;
		[A-Z][0-9][0-9])
			file=people/$table.csv
			[ $people = 1 ] || continue ;;
		*) file=codes/$table.csv ;;
	esac
	[ -r "$file" ] || fail "$file is missing"
	head=$(head -n 1 "$file")
	[ "$head" = "$columns" ] || fail "$file: the header row is not $columns"
	# one record is one line
	records=$(($(wc -l <"$file") - 1))
	echo ".import --csv --skip 1 $file $table" >>"$work/import"
	echo "select '$file: ' || count(*) || ' rows of $records' from $table having count(*) <> $records;" >>"$work/count"
done <"$work/tables"

for file in metadata/*.csv codes/*.csv people/*.csv; do
	grep -q "^\.import --csv --skip 1 $file " "$work/import" || [ $people = 0 ] ||
		fail "$file belongs to no table"
done

# Empty numbers and dates become null, and so does any empty text of the metadata.
cat >"$work/nulls.sql" <<'END'
select 'update ' || m.name || ' set "' || c.name || '" = null where "' || c.name || '" = '''';'
from sqlite_master m, pragma_table_info(m.name) c
where m.type = 'table' and m.name <> 'S_GUID'
and (m.name like 's!_%' escape '!' or lower(c.type) in ('integer', 'datetime', 'boolean'));
END
run "$work/nulls.sql" 'the list of columns failed'
mv "$work/out" "$work/nulls"

{
	echo 'begin;'
	cat "$work/import" "$work/nulls"
	echo 'commit;'
	cat "$work/count"
	echo 'pragma integrity_check;'
} >"$work/fill.sql"
run "$work/fill.sql" 'the import failed'
[ "$(cat "$work/out")" = ok ] || {
	cat "$work/out" >&2
	fail 'the database is not sound'
}

# With a write-ahead log a reader never waits for a writer, and a commit costs one flush.
echo 'pragma journal_mode = wal;' >"$work/log.sql"
run "$work/log.sql" 'the log failed'

chmod "$(printf %o $((0666 & ~0$(umask))))" "$db"
mv -f "$db" "$out"
