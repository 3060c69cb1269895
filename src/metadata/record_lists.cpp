#include "metadata/record_lists.h"

#include "platform/environment/text.h"

namespace dossierkit {
namespace {

void Append(std::string& list, const std::string& piece) {
  if (!list.empty()) list += ",";
  list += piece;
}

}  // namespace

void RecordLists::AddQuoted(const std::string& column, const std::string& value) {
  if (insert_) {
    Append(columns_, column);
    Append(values_, "'" + value + "'");
  } else {
    Append(assignments_, column + " = '" + value + "'");
  }
}

void RecordLists::AddCleared(const std::string& column) {
  if (!insert_) Append(assignments_, column + " = null");
}

void RecordLists::AddText(const cFieldItem& item, const std::string& text) {
  const std::string type = environment::LowerCase(item.FieldType);
  if (type == "varchar") {
    AddQuoted(item.ItemName, item.CodeTable.empty() ? text : environment::TextOf(item.Dmcod));
  } else if (type == "ntext" || type == "bit") {
    AddQuoted(item.ItemName, text);
  } else if (type == "int") {
    // Required: a cleared number is left out, so that an update keeps the old one.
    if (!text.empty()) AddQuoted(item.ItemName, text);
  } else if (type == "datetime") {
    if (text.empty()) {
      AddCleared(item.ItemName);
    } else {
      AddQuoted(item.ItemName, text);
    }
  }
}

void RecordLists::AddMasked(const cFieldItem& item, const toolkit::MaskEdBox& box) {
  const std::string type = environment::LowerCase(item.FieldType);
  if (type == "varchar") {
    AddQuoted(item.ItemName, IsFilled(box) ? box.Text() : "");
  } else if (type == "datetime") {
    if (IsFilled(box)) {
      AddQuoted(item.ItemName, box.Text());
    } else {
      AddCleared(item.ItemName);
    }
  }
}

}  // namespace dossierkit
