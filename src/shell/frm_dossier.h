// frmDossier: the main window, one instance for the life of the component.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/toolkit/loop/desktop.h"
#include "visit/dossier_window.h"

namespace dossierkit {

class frmDossier : public DossierWindow {
 public:
  explicit frmDossier(toolkit::Desktop& desktop);

  std::int16_t SetCount = 0;  // rows that the menu query gave
  std::int16_t CurItem = 0;   // the selected menu item, and the one before
  std::int16_t PrevItem = 0;

  toolkit::Toolbar& TbMain() override;
  toolkit::VerticalMenu& VMenu1() override;
  toolkit::Label& labPersonName() override;

  void TbMain_ButtonClick(const toolkit::ToolbarButton& Button) override;
  // Drops the page on show and puts a new one of that class, as in ctrlUserA05, in its place. Throws
  // 731 where there is no such class.
  std::shared_ptr<DossierPage> LoadUCtrl(const std::string& uctrlName);
  // Fills a new page: operation record, metadata, sort order, then form or list. `mode` is a DealType.
  void IniUCtrl(DossierPage& ctrl, const std::string& TabId, std::int32_t mode);
  bool Save(DossierPage& ctrl) override;
  void SetState(std::int32_t DealType, const std::string& OptType);  // required: does nothing
  // The page on show, or nullptr.
  std::shared_ptr<DossierPage> GetUserCtrl();
  // 0 where a further record may be made, else the limit.
  std::int16_t IsMaxNumber(const cWhInfo& WhInfo);
  // The same before a save: 0 for a stored person.
  std::int16_t IsMaxNumber_Save(const cWhInfo& WhInfo);
  // "Add" or "Mod": shows the operation on the page; any other text leaves it.
  void SetLabOpt(DossierPage& ctrl, const std::string& alert);
  // A click on the menu, and every reload.
  void VMenu1_MenuItemClick(std::int32_t group, std::int32_t item);

 protected:
  void BuildDesign() override;
  void Form_Load() override;
  void Form_Resize() override;

 private:
  // frm_dossier.cpp: loading.
  void LoadMenu();
  void NameExtraItem();
  void LoadPersonName();
  void ResetItemIcon(std::int16_t item);

  // set_navigation.cpp: the swap of pages.
  bool MayLeavePage();
  bool MayOpenSet();

  // toolbar_commands.cpp.
  void NewPerson();
  void Reload();
  void Add(DossierPage& ctrl);
  void Delete(DossierPage& ctrl);
  void SaveCommand(DossierPage& ctrl);
  void Cancel(DossierPage& ctrl);
  void Exit(DossierPage& ctrl);
  void ShowLimit(DossierPage& ctrl, std::int16_t limit);
  toolkit::MessageAnswer Ask(const std::string& question);

  // The controls, while the window is loaded.
  std::shared_ptr<toolkit::CoolBar> CBar1_;
  std::shared_ptr<toolkit::Label> labPersonName_;
  std::shared_ptr<toolkit::Toolbar> TbMain_;
  std::shared_ptr<toolkit::VerticalMenu> VMenu1_;
  std::shared_ptr<toolkit::Frame> frmCtrl_;
  std::vector<environment::Subscription> hooks_;
};

// Module routines.

// Removes every control of the window whose name begins with the prefix (case ignored).
void RemoveUCtrl(toolkit::Form& form, const std::string& prefix);
// WhInfo.IsChange of the first such page from the end; false where there is none.
bool IsUCtrlChanged(toolkit::Form& form, const std::string& prefix);
// True for a set of many records per person; false for one without a row in s_infotable.
bool IsMultSet(const std::string& TabId);

}  // namespace dossierkit
