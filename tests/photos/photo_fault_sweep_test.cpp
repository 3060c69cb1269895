// Every command on a photograph with the k-th file operation failing, for every k: what the user was
// told, which window stands open, and what the files hold then.
#include <algorithm>

#include "platform/environment/text.h"
#include "tests/photos/photo_test.h"

namespace dossierkit::tests {
namespace {

const std::string kLookFailed = "读取此人员的照片出错！原因是：";
const std::string kCopyFailed = "更新此人员的照片出错！原因是：";
const std::string kButtonFailed = "更新照片出错！原因是：";
const Message kQuestion = {"确定替换现有照片文件吗？", 36, "照片预览"};
const Message kDeleteQuestion = {"此操作将删除此人所有信息，是否删除？", 4, "人员维护"};

// The failures that a disk can give, as the user reads them.
const std::vector<std::pair<int, std::string>> kFailures = {
    {53, "文件未找到"}, {61, "磁盘已满"}, {70, "拒绝的权限"}, {75, "路径/文件访问错误"}, {76, "路径未找到"}};

// What is left after the k-th operation has failed.
struct Expected {
  std::string call;  // the operation
  Messages messages;
  bool closed;         // the preview closed before its own Cancel
  std::string stored;  // content of the photograph; empty: there is none
  std::string page;    // picture on the page
};

class PhotoFaultSweep : public PhotoTest {
 protected:
  // Chooses a picture and presses OK, as far as the window stays open; then Cancel.
  void ChooseAndOk() {
    AddPhoto([&] {
      ChooseNew();
      if (!preview->LoopEnded()) Ok();
      closed = preview->LoopEnded();
      if (!closed) visit.user.Click("cmdCancel");
    });
  }
  std::string ContentOf(const std::filesystem::path& file) {
    const std::string bytes = PhotoFolder::Read(file);
    return bytes.empty() ? "" : bytes.substr(2, bytes.size() - 4);
  }

  // An operation with the two paths made short.
  std::string ShortNames(const std::string& call) {
    return environment::Replace(environment::Replace(call, PhotoName(), "照片"), folder.Choice("新.jpg"),
                                "新");
  }

  bool closed = false;
};

class ChooseAndOkSweep : public PhotoFaultSweep, public ::testing::WithParamInterface<bool> {};

// One row for each operation, and one without a failure.
std::vector<Expected> WithAPhotograph(const std::string& why) {
  return {
      {"FileExists 照片", {{kLookFailed + why, 64, "照片预览"}}, true, "new", "new"},
      {"FileLen 新", {{kButtonFailed + why, 64, "更新照片"}}, true, "old", "old"},
      {"FileExists 新", {kQuestion, {kCopyFailed + why, 64, "照片预览"}}, false, "old", "old"},
      {"CopyFile 新 over 照片", {kQuestion, {kCopyFailed + why, 64, "照片预览"}}, false, "old", "old"},
      {"FileExists 照片", {kQuestion}, true, "new", "old"},
      {"", {kQuestion}, true, "new", "new"},
  };
}

std::vector<Expected> WithoutAPhotograph(const std::string& why) {
  return {
      {"FileExists 照片", {{kLookFailed + why, 64, "照片预览"}}, true, "new", "new"},
      {"FileLen 新", {{kButtonFailed + why, 64, "更新照片"}}, true, "", ""},
      {"FileExists 新", {{kCopyFailed + why, 64, "照片预览"}}, false, "", ""},
      {"CopyFile 新 over 照片", {{kCopyFailed + why, 64, "照片预览"}}, false, "", ""},
      {"FileExists 照片", {}, true, "new", ""},
      {"", {}, true, "new", "new"},
  };
}

TEST_P(ChooseAndOkSweep, LeavesWhatIsRequired) {
  for (const auto& [number, description] : kFailures) {
    const auto rows = GetParam() ? WithAPhotograph(description) : WithoutAPhotograph(description);
    for (std::size_t k = 1; k <= rows.size(); ++k) {
      SCOPED_TRACE("operation " + std::to_string(k) + " " + rows[k - 1].call + ": " + description);
      const Expected& expected = rows[k - 1];
      if (GetParam()) {
        PhotoFolder::Write(Photo(), Jpeg("old"));
      } else {
        RemovePhoto();
      }
      visit.script.messages.clear();
      const int failure = number;
      visit.Open([&] {
        const bool asks = std::ranges::count(expected.messages, kQuestion) > 0;
        if (asks) Answer(toolkit::kAnswerYes);
        visit.files.FailAt(k, failure);
        ChooseAndOk();
        EXPECT_EQ(visit.files.HasFailed(), !expected.call.empty());
        if (visit.files.HasFailed()) {
          EXPECT_EQ(ShortNames(visit.files.Calls().at(k - 1)), expected.call);
        }
        visit.files.FailAt(0);
        EXPECT_EQ(Shown(), expected.messages);
        EXPECT_EQ(closed, expected.closed);
        EXPECT_EQ(ContentOf(Photo()), expected.stored);
        EXPECT_EQ(Shown("imgPerson"), expected.page);
        EXPECT_EQ(PhotoFolder::Read(folder.Choice("新.jpg")), Jpeg("new"));
        EXPECT_EQ(visit.desktop.TopmostForm(), &visit.Window());
        // The button works on.
        AddPhoto([&] { EXPECT_EQ(OldCaption(), expected.stored.empty() ? "当前没有照片" : "当前照片"); });
      });
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Photographs, ChooseAndOkSweep, ::testing::Bool(),
                         [](const auto& with) { return with.param ? "Present" : "Absent"; });

// The row goes in every case; the file goes unless the question for it or its deletion fails.
TEST_F(PhotoFaultSweep, RequiredThePersonGoesThoughTheFileCannot) {
  for (const auto& [number, description] : kFailures) {
    for (std::size_t k = 1; k <= 4; ++k) {
      SCOPED_TRACE("operation " + std::to_string(k) + ": " + description);
      const bool kept = k <= 2;
      const int failure = number;
      Visit each;
      PhotoFolder::Write(Photo(), Jpeg("old"));
      each.component.PhotoPath = folder.Photos().string();
      each.Open([&] {
        each.script.WillAnswer(toolkit::kAnswerYes);
        each.files.FailAt(k, failure);
        each.user.ClickToolbar("Delete");
        EXPECT_EQ(each.Caption("labOpt"), "当前操作：增加");
      });
      EXPECT_TRUE(each.files.HasFailed());
      Messages expected = {kDeleteQuestion};
      if (kept) expected.push_back({description, 48, "人员照片删除"});
      EXPECT_EQ(each.script.messages, expected);
      EXPECT_EQ(ContentOf(Photo()), kept ? "old" : "");
      EXPECT_EQ(One(*each.database, "select count(*) from A01 where A00='" + kPerson + "'"), "0");
    }
  }
}

}  // namespace
}  // namespace dossierkit::tests
