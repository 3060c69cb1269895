// ctrlUser: the one template of all pages. A page class per set exists by name, as in
// "DossierKit.ctrlUserA05"; what it holds is its PageDesign.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "binding/control_items.h"
#include "pages/page_design.h"
#include "pages/stored_properties.h"
#include "platform/ado/recordset.h"
#include "platform/toolkit/controls/data_grid.h"
#include "visit/dossier_page.h"

namespace dossierkit {

namespace toolkit {
class Desktop;
}

class cFieldItem;

class ctrlUser : public DossierPage {
 public:
  // Builds the controls of the design: for each field its caption, then its value; then the rest.
  ctrlUser(std::string name, const PageDesign& design);
  ~ctrlUser() override;

  cWhInfo& WhInfo() override { return wh_info_; }
  const std::shared_ptr<cFieldItems>& FieldItems() const override { return field_items_; }
  void SetFieldItems(std::shared_ptr<cFieldItems> items) override { field_items_ = std::move(items); }
  void setCtrl(const std::shared_ptr<cFieldItems>& Fitems) override;
  void setDGItems() override;
  void Refresh() {}

  // Stored design properties; they do not touch the look of the page.
  StoredProperties stored;

  environment::Event<> Resize;

  const ControlItems& Items() const { return *cItems_; }
  const std::shared_ptr<ado::Recordset>& AdodcRs() const { return AdodcRs_; }

 protected:
  void UserControl_Initialize() override;
  void UserControl_Show() override;
  void UserControl_Terminate() override;
  void UserControl_Resize() override { Resize.Raise(); }
  void UserControl_KeyDown(int& key, int shift) override;
  void UserControl_KeyPress(char32_t& key) override;

 private:
  // The template (ctrl_user.cpp).
  void FillTextBox(toolkit::TextBox& box, const cFieldItem& item);
  void FillMaskEdBox(toolkit::MaskEdBox& box, const cFieldItem& item);
  void FocusFirstField();
  void MoveRecord(bool forward);

  // The design (ctrl_user_design.cpp).
  void BuildFields();
  void BuildHeading();
  void BuildHelpFrames();
  void BuildBasicInfo();
  void MakeRoomForList();

  // The photograph (photograph.cpp).
  std::string PhotoFile() const;
  void cmdAddPhoto_Click();

  // Record movement and change tracking (record_navigation.cpp).
  void AdodcRs_WillMove(std::int32_t adReason, std::int32_t& adStatus);
  void AdodcRs_MoveComplete();
  std::int16_t CurrentRecordNumber();
  void DGItems_GotFocus() { mTrackMove_ = true; }
  void cItems_Change(toolkit::Control& ctl);
  void cItems_GotFocus(toolkit::Control& ctl);
  void cItems_LostFocus(toolkit::Control& ctl);

  // Values as they are entered (field_entry.cpp).
  void cItems_Validate(toolkit::Control& ctl, bool& Cancel);
  void cItems_Dblclick(toolkit::Control& ctl);

  const PageDesign& design_;
  std::shared_ptr<cFieldItems> field_items_;
  cWhInfo wh_info_;
  std::unique_ptr<ControlItems> cItems_;
  std::shared_ptr<ado::Recordset> AdodcRs_;
  bool mTrackMove_ = false;  // a move of AdodcRs refills the form
  bool mFilling_ = false;    // the program fills the form: no change, no check

  std::shared_ptr<toolkit::DataGrid> DGItems_;
  std::shared_ptr<toolkit::CommandButton> cmdAddPhoto_;  // nullptr on a page without a photograph
  std::shared_ptr<toolkit::Label> labOpt_;
  std::shared_ptr<toolkit::Label> labExplain_;
  std::vector<environment::Subscription> hooks_;
};

// Makes the sixteen page classes known to the desktop.
void RegisterPages(toolkit::Desktop& desktop);

}  // namespace dossierkit
