// The database that every engine's conformance is tested on.
//
// The tables, all empty, text compared without regard to case:
//   s_infotable(tblname text, tbldesc text, OtherProp integer, orderfield text, maxnumber integer,
//               Property boolean)
//   s_infoitem(tblname, itemname, itemdesc, FieldType, FieldLength, CodeTable, style, Check, FldOrder:
//              text; FldWidth integer; FldExplain text; IsNUll boolean)
//   s_CodeTableDefine(dmgrp text, codtbldsc text), s_CodeLevDefine(dmgrp text, levelnum integer,
//   bit integer), S_GUID(id text, a GUID in braces by default; val text)
//   GB1, GB2(dmcod, dmcpt, dmhnd: text; dmattr boolean)
//   A01(A00, A0101 text; A0104 datetime; A0136, A0199 integer)
//   A02(A00 text; A0201, A0201A datetime; A0202, A0203, A0204 text; A0205 short integer;
//       A0206 boolean; A0207 floating; A0299 integer)
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/ado/connection.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"

namespace dossierkit::conformance {

using environment::DateTime;
using environment::Null;
using environment::Value;

std::shared_ptr<ado::Connection> OpenConformanceDatabase();

class Conformance : public testing::Test {
 protected:
  void Run(const std::string& statement) { connection_->Run(statement); }

  // The only value of the only row.
  Value One(const std::string& statement) {
    const auto rows = connection_->Execute(statement);
    EXPECT_EQ(rows->RecordCount(), 1) << statement;
    return rows->Fields(0);
  }

  // The first column of all rows as text, joined by commas.
  std::string List(const std::string& statement) {
    const auto rows = connection_->Execute(statement);
    std::string list;
    for (std::int32_t row = 1; row <= rows->RecordCount(); ++row) {
      list += (row > 1 ? "," : "") + environment::TextOr(rows->ValueAt(row, 0), "NULL");
    }
    return list;
  }

  // The failure of a statement, as number and description.
  environment::Failure FailureOf(const std::string& statement) {
    try {
      connection_->Run(statement);
    } catch (const environment::Failure& failure) {
      EXPECT_EQ(failure.statement(), statement);
      return failure;
    }
    ADD_FAILURE() << "no failure: " << statement;
    return environment::Failure(0, "");
  }

  // A text with an x for each hexadecimal digit.
  static std::string ShapeOf(std::string text) {
    for (char& c : text) {
      if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f')) c = 'x';
    }
    return text;
  }

  void AddSets() {
    Run("insert into s_infotable(tblname,tbldesc,OtherProp,Property) values('B01','单位推荐情况',3,'0')");
    Run("insert into s_infotable(tblname,tbldesc,OtherProp,orderfield,maxnumber,Property)"
        " values('A02','学习经历',2,'A0201','5','False')");
    Run("insert into s_infotable(tblname,tbldesc,OtherProp,orderfield,Property) "
        "values('A01','基本信息',1,'','True')");
  }

  void AddCodes() {
    Run("insert into GB1(dmcod,dmcpt,dmhnd,dmattr) values('1','学位','XW','False')");
    Run("insert into GB1(dmcod,dmcpt,dmhnd,dmattr) values('102','硕士','SS','True')");
    Run("insert into GB1(dmcod,dmcpt,dmhnd,dmattr) values('101','博士','bs','True')");
    Run("insert into GB1(dmcod,dmcpt,dmattr) values('103','无名',null)");
    Run("insert into GB2(dmcod,dmcpt,dmhnd,dmattr) values('1','北京大学','bjdx','True')");
  }

  std::shared_ptr<ado::Connection> connection_ = OpenConformanceDatabase();
};

}  // namespace dossierkit::conformance
