// Watch: what must hold after every step of a visit, and at every statement and message box in it.
#pragma once

#include <exception>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/random/action.h"
#include "tests/support/photo_folder.h"
#include "tests/support/visit.h"

namespace dossierkit::random {

struct Violation {
  std::string rule;  // the same for violations of the same kind
  std::string what;
};

// How often what happened, over many visits.
using Tally = std::map<std::string, long>;

class Watch {
 public:
  // Puts itself between the component and the database of the visit.
  Watch(tests::Visit& visit, const tests::PhotoFolder& folder, Tally& tally);

  // The windows that run a loop, from the first to open.
  void Opened(toolkit::Form& form);
  void Closed();
  toolkit::Form* Topmost() const { return windows_.empty() ? nullptr : windows_.back(); }

  void BeforeVisit();
  void BeforeStep(const Action& action);
  void AfterStep(const Action& action);
  void Shown(const headless::Message& message);
  // How ShowDossier ended.
  void Returned(bool saved);
  void Failed(const std::exception& failure);

  // The first violation.
  const std::optional<Violation>& Found() const { return found_; }
  void Complain(const std::string& rule, const std::string& what);

 private:
  // watch.cpp: what passes.
  void Ran(const ado::Trace& trace);
  bool LoadsPicker() const;
  bool HasApostrophe() const;
  bool HasLargeNumber() const;
  bool MayFail(int number, const std::exception& failure) const;
  std::string StoredCount(const std::string& table, const std::string& condition) const;

  // watch_state.cpp: what stands.
  void Check();
  void CheckWindows();
  void CheckPage();
  void CheckFill(ctrlUser& page);
  void CheckEdits(ctrlUser& page);
  void CheckStates(ctrlUser& page);
  void CheckOperation(ctrlUser& page, const std::string& operation);
  void CheckCommand(ctrlUser& page);
  void CheckValues(ctrlUser& page, const std::string& operation);
  void CheckName();
  void CheckSaved();
  void CheckOtherPersons();
  bool MayAddAgain(ctrlUser& page) const;

  tests::Visit& visit_;
  const tests::PhotoFolder& folder_;
  Tally& tally_;
  std::optional<Violation> found_;
  std::vector<toolkit::Form*> windows_;

  // Of the present step.
  Action action_;
  bool box_shown_ = false;
  std::size_t questions_ = 0;
  bool wrote_ = false;
  std::vector<std::string> errors_;                       // of statements that failed, not told yet
  std::vector<std::string> recent_errors_;                // told or not
  std::map<std::string, std::set<std::string>> written_;  // table, persons

  // As seen last.
  std::weak_ptr<DossierPage> page_;
  std::weak_ptr<DossierPage> cancelled_page_;
  std::shared_ptr<cFieldItems> items_;
  std::map<std::string, std::string> texts_;
  bool saved_ = false;
  std::map<std::string, std::vector<std::string>> rows_;
};

}  // namespace dossierkit::random
