// The link between the record list and the form.
#include "metadata/field_items.h"
#include "metadata/loaders.h"
#include "pages/ctrl_user.h"
#include "platform/environment/placed_failure.h"
#include "platform/environment/text.h"
#include "visit/dossier_window.h"
#include "visit/runtime.h"

namespace dossierkit {

void ctrlUser::AdodcRs_WillMove(std::int32_t /*adReason*/, std::int32_t& adStatus) {
  if (!wh_info_.IsChange) return;
  auto& desktop = TheRuntime().desktop;
  if (design_.move_question == MoveQuestion::kContinue) {
    if (desktop.MsgBox("数据已被修改并未保存，是否继续？", toolkit::kYesNo) != toolkit::kAnswerYes) {
      adStatus = ado::kStatusCancel;
    }
  } else if (desktop.MsgBox("数据已被修改并未保存，是否保存？", toolkit::kYesNo) != toolkit::kAnswerYes) {
    // Required: No saves, and Yes goes on without saving.
    TheRuntime().window->Save(*this);
  }
}

// Required: the same after a move that was cancelled, which refills the form and drops the edits.
void ctrlUser::AdodcRs_MoveComplete() {
  if (!mTrackMove_) return;
  environment::At({.set = wh_info_.TabId, .doing = "显示选中的记录"}, [&] {
    if (AdodcRs_->RecordCount() > 0) {
      const std::int16_t number = CurrentRecordNumber();
      if (number < 1) {
        field_items_ = LoadFieldItems(wh_info_.TabId);
      } else {
        wh_info_.id = number;
        field_items_ = LoadFieldValues(wh_info_.TabId, wh_info_.personID, number);
        labOpt_->SetCaption("当前操作：修改 ");
        DGItems_->SetShowsRow(true);
        auto& bar = TheRuntime().window->TbMain();
        bar.Button("Add").SetEnabled(true);
        bar.Button("Delete").SetEnabled(true);
      }
      setCtrl(field_items_);
    }
  });
  FocusFirstField();
}

// The number of the row under the cursor, read through the caption of the number's column; 0 without
// such a caption.
std::int16_t ctrlUser::CurrentRecordNumber() {
  const std::string& set = wh_info_.TabId;
  ado::Recordset row;
  row.Open("select itemdesc from s_infoitem where itemdesc <>'' and  tblname = '" + set +
               "' and itemname = '" + set + "99' ",
           gConnection());
  std::string caption;
  if (row.RecordCount() > 0) caption = environment::TextOf(row.Fields("itemdesc"));
  row.Close();
  return caption.empty() ? std::int16_t{0} : environment::ToInt16(AdodcRs_->Fields(caption));
}

}  // namespace dossierkit
