// The mask box. The first line is the mask; every other line is one action: a letter, and what it needs.
//   t1990  types       p1990-3  pastes      r1990  replaces all from outside
//   b      Backspace   d        Delete      x      cuts      c  copies   z  takes back
//   s25    selects 5 characters from 2      =1990  assigns   h, e  Home, End
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/headless/headless_platform.h"
#include "adapters/headless/headless_user.h"
#include "fuzz/fuzz.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/mask_ed_box.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::toolkit {
namespace {

using Characters = std::vector<std::string>;

bool IsDigit(const std::string& c) { return c.size() == 1 && c[0] >= '0' && c[0] <= '9'; }

class FuzzForm : public Form {
 public:
  explicit FuzzForm(Desktop& desktop) : Form(desktop, "frmFuzz") {}
  std::shared_ptr<MaskEdBox> box;

 protected:
  void BuildDesign() override { box = Controls().Make<MaskEdBox>("mskBox"); }
};

// What is known of the box between two actions, and what the next one must leave.
class Typist {
 public:
  Typist(MaskEdBox& box, const std::string& mask, headless::HeadlessPlatform& platform, Desktop& desktop)
      : box_(box), mask_(environment::Characters(mask)), platform_(platform), user_(desktop) {
    box_.SetMask(mask);
    hook_ = box_.Change.Subscribe([this] { ++changes_; });
    blank_ = Join(Blank());
    REQUIRE(box_.Text() == blank_ && box_.BlankMask() == blank_ && box_.Mask() == mask);
    REQUIRE(box_.SelStart() == 0 && box_.SelLength() == 0);
    box_.SetFocus();
  }

  void Act(std::string_view line) {
    const char action = line.empty() ? 'b' : line[0];
    const std::string argument = environment::ValidUtf8(line.substr(line.empty() ? 0 : 1));
    text_ = box_.Text();
    start_ = box_.SelStart();
    length_ = box_.SelLength();
    changes_ = 0;
    platform_.beeps = 0;
    switch (action) {
      case 't': Type(argument); break;
      case 'p': Edit([&] { box_.UserPaste(argument); }); break;
      case 'r': Edit([&] { box_.UserReplaceAll(argument); }); break;
      case 'b': Backspace(); break;
      case 'd': Delete(); break;
      case 'x': Cut(); break;
      case 's': Select(argument); break;
      case '=': Assign(std::string(line.substr(1))); break;
      case 'h': user_.Press(kKeyHome); break;
      case 'e': user_.Press(kKeyEnd); break;
      case 'z': Undo(); break;
      default: Copy(); break;
    }
    CheckAnyAction();
    if (std::string("sche").find(action) != std::string::npos) REQUIRE(box_.Text() == text_);
  }

  // A full text is the same when it is entered anew, by its digits alone or as it stands.
  void EnterAnew() {
    const std::string text = box_.Text();
    if (!Fills(text)) return;
    for (const auto& literal : mask_) {
      if (IsDigit(literal) || literal == "_") return;
    }
    box_.UserReplaceAll(text);
    REQUIRE(box_.Text() == text);
    box_.SetText(blank_);
    box_.UserPaste(text);
    REQUIRE(box_.Text() == text);
    std::string digits;
    const Characters characters = environment::Characters(text);
    for (std::size_t i = 0; i < mask_.size(); ++i) {
      if (mask_[i] == "#") digits += characters[i];
    }
    if (digits.find('_') != std::string::npos) return;
    box_.SetText(blank_);
    box_.UserType(digits);
    REQUIRE(box_.Text() == text);
  }

 private:
  Characters Blank() const {
    Characters blank = mask_;
    std::replace(blank.begin(), blank.end(), std::string("#"), std::string("_"));
    return blank;
  }

  static std::string Join(const Characters& characters) {
    std::string text;
    for (const auto& character : characters) text += character;
    return text;
  }

  // Literals in their places, digits and prompts at the places of "#", as far as the text goes.
  bool Fits(const std::string& text) const {
    const Characters characters = environment::Characters(text);
    if (characters.size() > mask_.size()) return false;
    for (std::size_t i = 0; i < characters.size(); ++i) {
      const bool digit = IsDigit(characters[i]) || characters[i] == "_";
      if (mask_[i] == "#" ? !digit : characters[i] != mask_[i]) return false;
    }
    return true;
  }
  bool Fills(const std::string& text) const {
    return Fits(text) && environment::Length(text) == mask_.size();
  }

  void CheckAnyAction() const {
    REQUIRE(box_.Mask() == Join(mask_));
    REQUIRE(box_.SelStart() + box_.SelLength() <= environment::Length(box_.Text()));
    REQUIRE(changes_ == (box_.Text() == text_ ? 0 : 1));
  }

  // Any edit by the user leaves a text that fills the mask, or the one before; one that is refused
  // whole leaves caret and selection too.
  void Edit(const std::function<void()>& edit) {
    edit();
    const bool same = box_.Text() == text_;
    REQUIRE(same || Fills(box_.Text()));
    REQUIRE(platform_.beeps <= 1);
    if (same && platform_.beeps > 0 && !Fills(text_)) {
      REQUIRE(box_.SelStart() == start_ && box_.SelLength() == length_);
    }
  }

  // The characters and the caret with which an edit begins.
  Characters Begin(std::size_t& start, std::size_t& length) const {
    const bool fills = Fills(text_);
    start = fills ? start_ : 0;
    length = fills ? length_ : 0;
    return fills ? environment::Characters(text_) : Blank();
  }

  void BlankPlaces(Characters& characters, std::size_t start, std::size_t length) const {
    for (std::size_t i = start; i < start + length; ++i) {
      if (mask_[i] == "#") characters[i] = "_";
    }
  }

  void Type(const std::string& typed) {
    std::size_t start = 0;
    std::size_t length = 0;
    Characters expected = Begin(start, length);
    bool edited = false;
    bool refused = false;
    for (const auto& character : environment::Characters(typed)) {
      std::size_t place = start;
      while (place < mask_.size() && mask_[place] != "#") ++place;
      if (!IsDigit(character) || place == mask_.size()) {
        refused = true;
        continue;
      }
      BlankPlaces(expected, start, length);
      length = 0;
      expected[place] = character;
      start = place + 1;
      while (start < mask_.size() && mask_[start] != "#") ++start;
      edited = true;
    }
    Edit([&] { box_.UserType(typed); });
    REQUIRE(platform_.beeps == (refused ? 1 : 0));
    // What is refused and changes nothing leaves the caret, also where a digit met its like.
    if (edited && !(refused && Join(expected) == text_)) {
      REQUIRE(box_.Text() == Join(expected) && box_.SelStart() == start && box_.SelLength() == 0);
    } else if (refused) {
      REQUIRE(box_.Text() == text_ && box_.SelStart() == start_ && box_.SelLength() == length_);
    }
  }

  void Backspace() {
    std::size_t start = 0;
    std::size_t length = 0;
    Characters expected = Begin(start, length);
    BlankPlaces(expected, start, length);
    if (Fills(text_) && length == 0) {
      std::size_t place = start;
      while (place > 0 && mask_[place - 1] != "#") --place;
      if (place > 0) expected[place - 1] = "_";
    }
    Edit([&] { box_.UserBackspace(); });
    REQUIRE(box_.Text() == Join(expected));
  }

  void Delete() {
    std::size_t start = 0;
    std::size_t length = 0;
    Characters expected = Begin(start, length);
    BlankPlaces(expected, start, length);
    if (Fills(text_) && length == 0) {
      const auto place = std::find(mask_.begin() + static_cast<std::ptrdiff_t>(start), mask_.end(), "#");
      if (place != mask_.end()) expected[static_cast<std::size_t>(place - mask_.begin())] = "_";
    }
    Edit([&] { box_.UserDelete(); });
    REQUIRE(box_.Text() == Join(expected));
  }

  void Copy() {
    platform_.clipboard.clear();
    box_.UserCommand(EditCommand::kCopy);
    REQUIRE(platform_.clipboard == environment::Middle(text_, start_, length_));
  }

  // What is taken back comes again, to the last byte.
  void Undo() {
    box_.UserCommand(EditCommand::kUndo);
    if (changes_ == 0) return REQUIRE(box_.Text() == text_);
    const std::string former = box_.Text();
    box_.UserCommand(EditCommand::kRedo);
    REQUIRE(changes_ == 2 && box_.Text() == text_);
    changes_ = 0;
    box_.UserCommand(EditCommand::kUndo);
    REQUIRE(box_.Text() == former);
  }

  void Cut() {
    platform_.clipboard.clear();
    Edit([&] { box_.UserCommand(EditCommand::kCut); });
    REQUIRE(platform_.clipboard == environment::Middle(text_, start_, length_));
    if (length_ == 0) REQUIRE(box_.Text() == text_);
  }

  void Select(const std::string& places) {
    const auto digit = [&](std::size_t i) {
      return i < places.size() ? static_cast<std::size_t>(static_cast<unsigned char>(places[i])) % 48 : 0;
    };
    const std::size_t size = environment::Length(text_);
    box_.Select(digit(0), digit(1));
    REQUIRE(box_.SelStart() == std::min(digit(0), size));
    REQUIRE(box_.SelLength() == std::min(digit(1), size - box_.SelStart()));
  }

  // What is assigned is read back, filled up if it fits so far.
  void Assign(std::string text) {
    box_.SetText(text);
    if (Fits(text)) text += environment::Middle(blank_, environment::Length(text));
    REQUIRE(box_.Text() == text);
    REQUIRE(box_.SelStart() == 0 && box_.SelLength() == 0);
  }

  MaskEdBox& box_;
  Characters mask_;
  std::string blank_;
  headless::HeadlessPlatform& platform_;
  headless::HeadlessUser user_;
  environment::Subscription hook_;
  int changes_ = 0;
  // Before the present action.
  std::string text_;
  std::size_t start_ = 0;
  std::size_t length_ = 0;
};

void Check(std::string_view script) {
  const std::string mask = environment::Left(environment::ValidUtf8(fuzz::TakeLine(script)), 40);
  headless::HeadlessPlatform platform;
  Desktop desktop(platform);
  const auto form = std::make_shared<FuzzForm>(desktop);
  platform.WillRun([&](Form&) {
    Typist typist(*form->box, mask, platform, desktop);
    while (!script.empty()) typist.Act(fuzz::TakeLine(script));
    typist.EnterAnew();
  });
  form->ShowModal();
}

}  // namespace
}  // namespace dossierkit::toolkit

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  dossierkit::toolkit::Check(dossierkit::fuzz::TextOf(data, size));
  return 0;
}
