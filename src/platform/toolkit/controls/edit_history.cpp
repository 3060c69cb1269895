#include "platform/toolkit/controls/edit_history.h"

#include <utility>

namespace dossierkit::toolkit {

void EditHistory::Forget() {
  done_.clear();
  undone_.clear();
  grows_ = false;
}

void EditHistory::Note(TextEdit edit, EditKind kind, const Selection& before, const Selection& after) {
  undone_.clear();
  const bool joins =
      grows_ && kind != EditKind::kOther && done_.back().kind == kind && before == done_.back().after;
  if (!joins) done_.push_back({{}, kind, before, after});
  done_.back().edits.push_back(std::move(edit));
  done_.back().after = after;
  grows_ = true;
}

std::optional<Selection> EditHistory::Undo(std::string& text) {
  if (done_.empty()) return std::nullopt;
  Step step = std::move(done_.back());
  done_.pop_back();
  grows_ = false;
  for (std::size_t i = step.edits.size(); i-- > 0;) {
    const TextEdit& edit = step.edits[i];
    text.replace(edit.position, edit.inserted.size(), edit.removed);
  }
  undone_.push_back(std::move(step));
  return undone_.back().before;
}

std::optional<Selection> EditHistory::Redo(std::string& text) {
  if (undone_.empty()) return std::nullopt;
  Step step = std::move(undone_.back());
  undone_.pop_back();
  for (const TextEdit& edit : step.edits) text.replace(edit.position, edit.removed.size(), edit.inserted);
  done_.push_back(std::move(step));
  return done_.back().after;
}

}  // namespace dossierkit::toolkit
