#include "platform/toolkit/loop/message_box.h"

#include <gtest/gtest.h>

#include "platform/toolkit/loop/file_filter.h"

namespace dossierkit::toolkit {
namespace {

TEST(MessageBox, AQuestionHasYesAsItsDefaultAndNo) {
  const auto buttons = MessageButtonsOf(kYesNo | kQuestionIcon);
  ASSERT_EQ(buttons.size(), 2U);
  EXPECT_EQ(buttons[0].caption, "是(&Y)");
  EXPECT_EQ(buttons[0].answer, kAnswerYes);
  EXPECT_TRUE(buttons[0].is_default);
  EXPECT_EQ(buttons[1].caption, "否(&N)");
  EXPECT_EQ(buttons[1].answer, kAnswerNo);
  EXPECT_FALSE(buttons[1].is_default);
}

TEST(MessageBox, AnyOtherBoxHasOneButton) {
  const auto buttons = MessageButtonsOf(kInformationIcon);
  ASSERT_EQ(buttons.size(), 1U);
  EXPECT_EQ(buttons[0].caption, "确定");
  EXPECT_EQ(buttons[0].answer, kAnswerOk);
  EXPECT_TRUE(buttons[0].is_default);
}

TEST(MessageBox, AQuestionHasNoOtherWayOut) {
  EXPECT_EQ(MessageClosed(kYesNo), std::nullopt);
  EXPECT_EQ(MessageAnswerOf(kYesNo, {kKeyEscape, 0, {}}), std::nullopt);
  EXPECT_EQ(MessageClosed(kExclamationIcon), kAnswerOk);
  EXPECT_EQ(MessageAnswerOf(kOkOnly, {kKeyEscape, 0, {}}), kAnswerOk);
}

TEST(MessageBox, LettersAnswerWithAltAndWithout) {
  EXPECT_EQ(MessageAnswerOf(kYesNo, {'Y', 0, U"y"}), kAnswerYes);
  EXPECT_EQ(MessageAnswerOf(kYesNo, {'N', kAlt, U"n"}), kAnswerNo);
  EXPECT_EQ(MessageAnswerOf(kYesNo, {'X', 0, U"x"}), std::nullopt);
  EXPECT_EQ(MessageAnswerOf(kOkOnly, {'Y', 0, U"y"}), std::nullopt);
  EXPECT_EQ(MessageAnswerOf(kOkOnly, {0, 0, U"中"}), std::nullopt);
}

TEST(MessageBox, HasTheIconOfItsFlags) {
  EXPECT_EQ(MessageIconOf(kYesNo | kQuestionIcon), kQuestionIcon);
  EXPECT_EQ(MessageIconOf(kExclamationIcon), kExclamationIcon);
  EXPECT_EQ(MessageIconOf(kYesNo), 0);
  EXPECT_EQ(MessageIconOf(16), 0);
}

TEST(MessageBox, LeftUnansweredAQuestionIsANo) {
  EXPECT_EQ(MessageUnanswered(kYesNo), kAnswerNo);
  EXPECT_EQ(MessageUnanswered(kOkOnly), kAnswerOk);
}

using Filters = std::vector<FileFilter>;

TEST(FileFilter, FilterWithATrailingSeparator) {
  EXPECT_EQ(FileFiltersOf("图片文件 (*.jpg)|*.jpg;"), (Filters{{"图片文件", {"*.jpg"}}}));
  EXPECT_EQ(FileFiltersOf("图片|*.jpg; *.jpeg|所有|*.*"),
            (Filters{{"图片", {"*.jpg", "*.jpeg"}}, {"所有", {"*.*"}}}));
}

TEST(FileFilter, ANameWithoutPatternsIsLeftOut) {
  EXPECT_EQ(FileFiltersOf(""), Filters{});
  EXPECT_EQ(FileFiltersOf("图片"), Filters{});
  EXPECT_EQ(FileFiltersOf("图片|;|所有|*.*"), (Filters{{"所有", {"*.*"}}}));
}

}  // namespace
}  // namespace dossierkit::toolkit
