// Action: one thing that a user does, as it is drawn, played, shrunk and written to a file.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace dossierkit::random {

// Where an action is played on something chosen by number, the number is taken modulo what there is.
enum class Do {
  kArrange,  // between visits: one of the changes of the data
  kOpen,     // leaves the window by its close box and comes back; text: operation/person type/folder
  kAgain,    // ShowDossier during the visit
  kClose,    // the close box
  kResize,
  kMenu,       // an item of the menu, by number
  kToolbar,    // a button, by its key
  kField,      // clicks a field, by number
  kDouble,     // double-clicks a field, by number
  kPhoto,      // the photograph's button
  kRow,        // a row of the record list, by number
  kType,       // types the text into whatever has the focus
  kPaste,      // pastes it
  kKey,        // a key by its name, as in Ctrl+S
  kFill,       // enters fitting values into all fields of the page
  kTab,        // the picker's tabs
  kNode,       // a node of the picker's tree
  kFold,       // opens or closes one
  kPick,       // double-clicks one
  kList,       // a row of the picker's list
  kListTwice,  // double-clicks one
  kHover,      // rests over one
  kSearch,     // enters a text to search for and presses Enter
  kButton,     // a command button, by its name
  kChoose,     // the preview's button for another picture; number: the file
};

struct Action {
  Do what = Do::kClose;
  int number = 0;
  std::string answers = "y";  // to the questions asked meanwhile, y or n each, over and over
  std::string text;

  bool operator==(const Action&) const = default;
};
using Actions = std::vector<Action>;

// One line each: kind, number, answers, text. Lines that begin with "#" are comments. ReadActions
// throws std::runtime_error for a line that it cannot read.
std::string TextOf(const Action& action);
void WriteActions(std::ostream& out, const Actions& actions);
Actions ReadActions(std::istream& in);

}  // namespace dossierkit::random
