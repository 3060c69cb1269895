// The commands of the toolbar, on the page on show, and what they need.
#include "metadata/loaders.h"
#include "photos/photo_files.h"
#include "platform/ado/recordset.h"
#include "platform/environment/placed_failure.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/data_grid.h"
#include "shell/frm_dossier.h"
#include "visit/runtime.h"

namespace dossierkit {

using environment::TextOf;

void frmDossier::TbMain_ButtonClick(const toolkit::ToolbarButton& Button) {
  const auto ctrl = GetUserCtrl();
  if (!ctrl) return;
  const std::string& key = Button.Key();
  const std::string set = ctrl->WhInfo().TabId;
  const auto run = [&](const char* doing, void (frmDossier::*command)(DossierPage&)) {
    environment::At({.set = set, .doing = doing}, [&] { (this->*command)(*ctrl); });
  };
  if (key == "Add") run("增加记录", &frmDossier::Add);
  if (key == "Delete") run("删除记录", &frmDossier::Delete);
  if (key == "Save") run("保存记录", &frmDossier::SaveCommand);
  if (key == "Cancel") run("取消修改", &frmDossier::Cancel);
  if (key == "Exit") run("退出", &frmDossier::Exit);
}

toolkit::MessageAnswer frmDossier::Ask(const std::string& question) {
  return GetDesktop().MsgBox(question, toolkit::kYesNo, Caption());
}

// Required: the mark of edits is lost, and the edits stay on the screen.
void frmDossier::ShowLimit(DossierPage& ctrl, std::int16_t limit) {
  GetDesktop().MsgBox("此信息集最多只能录入" + std::to_string(limit) + "条记录。", toolkit::kOkOnly,
                      Caption());
  ctrl.WhInfo().IsChange = false;
}

std::int16_t frmDossier::IsMaxNumber(const cWhInfo& WhInfo) {
  if (!WhInfo.IsMult) return 0;
  ado::Recordset set;
  set.Open("select iif(maxnumber is null,0,maxnumber) as maxnumber from  s_infotable  where tblname ='" +
               WhInfo.TabId + "'",
           gConnection());
  const std::int16_t limit = environment::ToInt16(set.Fields(0));
  set.Close();
  if (limit <= 0) return 0;
  ado::Recordset count;
  count.Open("select count(*) from " + WhInfo.TabId + " where a00='" + WhInfo.personID + "'", gConnection());
  const bool reached = limit <= environment::ToInt32(count.Fields(0));
  count.Close();
  return reached ? limit : std::int16_t{0};
}

std::int16_t frmDossier::IsMaxNumber_Save(const cWhInfo& WhInfo) {
  const std::int16_t limit = IsMaxNumber(WhInfo);
  return DealType == 3 ? std::int16_t{0} : limit;
}

void frmDossier::SetLabOpt(DossierPage& ctrl, const std::string& alert) {
  for (const auto& control : ctrl.Controls()) {
    // A record that is being added is none of the list.
    if (auto* list = dynamic_cast<toolkit::DataGrid*>(control.get())) list->SetShowsRow(alert != "Add");
    if (!environment::EqualIgnoringCase(control->Name(), "labopt")) continue;
    if (auto* label = dynamic_cast<toolkit::Label*>(control.get())) {
      if (alert == "Add") label->SetCaption("当前操作：增加");
      if (alert == "Mod") label->SetCaption("当前操作：修改");
    }
    return;
  }
}

void frmDossier::NewPerson() {
  auto& menu = VMenu1();
  const std::int32_t item = menu.menuitemcur();
  menu.set_menuitemcur(SetCount + 1);
  NameExtraItem();
  menu.set_menuitemcur(item);
  frmCtrl_->SetEnabled(true);
  TbMain().Button("Add").SetEnabled(false);
  TbMain().Button("Delete").SetEnabled(false);
  const auto page = GetUserCtrl();
  if (!page) return;
  personID = NewPersonId();
  cWhInfo& info = page->WhInfo();
  info.TabId = "A01";
  info.id = 0;
  info.personID = personID;
  info.IsMult = false;
  const auto items = LoadFieldValues(info.TabId, info.personID, 0);
  page->setCtrl(items);
  page->SetFieldItems(items);
  frmCtrl_->SetEnabled(true);
  TbMain().Button("Add").SetEnabled(false);
  TbMain().Button("Delete").SetEnabled(false);
  DealType = 0;
  labPersonName().SetCaption("");
  info.IsChange = false;
}

// Makes a new page of the current set; no command seeks a record again.
void frmDossier::Reload() { VMenu1_MenuItemClick(VMenu1().menucur(), VMenu1().menuitemcur()); }

void frmDossier::Add(DossierPage& ctrl) {
  cWhInfo& info = ctrl.WhInfo();
  if (const std::int16_t limit = IsMaxNumber(info); limit != 0) {
    ShowLimit(ctrl, limit);
    return;
  }
  // Required: this question alone has no title of its own.
  if (info.IsChange &&
      GetDesktop().MsgBox("数据被修改且未保存，是否保存？", toolkit::kYesNo) == toolkit::kAnswerYes &&
      !Save(ctrl)) {
    return;
  }
  const std::string& set = info.TabId;
  if (set == "A01") {
    NewPerson();
  } else {
    info.IsChange = false;
    if (info.IsMult) {
      const auto next = gConnection().Execute("select iif(max(" + set + "99) is null,0,max(" + set +
                                              "99))+1  from " + set + " where A00 ='" + info.personID + "' ");
      info.id = environment::ToInt16(next->Fields(0));
    } else {
      info.id = 0;
    }
    const auto items = LoadFieldValues(set, info.personID, info.id);
    ctrl.setCtrl(items);
    ctrl.SetFieldItems(items);
    info.IsChange = false;
    frmCtrl_->SetEnabled(true);
    TbMain().Button("Add").SetEnabled(false);
    TbMain().Button("Delete").SetEnabled(false);
  }
  SetLabOpt(ctrl, "Add");
}

void frmDossier::Delete(DossierPage& ctrl) {
  const cWhInfo& info = ctrl.WhInfo();
  const std::string& set = info.TabId;
  if (Ask(set == "A01" ? "此操作将删除此人所有信息，是否删除？" : "是否删除此条记录？") !=
      toolkit::kAnswerYes)
    return;
  std::string statement = "delete from " + set + " where A00='" + info.personID + "' ";
  if (info.IsMult) statement += " and " + set + "99 = " + std::to_string(info.id);
  if (set == "A01") DeletePhotoFile(info.personID, PhotoPath);
  gConnection().Execute(statement);
  if (info.IsMult) {
    // Required: the walk takes the rows of all persons, and counts them.
    ado::Recordset rows;
    rows.Open("select * from " + set + " order by " + set + "99", gConnection());
    const std::int32_t count = rows.RecordCount();
    for (std::int32_t i = 1; i <= count; ++i) {
      gConnection().Execute("update " + set + " set " + set + "99 = " + std::to_string(i) + " where a00='" +
                            info.personID + "' and " + set + "99 = " + TextOf(rows.Fields(set + "99")));
      rows.MoveNext();
    }
    rows.Close();
  }
  Reload();
}

void frmDossier::SaveCommand(DossierPage& ctrl) {
  if (const std::int16_t limit = IsMaxNumber_Save(ctrl.WhInfo()); limit != 0) {
    ShowLimit(ctrl, limit);
    return;
  }
  if (!Save(ctrl)) return;
  IsSaved = true;
  DealType = 3;
  ctrl.WhInfo().IsChange = false;
  Reload();
  auto& add = TbMain().Button("Add");
  if (add.Enabled() && VMenu1().menuitemkey() != "A01") TbMain_ButtonClick(add);
}

void frmDossier::Cancel(DossierPage& ctrl) {
  if (ctrl.WhInfo().IsChange && Ask("数据已被修改并且未被保存，是否取消？") != toolkit::kAnswerYes) return;
  // Required: the reload asks once more, and a Yes there saves.
  Reload();
  if (DealType == 0) TbMain().Button("Add").SetEnabled(true);
}

void frmDossier::Exit(DossierPage& ctrl) {
  if (ctrl.WhInfo().IsChange && Ask("数据被修改但未保存，是否保存？") == toolkit::kAnswerYes && !Save(ctrl))
    return;
  Unload();
}

}  // namespace dossierkit
