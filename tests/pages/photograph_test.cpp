// The photograph on the page of the basic data, and the button that replaces it.
#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <new>

#include "tests/photos/photo_test.h"
#include "tests/support/jpeg.h"

namespace dossierkit::tests {
namespace {

using PhotographOfPage = PhotoTest;

TEST_F(PhotographOfPage, OkShowsTheNewPicture) {
  visit.Open([&] {
    EXPECT_EQ(Shown("imgPerson"), "old");
    AddPhoto([&] {
      ChooseNew();
      Answer(toolkit::kAnswerYes);
      Ok();
    });
    EXPECT_EQ(Shown("imgPerson"), "new");
  });
}

TEST_F(PhotographOfPage, OkWithoutAChoiceReadsTheFileAgain) {
  visit.Open([&] {
    AddPhoto([&] {
      PhotoFolder::Write(Photo(), Jpeg("from elsewhere"));
      Ok();
    });
    EXPECT_EQ(Shown("imgPerson"), "from elsewhere");
  });
}

TEST_F(PhotographOfPage, RequiredAFileThatIsGoneLeavesThePictureInSight) {
  visit.Open([&] {
    AddPhoto([&] {
      RemovePhoto();
      Ok();
    });
    EXPECT_EQ(Shown("imgPerson"), "old");
  });
}

TEST_F(PhotographOfPage, CancelAndTheCloseBoxDoNotReadTheFileAgain) {
  visit.Open([&] {
    PhotoFolder::Write(Photo(), Jpeg("from elsewhere"));
    AddPhoto([&] { visit.user.Click("cmdCancel"); });
    EXPECT_EQ(Shown("imgPerson"), "old");
    AddPhoto([&] { visit.user.Close(); });
    EXPECT_EQ(Shown("imgPerson"), "old");
  });
}

TEST_F(PhotographOfPage, EachClickOpensAFreshPreviewThatGoesWithTheClick) {
  visit.Open([&] {
    AddPhoto([&] {
      ChooseNew();
      visit.user.Close();
    });
    const std::weak_ptr<frmPicturePreview> first = preview;
    AddPhoto([&] {
      EXPECT_EQ(preview->NewFile, "");
      EXPECT_EQ(Shown("imgNew"), "");
      EXPECT_EQ(NewCaption(), "新照片");
    });
    EXPECT_TRUE(first.expired());
    EXPECT_EQ(preview.use_count(), 1);
  });
}

TEST_F(PhotographOfPage, WithoutAPersonThereIsAMessageAndNoPreview) {
  visit.Open([&] {
    visit.OnShow().WhInfo().personID.clear();
    visit.user.Click("cmdAddPhoto");
  });
  EXPECT_EQ(Shown(), (Messages{{"请选择需要更新照片的人员！", 64, "更新照片"}}));
}

TEST_F(PhotographOfPage, APictureThatCannotBeReadIsTold) {
  visit.Open([&] {
    AddPhoto([&] {
      PhotoFolder::Write(Photo(), "no picture");
      Ok();
    });
    EXPECT_EQ(Shown("imgPerson"), "old");
  });
  EXPECT_EQ(Shown(), (Messages{{"更新照片出错！原因是：无效图片", 64, "更新照片"}}));
}

TEST_F(PhotographOfPage, RequiredAPageWhosePictureCannotBeReadDoesNotOpen) {
  PhotoFolder::Write(Photo(), "no picture");
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), 481);
  EXPECT_FALSE(visit.Window().Loaded());
  EXPECT_TRUE(Shown().empty());
}

TEST_F(PhotographOfPage, RequiredAPictureBeyondTheLimitsDoesNotOpenEither) {
  PhotoFolder::Write(Photo(), ProgressiveJpeg(6600, 5000, 2000));
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), 481);
  PhotoFolder::Write(Photo(), Jpeg("large"));
  std::filesystem::resize_file(Photo(), std::uintmax_t{40} << 30);
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), 481);
  EXPECT_TRUE(Shown().empty());
}

TEST_F(PhotographOfPage, APictureAtTheLimitsIsShown) {
  PhotoFolder::Write(Photo(), ProgressiveJpeg(8000, 6000, 12));
  visit.Open([&] { EXPECT_NE(Shown("imgPerson"), ""); });
}

#ifndef _WIN32
TEST_F(PhotographOfPage, APipeIsNoPhotograph) {
  RemovePhoto();
  ASSERT_EQ(mkfifo(Photo().c_str(), 0600), 0);
  visit.Open([&] {
    EXPECT_EQ(Shown("imgPerson"), "");
    AddPhoto([&] { EXPECT_EQ(OldCaption(), "当前没有照片"); });
  });
  EXPECT_TRUE(Shown().empty());
}
#endif

// Whatever is thrown on the way to the new picture is told, not what the environment words alone.
TEST_F(PhotographOfPage, EveryFailureOfTheButtonIsTold) {
  visit.Open([&] {
    AddPhoto([&] {
      visit.HeadlessViews().on_load_picture = [](const std::string&) { throw std::bad_alloc(); };
      Ok();
    });
    visit.HeadlessViews().on_load_picture = nullptr;
  });
  EXPECT_EQ(Shown(), (Messages{{"更新照片出错！原因是：std::bad_alloc", 64, "更新照片"}}));
}

TEST_F(PhotographOfPage, RequiredARefillWithoutTheFileLeavesThePictureThatWasThere) {
  visit.Open([&] {
    RemovePhoto();
    visit.OnShow().setCtrl(visit.OnShow().FieldItems());
    EXPECT_EQ(Shown("imgPerson"), "old");
  });
}

TEST_F(PhotographOfPage, RequiredANewPersonShowsThePhotographOfTheOneBefore) {
  visit.Open([&] {
    visit.user.ClickToolbar("Add");
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "");
    EXPECT_EQ(Shown("imgPerson"), "old");
    EXPECT_FALSE(std::filesystem::exists(Photo(visit.OnShow().WhInfo().personID)));
  });
}

TEST_F(PhotographOfPage, EachRefillReadsTheFileAgain) {
  visit.Open([&] {
    EXPECT_EQ(Shown("imgPerson"), "old");
    PhotoFolder::Write(Photo(), Jpeg("from elsewhere"));
    visit.OnShow().setCtrl(visit.OnShow().FieldItems());
    EXPECT_EQ(Shown("imgPerson"), "from elsewhere");
  });
}

TEST_F(PhotographOfPage, TheFileIsThatOfThePagesPerson) {
  PhotoFolder::Write(Photo("Q"), Jpeg("of another"));
  visit.Open([&] {
    visit.OnShow().WhInfo().personID = "Q";
    visit.OnShow().setCtrl(visit.OnShow().FieldItems());
    EXPECT_EQ(Shown("imgPerson"), "of another");
  });
}

TEST_F(PhotographOfPage, RequiredAnIdentifierMayLeadOutOfTheFolder) {
  const auto outside = folder.Photos().parent_path() / "x.jpg";
  PhotoFolder::Write(outside, Jpeg("outside"));
  Script("update A01 set A00='../x' where A00='" + kPerson + "'");
  visit.OpenPerson("../x", [&] {
    EXPECT_EQ(Shown("imgPerson"), "outside");
    Answer(toolkit::kAnswerYes);
    visit.user.ClickToolbar("Delete");
  });
  EXPECT_FALSE(std::filesystem::exists(outside));
  EXPECT_TRUE(std::filesystem::exists(Photo()));
}

TEST_F(PhotographOfPage, WithoutAFileNothingIsShown) {
  RemovePhoto();
  visit.Open([&] { EXPECT_EQ(Shown("imgPerson"), ""); });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(PhotographOfPage, TheReplacementIsNoEditAndNoSave) {
  const bool saved = visit.Open([&] {
    AddPhoto([&] {
      ChooseNew();
      Answer(toolkit::kAnswerYes);
      Ok();
    });
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
    visit.user.ClickToolbar("Exit");
  });
  EXPECT_FALSE(saved);
  EXPECT_EQ(Shown().size(), 1U);
}

TEST_F(PhotographOfPage, RequiredCancellingTheEditsDoesNotBringTheOldPictureBack) {
  visit.Open([&] {
    visit.Text("A01_A0110").SetText("水稻");
    AddPhoto([&] {
      ChooseNew();
      Answer(toolkit::kAnswerYes);
      Ok();
    });
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
    Answer(toolkit::kAnswerYes);
    Answer(toolkit::kAnswerNo);
    visit.user.ClickToolbar("Cancel");
    EXPECT_EQ(Shown("imgPerson"), "new");
  });
  EXPECT_EQ(StoredPhoto(), Jpeg("new"));
}

TEST_F(PhotographOfPage, RequiredTheFileOfANewPersonStaysThoughHeIsNeverSaved) {
  std::string person;
  visit.OpenNew([&] {
    person = visit.OnShow().WhInfo().personID;
    AddPhoto([&] {
      EXPECT_EQ(preview->personID, person);
      EXPECT_EQ(OldCaption(), "当前没有照片");
      ChooseNew();
      Ok();
    });
    EXPECT_EQ(Shown("imgPerson"), "new");
  });
  EXPECT_EQ(person.size(), 36U);
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(PhotoFolder::Read(Photo(person)), Jpeg("new"));
  EXPECT_EQ(Value("select count(*) from A01 where A00='" + person + "'"), "0");
}

TEST_F(PhotographOfPage, TheFolderIsTheOneOfTheWindow) {
  visit.Open([&] {
    visit.Window().PhotoPath = folder.Photos().string() + "-none";
    AddPhoto([&] { EXPECT_EQ(OldCaption(), "当前没有照片"); });
  });
}

}  // namespace
}  // namespace dossierkit::tests
