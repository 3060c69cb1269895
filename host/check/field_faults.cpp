// The fields of a set: its rows of s_infoitem against its page and its table.
#include <algorithm>
#include <array>
#include <string_view>

#include "host/check/reading.h"
#include "host/check/rules.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::check {
namespace {

using environment::EqualIgnoringCase;
using environment::LowerCase;

constexpr char kFields[] = "s_infoitem";

struct Type {
  std::string_view name;
  ado::ColumnKind kind;
  const char* declared;  // as a column is declared for it
};

constexpr std::array<Type, 5> kTypes = {{{"varchar", ado::ColumnKind::kText, "文本（varchar）"},
                                         {"ntext", ado::ColumnKind::kText, "文本（ntext）"},
                                         {"int", ado::ColumnKind::kInteger, "整数（integer）"},
                                         {"datetime", ado::ColumnKind::kDate, "日期（datetime）"},
                                         {"bit", ado::ColumnKind::kBoolean, "布尔（boolean）"}}};

class FieldCheck {
 public:
  FieldCheck(ado::Connection& connection, const Set& set, Findings& findings)
      : connection_(connection), set_(set), findings_(findings) {}

  void Run() {
    if (set_.items.empty()) return;
    CheckControls();
    Names seen;
    for (const Item& item : set_.items) {
      if (!seen.insert(item.column).second) {
        Add(item, "itemname",
            "这一项有不止一行，" + Opening() + "（提示“此键已经与该集合的一个元素关联”）；请只保留一行");
        continue;
      }
      CheckColumn(item);
      CheckType(item);
      CheckNumbers(item);
      if (item.code_table.empty()) CheckStyleAndRule(item);
    }
    if (set_.many) CheckNumberRow();
    CheckCaptions();
  }

 private:
  std::string Opening() const { return "一打开“" + set_.caption + "”，窗口就会关闭"; }

  void Add(const Item& item, const std::string& column, const std::string& text) {
    findings_.Add(kFields, set_.name + "." + item.column, column, text);
  }

  const Item* Find(const std::string& column) const {
    const auto found = std::ranges::find_if(
        set_.items, [&](const Item& item) { return EqualIgnoringCase(item.column, column); });
    return found == set_.items.end() ? nullptr : &*found;
  }

  void CheckControls() {
    for (const CompiledField& field : set_.page->fields) {
      if (Find(field.column)) continue;
      findings_.Add(
          kFields, set_.name + "." + field.column, "",
          "缺少这一行，而页面上有这一项，" + Opening() + "（提示“无效的过程调用或参数”）；请补上这一行");
    }
  }

  void CheckColumn(const Item& item) {
    // A record number that is missing was told of with the table.
    const bool is_number = set_.many && EqualIgnoringCase(item.column, set_.name + "99");
    if (!set_.columns || set_.Has(item.column) || is_number) return;
    Add(item, "itemname",
        "表 " + set_.name + " 没有列 " + item.column + "，" + Opening() +
            "；请在表中补上这一列，或改正 itemname");
  }

  // The type counts where the field is written: on the page.
  void CheckType(const Item& item) {
    const CompiledField* field = set_.FieldOf(item.column);
    if (!field) return;
    const std::string name = LowerCase(item.type);
    const auto type = std::ranges::find_if(kTypes, [&](const Type& known) { return known.name == name; });
    if (type == kTypes.end()) {
      Add(item, "FieldType",
          "“" + item.type +
              "”不是已知的类型，这一项能录入却不会保存，原有内容也会丢失；请改为 "
              "Varchar、Ntext、int、datetime 或 bit");
      return;
    }
    const bool limited = (name == "varchar" || name == "ntext") && !item.length.empty() &&
                         item.code_table.empty() && !field->masked;
    if (limited && item.type != "Varchar" && item.type != "Ntext") {
      const std::string right = name == "varchar" ? "Varchar" : "Ntext";
      Add(item, "FieldType",
          "“" + item.type + "”的大小写不对，录入框不限制长度，可以录入超过 " + item.length +
              " 个字；请改写为 " + right);
    }
    if (!item.code_table.empty() && !field->masked && name != "varchar") {
      Add(item, "FieldType",
          "有代码表 " + item.code_table + "，类型却是 " + item.type + "，保存的是代码的名称而不是代码，" +
              (name == "ntext" ? "在列表中成了空白" : "会出错或被拒绝") +
              "；请改为 Varchar，或清空 CodeTable");
    }
    if (!set_.Has(item.column)) return;
    const ado::ColumnKind kind = set_.columns->at(item.column);
    if (kind == type->kind || kind == ado::ColumnKind::kUnknown) return;
    Add(item, "FieldType",
        "“" + item.type + "”与表 " + set_.name + " 中列 " + item.column +
            " 的类型不一致，保存的内容会出错或被拒绝；请把该列改为" + type->declared + "，或改正 FieldType");
  }

  void CheckNumbers(const Item& item) {
    const bool is_text = EqualIgnoringCase(item.type, "Varchar") || EqualIgnoringCase(item.type, "Ntext");
    if (is_text && !item.length.empty() && !Fits16Bits(item.length)) {
      Add(item, "FieldLength",
          "“" + item.length + "”不是 16 位整数，" + Opening() + "；请改为字数，至多 32767");
    } else if (set_.IsFreeText(item) && !item.length.empty() && environment::ToInt16(item.length) < 0) {
      Add(item, "FieldLength",
          "“" + item.length + "”是负数，录入框不限制长度；请改为字数，至多 " +
              std::to_string(IsShortText(item) ? kLongestShortText : 32767) + "，或清空");
    } else if (set_.IsFreeText(item) && IsShortText(item) && LimitOf(item).value_or(0) > kLongestShortText) {
      Add(item, "FieldLength",
          "“" + item.length +
              "”超过 255，录入 256 个字以上就无法保存（提示“数据应该小于256个字符长度”）；请改为至多 "
              "255，或把 "
              "FieldType 改为 Ntext");
    }
    if (!item.width.IsNull() && !Fits16Bits(item.width)) {
      Add(item, "FldWidth",
          "“" + environment::TextOf(item.width) + "”不是 16 位整数，" + Opening() +
              "；请改为 0（不显示）至 32767 的整数");
    }
    const auto* flag = item.may_be_empty.As<std::string>();
    if (flag && !EqualIgnoringCase(*flag, "True") && !EqualIgnoringCase(*flag, "False") &&
        !Fits16Bits(*flag)) {
      Add(item, "IsNUll",
          "“" + *flag + "”不是 0 或 1，" + Opening() +
              "（提示“类型不匹配”）；请改为 1（可以为空）或 0（必填）");
    }
  }

  void CheckStyleAndRule(const Item& item) {
    if (!item.style.empty() && !IsReadable(item.style)) {
      Add(item, "style",
          "“" + item.style +
              "”读不懂，列表中的这一列会面目全非或打不开；请改为 yyyy-mm、yyyy-mm-dd 这样的格式，或清空");
    }
    if (item.rule.empty()) return;
    const std::string problem = RuleProblem(item);
    if (problem.empty()) return;
    Add(item, "Check",
        "规则“" + item.rule + "”" + problem + "；请改为“L 15,18”或“B 1900-01,2050-12”这样的写法，或清空");
  }

  void CheckNumberRow() {
    const std::string number = set_.name + "99";
    const Item* item = Find(number);
    if (item && !item->caption.empty()) return;
    const std::string meets = "“" + set_.caption + "”的记录都显示不出来，保存会替换第 1 条记录";
    if (item) {
      Add(*item, "itemdesc", "是空的，" + meets + "；请填写“序号”，FldWidth 填 0");
    } else {
      findings_.Add(kFields, set_.name + "." + number, "",
                    "缺少序号这一行，" + meets + "；请补上这一行，itemdesc 填“序号”，FldWidth 填 0");
    }
  }

  // In the list, and on a page without one on the labels alone.
  void CheckCaptions() {
    Names columns;
    Names seen;
    for (const Item& item : set_.items) {
      if (!columns.insert(item.column).second) continue;
      if (item.caption.empty() || item.column.empty() || EqualIgnoringCase(item.column, "A00")) continue;
      if (!set_.many && !set_.FieldOf(item.column)) continue;
      const bool is_double = !seen.insert(item.caption).second;
      if (!set_.many) {
        if (!is_double) continue;
        Add(item, "itemdesc",
            "“" + item.caption +
                "”与本信息集的另一项相同，页面上和提示中分不清是哪一项；请改为本信息集中唯一的名称");
        continue;
      }
      const std::string problem =
          is_double ? "与本信息集的另一项相同，列表中分不清，序号也可能读错" : CaptionProblem(item);
      if (problem.empty()) continue;
      Add(item, "itemdesc", "“" + item.caption + "”" + problem + "；请改为本信息集中唯一的汉字名称");
    }
  }

  // The caption stands bare in the statement of the list.
  std::string CaptionProblem(const Item& item) {
    const std::string meets = "，" + Opening();
    const std::string& caption = item.caption;
    if (caption.find_first_of(" \t\r\n") != std::string::npos || caption.find("\u3000") != std::string::npos)
      return "中有空格" + meets;
    if (caption.find('-') != std::string::npos) return "中有连字符" + meets;
    if (caption[0] >= '0' && caption[0] <= '9') return "以数字开头" + meets;
    if (!set_.Has("A00")) return "";
    const std::string statement =
        "select " + set_.name + ".A00 as " + caption + " from " + set_.name + " where 1=0";
    if (RefusalOf(connection_, statement)) return "是数据库的保留字，或有不能用的字符" + meets;
    if (Read(connection_, statement).ColumnAt(0).name != caption) return "作列名时会被数据库改写" + meets;
    return "";
  }

  ado::Connection& connection_;
  const Set& set_;
  Findings& findings_;
};

}  // namespace

void CheckFields(ado::Connection& connection, const Set& set, Findings& findings) {
  FieldCheck(connection, set, findings).Run();
}

}  // namespace dossierkit::check
