// The table of sets, s_infotable.
#include <algorithm>
#include <utility>

#include "host/check/reading.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::check {
namespace {

using environment::EqualIgnoringCase;
using environment::Value;

constexpr char kSets[] = "s_infotable";
constexpr char kFields[] = "s_infoitem";

// One row of s_infotable, its columns in this order.
constexpr char kSetsQuery[] =
    "select tblname,tbldesc,orderfield,maxnumber,Property from s_infotable order by OtherProp";
enum SetColumn : std::size_t { kName, kCaption, kOrder, kLimit, kProperty };

bool IsBasicData(const Set& set) { return EqualIgnoringCase(set.name, "A01"); }

bool InMenu(const std::string& name) { return name.starts_with("a") || name.starts_with("A"); }

// False where a table or column that every visit reads is missing: nothing more can be read then.
bool HasMetadata(ado::Connection& connection, Findings& findings) {
  static const std::vector<std::pair<std::string, std::vector<std::string>>> needed = {
      {kSets, {"tblname", "tbldesc", "OtherProp", "orderfield", "maxnumber", "Property"}},
      {kFields,
       {"tblname", "itemname", "itemdesc", "FieldType", "FieldLength", "CodeTable", "style", "Check",
        "FldOrder", "FldWidth", "FldExplain", "IsNUll"}},
      {"s_CodeTableDefine", {"dmgrp", "codtbldsc"}},
      {"s_CodeLevDefine", {"dmgrp", "levelnum", "bit"}},
      {"S_GUID", {"id", "val"}},
  };
  bool complete = true;
  for (const auto& [table, columns] : needed) {
    const auto present = ColumnsOf(connection, table);
    if (!present) {
      findings.Add(table, "", "", "没有这张表，窗口打不开；请照 dossier create-empty 建立的空数据库补上");
      complete = false;
      continue;
    }
    for (const std::string& column : columns) {
      if (present->contains(column)) continue;
      findings.Add(table, "", column,
                   "没有这一列，用到它时窗口会关闭；请照 dossier create-empty 建立的空数据库补上");
      complete = false;
    }
  }
  return complete;
}

// What was meant, whatever the property says: the page tells it, and where it may be either, the table.
bool IsMany(const Set& set) {
  if (set.page->records == CompiledPage::Records::kEither) return set.Has(set.name + "99");
  return set.page->records == CompiledPage::Records::kMany;
}

void CheckKind(const Set& set, const Value& property, Findings& findings) {
  const bool* single = property.As<bool>();
  if (!single || *single != set.many || !set.columns) return;
  const std::string number = set.name + "99";
  std::string text;
  if (IsBasicData(set)) {
    text = "为 0（一人多条），新人员无法保存；请改为 1（一人一条）";
  } else if (set.many) {
    const bool by_page = set.page->records == CompiledPage::Records::kMany;
    text = "为 1（一人一条），而" +
           (by_page ? "“" + set.caption + "”的页面一人多条" : "表 " + set.name + " 有序号列 " + number) +
           "，“增加”和“删除”不能用，只看得到第一条记录，保存会删除此人的其余记录；请改为 0（一人多条）";
  } else if (set.Has(number)) {
    text = "为 0（一人多条），而“" + set.caption +
           "”的页面没有列表的位置，除第一条以外的记录几乎选不到；请改为 1（一人一条）";
  } else {
    text = "为 0（一人多条），而表 " + set.name + " 没有序号列 " + number + "，一打开“" + set.caption +
           "”，窗口就会关闭；请改为 1（一人一条）";
  }
  findings.Add(kSets, set.name, "Property", text);
}

// Whether the column is declared as a number is told once, not for each row.
void CheckProperty(const std::string& name, const std::string& caption, const Value& value,
                   Findings& findings) {
  const std::string opening = "一打开“" + caption + "”，窗口就会关闭";
  if (value.IsNull()) {
    findings.Add(kSets, name, "Property",
                 "是空值，" + opening + "（提示“无效使用 Null”）；请填 1（一人一条）或 0（一人多条）");
  } else if (const auto* text = value.As<std::string>()) {
    findings.Add(kSets, name, "Property",
                 "“" + *text + "”不是 0 或 1，" + opening +
                     "（提示“类型不匹配”）；请改为 1（一人一条）或 0（一人多条）");
  }
}

void CheckLimit(const std::string& name, const std::string& caption, const Value& value, Findings& findings) {
  if (value.IsNull() || Fits16Bits(value)) return;
  findings.Add(kSets, name, "maxnumber",
               "“" + environment::TextOf(value) + "”不是 16 位整数，在“" + caption +
                   "”中增加或保存记录时窗口会关闭；请改为 0（不限）至 32767 的整数");
}

void CheckTable(ado::Connection& connection, Set& set, Findings& findings) {
  if (!set.columns) {
    findings.Add(kSets, set.name, "tblname",
                 "数据库中没有表 " + set.name + "，一打开“" + set.caption +
                     "”，窗口就会关闭；请建立这张表，或删除这一行");
    return;
  }
  std::vector<std::string> needed = {"A00"};
  if (set.many) needed.push_back(set.name + "99");
  if (IsBasicData(set)) needed.insert(needed.end(), {"A0136", "A0199"});
  for (const std::string& column : needed) {
    if (set.Has(column)) continue;
    findings.Add(set.name, "", column, "没有这一列，“" + set.caption + "”无法读出或保存；请在表中补上这一列");
  }
  if (!set.many || !set.Has("A00") || (set.order == set.name + "99" && !set.Has(set.order))) return;
  const auto refusal =
      RefusalOf(connection, "select * from " + set.name + " where A00='' order by " + set.order);
  if (!refusal) return;
  findings.Add(kSets, set.name, "orderfield",
               "不能按“" + set.order + "”排序，一打开“" + set.caption + "”，窗口就会关闭；请改为表 " +
                   set.name + " 中已有的列名，或清空（按序号排序）");
}

void ReadItems(ado::Connection& connection, Set& set, Findings& findings) {
  const ado::Snapshot rows = Read(connection,
                                  "select itemname,itemdesc,FieldType,FieldLength,CodeTable,style,[Check],"
                                  "FldWidth,[IsNUll] from s_infoitem where tblname='" +
                                      set.name + "'");
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    set.items.push_back({TextAt(rows, row, 0), TextAt(rows, row, 1), TextAt(rows, row, 2),
                         TextAt(rows, row, 3), TextAt(rows, row, 4), TextAt(rows, row, 5),
                         TextAt(rows, row, 6), rows.ValueAt(row, 7), rows.ValueAt(row, 8)});
  }
  if (!set.items.empty()) return;
  findings.Add(kFields, set.name, "",
               "没有信息集 " + set.name + " 的任何一行，一打开“" + set.caption +
                   "”，窗口就会关闭；请补上各项的行，或从 s_infotable 删除 " + set.name);
}

void CheckMenu(ado::Connection& connection, const std::vector<Set>& sets, Findings& findings) {
  for (const char* needed : {"A01", "B01"}) {
    if (std::ranges::any_of(sets, [&](const Set& set) { return EqualIgnoringCase(set.name, needed); }))
      continue;
    findings.Add(kSets, needed, "",
                 std::string("没有这一行，") +
                     (needed[0] == 'A' ? "新人员无法录入" : "一打开“单位推荐情况”，窗口就会关闭") +
                     "；请补上这一行");
  }
  if (std::ranges::none_of(sets, IsBasicData)) return;
  const ado::Snapshot menu =
      Read(connection, "select tblname from s_infotable where tblname like 'a%' order by OtherProp");
  if (menu.RowCount() == 0 || EqualIgnoringCase(TextAt(menu, 0, 0), "A01")) return;
  findings.Add(kSets, TextAt(menu, 0, 0), "OtherProp",
               "排在 A01 之前，录入新人员时窗口中没有页面，各命令都不起作用；请让 A01 的 OtherProp 最小");
}

}  // namespace

std::vector<Set> CheckSets(ado::Connection& connection, const std::vector<CompiledPage>& pages,
                           Findings& findings) {
  if (!HasMetadata(connection, findings)) return {};
  const ado::Snapshot rows = Read(connection, kSetsQuery);
  if (rows.RowCount() == 0) {
    findings.Add(kSets, "", "",
                 "没有一行，菜单中没有信息集，窗口打不开；请照 dossier create-empty 建立的空数据库填写");
    return {};
  }
  const bool property_is_flag = rows.ColumnAt(kProperty).kind == ado::ColumnKind::kBoolean;
  if (!property_is_flag) {
    findings.Add(
        kSets, "", "Property",
        "这一列不是布尔型，一人一条的信息集（值为 1）会被当作一人多条；请把这一列改为布尔型（boolean）");
  }
  std::vector<Set> sets;
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    const std::string name = TextAt(rows, row, kName);
    const std::string caption = TextAt(rows, row, kCaption).empty() ? name : TextAt(rows, row, kCaption);
    const auto page = std::ranges::find_if(
        pages, [&](const CompiledPage& known) { return EqualIgnoringCase(known.set, name); });
    if (page == pages.end()) {
      if (InMenu(name)) {
        findings.Add(
            kSets, name, "tblname",
            "没有信息集 " + name + " 的页面，一点击菜单项“" + caption + "”，窗口就会关闭；请删除这一行");
      }
      continue;
    }
    if (std::ranges::any_of(sets, [&](const Set& known) { return EqualIgnoringCase(known.name, name); })) {
      findings.Add(kSets, name, "tblname", "有不止一行，菜单中会出现两个“" + caption + "”；请只保留一行");
      continue;
    }
    if (InMenu(name) && rows.ValueAt(row, kCaption).IsNull())
      findings.Add(kSets, name, "tbldesc", "是空值，窗口打不开（提示“无效使用 Null”）；请填写菜单上的名称");
    const Value property = rows.ValueAt(row, kProperty);
    if (property_is_flag) CheckProperty(name, caption, property, findings);
    CheckLimit(name, caption, rows.ValueAt(row, kLimit), findings);
    Set& set = sets.emplace_back();
    set.name = name;
    set.caption = caption;
    set.order = TextAt(rows, row, kOrder).empty() ? name + "99" : TextAt(rows, row, kOrder);
    set.page = &*page;
    set.columns = ColumnsOf(connection, name);
    set.many = IsMany(set);
    CheckKind(set, property, findings);
    CheckTable(connection, set, findings);
    ReadItems(connection, set, findings);
  }
  CheckMenu(connection, sets, findings);
  return sets;
}

}  // namespace dossierkit::check
