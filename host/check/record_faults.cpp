// The records of all persons in one set, read once.
#include <algorithm>
#include <unordered_map>

#include "host/check/reading.h"
#include "platform/environment/dates.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::check {
namespace {

using environment::EqualIgnoringCase;
using environment::LowerCase;
using environment::Value;

// A column whose values are looked at.
struct Watched {
  const Item* item;
  const Names* codes;  // of a coded field, else nullptr
  std::size_t place;   // in the rows
};

class RecordCheck {
 public:
  RecordCheck(ado::Connection& connection, const Set& set, const CodeTables& codes, const Persons* persons,
              Findings& findings)
      : connection_(connection), set_(set), known_(persons), findings_(findings) {
    columns_ = "A00";
    if (set.many) columns_ += "," + set.name + "99";
    std::size_t place = set.many ? 2 : 1;
    for (const Item& item : set.items) {
      if (!set.Has(item.column) || EqualIgnoringCase(item.column, set.name + "99")) continue;
      const auto table = codes.find(item.code_table);
      const Names* own = table == codes.end() ? nullptr : &table->second;
      if (!own && !(item.code_table.empty() && IsWatched(item))) continue;
      watched_.push_back({&item, own, place++});
      columns_ += ",[" + item.column + "]";
    }
  }

  void Run() {
    const ado::Snapshot rows = Read(connection_, "select " + columns_ + " from " + set_.name);
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
      const std::string person = TextAt(rows, row, 0);
      const std::string number = set_.many ? TextAt(rows, row, 1) : "";
      if (Note(person, set_.many ? rows.ValueAt(row, 1) : Value(1)).is_nobody) continue;
      for (const Watched& watched : watched_)
        CheckValue(rows.ValueAt(row, watched.place), watched, person, number);
    }
    if (set_.many) {
      CheckNumbers();
    } else {
      CheckDoubled();
    }
    CheckLengths();
    if (!EqualIgnoringCase(set_.name, "A01")) return;
    if (set_.Has("A0136")) CheckPersonTypes();
    if (set_.Has("A0199")) CheckRunningNumber();
  }

 private:
  struct Person {
    std::string id;
    std::vector<std::int64_t> numbers;
    bool bad_number = false;
    bool is_nobody = false;  // not in A01: no window shows these rows
  };

  // Values of another kind than the column's were told of with the field.
  bool IsWatched(const Item& item) const {
    const std::string type = LowerCase(item.type);
    const ado::ColumnKind kind = set_.columns->at(item.column);
    return (type == "datetime" && kind == ado::ColumnKind::kDate) ||
           (type == "int" && kind == ado::ColumnKind::kInteger);
  }

  static std::string RowOf(const std::string& person, const std::string& number) {
    return "A00=" + person + (number.empty() ? "" : " 第 " + number + " 条");
  }

  const Person& Note(const std::string& person, const Value& number) {
    const auto [found, is_new] = places_.try_emplace(LowerCase(person), persons_.size());
    if (is_new) {
      persons_.push_back({person, {}});
      persons_.back().is_nobody = known_ && !known_->contains(found->first);
      if (persons_.back().is_nobody) TellOfNobody(person);
    }
    Person& known = persons_[found->second];
    if (known.is_nobody) return known;
    const auto* whole = number.As<std::int64_t>();
    if (whole && *whole > 0) {
      known.numbers.push_back(*whole);
    } else if (!known.bad_number) {
      known.bad_number = true;
      findings_.Add(set_.name, RowOf(person, ""), set_.name + "99",
                    "有记录的序号" +
                        (number.IsNull() ? std::string("是空值，选中它时窗口会关闭")
                                         : "“" + environment::TextOf(number) +
                                               "”不是大于 0 的整数，选中它时表单是空的或窗口会关闭") +
                        "；请为此人的记录重新编号");
    }
    return known;
  }

  // One sentence for all rows of the identifier.
  void TellOfNobody(const std::string& person) {
    if (person.empty()) {
      findings_.Add(set_.name, "", "A00",
                    "有的行没有人员标识，谁也看不到它们；请填写所属人员的标识，或删除这些行");
    } else {
      findings_.Add(set_.name, RowOf(person, ""), "A00",
                    "A01 中没有这个标识，谁也看不到这些记录；请在 A01 中补上此人，或删除这些行");
    }
  }

  void CheckValue(const Value& value, const Watched& watched, const std::string& person,
                  const std::string& number) {
    if (value.IsNull()) return;
    const Item& item = *watched.item;
    if (watched.codes) {
      const std::string code = environment::TextOf(value);
      if (code.empty() || watched.codes->contains(code)) return;
      findings_.Add(
          set_.name, RowOf(person, number), item.column,
          "代码“" + code + "”在代码表 " + item.code_table +
              " 中没有，窗口中显示的是代码本身，离开该项时可能被清空；请改正代码，或在代码表中补上");
    } else if (EqualIgnoringCase(item.type, "datetime")) {
      const auto* text = value.As<std::string>();
      const bool is_date = value.As<environment::DateTime>() || (text && environment::IsDate(*text));
      if (is_date) return;
      findings_.Add(set_.name, RowOf(person, number), item.column,
                    "“" + environment::TextOf(value) +
                        "”不是能读的日期，显示和排序都会出错；请改为 yyyy-mm-dd 的形式，没有日期的改为 NULL");
    } else if (!Fits16Bits(value)) {
      findings_.Add(set_.name, RowOf(person, number), item.column,
                    "“" + environment::TextOf(value) +
                        "”不是 16 位整数，这条记录无法再保存；请改为 -32768 至 32767 的整数");
    }
  }

  // One sentence for a person: the numbers are given anew together.
  void CheckNumbers() {
    for (Person& person : persons_) {
      if (person.bad_number || person.is_nobody) continue;
      std::ranges::sort(person.numbers);
      const auto equal = std::ranges::adjacent_find(person.numbers);
      if (equal != person.numbers.end()) {
        findings_.Add(set_.name, RowOf(person.id, ""), set_.name + "99",
                      "有不止一条记录的序号是 " + std::to_string(*equal) +
                          "，保存或删除其中一条会同时替换或删除其余的；请为此人的记录重新编号");
      } else if (person.numbers.back() != static_cast<std::int64_t>(person.numbers.size())) {
        const std::string numbers =
            person.numbers.size() == 1
                ? "唯一一条记录的序号是 " + std::to_string(person.numbers[0]) + " 而不是 1"
                : "序号不是从 1 连续编到 " + std::to_string(person.numbers.size());
        findings_.Add(set_.name, RowOf(person.id, ""), set_.name + "99",
                      numbers + "，打开后不改动代码项就保存，会把代码项写成空值；请为此人的记录重新编号");
      }
    }
  }

  void CheckDoubled() {
    for (const Person& person : persons_) {
      if (person.numbers.size() < 2) continue;
      const std::string rows = "有 " + std::to_string(person.numbers.size()) + " 行";
      findings_.Add(set_.name, RowOf(person.id, ""), "A00",
                    rows + (EqualIgnoringCase(set_.name, "A01")
                                ? "，此人会被拒绝（提示“无法维护此人信息”）；请只保留一行"
                                : "，而“" + set_.caption +
                                      "”一人只有一条，窗口中只看得到第一行，保存会删除其余的；请只保留一行"));
    }
  }

  // Asked of the engine, so that no text has to be fetched that is as it should be.
  void CheckLengths() {
    std::string lengths;
    std::string condition;
    std::vector<std::pair<const Item*, int>> watched;  // and the most characters
    for (const Item& item : set_.items) {
      if (!set_.Has(item.column) || !set_.IsFreeText(item)) continue;
      if (set_.columns->at(item.column) != ado::ColumnKind::kText) continue;
      int most = LimitOf(item).value_or(0);
      if (IsShortText(item) && (most == 0 || most > kLongestShortText)) most = kLongestShortText;
      if (most == 0) continue;
      watched.emplace_back(&item, most);
      const std::string length = "len([" + item.column + "])";
      lengths += "," + length;
      condition += (condition.empty() ? "" : " or ") + length + ">" + std::to_string(most);
    }
    if (watched.empty()) return;
    const std::string number = set_.many ? "," + set_.name + "99" : "";
    const ado::Snapshot rows =
        Read(connection_, "select A00" + number + lengths + " from " + set_.name + " where " + condition);
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
      const std::string person = TextAt(rows, row, 0);
      const auto place = places_.find(LowerCase(person));
      if (place == places_.end() || persons_[place->second].is_nobody) continue;
      std::size_t column = set_.many ? 2 : 1;
      for (const auto& [item, most] : watched) {
        const auto length = rows.ValueAt(row, column++);
        const auto* whole = length.As<std::int64_t>();
        if (!whole || *whole <= most) continue;
        TellOfLength(*item, *whole, most, RowOf(person, set_.many ? TextAt(rows, row, 1) : ""));
      }
    }
  }

  void TellOfLength(const Item& item, std::int64_t length, int most, const std::string& row) {
    const std::string has = "有 " + std::to_string(length) + " 个字，";
    if (IsShortText(item) && length > kLongestShortText) {
      findings_.Add(
          set_.name, row, item.column,
          has +
              "超过 255，这条记录无法再保存（提示“数据应该小于256个字符长度”）；请缩短，或把这一项的 "
              "FieldType 改为 Ntext");
    } else {
      findings_.Add(set_.name, row, item.column,
                    has + "超过 FieldLength 的 " + std::to_string(most) +
                        "，在窗口中只能删减，不能再添字；请缩短，或加大 FieldLength");
    }
  }

  // What a host hands on when it opens the person again.
  void CheckPersonTypes() {
    const ado::Snapshot rows =
        Read(connection_, "select A00,A0136 from A01 where A0136 is null or A0136<1 or A0136>3");
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
      if (rows.ValueAt(row, 1).IsNull()) {
        findings_.Add(
            "A01", RowOf(TextAt(rows, row, 0), ""), "A0136",
            "是空值，不知道应以哪一个 PersonType 打开此人，也就不知道菜单的最后一项是哪一种推荐情况；"
            "请改为 1、2 或 3");
        continue;
      }
      findings_.Add(
          "A01", RowOf(TextAt(rows, row, 0), ""), "A0136",
          "“" + TextAt(rows, row, 1) +
              "”不是 1、2、3 之一，以它为 PersonType 打开此人时，菜单的最后一项不是推荐情况，一点击它，"
              "窗口就会关闭；请改为 1、2 或 3");
    }
  }

  // Of the next person, who gets the greatest one plus 1.
  void CheckRunningNumber() {
    const ado::Snapshot highest = Read(connection_, "select max(A0199) from A01");
    if (highest.ValueAt(0, 0).IsNull()) return;
    const std::string number = environment::TextOf(highest.ValueAt(0, 0));
    if (Fits16Bits(number) && environment::ToInt16(number) < 32767) return;
    findings_.Add(
        "A01", "", "A0199",
        "最大值 " + number + " 已到 16 位整数的上限，新人员无法保存（提示“溢出”）；请重新编排人员序号");
  }

  ado::Connection& connection_;
  const Set& set_;
  const Persons* known_;
  Findings& findings_;
  std::string columns_;
  std::vector<Watched> watched_;
  std::vector<Person> persons_;                          // in the order of their first rows
  std::unordered_map<std::string, std::size_t> places_;  // in persons_, by A00 in small letters
};

}  // namespace

void CheckRecords(ado::Connection& connection, const Set& set, const CodeTables& codes,
                  const Persons* persons, Findings& findings) {
  if (!set.Has("A00") || (set.many && !set.Has(set.name + "99"))) return;
  RecordCheck(connection, set, codes, persons, findings).Run();
}

std::optional<Persons> ReadPersons(ado::Connection& connection) {
  const auto columns = ColumnsOf(connection, "A01");
  if (!columns || !columns->contains("A00")) return std::nullopt;
  const ado::Snapshot rows = Read(connection, "select A00 from A01");
  Persons persons;
  for (std::size_t row = 0; row < rows.RowCount(); ++row) persons.insert(LowerCase(TextAt(rows, row, 0)));
  return persons;
}

}  // namespace dossierkit::check
