// PhotoTest: the sample person's page with a photograph "old", and the preview window over it.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "photos/frm_picture_preview.h"
#include "tests/shell/shell_test.h"
#include "tests/support/photo_folder.h"

namespace dossierkit::tests {

class PhotoTest : public ShellTest {
 protected:
  void SetUp() override {
    PhotoFolder::Write(Photo(), Jpeg("old"));
    visit.component.PhotoPath = folder.Photos().string();
  }

  std::filesystem::path Photo(const std::string& person = kPerson) const { return folder.Photo(person); }
  void RemovePhoto() { std::filesystem::remove(Photo()); }
  // The path of the sample person's photograph, as the system writes it.
  std::string PhotoName() const { return folder.Photos().string() + "\\" + kPerson + ".jpg"; }
  std::string StoredPhoto() const { return PhotoFolder::Read(Photo()); }

  // Clicks the button on the page and plays `scene` in the preview window.
  void AddPhoto(const std::function<void()>& scene) {
    visit.script.WillRun([this, scene](toolkit::Form& form) {
      preview = std::dynamic_pointer_cast<frmPicturePreview>(form.shared_from_this());
      ASSERT_TRUE(preview);
      scene();
    });
    visit.user.Click("cmdAddPhoto");
  }
  // Opens the sample person and plays `scene` in the preview window.
  void Preview(const std::function<void()>& scene) {
    visit.Open([&] { AddPhoto(scene); });
  }
  // Presses the button and chooses that path; empty: leaves the file dialog by Cancel.
  void Choose(const std::string& path) {
    if (!path.empty()) visit.script.WillChoose(path);
    visit.user.Click("cmdSelPic");
  }
  void ChooseNew() { Choose(folder.MakeChoice("新.jpg", Jpeg("new"))); }
  void Ok() { visit.user.Click("cmdOK"); }

  // The bytes of the picture in an image of the topmost window, without the marks of the file.
  std::string Shown(const std::string& image) {
    const auto& picture = visit.user.Find<toolkit::Image>(image)->GetPicture();
    if (picture.Empty()) return "";
    return {picture.bytes->begin() + 2, picture.bytes->end() - 2};
  }
  using ShellTest::Shown;
  std::string OldCaption() { return visit.Caption("lblOldPicture"); }
  std::string NewCaption() { return visit.Caption("lblNewPicture"); }

  PhotoFolder folder;
  std::shared_ptr<frmPicturePreview> preview;  // the last one
};

}  // namespace dossierkit::tests
