#include "host/check/rules.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>
#include <vector>

#include "platform/environment/format.h"
#include "platform/environment/numbers.h"
#include "platform/environment/text.h"

namespace dossierkit::check {
namespace {

constexpr std::array<std::string_view, 12> kPartsOfADate = {"yyyy", "yy", "mm", "m", "dd", "d",
                                                            "hh",   "h",  "nn", "n", "ss", "s"};

bool IsLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

// Only what stands for part of a date is replaced, so that one such letter makes a style a date's.
bool IsOfADate(const std::string& style) {
  return environment::LowerCase(style).find_first_of("ymdhns") != std::string::npos;
}

std::string LengthProblem(const std::vector<std::string>& lengths) {
  if (lengths.empty()) return "没有写长度，除了空值，录入什么都会被拒绝";
  for (const std::string& length : lengths) {
    if (!environment::ParseNumber(length))
      return "中的“" + length + "”不是数字，录入后一离开该项，窗口就会关闭（提示“类型不匹配”）";
  }
  return "";
}

std::string BoundsProblem(const Item& item, const std::vector<std::string>& bounds) {
  const std::string type = environment::LowerCase(item.type);
  if (type != "datetime" && type != "varchar") return "是界限，只对日期和短文本有效，对这一项不起作用";
  if (bounds.size() < 2 && type == "varchar")
    return "少一个界限，录入后一离开该项，窗口就会关闭（提示“下标越界”）";
  if (bounds.size() != 2) return "应当有两个界限，现在不起作用，录入什么日期都能通过";
  if (type == "varchar" || item.style.empty() || !IsReadable(item.style)) return "";
  for (const std::string& bound : bounds) {
    if (environment::Format(bound, item.style) != bound)
      return "的界限“" + bound + "”与格式 " + item.style + " 不一致，正确的日期会被拒绝，或错误的日期能通过";
  }
  return "";
}

}  // namespace

bool IsReadable(const std::string& style) {
  if (style.find('\'') != std::string::npos) return false;
  if (!IsOfADate(style)) return style.find_first_of("0#") != std::string::npos;
  const std::string letters = environment::LowerCase(style);
  for (std::size_t i = 0; i < letters.size();) {
    if (!IsLetter(letters[i])) {
      ++i;
      continue;
    }
    const std::size_t end = std::min(letters.find_first_not_of(letters[i], i), letters.size());
    if (std::ranges::find(kPartsOfADate, std::string_view(letters).substr(i, end - i)) == kPartsOfADate.end())
      return false;
    i = end;
  }
  return true;
}

std::string RuleProblem(const Item& item) {
  const auto pieces = environment::Split(item.rule, " ");
  if (pieces.size() != 2) return "读不懂，应为一个字母、一个空格和用逗号分开的值，现在检查不完整或不起作用";
  const std::string kind = environment::UpperCase(pieces[0]);
  const auto values = environment::Split(pieces[1], ",");
  if (kind == "L") return LengthProblem(values);
  if (kind == "B") return BoundsProblem(item, values);
  return "的种类既不是 L 也不是 B，不起作用";
}

}  // namespace dossierkit::check
