// What must hold of windows, page, toolbar and stored data after a step.
#include <algorithm>

#include "metadata/field_items.h"
#include "platform/environment/text.h"
#include "tests/random/watch.h"

namespace dossierkit::random {
namespace {

const char* const kSets[] = {"A01", "A02", "A03", "A04", "A05", "A06", "A08", "A09",
                             "A10", "A11", "A12", "A13", "A14", "A15", "A21", "B01"};

std::map<std::string, std::string> TextsOf(ctrlUser& page) {
  std::map<std::string, std::string> texts;
  for (const auto& control : page.Controls()) {
    if (!IsValueControl(*control)) continue;
    if (const auto* text = dynamic_cast<toolkit::TextBox*>(control.get())) texts[text->Name()] = text->Text();
    if (const auto* masked = dynamic_cast<toolkit::MaskEdBox*>(control.get()))
      texts[masked->Name()] = masked->Text();
  }
  return texts;
}

}  // namespace

void Watch::AfterStep(const Action& action) {
  action_ = action;  // there may have been steps in windows meanwhile
  Check();
}

void Watch::Check() {
  if (found_) return;
  CheckOtherPersons();
  if (windows_.empty()) return;
  CheckWindows();
  if (!visit_.Window().Loaded()) return;
  CheckPage();
  CheckSaved();
  // While the topmost window is about to go, its failure may be on the way.
  if (!errors_.empty() && !Topmost()->LoopEnded()) Complain("swallowed failure", errors_.front());
}

void Watch::CheckWindows() {
  for (toolkit::Form* form : windows_) {
    const auto& focus = form->ActiveControl();
    if (focus && (focus->Removed() || focus->Window() != form))
      Complain("focus", focus->Name() + " has the focus of " + form->Name() + " and is gone");
  }
}

void Watch::CheckPage() {
  auto& window = visit_.Window();
  std::shared_ptr<DossierPage> page;
  for (const auto& control : window.Controls()) {
    const auto found = std::dynamic_pointer_cast<DossierPage>(control);
    if (!found) continue;
    if (page) Complain("one page", page->Name() + " and " + found->Name());
    page = found;
  }
  if (window.LoopEnded()) return;
  if (!page) {
    Complain("one page", "no page");
    return;
  }
  auto& shown = dynamic_cast<ctrlUser&>(*page);
  CheckFill(shown);
  CheckEdits(shown);
  CheckStates(shown);
  CheckCommand(shown);
  CheckName();
  page_ = page;
  items_ = page->FieldItems();
  texts_ = TextsOf(shown);
}

// A page that was filled in this step holds no edits.
void Watch::CheckFill(ctrlUser& page) {
  const bool filled = page_.lock().get() != &page || items_ != page.FieldItems();
  if (filled && page.WhInfo().IsChange) Complain("edits after a fill", page.Name());
  if (page.WhInfo().personID != visit_.Window().personID) Complain("person", page.WhInfo().personID);
  if ("ctrlUser" + page.WhInfo().TabId != page.Name())
    Complain("set", page.Name() + " shows " + page.WhInfo().TabId);
}

// A text that changed without a fill marks the page.
void Watch::CheckEdits(ctrlUser& page) {
  if (page_.lock().get() != &page || items_ != page.FieldItems() || box_shown_) return;
  if (!page.WhInfo().IsChange && texts_ != TextsOf(page)) Complain("edits not marked", page.Name());
}

// --- the table of states -------------------------------------------------------------------------------

void Watch::CheckStates(ctrlUser& page) {
  const auto& info = page.WhInfo();
  const bool many = info.IsMult || info.TabId == "A01";
  const bool frame = visit_.Window().Controls().Find("frmCtrl")->Enabled();
  const bool add = visit_.Enabled("Add");
  const bool remove = visit_.Enabled("Delete");
  const auto label = std::dynamic_pointer_cast<toolkit::Label>(page.Controls().Find("labOpt"));
  const std::string operation = label ? label->Caption() : "no label";
  const bool cancel = action_.what == Do::kToolbar ? action_.text == "Cancel"
                                                   : action_.what == Do::kKey && action_.text == "Alt+C";
  if (cancel) cancelled_page_ = std::static_pointer_cast<DossierPage>(page.shared_from_this());

  bool fits = false;
  if (operation == "当前操作：修改")
    fits = frame && remove == many && (add == many || (add && MayAddAgain(page)));
  // A move in the list writes a blank behind it.
  if (operation == "当前操作：修改 ") fits = frame && info.IsMult && add && remove;
  if (operation == "当前操作：增加") fits = frame && !remove && (!add || MayAddAgain(page));
  // Add was stopped by the limit: records without a number fill the set.
  if (operation.empty()) fits = !frame && info.IsMult && add && remove;
  for (const char* always : {"Save", "Cancel", "Exit"}) fits = fits && visit_.Enabled(always);
  if (!fits) {
    const auto flag = [](const char* name, bool on) {
      return std::string(" ") + name + (on ? " on" : " off");
    };
    Complain("state", page.Name() + " '" + operation + "'" + flag("frame", frame) + flag("Add", add) +
                          flag("Delete", remove) + flag("edits", info.IsChange) + " mode " +
                          std::to_string(visit_.Window().DealType));
  }
  CheckOperation(page, operation);
  CheckValues(page, operation);
}

// Cancel enables Add for a person who is not stored yet.
bool Watch::MayAddAgain(ctrlUser& page) const {
  return visit_.Window().DealType == 0 && cancelled_page_.lock().get() == &page;
}

// A new page shows what is stored, or a new record where nothing is.
void Watch::CheckOperation(ctrlUser& page, const std::string& operation) {
  if (page_.lock().get() == &page) return;
  const auto& info = page.WhInfo();
  std::string condition = "A00='" + info.personID + "'";
  if (info.IsMult) condition += " and " + info.TabId + "99 > 0";
  const bool stored = StoredCount(info.TabId, condition) != "0";
  if (operation == "当前操作：修改" && !stored)
    Complain("operation", page.Name() + " shows a record that is not there");
  const bool saves = (action_.what == Do::kToolbar && action_.text == "Save") || action_.what == Do::kKey;
  if (operation == "当前操作：增加" && stored && !saves)
    Complain("operation", page.Name() + " opened on a new record beside stored ones");
}

// A stored record that was filled in shows what is stored, where its number is its own.
void Watch::CheckValues(ctrlUser& page, const std::string& operation) {
  const bool filled = page_.lock().get() != &page || items_ != page.FieldItems();
  if (!filled || visit_.Window().DealType != 3 || !operation.starts_with("当前操作：修改")) return;
  const auto& info = page.WhInfo();
  std::string query = "select * from " + info.TabId + " where A00='" + info.personID + "'";
  if (info.IsMult) query += " and " + info.TabId + "99 = " + std::to_string(info.id);
  const auto row = visit_.database->Execute(query);
  // Without a caption for the number the list cannot tell it, and the form stays empty.
  const bool numbered = !info.IsMult || StoredCount("s_infoitem", "itemdesc <> '' and itemname = '" +
                                                                      info.TabId + "99'") != "0";
  if (row->RecordCount() != 1 || !numbered) return;
  for (std::int32_t i = 1; i <= page.FieldItems()->Count(); ++i) {
    const auto& item = *page.FieldItems()->Item(static_cast<std::size_t>(i));
    const auto box = std::dynamic_pointer_cast<toolkit::TextBox>(
        page.Controls().Find(info.TabId + "_" + item.ItemName + "_v"));
    if (!box || !item.CodeTable.empty()) continue;
    const std::string stored = environment::TextOr(row->Fields(item.ItemName), "");
    if (box->Text() != stored)
      Complain("values", box->Name() + " '" + box->Text() + "', stored '" + stored + "'");
  }
}

// A click on the menu of which nothing was said opens that set; a save that reloads counts.
void Watch::CheckCommand(ctrlUser& page) {
  auto& window = visit_.Window();
  if (action_.what == Do::kMenu && !box_shown_ && Topmost() == &window) {
    const auto& items = window.VMenu1().Items();
    const auto& key = items[static_cast<std::size_t>(action_.number) % items.size()].key;
    if (page.WhInfo().TabId != key) Complain("menu", page.Name() + " after a click on '" + key + "'");
  }
  const bool save = action_.what == Do::kToolbar
                        ? action_.text == "Save"
                        : action_.what == Do::kKey && (action_.text == "Ctrl+S" || action_.text == "Alt+S");
  if (save && page_.lock().get() != &page && (!window.IsSaved || window.DealType != 3))
    Complain("result", "a save that reloaded does not count");
}

// --- what is stored ------------------------------------------------------------------------------------

void Watch::CheckName() {
  auto& window = visit_.Window();
  if (window.OperationType != 3 || window.DealType != 3) return;
  const auto names =
      tests::Column(*visit_.database, "select a0101 from A01 where A00='" + window.personID + "'");
  if (names.size() != 1) return;
  const std::string stored = names[0] == "NULL" ? "" : names[0];
  if (window.labPersonName().Caption() != stored)
    Complain("name", "'" + window.labPersonName().Caption() + "' on show, '" + stored + "' stored");
}

// Only a save that wrote makes the result True, and nothing takes it back.
void Watch::CheckSaved() {
  const bool saved = visit_.Window().IsSaved;
  if (saved_ && !saved) Complain("result", "the result was taken back");
  if (!saved_ && saved && !wrote_) Complain("result", "saved without a write");
  saved_ = saved;
}

// A step changes rows of nobody but the person on show.
void Watch::CheckOtherPersons() {
  const bool first = rows_.empty();
  for (const char* set : kSets) {
    const bool written = written_.contains(set) || written_.contains("*");
    if (!first && !written) continue;
    auto now = tests::Rows(*visit_.database, std::string("select * from ") + set);
    if (!first) {
      std::set<std::string> persons;
      for (const char* table : {set, "*"}) {
        if (const auto found = written_.find(table); found != written_.end())
          persons.insert(found->second.begin(), found->second.end());
      }
      const auto others = [&](std::vector<std::string> rows) {
        std::erase_if(rows,
                      [&](const std::string& row) { return persons.contains(row.substr(0, row.find('|'))); });
        return rows;
      };
      if (others(rows_[set]) != others(now))
        Complain("other persons", std::string("rows of others changed in ") + set);
    }
    rows_[set] = std::move(now);
  }
  written_.clear();
}

}  // namespace dossierkit::random
