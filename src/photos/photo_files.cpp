#include "photos/photo_files.h"

#include <exception>

#include "platform/toolkit/controls/basic_controls.h"
#include "visit/runtime.h"

namespace dossierkit {

std::string PhotoFilePath(const std::string& photoPath, const std::string& personID) {
  return photoPath + "\\" + personID + ".jpg";
}

bool PhotoFileExists(const std::string& path) {
  try {
    return TheRuntime().files.FileExists(path);
  } catch (const std::exception&) {
    return false;
  }
}

void ShowPhotoInImage(toolkit::Control& control, const std::string& path) {
  if (control.Name() != "imgPerson" || !PhotoFileExists(path)) return;
  if (auto* image = dynamic_cast<toolkit::Image*>(&control)) {
    image->SetPicture(TheRuntime().desktop.GetPlatform().LoadPicture(path, image->Place()));
  }
}

void DeletePhotoFile(const std::string& personID, const std::string& photoPath) {
  try {
    const std::string path = PhotoFilePath(photoPath, personID);
    if (TheRuntime().files.FileExists(path)) TheRuntime().files.DeleteFile(path, true);
  } catch (const std::exception& failure) {
    TheRuntime().desktop.MsgBox(failure.what(), toolkit::kExclamationIcon, "人员照片删除");
  }
}

}  // namespace dossierkit
