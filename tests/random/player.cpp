#include "tests/random/player.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <map>
#include <utility>

#include "metadata/field_items.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/list_box.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/tree_view.h"
#include "tests/support/watchdog.h"

namespace dossierkit::random {
namespace {

using toolkit::Control;

// The identifiers of new persons, one after the other instead of drawn.
const char* const kIdentifiers =
    "drop table S_GUID; create table S_GUID (id varchar(38) collate nocase, val varchar(10) collate nocase);"
    "create table drawn (n integer); insert into drawn values (0);"
    "create trigger tr_S_GUID after insert on S_GUID begin update drawn set n = n + 1;"
    "update S_GUID set id = '{' || printf('%08X-0000-4000-8000-000000000000', (select n from drawn)) || '}'; "
    "end;";

// Data that a visit may begin with.
const std::array<std::string, 12> kArrangements = {
    "delete from A13; delete from A12; delete from B01",
    "update s_infotable set maxnumber = 2 where tblname = 'A03'",
    "update s_infotable set maxnumber = 6 where tblname = 'A03'",
    "update A01 set A0199 = 32767 where A00 = '" + tests::kPerson + "'",
    "update A03 set A0399 = 32766 where A0399 = 2",
    "update A03 set A0399 = 32768 where A0399 = 2",
    "insert into A01 (A00, A0101) values ('" + tests::kPerson + "', '又一人')",
    "update A04 set A0499 = 0; update s_infotable set maxnumber = 2 where tblname = 'A04'",
    "delete from s_CodeLevDefine where dmgrp = 'LCZW'",
    "update GB2261 set dmattr = null",
    "update A03 set A0302 = 'O''Neil'; update A01 set A0101 = 'O''Neil'",
    "update s_infoitem set itemdesc = null where itemname = 'A0499'; update A01 set A0101 = null where A0102 "
    "= '2'",
};

struct Key {
  const char* name;
  int key;
  int shift;
};
constexpr std::array<Key, 24> kKeys = {{
    {"Enter", toolkit::kKeyReturn, 0},
    {"Esc", toolkit::kKeyEscape, 0},
    {"Back", toolkit::kKeyBack, 0},
    {"Delete", toolkit::kKeyDelete, 0},
    {"Home", toolkit::kKeyHome, 0},
    {"End", toolkit::kKeyEnd, 0},
    {"Up", toolkit::kKeyUp, 0},
    {"Down", toolkit::kKeyDown, 0},
    {"Left", toolkit::kKeyLeft, 0},
    {"Right", toolkit::kKeyRight, 0},
    {"Space", ' ', 0},
    {"Ctrl+Enter", toolkit::kKeyReturn, toolkit::kCtrl},
    {"Ctrl+S", 'S', toolkit::kCtrl},
    {"Ctrl+N", 'N', toolkit::kCtrl},
    {"Ctrl+A", 'A', toolkit::kCtrl},
    {"Ctrl+comma", 188, toolkit::kCtrl},
    {"Ctrl+point", 190, toolkit::kCtrl},
    {"Alt+N", 'N', toolkit::kAlt},
    {"Alt+D", 'D', toolkit::kAlt},
    {"Alt+S", 'S', toolkit::kAlt},
    {"Alt+C", 'C', toolkit::kAlt},
    {"Alt+X", 'X', toolkit::kAlt},
    {"Tab", toolkit::kKeyTab, 0},
    {"BackTab", toolkit::kKeyTab, toolkit::kShift},
}};

// What a file dialog gives; the empty name is its Cancel.
constexpr std::array<const char*, 8> kChoices = {"one.jpg",    "two.jpg",     "fits.jpg", "large.jpg",
                                                 "broken.jpg", "missing.jpg", "",         "one.jpg"};

constexpr std::size_t kLargestPicture = 307'200;
constexpr unsigned kSecondsOfAVisit = 900;

template <typename T>
const T& Pick(const std::vector<T>& from, int number) {
  return from[static_cast<std::size_t>(number) % from.size()];
}

// A text that the checks let pass.
std::string FittingText(const cFieldItem& item) {
  static const std::map<std::string, std::string> kCodes = {
      {"GB2261", "1"},    {"GB3304", "01"},  {"GB2260", "320481"}, {"GB4762", "01"},
      {"GB4658", "11"},   {"GB6864", "209"}, {"LCZW", "305"},      {"GB8561", "611"},
      {"GB13745", "210"}, {"LCDWLB", "30"},  {"LCDWXZ", "20"},     {"GB12404", "20"}};
  static const std::map<std::string, std::string> kOwn = {
      {"A0104", "19680312"}, {"A0131", "320481196803123310"}, {"A0117", "210000"}, {"A0119", "13800000000"}};
  if (const auto own = kOwn.find(item.ItemName); own != kOwn.end()) return own->second;
  if (const auto code = kCodes.find(item.CodeTable); code != kCodes.end()) return code->second;
  if (item.FieldType == "datetime") return "200105";
  if (item.FieldType == "int" || !item.CodeTable.empty()) return "1";
  return item.FieldLength == "4" ? "2015" : "某";
}

class Player {
 public:
  Player(const Source& source, const tests::PhotoFolder& folder, Tally& tally)
      : source_(source), folder_(folder), watch_(visit_, folder, tally), tally_(tally) {
    visit_.database->RunScript(kIdentifiers);
    persons_ = tests::Column(*visit_.database, "select A00 from A01 order by A0199");
    PutPhotos();
    PrepareLoop();
    visit_.script.on_choose = [this](const toolkit::CommonDialog&) {
      const std::string name = kChoices[static_cast<std::size_t>(choice_) % kChoices.size()];
      visit_.script.WillChoose(name.empty() ? "" : folder_.Choice(name));
    };
  }

  std::optional<Violation> Run() {
    while (auto action = Next(Place::kNoWindow)) {
      if (action->what == Do::kArrange) {
        visit_.database->RunScript(
            kArrangements[static_cast<std::size_t>(action->number) % kArrangements.size()]);
      } else if (action->what == Do::kOpen) {
        PlayVisit(*action);
      }
    }
    return watch_.Found();
  }

 private:
  std::optional<Action> Next(Place place) {
    if (watch_.Found()) return std::nullopt;
    if (next_visit_)
      return place == Place::kNoWindow ? std::exchange(next_visit_, std::nullopt) : std::nullopt;
    return source_(place);
  }

  // One photograph, one that is none, one that is write-protected.
  void PutPhotos() const {
    tests::RemoveFolder(folder_.Photos());
    std::filesystem::create_directories(folder_.Photos());
    tests::PhotoFolder::Write(folder_.Photo(persons_[0]), tests::Jpeg("old"));
    tests::PhotoFolder::Write(folder_.Photo(persons_[1]), "no picture");
    tests::PhotoFolder::Write(folder_.Photo(persons_[2]), tests::Jpeg("old"));
    tests::PhotoFolder::Protect(folder_.Photo(persons_[2]));
  }

  // Every window that opens plays on from where the last one stands.
  void PrepareLoop() {
    visit_.script.WillRun([this](toolkit::Form& form) {
      PrepareLoop();
      watch_.Opened(form);
      while (!form.LoopEnded()) {
        const auto action = Next(PlaceOf(form));
        if (!action) break;
        Step(form, *action);
      }
      if (!form.LoopEnded()) form.UserClose();
      watch_.Closed();
    });
  }

  static Place PlaceOf(const toolkit::Form& form) {
    return form.Name() == "fmGrpCod"            ? Place::kPicker
           : form.Name() == "frmPicturePreview" ? Place::kPreview
                                                : Place::kDossier;
  }

  void PlayVisit(const Action& open) {
    int operation = 3;
    int type = 1;
    int folder = 0;
    std::sscanf(open.text.c_str(), "%d/%d/%d", &operation, &type, &folder);
    auto& component = visit_.component;
    component.OperationType = static_cast<std::int16_t>(operation);
    component.PersonType = static_cast<std::int16_t>(type);
    component.PhotoPath = folder == 0   ? folder_.Photos().string()
                          : folder == 1 ? folder_.Choice("nowhere")
                                        : folder_.Photos().string() + "\\";
    component.personID = PersonOf(open.number, operation);
    watch_.BeforeVisit();
    watch_.BeforeStep(open);
    try {
      watch_.Returned(component.ShowDossier());
    } catch (const std::exception& failure) {
      watch_.Failed(failure);
    }
  }

  // Mostly the first of the sample; at times nobody, or who was on show last.
  std::string PersonOf(int number, int operation) const {
    if (operation == 0 && number % 3 != 0) return "";
    const int draw = number % 20;
    if (draw < 8) return persons_[0];
    if (draw < 16) return Pick(persons_, number / 20);
    if (draw < 19) return visit_.runtime.window ? visit_.runtime.window->personID : persons_[0];
    return "00000000-0000-0000-0000-000000000000";
  }

  void Step(toolkit::Form& form, const Action& action) {
    watch_.BeforeStep(action);
    choice_ = action.number;
    const Place place = PlaceOf(form);
    const bool done = Anywhere(form, action) || (place == Place::kDossier && InDossier(action)) ||
                      (place == Place::kPicker && InPicker(form, action)) ||
                      (place == Place::kPreview && InPreview(form, action));
    if (!done) ++tally_["actions that found nothing to do"];
    watch_.AfterStep(action);
  }

  bool Anywhere(toolkit::Form& form, const Action& action) {
    switch (action.what) {
      case Do::kOpen:
        next_visit_ = action;
        form.UserClose();
        return true;
      case Do::kClose: form.UserClose(); return true;
      case Do::kType:
        user_.Type(environment::Replace(environment::Replace(action.text, "\r", ""), "\n", ""));
        return true;
      case Do::kPaste: user_.Paste(action.text); return true;
      case Do::kKey: return Press(form, action.text);
      case Do::kAgain: ShowAgain(); return true;
      default: return false;
    }
  }

  bool Press(const toolkit::Form& form, const std::string& name) {
    const auto key = std::ranges::find_if(kKeys, [&](const Key& known) { return name == known.name; });
    if (key == kKeys.end() || (key->shift == toolkit::kAlt && PlaceOf(form) != Place::kDossier)) return false;
    if (key->key != toolkit::kKeyTab) {
      user_.Press(key->key, key->shift);
    } else if (key->shift == 0) {
      user_.Tab();
    } else {
      user_.BackTab();
    }
    return true;
  }

  // Refused before anything is touched.
  void ShowAgain() {
    try {
      visit_.component.ShowDossier();
    } catch (const environment::Failure& failure) {
      if (failure.number() == environment::kAlreadyShown) return;
    }
    watch_.Complain("second visit", "ShowDossier during a visit was not refused");
  }

  std::vector<std::string> FieldNames() {
    std::vector<std::string> names;
    if (const auto page = visit_.Window().GetUserCtrl()) {
      for (const auto& control : page->Controls()) {
        if (IsValueControl(*control)) names.push_back(control->Name());
      }
    }
    return names;
  }

  bool InDossier(const Action& action) {
    const auto fields = FieldNames();
    switch (action.what) {
      case Do::kMenu:
        user_.ClickMenu(1 + action.number % visit_.Window().VMenu1().menuitemsmax());
        return true;
      case Do::kToolbar: user_.ClickToolbar(action.text); return true;
      case Do::kField:
        if (fields.empty()) return false;
        user_.Click(Pick(fields, action.number));
        return true;
      case Do::kDouble:
        if (fields.empty()) return false;
        user_.DoubleClick(Pick(fields, action.number));
        return true;
      case Do::kPhoto: return Click("cmdAddPhoto");
      case Do::kRow: return ClickRow(action.number);
      case Do::kFill: Fill(fields); return true;
      case Do::kResize:
        visit_.Window().UserResize(6000 + action.number % 20'000, 6000 + action.number % 15'000);
        return true;
      default: return false;
    }
  }

  bool Click(const std::string& button) {
    const auto page = visit_.Window().GetUserCtrl();
    if (!page || !page->Controls().Find(button)) return false;
    user_.Click(button);
    return true;
  }

  bool ClickRow(int number) {
    const auto page = std::dynamic_pointer_cast<ctrlUser>(visit_.Window().GetUserCtrl());
    if (!page || !page->AdodcRs() || page->AdodcRs()->RecordCount() == 0) return false;
    user_.ClickRow(1 + number % page->AdodcRs()->RecordCount());
    return true;
  }

  void Fill(const std::vector<std::string>& fields) {
    const auto page = visit_.Window().GetUserCtrl();
    const auto stays = [&] {
      return !watch_.Found() && !visit_.Window().LoopEnded() && visit_.Window().GetUserCtrl() == page;
    };
    for (const std::string& name : fields) {
      if (!stays()) return;
      user_.Click(name);
      if (!stays() || visit_.Focus() != name) continue;
      user_.Press('A', toolkit::kCtrl);
      user_.Type(FittingText(*page->FieldItems()->Item(name.substr(0, name.size() - 2))));
    }
  }

  bool InPicker(toolkit::Form& form, const Action& action) {
    auto& tree = dynamic_cast<toolkit::TreeView&>(*form.Controls().Find("tvGrpCod"));
    auto& list = dynamic_cast<toolkit::ListBox&>(*form.Controls().Find("lstDmCpt"));
    switch (action.what) {
      case Do::kTab: user_.SelectTab("Tab1", action.number % 2); return true;
      case Do::kNode: return OnNode(tree, action.number, &Player::ClickNode);
      case Do::kFold: return OnNode(tree, action.number, &Player::FoldNode);
      case Do::kPick: return OnNode(tree, action.number, &Player::PickNode);
      case Do::kList: return ClickListRow(list, action.number);
      case Do::kListTwice:
        if (!ClickListRow(list, action.number)) return false;
        user_.DoubleClick("lstDmCpt");
        return true;
      case Do::kHover:
        if (toolkit::OnHiddenTab(list)) return false;
        list.UserMouseMove(0, 0, 15, action.number % 5000);
        return true;
      case Do::kSearch: Search(form, action.text); return true;
      case Do::kButton: return ClickOf(form, action.text);
      default: return false;
    }
  }

  void ClickNode(const std::string& key) { user_.ClickNode("tvGrpCod", key); }
  void FoldNode(const std::string& key) { user_.FoldNode("tvGrpCod", key); }
  void PickNode(const std::string& key) {
    user_.ClickNode("tvGrpCod", key);
    user_.DoubleClick("tvGrpCod");
  }

  // The node of that number, or the one above it that is in sight.
  bool OnNode(toolkit::TreeView& tree, int number, void (Player::*act)(const std::string&)) {
    if (tree.Nodes().Count() == 0 || toolkit::OnHiddenTab(tree)) return false;
    int node = number % tree.Nodes().Count();
    while (!tree.InSight(node)) node = tree.Nodes().Parent(node);
    (this->*act)(std::string(tree.Nodes().At(node).Key()));
    return true;
  }

  bool ClickListRow(toolkit::ListBox& list, int number) {
    if (toolkit::OnHiddenTab(list)) return false;
    user_.ClickListRow("lstDmCpt", number % (list.ListCount() + 1));
    return true;
  }

  void Search(toolkit::Form& form, const std::string& text) {
    user_.SelectTab("Tab1", 1);
    user_.Click("txtDm");
    user_.Press('A', toolkit::kCtrl);
    user_.Paste(text);
    if (!form.LoopEnded()) user_.Press(toolkit::kKeyReturn);
  }

  bool InPreview(toolkit::Form& form, const Action& action) {
    if (action.what == Do::kChoose) return ClickOf(form, "cmdSelPic");
    return action.what == Do::kButton && ClickOf(form, action.text);
  }

  bool ClickOf(toolkit::Form& form, const std::string& button) {
    if (!form.Controls().Find(button)) return false;
    user_.Click(button);
    return true;
  }

  const Source& source_;
  const tests::PhotoFolder& folder_;
  tests::Visit visit_;
  tests::User& user_ = visit_.user;
  Watch watch_;
  Tally& tally_;
  std::vector<std::string> persons_;
  std::optional<Action> next_visit_;
  int choice_ = 0;
};

}  // namespace

std::optional<Violation> Play(const Source& source, const tests::PhotoFolder& folder, Tally& tally) {
  tests::ExpectProgressWithin(kSecondsOfAVisit, "a visit of random actions");
  return Player(source, folder, tally).Run();
}

std::optional<Violation> Play(const Actions& actions, const tests::PhotoFolder& folder, Tally& tally) {
  std::size_t next = 0;
  return Play([&](Place) { return next < actions.size() ? std::optional(actions[next++]) : std::nullopt; },
              folder, tally);
}

void MakeChoices(const tests::PhotoFolder& folder) {
  for (const char* name : {"one.jpg", "two.jpg"}) folder.MakeChoice(name, tests::Jpeg(name));
  folder.MakeChoice("fits.jpg", tests::JpegOfSize(kLargestPicture));
  folder.MakeChoice("large.jpg", tests::JpegOfSize(kLargestPicture + 1));
  folder.MakeChoice("broken.jpg", "no picture");
}

}  // namespace dossierkit::random
