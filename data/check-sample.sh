#!/bin/sh
# Checks a database made by build-sample.sh against the rules of the data
# (see README.md). Prints one line for each violation.
#
#   check-sample.sh FILE
#
# Exit status: 0 nothing found, 1 violations, 2 the check could not be made.
set -eu
export LC_ALL=C

if [ $# -ne 1 ] || [ ! -r "$1" ]; then
	echo "usage: $0 FILE" >&2
	exit 2
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 2' HUP INT TERM

# A copy, since reading a database with a write-ahead log writes beside it.
cp "$1" "$work/sample.db"

query() {
	if ! sqlite3 -batch -bail "$work/sample.db" <"$1" >"$work/out" 2>"$work/err" || [ -s "$work/err" ]; then
		cat "$work/err" >&2
		echo "check-sample: the check failed" >&2
		exit 2
	fi
}

# ------------------------------------------------------------------ metadata
cat >"$work/metadata.sql" <<'END'
pragma integrity_check;

create temp view cols as
select m.name t, c.name c, lower(c.type) y
from sqlite_master m, pragma_table_info(m.name) c where m.type = 'table';

-- the characters of all labels
create temp view labelchars as
with recursive x(t, i, d, p) as (
  select tblname, itemname, itemdesc, 1 from s_infoitem
  union all
  select t, i, d, p + 1 from x where p < length(d))
select t, i, d, substr(d, p, 1) ch, p from x;

select 's_infotable ' || tblname || ': no such table'
from s_infotable where tblname not in (select t from cols);
select 's_infotable ' || tblname || ': more than one row'
from s_infotable group by tblname having count(*) > 1;
select 's_infotable ' || tblname || ': tbldesc, OtherProp or Property missing'
from s_infotable where ifnull(tbldesc, '') = '' or OtherProp is null or Property is null or Property not in (0, 1);
select 's_infotable ' || tblname || ': no column ' || orderfield
from s_infotable s where orderfield is not null
and not exists (select 1 from cols where t = tblname collate nocase and c = orderfield collate nocase);
select 's_infotable ' || tblname || ': maxnumber ' || maxnumber
from s_infotable where maxnumber is not null and (typeof(maxnumber) <> 'integer' or maxnumber not between 1 and 32767);
select 's_infotable: no row of ' || t from (select distinct t from cols)
where t glob '[A-Z][0-9][0-9]' and t not in (select tblname from s_infotable);

select tblname || ' ' || itemname || ': more than one row'
from s_infoitem group by tblname, itemname having count(*) > 1;
select tblname || ' ' || itemname || ': set is not in s_infotable'
from s_infoitem where tblname not in (select tblname from s_infotable);
select tblname || ' ' || itemname || ': no such column'
from s_infoitem where not exists
(select 1 from cols where t = tblname collate nocase and c = itemname collate nocase);
select t || ' ' || c || ': column without a row in s_infoitem'
from cols where t glob '[A-Z][0-9][0-9]' and c not in ('A00', 'A0136', 'A0199')
and not exists (select 1 from s_infoitem where tblname = t and itemname = c);
select t || ' ' || c || ': column of no use'
from cols join s_infotable on tblname = t
where (c = 'A0136' and t <> 'A01') or (c = 'A0199' and t <> 'A01') or (c = t || '99' and t <> 'A01' and Property = 1);
select tblname || ': no column A00' from s_infotable
where not exists (select 1 from cols where t = tblname collate nocase and c = 'A00');
select tblname || ' ' || itemname || ': FieldType ' || ifnull(FieldType, 'null')
from s_infoitem where ifnull(FieldType, '') not in ('Varchar', 'Ntext', 'int', 'datetime', 'bit');
select tblname || ' ' || itemname || ': is ' || FieldType || ', the column is ' || y
from s_infoitem join cols on t = tblname collate nocase and c = itemname collate nocase
where lower(FieldType) <> case when y like 'varchar(%' then 'varchar' when y = 'integer' then 'int'
when y = 'boolean' then 'bit' else y end
or (y like 'varchar(%' and y <> 'varchar(' || FieldLength || ')');
select tblname || ' ' || itemname || ': FieldLength ' || ifnull(FieldLength, 'null')
from s_infoitem
where case when FieldType in ('Varchar', 'Ntext')
then FieldLength is null or FieldLength <> cast(cast(FieldLength as integer) as text)
or cast(FieldLength as integer) not between 1 and iif(FieldType = 'Varchar', 255, 32767)
else FieldLength is not null end;
select tblname || ' ' || itemname || ': no itemdesc' from s_infoitem where ifnull(itemdesc, '') = '';
select tblname || ': itemdesc ' || itemdesc || ' is not unique'
from s_infoitem group by tblname, itemdesc having count(*) > 1;
select t || ' ' || i || ': itemdesc ' || d || ' is not a bare alias' from labelchars
where not (unicode(ch) between 0x4e00 and 0x9fff or ch glob '[A-Za-z]' or (ch glob '[0-9]' and p > 1))
group by t, i;
select tblname || ' ' || itemname || ': no FldExplain' from s_infoitem where ifnull(trim(FldExplain), '') = '';
select tblname || ' ' || itemname || ': quotation mark in FldExplain' from s_infoitem
where instr(FldExplain, '''') or instr(FldExplain, '"');
select tblname || ': FldOrder ' || ifnull(FldOrder, 'null') || ' is missing or not unique'
from s_infoitem group by tblname, FldOrder having count(*) > 1 or FldOrder is null;
select tblname || ' ' || itemname || ': FldWidth or IsNUll missing' from s_infoitem
where FldWidth is null or typeof(FldWidth) <> 'integer' or FldWidth not between 0 and 32767
or "IsNUll" is null or "IsNUll" not in (0, 1);
select tblname || ': no row ' || tblname || '99 as needed for the record number'
from s_infotable s where Property = 0 and not exists (select 1 from s_infoitem i
where i.tblname = s.tblname and itemname = s.tblname || '99' and FieldType = 'int' and FldWidth = 0 and itemdesc <> '');
select i.tblname || ' ' || itemname || ': record number in a set of one record'
from s_infoitem i join s_infotable s on s.tblname = i.tblname where Property = 1 and itemname = i.tblname || '99';

select tblname || ' ' || itemname || ': unknown code group ' || CodeTable from s_infoitem
where CodeTable is not null and not exists (select 1 from s_CodeTableDefine where dmgrp = CodeTable);
select tblname || ' ' || itemname || ': a coded field is Varchar and has no style or Check'
from s_infoitem where CodeTable is not null
and (FieldType <> 'Varchar' or style is not null or "Check" is not null);
select tblname || ' ' || itemname || ': style ' || style from s_infoitem
where style is not null and (FieldType <> 'datetime' or style not in ('yyyy-mm', 'yyyy-mm-dd'));
select tblname || ' ' || itemname || ': Check ' || "Check" from s_infoitem
where "Check" is not null
and not ("Check" glob 'L [1-9]*' and "Check" not glob 'L *[^0-9,]*' and "Check" not glob '*,,*' and "Check" not glob '*,')
and not (FieldType = 'datetime' and style = 'yyyy-mm' and "Check" glob 'B [0-9][0-9][0-9][0-9]-[0-9][0-9],[0-9][0-9][0-9][0-9]-[0-9][0-9]')
and not (FieldType = 'datetime' and style = 'yyyy-mm-dd' and "Check" glob
'B [0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9],[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]');

-- --------------------------------------------------------------- code groups
select 's_CodeTableDefine ' || dmgrp || ': more than one row, or no description'
from s_CodeTableDefine group by dmgrp having count(*) > 1 or ifnull(max(codtbldsc), '') = '';
select 's_CodeTableDefine ' || dmgrp || ': no such table' from s_CodeTableDefine
where not exists (select 1 from cols where t = dmgrp collate nocase and c = 'dmattr');
select 's_CodeTableDefine: no row of ' || t from cols where c = 'dmcod' and t not in (select dmgrp from s_CodeTableDefine);
select 's_CodeLevDefine: no row of ' || dmgrp from s_CodeTableDefine where dmgrp not in (select dmgrp from s_CodeLevDefine);
select 's_CodeLevDefine: ' || dmgrp || ' is not a code group' from s_CodeLevDefine where dmgrp not in (select dmgrp from s_CodeTableDefine);
select 's_CodeLevDefine ' || a.dmgrp || ': level ' || a.levelnum
from (select *, row_number() over (partition by dmgrp order by levelnum) r,
lag(bit, 1, 0) over (partition by dmgrp order by levelnum) b from s_CodeLevDefine) a
where r <> levelnum or bit is null or typeof(bit) <> 'integer' or bit <= b;
END

# Rules for each code table (@K), for each set (@T) and for each field (@C). They are
# written out below for every row of the metadata.
cat >"$work/code" <<'END'
select '@K ' || ifnull(dmcod, 'null') || ': code or caption missing, or with a quotation mark or blank' from @K
where ifnull(dmcod, '') = '' or dmcod glob '*[^0-9A-Za-z]*' or ifnull(dmcpt, '') = ''
or instr(dmcpt, '''') or instr(dmcpt, '"') or dmcpt <> trim(dmcpt);
select '@K ' || dmcod || ': dmhnd or dmattr' from @K
where ifnull(dmhnd, '') = '' or dmhnd glob '*[^0-9a-z]*' or dmattr is null or dmattr not in (0, 1);
select '@K ' || dmcod || ': more than one row' from @K group by dmcod having count(*) > 1;
select '@K ' || dmcod || ': length is that of no level' from @K
where length(dmcod) not in (select bit from s_CodeLevDefine where dmgrp = '@K');
select '@K ' || k.dmcod || ': no parent' from @K k
where length(k.dmcod) > (select min(bit) from s_CodeLevDefine where dmgrp = '@K')
and not exists (select 1 from @K p where p.dmcod = substr(k.dmcod, 1,
(select max(bit) from s_CodeLevDefine where dmgrp = '@K' and bit < length(k.dmcod))));
END
cat >"$work/set" <<'END'
select '@T: A00 ' || ifnull(A00, 'null') from @T where A00 is null
or length(A00) <> 36 or A00 glob '*[^0-9A-F-]*' or A00 not glob '????????-????-????-????-????????????';
select '@T ' || A00 || ': the person is not in A01' from (select distinct A00 from @T)
where A00 not in (select A00 from A01);
END
cat >"$work/single" <<'END'
select '@T ' || A00 || ': ' || count(*) || ' rows in a set of one record' from @T group by A00 having count(*) > 1;
END
cat >"$work/many" <<'END'
select '@T ' || A00 || ': record number ' || ifnull(@T99, 'null') || ', by its order it is ' || r
from (select A00, @T99, row_number() over (partition by A00 order by @O, @T99) r from @T)
where @T99 is null or typeof(@T99) <> 'integer' or @T99 <> r;
select '@T ' || A00 || ': more than @X records' from @T group by A00 having count(*) > @X;
END
cat >"$work/text" <<'END'
select '@T @C ' || A00 || ': null, which should be an empty text' from @T where @C is null;
select '@T @C ' || A00 || ': longer than @L characters' from @T where length(@C) > @L;
select '@T @C ' || A00 || ': quotation mark, outer blank or bare line break' from @T
where instr(@C, '''') or instr(@C, '"') or @C <> trim(@C)
or instr(replace(@C, char(13, 10), ''), char(13)) or instr(replace(@C, char(13, 10), ''), char(10));
END
cat >"$work/coded" <<'END'
select '@T @C: the code ' || v || ' is not in @K, or may not be chosen'
from (select distinct @C v from @T where @C <> '')
where not exists (select 1 from @K where dmcod = v and dmattr = 1);
select '@T @C: the code ' || v || ' is not found by itself alone'
from (select distinct @C v from @T where @C <> '')
where (select count(*) from @K where dmattr = 1 and (dmcod = v or dmcpt = v or dmhnd = v)) <> 1;
select '@T @C: the caption ' || p || ' of the code ' || v || ' is not unique'
from (select distinct @C v, dmcpt p from @T join @K on dmcod = @C)
where (select count(*) from @K where dmattr = 1 and (dmcod = p or dmcpt = p or dmhnd = p)) <> 1;
END
cat >"$work/int" <<'END'
select '@T @C ' || A00 || ': ' || @C from @T
where @C is not null and (typeof(@C) <> 'integer' or @C not between -32768 and 32767);
END
cat >"$work/datetime" <<'END'
select '@T @C ' || A00 || ': ' || @C || ' is not a date from 1900 to today' from @T
where @C is not null and (typeof(@C) <> 'text' or date(@C) is not @C or @C < '1900-01-01' or @C > date('now', 'localtime'));
select '@T @C ' || A00 || ': ' || @C || ' is not the first of a month' from @T
where '@S' = 'yyyy-mm' and @C not like '%-01';
select '@T @C ' || x.A00 || ': ' || x.@C || ' lies before the birth' from @T x join A01 p on p.A00 = x.A00
where '@C' <> 'A0104' and x.@C <= p.A0104;
END
cat >"$work/required" <<'END'
select '@T @C ' || A00 || ': required and empty' from @T where ifnull(@C, '') = '';
END
cat >"$work/length" <<'END'
select '@T @C ' || A00 || ': length of ' || @C || ', rule @R' from @T
where @C <> '' and instr(',' || substr('@R', 3) || ',', ',' || length(@C) || ',') = 0;
END
cat >"$work/between" <<'END'
select '@T @C ' || A00 || ': ' || @C || ', rule @R' from @T
where @C is not null and substr(@C, 1, length('@S')) < substr('@R', 3, length('@S'));
END

{
	cat "$work/metadata.sql"
	echo "create temp table tpl as select 1 id, '' name, '' text where 0;"
	n=0
	for name in code set single many text coded int datetime required length between; do
		n=$((n + 1))
		echo "insert into tpl values ($n, '$name', readfile('$work/$name'));"
	done
	cat <<'END'
create temp table todo as
select 0 o, replace(cast(text as text), '@K', dmgrp) q from s_CodeTableDefine, tpl where name = 'code'
union all
select 1, replace(cast(text as text), '@T', tblname) from s_infotable, tpl where name = 'set'
union all
select 1, replace(cast(text as text), '@T', tblname) from s_infotable, tpl where name = 'single' and Property = 1
union all
select 1, replace(replace(replace(cast(text as text), '@O', ifnull(orderfield, tblname || '99')), '@X', ifnull(maxnumber, 2147483647)), '@T', tblname)
from s_infotable, tpl where name = 'many' and Property = 0
union all
select 2, replace(replace(replace(replace(replace(replace(cast(text as text),
  '@T', tblname), '@C', itemname), '@L', ifnull(FieldLength, 0)), '@K', ifnull(CodeTable, '')),
  '@S', ifnull(style, '')), '@R', ifnull("Check", ''))
from s_infoitem, tpl where itemname <> tblname || '99' and (
  (name = 'text' and FieldType in ('Varchar', 'Ntext'))
  or (name = 'coded' and CodeTable is not null)
  or (name = 'int' and FieldType = 'int')
  or (name = 'datetime' and FieldType = 'datetime')
  or (name = 'required' and "IsNUll" = 0)
  or (name = 'length' and "Check" like 'L %')
  or (name = 'between' and "Check" like 'B %'));
select '--- statements';
select q from todo order by o;
END
} >"$work/all.sql"
query "$work/all.sql"
sed -n '/^--- statements$/,$p' "$work/out" >"$work/rows.sql"
sed '/^--- statements$/,$d' "$work/out" | grep -v '^ok$' >"$work/found" || true

# ------------------------------------------------------------------- persons
cat >>"$work/rows.sql" <<'END'
select 'A01 ' || A00 || ': more than one person' from A01 group by A00 having count(*) > 1;
select 'A01 ' || A00 || ': A0136 or A0199' from A01
where ifnull(A0136, 0) not in (1, 2, 3) or ifnull(A0199, 0) not between 1 and 32767;
select 'A01: the running number ' || A0199 || ' is not unique' from A01
where (select count(*) from A01) <= 32767 group by A0199 having count(*) > 1;

-- identity numbers
select 'A01 A0131 ' || A00 || ': ' || A0131 || ' is not an identity number' from A01
where A0131 not glob '[1-9]' || replace(hex(zeroblob(7)), '00', '[0-9][0-9]')
and A0131 not glob '[1-9]' || replace(hex(zeroblob(8)), '00', '[0-9][0-9]') || '[0-9X]';
select 'A01 A0131 ' || A00 || ': the birth date is ' || A0104 from A01
where case length(A0131) when 15 then '19' || substr(A0131, 7, 6) else substr(A0131, 7, 8) end
<> replace(A0104, '-', '');
select 'A01 A0131 ' || A00 || ': the region is ' || A0114 from A01 where substr(A0131, 1, 6) <> A0114;
select 'A01 A0131 ' || A00 || ': the sex is ' || A0102 from A01
where 2 - substr(A0131, iif(length(A0131) = 15, 15, 17), 1) % 2 <> A0102 + 0;
with recursive k(i, w) as (select 17, 2 union all select i - 1, w * 2 % 11 from k where i > 1)
select 'A01 A0131 ' || A00 || ': check digit' from A01
where length(A0131) = 18
and substr(A0131, 18) <> (select substr('10X98765432', 1 + sum(substr(A0131, i, 1) * w) % 11, 1) from k);

-- periods
select 'A02 ' || A00 || ': ' || A0201 || ' to ' || A0201A from A02 where A0201A < A0201;
select 'A03 ' || A00 || ': ' || A0301 || ' to ' || A0301A from A03 where A0301A < A0301;
select 'A04 ' || A00 || ': ' || A0401 || ' to ' || A0402 from A04 where A0402 < A0401;
select 'A05 ' || A00 || ': ' || A0501 || ' to ' || A0502 from A05 where A0502 < A0501;

-- years written as text
select 'A01 ' || A00 || ': year' from A01, (select strftime('%Y', 'now', 'localtime') y)
where A0127 > y or A0128 > y or A0129 > y;
select 'A09 ' || A00 || ': year ' || A0907 from A09 where A0907 > strftime('%Y', 'now', 'localtime') or A0907 < '1900';
select 'A10 ' || A00 || ': year ' || A1002 from A10 where A1002 > strftime('%Y', 'now', 'localtime') or A1002 < '1900';
select 'A11 ' || A00 || ': year ' || A1102 from A11 where A1102 > strftime('%Y', 'now', 'localtime') or A1102 < '1900';

select 'S_GUID: the default gives ' || dflt_value from pragma_table_info('S_GUID') where name = 'id' and dflt_value is null;
END
sed -i '1d' "$work/rows.sql"
query "$work/rows.sql"
cat "$work/out" >>"$work/found"

if [ -s "$work/found" ]; then
	cat "$work/found"
	exit 1
fi
echo "check-sample: nothing found"
