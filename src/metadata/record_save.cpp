#include "metadata/record_save.h"

#include "metadata/field_items.h"
#include "metadata/record_checks.h"
#include "metadata/record_lists.h"
#include "platform/ado/recordset.h"
#include "platform/environment/text.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

using environment::TextOf;

Walk ChooseWalk(const DossierWindow& window, const cWhInfo& info) {
  if (info.TabId == "A01" && window.DealType == 0) return Walk::kInsert;
  if (info.TabId == "A01" && window.DealType == 3) return Walk::kUpdate;
  return Walk::kReplace;
}

// " and A0399 = 2" in a set of many records per person.
std::string NumberCondition(const cWhInfo& info) {
  return info.IsMult ? " and " + info.TabId + "99 = " + std::to_string(info.id) : "";
}

// The lists as they stand before the first control.
RecordLists StartInsert(const DossierWindow& window, const cWhInfo& info) {
  const auto highest = gConnection().Execute("select iif(max(A0199) is null,0,max(A0199)) from a01  ");
  const std::int16_t running =
      environment::ToInt16(std::int64_t{environment::ToInt32(highest->Fields(0))} + 1);
  return {" A00 ,A0136,A0199",
          "'" + info.personID + "'," + std::to_string(window.PersonType) + " ," + std::to_string(running)};
}

RecordLists StartReplace(const cWhInfo& info) {
  gConnection().Execute("delete from " + info.TabId + " where A00='" + info.personID + "' " +
                        NumberCondition(info));
  RecordLists lists(" A00 ", "'" + info.personID + "'");
  if (info.IsMult) lists.AddQuoted(info.TabId + "99", std::to_string(info.id));
  return lists;
}

// One pass over the controls that both checks each field and writes it down.
void WalkControls(DossierPage& ctrl, const std::shared_ptr<cFieldItems>& items, RecordChecks& checks,
                  RecordLists& lists) {
  for (const auto& control : ctrl.Controls()) {
    if (!IsValueControl(*control)) continue;
    const auto& item = *items->Item(KeyOf(*control));
    if (const auto* text = dynamic_cast<const toolkit::TextBox*>(control.get())) {
      checks.CheckText(item, text->Text());
      lists.AddText(item, text->Text());
    } else if (const auto* masked = dynamic_cast<const toolkit::MaskEdBox*>(control.get())) {
      checks.CheckMasked(item, *masked);
      lists.AddMasked(item, *masked);
    } else if (const auto* check = dynamic_cast<const toolkit::CheckBox*>(control.get())) {
      lists.AddQuoted(item.ItemName, std::to_string(check->Value()));
    }
  }
}

void RefreshPersonName(DossierWindow& window) {
  const auto name = gConnection().Execute("select iif(a0101 is null,'',a0101) from a01 where a00='" +
                                          window.personID + "'");
  window.labPersonName().SetCaption(TextOf(name->Fields(0)));
}

void Insert(const std::string& set, const RecordLists& lists) {
  gConnection().Execute("insert into " + set + "(" + lists.Columns() + ") values(" + lists.Values() + ")");
}

void WriteNewPerson(DossierWindow& window, const cWhInfo& info, RecordLists& lists) {
  if (info.IsMult) {
    const auto number = gConnection().Execute("select max(" + info.TabId + "99)+1 from " + info.TabId +
                                              " where personid = '" + info.personID + "'");
    lists.AddQuoted(info.TabId + "99", TextOf(number->Fields(0)));
  }
  Insert(info.TabId, lists);
  RefreshPersonName(window);
}

void WriteBasicData(DossierWindow& window, const cWhInfo& info, const RecordLists& lists) {
  if (lists.Assignments().empty()) return;
  gConnection().Execute("update " + info.TabId + " set " + lists.Assignments() + " where A00='" +
                        info.personID + "'" + NumberCondition(info));
  RefreshPersonName(window);
}

// Gives the person's records their rank in the sort order as their number.
void Renumber(const cWhInfo& info) {
  const std::string number = info.TabId + "99";
  // Required: raised by 200 whatever their number is.
  gConnection().Execute("update " + info.TabId + " set " + number + " = " + number + " +200 where a00='" +
                        info.personID + "'");
  ado::Recordset rows;
  rows.Open("select * from " + info.TabId + " where A00 ='" + info.personID + "' order by " + info.FldOrder,
            gConnection());
  const std::int16_t count = environment::ToInt16(std::int64_t{rows.RecordCount()});
  for (std::int32_t i = 1; i <= count; ++i) {
    gConnection().Execute("update " + info.TabId + " set " + number + " = " + std::to_string(i) +
                          " where a00='" + info.personID + "' and " + number + " = " +
                          TextOf(rows.Fields(number)));
    rows.MoveNext();
  }
  rows.Close();
}

void WriteRecord(const cWhInfo& info, const RecordLists& lists) {
  Insert(info.TabId, lists);
  if (info.IsMult) Renumber(info);
}

}  // namespace

bool SaveRecord(DossierWindow& window, DossierPage& ctrl) {
  // Fetched before anything is written, and kept: required.
  const std::shared_ptr<cFieldItems> items = ctrl.FieldItems();
  const cWhInfo& info = ctrl.WhInfo();
  const Walk walk = ChooseWalk(window, info);
  RecordLists lists = walk == Walk::kInsert    ? StartInsert(window, info)
                      : walk == Walk::kReplace ? StartReplace(info)
                                               : RecordLists();
  RecordChecks checks(walk);
  WalkControls(ctrl, items, checks, lists);
  checks.CheckBirthDate();
  if (!checks.ErrorText().empty()) {
    TheRuntime().desktop.MsgBox(checks.ErrorText(), toolkit::kOkOnly, "错误信息");
    return false;
  }
  switch (walk) {
    case Walk::kInsert: WriteNewPerson(window, info, lists); break;
    case Walk::kUpdate: WriteBasicData(window, info, lists); break;
    case Walk::kReplace: WriteRecord(info, lists); break;
  }
  return true;
}

}  // namespace dossierkit
