// The swap of pages: what a click on the menu does, and every reload.
#include "metadata/loaders.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/placed_failure.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/data_grid.h"
#include "shell/frm_dossier.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

using environment::TextOf;

const std::string kPagePrefix = "ctrlUser";

bool HasPrefix(const toolkit::Control& control, const std::string& prefix) {
  return environment::EqualIgnoringCase(environment::Left(control.Name(), environment::Length(prefix)),
                                        prefix);
}

std::int32_t CountOf(const std::string& query) {
  return environment::ToInt32(gConnection().Execute(query)->Fields(0));
}

}  // namespace

void RemoveUCtrl(toolkit::Form& form, const std::string& prefix) {
  auto& controls = form.Controls();
  if (controls.Count() == 0) return;
  for (std::size_t i = controls.Count(); i-- > 0;) {
    if (HasPrefix(*controls.At(i), prefix)) controls.Remove(i);
  }
}

bool IsUCtrlChanged(toolkit::Form& form, const std::string& prefix) {
  auto& controls = form.Controls();
  for (std::size_t i = controls.Count(); i-- > 0;) {
    if (!HasPrefix(*controls.At(i), prefix)) continue;
    auto* page = dynamic_cast<DossierPage*>(controls.At(i).get());
    return page && page->WhInfo().IsChange;
  }
  return false;
}

bool IsMultSet(const std::string& TabId) {
  ado::Recordset set;
  set.Open(" select Property from s_infotable  where TblName ='" + TabId + "'", gConnection());
  bool multiple = false;
  if (set.RecordCount() >= 1) {
    const auto single = set.Fields(0);
    if (const bool* stored = single.As<bool>()) {
      multiple = !*stored;
    } else {
      // A number is negated bit by bit: -1 alone is True.
      multiple = ~environment::ToInt32(single) != 0;
    }
  }
  set.Close();
  return multiple;
}

void frmDossier::VMenu1_MenuItemClick(std::int32_t group, std::int32_t item) {
  if (!MayLeavePage()) return;
  PrevItem = CurItem;
  CurItem = environment::ToInt16(std::int64_t{item});
  auto& menu = VMenu1();
  menu.set_menucur(group);
  menu.set_menuitemcur(item);
  menu.set_menuitemicon(TheRuntime().app_path + "\\USER.ICO");
  if (PrevItem != CurItem) ResetItemIcon(PrevItem);
  menu.set_menuitemcur(CurItem);
  // Required: the refusal leaves the items and icons half undone.
  if (!MayOpenSet()) return;
  const std::string TabId = menu.menuitemkey();
  environment::At({.set = TabId, .doing = "打开信息集"}, [&] {
    const auto page = LoadUCtrl("ctrlUser" + TabId);
    IniUCtrl(*page, TabId, DealType);
    cWhInfo& info = page->WhInfo();
    info.IsChange = false;
    const bool may_add = info.TabId == "A01" || info.IsMult;
    TbMain().Button("Add").SetEnabled(may_add);
    TbMain().Button("Delete").SetEnabled(may_add);
    std::string count = "select count(*) from " + TabId + " where A00 ='" + personID + "'";
    if (info.IsMult) count += " and " + TabId + "99 >0";
    if (CountOf(count) > 0) {
      frmCtrl_->SetEnabled(true);
      SetLabOpt(*page, "Mod");
    } else {
      frmCtrl_->SetEnabled(false);
      TbMain_ButtonClick(TbMain().Button("Add"));
    }
    // Fails for a set without a row in s_infotable; the value is not used.
    gConnection()
        .Execute("select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='" + info.TabId +
                 "'")
        ->Fields(0);
  });
}

// Asks about edits of the page on show. False: a save was asked for and failed.
bool frmDossier::MayLeavePage() {
  if (!IsUCtrlChanged(*this, kPagePrefix)) return true;
  if (Ask("数据被修改且未保存，是否保存？") != toolkit::kAnswerYes) return true;
  return Save(*GetUserCtrl());
}

// The basic set comes first: another one opens only for a person who is stored once.
bool frmDossier::MayOpenSet() {
  const std::string key = VMenu1().menuitemkey();
  const std::int32_t persons = CountOf("select count(A00) from a01 where a00 ='" + personID + "'");
  if (key == "A01" || persons == 1) return true;
  GetDesktop().MsgBox("必须先维护基本信息集，然后再维护其它信息集。", toolkit::kOkOnly, Caption());
  VMenu1().set_menucur(1);
  VMenu1().set_menuitemcur(1);
  return false;
}

std::shared_ptr<DossierPage> frmDossier::LoadUCtrl(const std::string& uctrlName) {
  RemoveUCtrl(*this, kPagePrefix);
  auto page = std::dynamic_pointer_cast<DossierPage>(Controls().Add("DossierKit." + uctrlName, uctrlName));
  page->SetContainer(*frmCtrl_);
  page->SetVisible(true);
  page->Move({300, 300, 13000, 9800});
  return page;
}

void frmDossier::IniUCtrl(DossierPage& ctrl, const std::string& TabId, std::int32_t mode) {
  cWhInfo& info = ctrl.WhInfo();
  info.personID = personID;
  info.TabId = TabId;
  info.IsMult = IsMultSet(TabId);
  info.id = info.IsMult ? 1 : 0;
  auto items = std::make_shared<cFieldItems>();
  if (mode == 0) items = LoadFieldItems(TabId);
  if (mode == 3) items = LoadFieldValues(TabId, personID, info.id);
  ado::Recordset order;
  order.Open(
      "select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where tblname ='" +
          TabId + "'  and orderfield<>'' ",
      gConnection());
  if (order.RecordCount() > 0) {
    info.FldOrder = TextOf(order.Fields(0));
  } else {
    info.FldOrder = info.IsMult ? TabId + "99" : "";
  }
  order.Close();
  if (info.IsMult) {
    ctrl.setDGItems();
  } else {
    ctrl.setCtrl(items);
  }
  info.IsChange = false;
  // Required: record 1 in the fields, whatever row the list shows.
  ctrl.SetFieldItems(items);
}

std::shared_ptr<DossierPage> frmDossier::GetUserCtrl() {
  for (const auto& control : Controls()) {
    const std::string& name = control->Name();
    if (name.size() > kPagePrefix.size() && name.starts_with(kPagePrefix)) {
      return std::dynamic_pointer_cast<DossierPage>(control);
    }
  }
  return nullptr;
}

}  // namespace dossierkit
