// The code tables that the fields name, and what defines them.
#include <algorithm>

#include "host/check/reading.h"
#include "platform/environment/text.h"

namespace dossierkit::check {
namespace {

constexpr char kGroups[] = "s_CodeTableDefine";
constexpr char kLevels[] = "s_CodeLevDefine";

// A code with the length that its level is known by.
struct Code {
  std::string code;
  std::size_t length;
};

class CodeCheck {
 public:
  CodeCheck(ado::Connection& connection, const std::string& table, Findings& findings)
      : connection_(connection), table_(table), findings_(findings) {}

  // The table has its columns.
  bool HasColumns(const Set& set, const std::string& field) {
    const auto columns = ColumnsOf(connection_, table_);
    if (!columns) {
      findings_.Add("s_infoitem", set.name + "." + field, "CodeTable",
                    "数据库中没有代码表 " + table_ + "，一打开“" + set.caption +
                        "”的记录，窗口就会关闭；请建立这张表，或改正 CodeTable");
      return false;
    }
    bool complete = true;
    for (const char* column : {"dmcod", "dmcpt", "dmhnd", "dmattr"}) {
      if (columns->contains(column)) continue;
      findings_.Add(table_, "", column, "没有这一列，代码查不出来；请在代码表中补上这一列");
      complete = false;
    }
    return complete;
  }

  void CheckTitle() {
    const ado::Snapshot rows =
        Read(connection_, "select codtbldsc from s_CodeTableDefine where dmgrp='" + table_ + "'");
    if (rows.RowCount() == 0) {
      findings_.Add(kGroups, table_, "", "缺少这一行，选择代码的窗口没有标题；请补上这一行");
    } else if (rows.ValueAt(0, 0).IsNull()) {
      findings_.Add(kGroups, table_, "codtbldsc", "是空值，选择代码的窗口没有标题；请填写代码表的名称");
    }
  }

  void ReadLevels() {
    const ado::Snapshot rows = Read(connection_, "select levelnum,bit from s_CodeLevDefine where dmgrp='" +
                                                     table_ + "' order by levelnum");
    if (rows.RowCount() == 0) {
      findings_.Add(kLevels, table_, "",
                    "没有一行，选择代码的窗口是空的，输入的文字也不会查找；请为每一级补上一行");
      return;
    }
    std::size_t former = 0;
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
      const std::string level = table_ + " 第 " + TextAt(rows, row, 0) + " 级";
      const environment::Value bit = rows.ValueAt(row, 1);
      if (bit.IsNull() || !Fits16Bits(bit) || environment::ToInt16(bit) <= 0) {
        findings_.Add(kLevels, level, "bit",
                      "“" + environment::TextOr(bit, "") +
                          "”不是代码的长度，这一级的代码在树中都找不到；请改为这一级代码的总字数");
        continue;
      }
      const auto length = static_cast<std::size_t>(environment::ToInt16(bit));
      if (length == former) {
        findings_.Add(kLevels, level, "bit",
                      "与上一级的长度相同，都是 " + std::to_string(length) +
                          "，树中会出现选不到或选错的代码；请使各级的长度依次增加");
      } else if (length < former) {
        findings_.Add(kLevels, level, "bit",
                      "比上一级的长度短，这一级的代码会挂错位置；请使各级的长度依次增加");
      } else {
        lengths_.push_back(length);
        former = length;
      }
    }
  }

  Names CheckRows() {
    const ado::Snapshot rows = Read(connection_, "select dmcod,dmcpt from " + table_ + " order by dmcod");
    Names all;
    std::vector<Code> shown;  // rows without code or caption are passed over
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
      const std::string code = TextAt(rows, row, 0);
      if (code.empty()) continue;
      if (!all.insert(code).second) {
        findings_.Add(table_, code, "dmcod",
                      "这个代码有不止一行，使用它的记录在列表中会重复，树中也会选错；请只保留一行");
        continue;
      }
      if (!TextAt(rows, row, 1).empty()) shown.push_back({code, environment::Length(code)});
    }
    CheckFlags();
    if (!lengths_.empty()) CheckTree(shown);
    return all;
  }

 private:
  void CheckFlags() {
    const ado::Snapshot rows =
        Read(connection_, "select dmcod,dmattr from " + table_ +
                              " where dmattr is null or not (dmattr=true or dmattr=false) order by dmcod");
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
      findings_.Add(table_, TextAt(rows, row, 0), "dmattr",
                    std::string(rows.ValueAt(row, 1).IsNull() ? "是空值" : "不是 0 或 1") +
                        "，录入时查不到这个代码；请改为 1（可选）或 0（标题）");
    }
  }

  void CheckTree(const std::vector<Code>& codes) {
    Names present;
    bool has_first = false;
    for (const Code& code : codes) {
      present.insert(code.code);
      has_first = has_first || code.length == lengths_.front();
    }
    if (!has_first) {
      findings_.Add(table_, "", "dmcod",
                    "没有长度为 " + std::to_string(lengths_.front()) +
                        " 的第一级代码，选择代码的窗口是空的；请补上第一级，或改正 s_CodeLevDefine");
      return;
    }
    for (const Code& code : codes) {
      const auto level = std::ranges::find(lengths_, code.length);
      if (level == lengths_.end()) {
        findings_.Add(table_, code.code, "dmcod",
                      "长度 " + std::to_string(code.length) +
                          " 不是任何一级的长度，在树中找不到；请改正代码，或在 s_CodeLevDefine 中补上这一级");
        continue;
      }
      if (level == lengths_.begin()) continue;
      const std::string parent = environment::Left(code.code, *(level - 1));
      if (present.contains(parent)) continue;
      findings_.Add(table_, code.code, "dmcod",
                    "缺少上级 " + parent + "，在树中会挂到别的代码之下；请补上上级的一行");
    }
  }

  ado::Connection& connection_;
  std::string table_;
  Findings& findings_;
  std::vector<std::size_t> lengths_;  // of the levels that can be read
};

}  // namespace

CodeTables CheckCodeTables(ado::Connection& connection, const std::vector<Set>& sets, Findings& findings) {
  CodeTables all;
  Names seen;
  for (const Set& set : sets) {
    for (const Item& item : set.items) {
      if (item.code_table.empty() || !seen.insert(item.code_table).second) continue;
      CodeCheck check(connection, item.code_table, findings);
      if (!check.HasColumns(set, item.column)) continue;
      check.CheckTitle();
      check.ReadLevels();
      all[item.code_table] = check.CheckRows();
    }
  }
  return all;
}

}  // namespace dossierkit::check
