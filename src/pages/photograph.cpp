// The photograph on the page of the basic data.
#include <exception>

#include "pages/ctrl_user.h"
#include "photos/frm_picture_preview.h"
#include "photos/photo_files.h"
#include "visit/dossier_window.h"
#include "visit/runtime.h"

namespace dossierkit {

std::string ctrlUser::PhotoFile() const {
  return PhotoFilePath(TheRuntime().window->PhotoPath, wh_info_.personID);
}

void ctrlUser::cmdAddPhoto_Click() {
  toolkit::Desktop& desktop = TheRuntime().desktop;
  const std::string title = "更新照片";
  try {
    if (wh_info_.personID.empty()) {
      desktop.MsgBox("请选择需要更新照片的人员！", toolkit::kInformationIcon, title);
      return;
    }
    const auto preview = std::make_shared<frmPicturePreview>(desktop);
    preview->personID = wh_info_.personID;
    preview->ShowModal();
    if (preview->Cancelled == 0) ShowPhotoInImage(*Controls().Find("imgPerson"), PhotoFile());
  } catch (const std::exception& failure) {
    desktop.MsgBox(std::string("更新照片出错！原因是：") + failure.what(), toolkit::kInformationIcon, title);
  }
}

}  // namespace dossierkit
