// frmPicturePreview: shows a person's photograph beside a new picture before that replaces its file.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/toolkit/loop/form.h"

namespace dossierkit {

class frmPicturePreview : public toolkit::Form {
 public:
  explicit frmPicturePreview(toolkit::Desktop& desktop);

  std::string OldFile;         // path of the present photograph; empty where the person has none
  std::string NewFile;         // path of the chosen picture, or empty
  std::string TargetFile;      // path that the photograph has, whether it exists or not
  std::int32_t Cancelled = 0;  // to be read after ShowModal: 0 after OK, else 1
  std::string personID;        // to be set before ShowModal

 protected:
  void BuildDesign() override;
  void Form_Load() override;

 private:
  void cmdSelPic_Click();
  void cmdOK_Click();
  void cmdCancel_Click();

  // The path of the photograph if it exists, else empty. A failure is shown and gives empty.
  std::string CurrentPhotoFile(const std::string& person);
  std::string PhotoFileName(const std::string& person) const;
  // Copies the chosen picture if it still exists; throws what the copy throws.
  void CopyNewFile(const std::string& target);

  // The controls, while the window is loaded.
  std::shared_ptr<toolkit::Image> imgOld_;
  std::shared_ptr<toolkit::Image> imgNew_;
  std::shared_ptr<toolkit::Label> lblOldPicture_;
  std::shared_ptr<toolkit::Label> lblNewPicture_;
  std::shared_ptr<toolkit::CommonDialog> dlgSelPic_;
  std::vector<environment::Subscription> hooks_;
};

}  // namespace dossierkit
