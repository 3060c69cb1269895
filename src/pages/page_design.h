// PageDesign: what makes one page differ from another, as data.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/toolkit/controls/control.h"

namespace dossierkit {

// One field of a page: its caption Label `field`_c, then its value control `field`_v. The order of
// the fields is the tab order. Places are in twips of the page.
struct FieldDesign {
  enum class Kind { kText, kMultiLine, kMask };
  std::string_view field;  // as in A01_A0101, also the key in FieldItems
  Kind kind = Kind::kText;
  std::string_view caption;  // design text of the Label; empty: the field has no such Label
  toolkit::Rect label;
  toolkit::Rect box;
  std::string_view mask = {};
  std::string_view format = {};
  std::string_view tag = {};
  // The fixed Label that names the field for a screen reader where it has no Label of its own.
  std::string_view labelled_by = {};
};

// A Label whose text the metadata never touches.
struct FixedLabel {
  std::string_view name;
  std::string_view caption;
  toolkit::Rect place;
};

// Which question AdodcRs_WillMove asks.
enum class MoveQuestion { kSave, kContinue };

struct PageDesign {
  std::string_view set;    // as in A05; the page is ctrlUserA05
  std::string_view title;  // empty: the page has the frame frmBasicInfo in its place
  std::string_view hint;   // the page's own lines of LabInterFace; empty for none
  MoveQuestion move_question = MoveQuestion::kContinue;
  bool caret_step = false;
  bool key_preview = false;
  bool photo = false;
  std::vector<FieldDesign> fields;
  std::vector<FixedLabel> fixed_labels = {};
  toolkit::Rect grid;        // DGItems
  bool grid_visible = true;  // in the design
};

// The designs of all sixteen pages, in the order of their sets.
const std::vector<const PageDesign*>& PageDesigns();

// The design of a set's page, or nullptr.
const PageDesign* FindPageDesign(std::string_view set);

}  // namespace dossierkit
