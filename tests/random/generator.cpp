#include "tests/random/generator.h"

#include <utility>

namespace dossierkit::random {
namespace {

const char* const kTexts[] = {
    // Dates and years, good and bad, as the digits of a mask or as a paste.
    "19900315",
    "199003",
    "20261101",
    "202612",
    "19901399",
    "0000",
    "9999",
    "1990",
    "189912",
    "20301231",
    "1990年03月",
    "1990年3月5日",
    "2001-02-30",
    "____年__月",
    // Numbers.
    "0",
    "7",
    "42",
    "-1",
    "3.5",
    "32767",
    "32768",
    "40000",
    "99999999999",
    "210000",
    "13800000000",
    // Identity numbers.
    "320481196803123310",
    "320481680312331",
    "320481199003150011",
    "12345678901234567",
    // Texts.
    "陆怀谷",
    "农业科学院",
    "某",
    "The quick brown fox",
    " ",
    "　",
    "\xF0\x9F\x98\x80",
    "一\r\n二\r\n三",
    "\n",
    // Codes, captions, shorthands, in part ambiguous.
    "1",
    "2",
    "01",
    "305",
    "320481",
    "611",
    "nx",
    "NX",
    "男性",
    "女性",
    "bj",
    "js",
    "sj",
    "书记",
    "教授",
    "gxbsxw",
    "xyz",
    "qqqq",
    "b",
    // What hurts a statement.
    "'",
    "''",
    "O'Neil",
    "a''b",
    "x' or '1'='1",
    "x','y",
    "'--",
    "%",
    "_",
    "%%",
    "a\"b",
    "[",
    "#",
    "\\",
    ";",
};

const char* const kKeys[] = {
    "Tab",    "Tab",    "Tab",        "BackTab",    "Enter",      "Enter",      "Enter",      "Enter",
    "Ctrl+S", "Ctrl+S", "Ctrl+N",     "Ctrl+comma", "Ctrl+point", "Ctrl+comma", "Ctrl+point", "Ctrl+A",
    "Back",   "Delete", "Home",       "End",        "Up",         "Down",       "Left",       "Right",
    "Esc",    "Space",  "Ctrl+Enter", "Alt+N",      "Alt+D",      "Alt+S",      "Alt+C",      "Alt+X",
};

const char* const kToolbar[] = {
    "Add", "Add", "Add", "Save", "Save", "Save", "Save", "Delete", "Delete", "Cancel", "Cancel", "Exit",
};

const char* const kSearches[] = {
    "nx", "b", "sj", "js", "北京", "市", "%", "zzzz", "O'Neil", "'", "x' or '1'='1", "a", "学", "_",
};

constexpr int kArrangedInHundred = 35;
constexpr int kLargestNumber = 100'000;

}  // namespace

Action Generator::Make(Do what, std::string text) {
  Action action{what, Below(kLargestNumber), "", std::move(text)};
  for (int i = 0; i < 4; ++i) action.answers += Below(2) == 0 ? 'y' : 'n';
  return action;
}

std::string Generator::Text() {
  // Now and then longer than any field may be.
  if (Below(40) == 0) {
    std::string text;
    for (int i = Below(300); i >= 0; --i) text += "长";
    return text;
  }
  return OneOf(kTexts);
}

// Operation type, person type, folder of the photographs.
Action Generator::Open() {
  const int operation = Below(20);
  const int type = Below(10);
  std::string text = operation < 15 ? "3" : operation < 18 ? "0" : operation < 19 ? "1" : "2";
  text += "/" + std::to_string(type < 7 ? 1 : type == 7 ? 2 : type == 8 ? 3 : 0);
  text += "/" + std::to_string(Below(10) < 8 ? 0 : 1 + Below(2));
  return Make(Do::kOpen, text);
}

Action Generator::Draw(Place place) {
  const bool first = !std::exchange(started_, true);
  switch (place) {
    case Place::kNoWindow:
      if (first && Below(100) < kArrangedInHundred) return Make(Do::kArrange);
      return Open();
    case Place::kDossier: return DrawInDossier();
    case Place::kPicker: return DrawInPicker();
    case Place::kPreview: return DrawInPreview();
  }
  return Open();
}

Action Generator::DrawInDossier() {
  const int draw = Below(1000);
  if (draw < 160) return Make(Do::kMenu);
  if (draw < 290) return Make(Do::kToolbar, OneOf(kToolbar));
  if (draw < 410) return Make(Do::kField);
  if (draw < 560) return Make(Do::kType, Text());
  if (draw < 630) return Make(Do::kPaste, Text());
  if (draw < 820) return Make(Do::kKey, OneOf(kKeys));
  if (draw < 880) return Make(Do::kRow);
  if (draw < 920) return Make(Do::kDouble);
  if (draw < 960) return Make(Do::kFill);
  if (draw < 977) return Make(Do::kPhoto);
  if (draw < 983) return Make(Do::kResize);
  if (draw < 986) return Make(Do::kAgain);
  if (draw < 993) return Make(Do::kClose);
  return Open();
}

Action Generator::DrawInPicker() {
  const int draw = Below(1000);
  static const char* const kButtons[] = {"cmdOK", "cmdOK", "cmdOK", "cmdCancel", "cmdDel"};
  if (draw < 120) return Make(Do::kTab);
  if (draw < 230) return Make(Do::kNode);
  if (draw < 330) return Make(Do::kFold);
  if (draw < 400) return Make(Do::kPick);
  if (draw < 460) return Make(Do::kList);
  if (draw < 490) return Make(Do::kListTwice);
  if (draw < 520) return Make(Do::kHover);
  if (draw < 640) return Make(Do::kSearch, OneOf(kSearches));
  if (draw < 680) return Make(Do::kType, Text());
  if (draw < 700) return Make(Do::kPaste, Text());
  if (draw < 790) return Make(Do::kKey, OneOf(kKeys));
  if (draw < 970) return Make(Do::kButton, OneOf(kButtons));
  if (draw < 980) return Make(Do::kAgain);
  return Make(Do::kClose);
}

Action Generator::DrawInPreview() {
  const int draw = Below(100);
  static const char* const kButtons[] = {"cmdOK", "cmdOK", "cmdCancel"};
  if (draw < 45) return Make(Do::kChoose);
  if (draw < 80) return Make(Do::kButton, OneOf(kButtons));
  if (draw < 92) return Make(Do::kKey, OneOf(kKeys));
  if (draw < 96) return Make(Do::kClose);
  return Make(Do::kAgain);
}

}  // namespace dossierkit::random
