#include "tests/random/watch.h"

#include <algorithm>

#include "codes/fm_grp_cod.h"
#include "metadata/field_items.h"
#include "platform/environment/failure.h"
#include "platform/environment/numbers.h"
#include "platform/environment/text.h"
#include "tests/random/catalogue.h"
#include "tests/random/messages.h"

namespace dossierkit::random {
namespace {

using environment::Failure;

bool HasLabel(const cFieldItems& items, const std::string& label) {
  for (std::int32_t i = 1; i <= items.Count(); ++i) {
    if (items.Item(static_cast<std::size_t>(i))->ItemDesc == label) return true;
  }
  return false;
}

// Whether there are words of the engine in it: two of small letters, outside of quotation marks.
bool HasEnglish(const std::string& text) {
  int words = 0;
  int letters = 0;
  bool quoted = false;
  for (const std::string& character : environment::Characters(text)) {
    if (character == "“") quoted = true;
    if (character == "”") quoted = false;
    if (!quoted && character >= "a" && character <= "z" && character.size() == 1) {
      if (++letters == 2) ++words;
    } else {
      letters = 0;
      if (character != " ") words = 0;
    }
    if (words == 2) return true;
  }
  return false;
}

}  // namespace

Watch::Watch(tests::Visit& visit, const tests::PhotoFolder& folder, Tally& tally)
    : visit_(visit), folder_(folder), tally_(tally) {
  visit_.component.SetConnection(std::make_shared<ado::TracingConnection>(
      visit_.failing, [this](const ado::Trace& trace) { Ran(trace); }));
  visit_.script.on_message = [this](const headless::Message& message) { Shown(message); };
}

void Watch::Complain(const std::string& rule, const std::string& what) {
  if (!found_) found_ = Violation{rule, what};
}

void Watch::Opened(toolkit::Form& form) {
  windows_.push_back(&form);
  const bool nested = windows_.size() == 2;
  const bool fits = windows_.size() == 1
                        ? form.Name() == "frmDossier"
                        : nested && (form.Name() == "fmGrpCod" || form.Name() == "frmPicturePreview");
  if (!fits) Complain("windows", form.Name() + " opened as window " + std::to_string(windows_.size()));
  ++tally_["window " + form.Name()];
  Check();
}

void Watch::Closed() { windows_.pop_back(); }

void Watch::BeforeVisit() {
  errors_.clear();
  saved_ = false;
  page_.reset();
  cancelled_page_.reset();
  items_.reset();
  texts_.clear();
}

void Watch::BeforeStep(const Action& action) {
  action_ = action;
  box_shown_ = false;
  questions_ = 0;
  wrote_ = false;
  recent_errors_.clear();
}

// --- statements ----------------------------------------------------------------------------------------

void Watch::Ran(const ado::Trace& trace) {
  ++tally_["statements"];
  const std::string person = visit_.runtime.window ? visit_.runtime.window->personID : "";
  const auto known = FindInCatalogue(trace.statement, person);
  if (!known) {
    Complain("statement", trace.statement);
    return;
  }
  if (known->writes && !known->set.empty()) {
    written_[known->set].insert(person);
    if (known->set == "A01") written_["*"].insert(person);
    if (trace.error.empty()) wrote_ = true;
  }
  if (trace.error.empty() || LoadsPicker()) return;
  ++tally_["statements that failed"];
  if (HasEnglish(trace.error)) Complain("words", trace.error);
  if (!HasApostrophe()) Complain("failed statement", trace.statement + ": " + trace.error);
  errors_.push_back(trace.error);
  recent_errors_.push_back(trace.error);
}

// Its failures are passed over.
bool Watch::LoadsPicker() const {
  const auto& picker = visit_.runtime.picker;
  return picker && picker->InVisit() && !picker->Shown();
}

// Whether the user has got an apostrophe into a box, the only way to break a statement.
bool Watch::HasApostrophe() const {
  const auto holds = [](const toolkit::Controls& controls) {
    return std::any_of(controls.begin(), controls.end(), [](const auto& control) {
      const auto* box = dynamic_cast<const toolkit::TextBox*>(control.get());
      return box && box->Text().find('\'') != std::string::npos;
    });
  };
  return std::any_of(windows_.begin(), windows_.end(), [&](toolkit::Form* form) {
    if (!form->Loaded()) return false;
    if (form->Name() != "frmDossier") return holds(form->Controls());
    const auto page = visit_.Window().GetUserCtrl();
    return page && holds(page->Controls());
  });
}

// --- message boxes -------------------------------------------------------------------------------------

void Watch::Shown(const headless::Message& message) {
  box_shown_ = true;
  ++tally_["box " + message.title + " " +
           (message.text.size() > 60 && message.title != "信息保存" && message.title != "信息校对"
                ? "..."
                : message.text)];
  const auto window = visit_.runtime.window;
  const auto page = window && window->Loaded() ? visit_.Window().GetUserCtrl() : nullptr;
  Circumstances now;
  now.is_label = [&](const std::string& label) {
    return page && page->FieldItems() && HasLabel(*page->FieldItems(), label);
  };
  now.is_failure = [&](const std::string& text) {
    return std::ranges::find(recent_errors_, text) != recent_errors_.end();
  };
  now.edited = page && page->WhInfo().IsChange;
  if (const auto& picker = visit_.runtime.picker; picker && picker->Shown())
    now.picker_caption = picker->Caption();
  if (const std::string complaint = ComplaintAbout(message, now); !complaint.empty())
    Complain("message", complaint);
  if (message.text == "溢出" && !HasLargeNumber()) Complain("message", "溢出 without a large number");
  // A person who was deleted and is then saved again is updated without a row.
  if (message.text == kNoRow && StoredCount("A01", "A00='" + window->personID + "'") != "0")
    Complain("message", message.text + " for a person who is stored");
  std::erase(errors_, message.text);
  if (message.flags & toolkit::kYesNo) {
    const std::string& answers = action_.answers;
    const bool yes = answers[questions_++ % answers.size()] == 'y';
    visit_.script.WillAnswer(yes ? toolkit::kAnswerYes : toolkit::kAnswerNo);
  }
}

// Whether a number on the page or a running number is beyond 16 bits.
bool Watch::HasLargeNumber() const {
  if (const auto page = visit_.Window().GetUserCtrl()) {
    for (const auto& control : page->Controls()) {
      const auto* box = dynamic_cast<const toolkit::TextBox*>(control.get());
      if (!box || !IsValueControl(*box)) continue;
      const auto number = environment::ParseNumber(box->Text());
      if (number && (*number > 32767.4 || *number < -32768.4)) return true;
    }
  }
  return StoredCount("A01", "A0199 >= 32767") != "0";
}

std::string Watch::StoredCount(const std::string& table, const std::string& condition) const {
  return tests::One(*visit_.database, "select count(*) from " + table + " where " + condition);
}

// --- the end of a visit --------------------------------------------------------------------------------

void Watch::Returned(bool saved) {
  ++tally_[saved ? "visits that saved" : "visits that did not save"];
  if (saved != saved_) Complain("result", saved ? "True without a save" : "False after a save");
  if (!errors_.empty()) Complain("swallowed failure", errors_.front());
  Check();
}

void Watch::Failed(const std::exception& failure) {
  const auto* known = dynamic_cast<const Failure*>(&failure);
  const int number = known ? known->number() : 0;
  ++tally_["failure " + std::to_string(number) + " " + failure.what()];
  std::erase(errors_, failure.what());
  if (!known || !MayFail(number, failure)) Complain("failure " + std::to_string(number), failure.what());
  if (!errors_.empty()) Complain("swallowed failure", errors_.front());
  Check();
}

// The failures that may leave ShowDossier, each with what must be so for it.
bool Watch::MayFail(int number, const std::exception& failure) const {
  const auto& window = *visit_.runtime.window;
  const std::string is_person = "A00='" + window.personID + "'";
  const std::string what = failure.what();
  switch (number) {
    case environment::kObjectUnloaded:
      return window.OperationType == 3 && box_shown_ && StoredCount("A01", is_person) != "1";
    case environment::kUnknownClass:
      return what.ends_with("：DossierKit.ctrlUserB02") || what.ends_with("：DossierKit.ctrlUserB03") ||
             what.ends_with("：DossierKit.ctrlUser");
    case environment::kInvalidPicture: {
      const std::string bytes = tests::PhotoFolder::Read(folder_.Photo(window.personID));
      return !bytes.empty() && !bytes.starts_with("\xFF\xD8");
    }
    case environment::kOverflow:
      // The greatest number of a list is read back, or the next one is drawn.
      return StoredCount("A03", is_person + " and A0399 >= 32767") != "0";
    case environment::kObjectNotSet:
      // Enter in a tree without nodes.
      return StoredCount("s_CodeLevDefine", "dmgrp='LCZW'") == "0";
    default: {
      // The picker's search on a text with an apostrophe.
      const auto& statement = static_cast<const Failure&>(failure).statement();
      return statement.find(" where dmattr =true and   dmcod<>''") != std::string::npos &&
             std::ranges::count(statement, '\'') > 10;
    }
  }
}

}  // namespace dossierkit::random
