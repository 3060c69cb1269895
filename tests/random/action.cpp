#include "tests/random/action.h"

#include <algorithm>
#include <array>
#include <istream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "platform/environment/text.h"

namespace dossierkit::random {
namespace {

constexpr std::array<std::pair<Do, const char*>, 25> kNames = {{
    {Do::kArrange, "arrange"},     {Do::kOpen, "open"},   {Do::kAgain, "again"},     {Do::kClose, "close"},
    {Do::kResize, "resize"},       {Do::kMenu, "menu"},   {Do::kToolbar, "toolbar"}, {Do::kField, "field"},
    {Do::kDouble, "double"},       {Do::kPhoto, "photo"}, {Do::kRow, "row"},         {Do::kType, "type"},
    {Do::kPaste, "paste"},         {Do::kKey, "key"},     {Do::kFill, "fill"},       {Do::kTab, "tab"},
    {Do::kNode, "node"},           {Do::kFold, "fold"},   {Do::kPick, "pick"},       {Do::kList, "list"},
    {Do::kListTwice, "listtwice"}, {Do::kHover, "hover"}, {Do::kSearch, "search"},   {Do::kButton, "button"},
    {Do::kChoose, "choose"},
}};

std::string Escape(const std::string& text) {
  std::string escaped = environment::Replace(text, "\\", "\\\\");
  escaped = environment::Replace(escaped, "\r", "\\r");
  return environment::Replace(escaped, "\n", "\\n");
}

std::string Unescape(const std::string& text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      plain += text[i];
      continue;
    }
    const char next = text[++i];
    plain += next == 'r' ? '\r' : next == 'n' ? '\n' : next;
  }
  return plain;
}

Action ReadAction(const std::string& line) {
  std::istringstream in(line);
  std::string name;
  Action action;
  if (!(in >> name >> action.number >> action.answers)) throw std::runtime_error("no action: " + line);
  const auto found = std::ranges::find_if(kNames, [&](const auto& known) { return name == known.second; });
  if (found == kNames.end()) throw std::runtime_error("no action of that name: " + line);
  action.what = found->first;
  in.get();
  std::getline(in, action.text);
  action.text = Unescape(action.text);
  return action;
}

}  // namespace

std::string TextOf(const Action& action) {
  const auto found =
      std::ranges::find_if(kNames, [&](const auto& known) { return action.what == known.first; });
  std::string line = std::string(found->second) + " " + std::to_string(action.number) + " " + action.answers;
  if (!action.text.empty()) line += " " + Escape(action.text);
  return line;
}

void WriteActions(std::ostream& out, const Actions& actions) {
  for (const Action& action : actions) out << TextOf(action) << "\n";
}

Actions ReadActions(std::istream& in) {
  Actions actions;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.front() != '#') actions.push_back(ReadAction(line));
  }
  return actions;
}

}  // namespace dossierkit::random
