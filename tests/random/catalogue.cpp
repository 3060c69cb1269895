#include "tests/random/catalogue.h"

#include <array>
#include <vector>

#include "platform/environment/text.h"
#include "tests/random/pattern.h"

namespace dossierkit::random {
namespace {

struct Form {
  bool writes;
  Pattern pattern;
};

// The forms in the order of the catalogue; the record list's own is below.
const std::vector<Form>& Forms() {
  static const std::vector<Form> forms = [] {
    std::vector<Form> all;
    for (
        const char* read : {
            "SELECT * FROM s_infotable where tblname like 'a%' order by OtherProp",
            "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='{set}'",
            "select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where tblname "
            "='{set}'  and orderfield<>'' ",
            "select iif(maxnumber is null,0,maxnumber) as maxnumber from  s_infotable  where tblname "
            "='{set}'",
            "select count(*) from {set} where a00='{person}'",
            " select Property from s_infotable  where TblName ='{set}'",
            " select * from s_infoitem  where tblname ='{set}'",
            "select * from {set} where a00 ='{person}'",
            "select * from {set} where a00 ='{person}' and {set}99={n}",
            "select dmcpt from {word} where dmcod='{any}'",
            "select itemdesc from s_infoitem where itemdesc <>'' and  tblname = '{set}' and itemname = "
            "'{set}99' ",
            "select itemname,itemdesc,iif(codetable is null,'',codetable) as codetable ,iif(style is "
            "null,'',style) as style ,iif(fldwidth is null,2000,fldwidth) as fldwidth from  s_infoitem where "
            "tblname ='{set}' and itemname <> 'A00' and itemname <>'' and itemdesc <>''   order by fldorder ",
            "select a0101 from a01 where a00='{person}'",
            "select count(A00) from a01 where a00 ='{person}'",
            "select count(*) from {set} where A00 ='{person}'",
            "select count(*) from {set} where A00 ='{person}' and {set}99 >0",
            "select iif(max({set}99) is null,0,max({set}99))+1  from {set} where A00 ='{person}' ",
            "select * from {set} order by {set}99",
            "select iif(max(A0199) is null,0,max(A0199)) from a01  ",
            "select * from {set} where A00 ='{person}' order by {column}",
            "select iif(a0101 is null,'',a0101) from a01 where a00='{person}'",
            "select id from S_GUID where val='a'",
            "select * from {word} where dmattr =true and  (dmcod='{any}' or dmcpt ='{any}' or dmhnd='{any}')",
            "select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from {word} where  dmattr =true and   "
            "dmcod<>''  and dmcpt<>''   and  ( DmCpt like '%{any}%' or   DmHnd like '%{any}%')     order by "
            "dmcod",
            "select codtbldsc from s_CodeTableDefine where dmgrp ='{word}' ",
            "select bit from s_CodeLevDefine where dmgrp ='{word}' order by levelnum",
            "select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr  from {word} where dmcod<>''  and "
            "dmcpt<>''    and len(dmcod) ={n}  order by dmcod",
            "select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr from {word} where  dmcod<>'' and "
            "dmcpt<>''  and len(dmcod) ={n}  order by dmcod",
            "select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from {word} where dmattr =true and   "
            "dmcod<>''  and dmcpt<>''   and  ( DmCpt like '%{any}%' or   DmHnd like '%{any}%')     order by "
            "dmcod",
        }) {
      all.push_back({false, Pattern(read)});
    }
    for (const char* write : {
             "delete from {set} where A00='{person}' ",
             "delete from {set} where A00='{person}'  and {set}99 = {n}",
             "update {set} set {set}99 = {n} where a00='{person}' and {set}99 = {n}",
             "insert into {set}( A00 ,A0136,A0199{columns}) values('{person}',{n} ,{n},{any})",
             "insert into {set}( A00 {columns}) values('{person}',{any})",
             "update {set} set {column} = {any} where A00='{person}'",
             "update {set} set {set}99 = {set}99 +200 where a00='{person}'",
             " delete from S_GUID ",
             "insert into S_GUID(val) values('a')",
         }) {
      all.push_back({true, Pattern(write)});
    }
    return all;
  }();
  return forms;
}

// One column of the record list.
bool IsListColumn(std::string_view column, const std::string& set) {
  static const std::array<Pattern, 3> kColumns = {
      Pattern("{word}.dmcpt as {name}"),
      Pattern("format({set}.{column},'{any}') as {name}"),
      Pattern("{set}.{column} as {name}"),
  };
  for (const Pattern& pattern : kColumns) {
    Match match{{}, set, {}};
    if (pattern.Matches(column, match)) return true;
  }
  return false;
}

// A set by itself, or behind as many opening parentheses as joins follow it.
bool IsListSource(std::string_view source, const std::string& set) {
  std::size_t joins = 0;
  while (joins < source.size() && source[joins] == '(') ++joins;
  if (joins == 0) return source == set;
  std::string form = std::string(joins, '(') + " {set}";
  for (std::size_t i = 0; i < joins; ++i) {
    form += "  left join {word} {word} on {set}.{column}={word}.dmcod) ";
  }
  Match match{{}, set, {}};
  return Pattern(form).Matches(source, match);
}

// The record list of a set: "select " columns " from " source " Where " ... "order by " column.
bool IsRecordList(std::string_view statement, Match& match) {
  const std::size_t from = statement.find(" from ");
  const std::size_t where = statement.find(" Where ");
  if (!statement.starts_with("select ") || from == std::string_view::npos ||
      where == std::string_view::npos || where < from)
    return false;
  static const Pattern kEnd(" Where {set}.A00='{person}' order by {column}");
  if (!kEnd.Matches(statement.substr(where), match)) return false;
  const std::string columns(statement.substr(7, from - 7));
  for (const std::string& column : environment::Split(columns, ", ")) {
    if (!IsListColumn(column, match.set)) return false;
  }
  return IsListSource(statement.substr(from + 6, where - from - 6), match.set);
}

}  // namespace

std::optional<KnownStatement> FindInCatalogue(std::string_view statement, std::string_view person) {
  for (const Form& form : Forms()) {
    Match match{person, {}, {}};
    if (!form.pattern.Matches(statement, match)) continue;
    return KnownStatement{form.writes, match.set};
  }
  Match match{person, {}, {}};
  if (IsRecordList(statement, match)) return KnownStatement{false, match.set};
  return std::nullopt;
}

}  // namespace dossierkit::random
