#!/bin/sh
# Makes a large database for measurements: the schema, metadata and code tables of the
# sample, PERSONS persons with RECORDS records each in A02.
#
#   generate-large.sh PERSONS RECORDS FILE
#
# The first person is the first of the sample, with his rows in all other sets. The
# others are made up by counting; the same arguments give the same database.
# A0199 starts again at 1 after 32000 persons, since the next number must fit 16 bits.
set -eu
export LC_ALL=C

usage() {
	echo "usage: $0 PERSONS RECORDS FILE" >&2
	exit 2
}
[ $# -eq 3 ] && [ -n "$3" ] || usage
for n in "$1" "$2"; do
	case $n in '' | 0* | *[!0-9]* | ????????*) usage ;; esac
done
persons=$1
records=$2
case $3 in
	/*) out=$3 ;;
	*)  out=$PWD/$3 ;;
esac
here=$(cd "$(dirname "$0")" && pwd)

fail() {
	echo "generate-large: $*" >&2
	exit 1
}
[ ! -d "$out" ] || fail "$out is a folder"
work=$(mktemp -d "$out.XXXXXX") || fail "cannot write beside $out"
trap 'rm -rf "$work"' EXIT
trap 'exit 1' HUP INT TERM
db=$work/large.db

"$here/build-sample.sh" "$db"

cat >"$work/fill.sql" <<END
-- a new file: nothing to protect while it is filled
pragma synchronous = off;
pragma journal_mode = off;
pragma cache_size = -200000;
create temp table param as select $persons persons, $records records;
END
cat >>"$work/fill.sql" <<'END'
begin;

-- keep the first person only (the trigger clears the other sets)
delete from A01 where A0199 > 1;
delete from A02;
drop index ix_A01_A00;
drop index ix_A01_A0199;
drop index ix_A02_A00_A0299;

create temp table family as
select key i, value w from json_each('["王","李","张","刘","陈","杨","黄","赵","吴","周","徐","孙","马","朱","胡","郭","何","林","高","罗"]');
create temp table given as
select a.key * 20 + b.key i, a.value || b.value w
from json_each('["文","志","建","晓","国","海","春","思","明","立","佳","雨","永","书","子","宏","新","玉","德","云"]') a,
     json_each('["华","平","宁","远","清","辉","岚","刚","敏","峰","洁","涛","安","琳","成","博","秋","林","生","雪"]') b;
create temp table place as select row_number() over (order by dmcod) - 1 i, dmcod c from GB2260 k
where dmattr = 1 and length(dmcod) = 6 and (select count(*) from GB2260 where dmattr = 1 and dmcpt = k.dmcpt) = 1;
create temp table field as select row_number() over (order by dmcod) - 1 i, dmcod c, dmcpt w from GB13745;
create temp table weight as
with recursive k(i, w) as (select 17, 2 union all select i - 1, w * 2 % 11 from k where i > 1) select i, w from k;
create unique index temp.family_i on family (i);
create unique index temp.given_i on given (i);
create unique index temp.place_i on place (i);
create unique index temp.field_i on field (i);

-- A01: the persons 2 to PERSONS
create temp table person as
with recursive n(i) as (select 2 from param where persons > 1 union all select i + 1 from n, param where i < persons)
select i,
       printf('%08X-%04X-4%03X-8%03X-%012X', i * 2654435761 & 4294967295, i * 40503 & 65535, i * 619 & 4095, i * 37 & 4095, i) id,
       1 + i % 2 sex,
       date('1950-01-01', '+' || (i * 7919 % 7305) || ' days') birth,
       (select c from place where place.i = n.i * 31 % (select count(*) from place)) region,
       n.i * 17 % (select count(*) from field) f
from n;
insert into A01 (A00, A0101, A0102, A0103, A0104, A0105, A0106, A0107, A0108, A0109, A0110, A0112, A0113, A0114,
  A0115, A0116, A0117, A0118, A0119, A0120, A0121, A0122, A0123, A0124, A0125, A0127, A0128, A0129, A0131, A0140, A0136, A0199)
select id, family.w || given.w, sex, '01', birth, iif(p.i % 3 = 0, '01', '13'), '11', '208',
  date(birth, 'start of year', '+28 years', '+6 months'), field.w, field.w, '082', '999', region,
  '第' || (1 + p.i % 997) || '研究院', date(birth, 'start of year', '+28 years', '+7 months'), '100000',
  '000-' || printf('%08d', p.i), '10' || printf('%09d', p.i), 'p' || p.i || '@example.com',
  '第' || (1 + p.i % 997) || '研究院', field.c, '30', '20', '10', '', '', '',
  s || (select substr('10X98765432', 1 + sum(substr(s, weight.i, 1) * weight.w) % 11, 1) from weight),
  '第' || (1 + p.i % 97) || '大学', 1, (p.i - 1) % 32000 + 1
from (select person.*, region || replace(birth, '-', '') || printf('%03d', 2 * (i * 13 % 499) + sex % 2) s from person) p
cross join family on family.i = p.i * 7 % 20
cross join given on given.i = p.i / 20 % 400
cross join field on field.i = p.f
order by p.i;

-- A02: RECORDS records for each person, in the order of their dates from 1988 to 2025
insert into A02 (A00, A0201, A0201A, A0202, A0203, A0204, A0299)
with recursive r(k) as (select 1 union all select k + 1 from r, param where k < records),
rec as materialized (select k,
  date('1988-01-01', '+' || ((k - 1) * 444 / records) || ' months') b,
  date('1988-01-01', '+' || ((k - 1) * 444 / records + 11) || ' months') e,
  '第' || (1 + k * 7 % 97) || '大学' school,
  (select w from field where field.i = k * 5 % (select count(*) from field)) major,
  case k % 4 when 1 then '408' when 2 then '308' when 3 then '208' else '' end degree
  from r, param),
id as materialized (select 1 i, A00 id from A01 where rowid = (select min(rowid) from A01) union all select i, id from person)
select id, b, e, school, major, degree, k from (select id from id order by i) cross join rec;

create index ix_A01_A00 on A01 (A00);
create index ix_A01_A0199 on A01 (A0199);
create index ix_A02_A00_A0299 on A02 (A00, A0299);
commit;

select count(*) || ' ' || (select count(*) from A02) || ' ' || (select count(distinct A00) from A01) from A01;
pragma quick_check;
-- as the sample
pragma journal_mode = wal;
END
if ! sqlite3 -init /dev/null -batch -bail "$db" <"$work/fill.sql" >"$work/out" 2>"$work/err" || [ -s "$work/err" ]; then
	cat "$work/err" >&2
	fail 'the data could not be made'
fi
{
	echo off
	echo "$persons $((persons * records)) $persons"
	echo ok
	echo wal
} >"$work/expect"
if ! cmp -s "$work/out" "$work/expect"; then
	cat "$work/out" >&2
	fail 'the database is not what it should be'
fi
mv -f "$db" "$out"
