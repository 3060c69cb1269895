// What each of the sixteen pages holds and says, written out once more by hand: a slip in a design, or in
// what becomes of it, fails against this copy.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace dossierkit::tests {

// In what the pages differ apart from their fields.
enum Difference : unsigned {
  kAsksToSave = 1,   // before a move in the list; the others ask whether to go on
  kCaretStep = 2,    // a mask that gets the focus has its caret put first
  kKeyPreview = 4,   // short cuts work, and the apostrophe is kept out
  kPhoto = 8,        // the photograph, its button and its frame
  kListHidden = 16,  // in the design
};

struct Page {
  std::string set;
  std::string title;
  std::string hint;
  unsigned differences;
  // In tab order: field, kind (T text, TM text of many lines, M mask), caption in the design, mask, format,
  // tag; the empty ends left out.
  std::vector<std::string> fields;
  // The labels that the metadata leaves alone: name and text.
  std::vector<std::pair<std::string, std::string>> fixed_labels = {};

  bool Has(Difference difference) const { return (differences & difference) != 0; }
};

const std::vector<Page>& SixteenPages();

// The sets of the pages that have it.
inline std::vector<std::string> SetsWith(Difference difference) {
  std::vector<std::string> sets;
  for (const Page& page : SixteenPages()) {
    if (page.Has(difference)) sets.push_back(page.set);
  }
  return sets;
}

// "A01_A0101" of such a line.
inline std::string FieldOf(const std::string& line) { return line.substr(0, line.find('|')); }

}  // namespace dossierkit::tests
