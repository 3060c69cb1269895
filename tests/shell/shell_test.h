// ShellTest: the fixture of the window's tests, and the statements that come back in many of them.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "metadata/field_items.h"
#include "platform/environment/failure.h"
#include "tests/support/failures.h"
#include "tests/support/visit.h"

namespace dossierkit::headless {

inline void PrintTo(const Message& message, std::ostream* out) {
  *out << "[" << message.title << "] " << message.text << " (" << message.flags << ")";
}

}  // namespace dossierkit::headless

namespace dossierkit::tests {

using headless::Message;
using Messages = std::vector<Message>;
using Statements = std::vector<std::string>;

inline constexpr int kOk = 0;
inline constexpr int kYesOrNo = 4;
inline constexpr int kExclamation = 48;

// One list of all parts.
inline Statements Join(const std::vector<Statements>& parts) {
  Statements all;
  for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

class ShellTest : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_TRUE(visit.script.AllUsed()) << "a prepared answer was not asked for"; }

  // The statements that `action` runs.
  Statements During(const std::function<void()>& action) {
    visit.statements.clear();
    action();
    return visit.statements;
  }
  void Answer(toolkit::MessageAnswer answer) { visit.script.WillAnswer(answer); }
  const Messages& Shown() const { return visit.script.messages; }
  void Script(const std::string& sql) { visit.database->RunScript(sql); }
  std::string Value(const std::string& query) { return One(*visit.database, query); }
  // The record numbers of a person in a set, in ascending order.
  Statements Numbers(const std::string& set, const std::string& person = kPerson) {
    return Column(*visit.database,
                  "select " + set + "99 from " + set + " where A00='" + person + "' order by " + set + "99");
  }
  bool FrameEnabled() { return visit.user.Find("frmCtrl")->Enabled(); }
  // The operation on show, and whether the frame, "Add" and "Delete" are enabled.
  std::string State() {
    const auto flag = [](bool on) { return on ? " on" : " off"; };
    return visit.Caption("labOpt") + flag(FrameEnabled()) + flag(visit.Enabled("Add")) +
           flag(visit.Enabled("Delete"));
  }

  Visit visit;
};

// --- statements --------------------------------------------------------------------------------

inline const Statements kMenu = {"SELECT * FROM s_infotable where tblname like 'a%' order by OtherProp"};
inline const Statements kName = {"select a0101 from a01 where a00='" + kPerson + "'"};

// The page of the sample person's basic data.
inline const Statements kOpenA01 = {
    "select count(A00) from a01 where a00 ='" + kPerson + "'",
    " select Property from s_infotable  where TblName ='A01'",
    " select * from s_infoitem  where tblname ='A01'",
    "select * from A01 where a00 ='" + kPerson + "'",
    "select dmcpt from GB2261 where dmcod='1'",
    "select dmcpt from GB3304 where dmcod='01'",
    "select dmcpt from GB2260 where dmcod='320481'",
    "select dmcpt from GB4762 where dmcod='01'",
    "select dmcpt from GB4658 where dmcod='11'",
    "select dmcpt from GB6864 where dmcod='209'",
    "select dmcpt from LCZW where dmcod='305'",
    "select dmcpt from GB8561 where dmcod='611'",
    "select dmcpt from GB13745 where dmcod='210'",
    "select dmcpt from LCDWLB where dmcod='30'",
    "select dmcpt from LCDWXZ where dmcod='20'",
    "select dmcpt from GB12404 where dmcod='20'",
    "select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where tblname ='A01'  "
    "and "
    "orderfield<>'' ",
    "select count(*) from A01 where A00 ='" + kPerson + "'",
    "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A01'",
};

// A single set that holds the person's row.
inline const Statements kOpenA12 = {
    "select count(A00) from a01 where a00 ='" + kPerson + "'",
    " select Property from s_infotable  where TblName ='A12'",
    " select * from s_infoitem  where tblname ='A12'",
    "select * from A12 where a00 ='" + kPerson + "'",
    "select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where tblname ='A12'  "
    "and "
    "orderfield<>'' ",
    "select count(*) from A12 where A00 ='" + kPerson + "'",
    "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A12'",
};

// A set of many records, up to its list.
inline const Statements kListA04 = {
    "select count(A00) from a01 where a00 ='" + kPerson + "'",
    " select Property from s_infotable  where TblName ='A04'",
    " select * from s_infoitem  where tblname ='A04'",
    "select * from A04 where a00 ='" + kPerson + "' and A0499=1",
    "select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where tblname ='A04'  "
    "and "
    "orderfield<>'' ",
    "select itemname,itemdesc,iif(codetable is null,'',codetable) as codetable ,iif(style is null,'',style) "
    "as style "
    ",iif(fldwidth is null,2000,fldwidth) as fldwidth from  s_infoitem where tblname ='A04' and itemname <> "
    "'A00' and "
    "itemname <>'' and itemdesc <>''   order by fldorder ",
    "select format(A04.A0401,'yyyy-mm') as 起始年月, format(A04.A0402,'yyyy-mm') as 截止时间, A04.A0403 as "
    "任职单位名称, A04.A0404 as 职务名称, A04.A0499 as 序号 from A04 Where A04.A00='" +
        kPerson + "' order by A0401",
};

// The move of the list's cursor to the record with that number.
inline Statements MoveA04(const std::string& number) {
  return {
      "select itemdesc from s_infoitem where itemdesc <>'' and  tblname = 'A04' and itemname = 'A0499' ",
      " select * from s_infoitem  where tblname ='A04'",
      "select * from A04 where a00 ='" + kPerson + "' and A0499=" + number,
  };
}

inline const Statements kCountA04 = {"select count(*) from A04 where A00 ='" + kPerson + "' and A0499 >0"};
inline const Statements kTitleA04 = {
    "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A04'"};

// The whole page of a set of many records that holds rows.
inline const Statements kOpenA04 = Join({kListA04, MoveA04("1"), kCountA04, kTitleA04});

inline const Statements kLimitA04 = {
    "select iif(maxnumber is null,0,maxnumber) as maxnumber from  s_infotable  where tblname ='A04'",
    "select count(*) from A04 where a00='" + kPerson + "'",
};

// The blank form of the record that gets that number.
inline Statements NextA04(const std::string& number) {
  return {
      "select iif(max(A0499) is null,0,max(A0499))+1  from A04 where A00 ='" + kPerson + "' ",
      " select * from s_infoitem  where tblname ='A04'",
      "select * from A04 where a00 ='" + kPerson + "' and A0499=" + number,
  };
}

// The command "Add" in A04.
inline Statements AddA04(const std::string& number) { return Join({kLimitA04, NextA04(number)}); }

// The texts of the boxes.
inline const std::string kBasicFirst = "必须先维护基本信息集，然后再维护其它信息集。";
inline const std::string kSaveEdits = "数据被修改且未保存，是否保存？";
inline const std::string kWindow = "人员维护";

}  // namespace dossierkit::tests
