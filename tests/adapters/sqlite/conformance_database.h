// The database of conformance.h on the embedded engine.
#pragma once

#include <memory>

#include "tests/support/memory_database.h"

namespace dossierkit::sqlite {

inline std::shared_ptr<SqliteConnection> OpenSqliteConformanceDatabase() {
  auto connection = tests::OpenInMemory();
  connection->RunScript(R"(
    create table s_infotable(tblname varchar(10) collate nocase, tbldesc varchar(60) collate nocase,
      OtherProp integer, orderfield varchar(60) collate nocase, maxnumber integer, Property boolean);
    create table s_infoitem(tblname varchar(10) collate nocase, itemname varchar(10) collate nocase,
      itemdesc varchar(60) collate nocase, FieldType varchar(20) collate nocase,
      FieldLength varchar(10) collate nocase, CodeTable varchar(30) collate nocase,
      style varchar(20) collate nocase, "Check" varchar(60) collate nocase,
      FldOrder varchar(10) collate nocase, FldWidth integer, FldExplain varchar(255) collate nocase,
      "IsNUll" boolean);
    create table s_CodeTableDefine(dmgrp varchar(30) collate nocase, codtbldsc varchar(60) collate nocase);
    create table s_CodeLevDefine(dmgrp varchar(30) collate nocase, levelnum integer, bit integer);
    create table S_GUID(id varchar(38) collate nocase default ('{' || hex(randomblob(4)) || '-' ||
      hex(randomblob(2)) || '-' || hex(randomblob(2)) || '-' || hex(randomblob(2)) || '-' ||
      hex(randomblob(6)) || '}'), val varchar(10) collate nocase);
    create table GB1(dmcod varchar(10) collate nocase, dmcpt varchar(60) collate nocase,
      dmhnd varchar(30) collate nocase, dmattr boolean);
    create table GB2(dmcod varchar(10) collate nocase, dmcpt varchar(60) collate nocase,
      dmhnd varchar(30) collate nocase, dmattr boolean);
    create table A01(A00 varchar(36) collate nocase, A0101 varchar(20) collate nocase, A0104 datetime,
      A0136 integer, A0199 integer);
    create table A02(A00 varchar(36) collate nocase, A0201 datetime, A0201A datetime,
      A0202 varchar(60) collate nocase, A0203 varchar(60) collate nocase,
      A0204 varchar(10) collate nocase, A0205 smallint, A0206 bit, A0207 double, A0299 integer);
  )");
  return connection;
}

}  // namespace dossierkit::sqlite
