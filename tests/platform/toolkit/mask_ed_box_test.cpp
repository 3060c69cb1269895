#include <random>

#include "platform/environment/text.h"
#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

constexpr char kBlank[] = "____年__月";

class MaskEdBoxTest : public ToolkitTest {
 protected:
  // Runs `scene` with the focus in mskDate (####年##月).
  void InBox(const std::function<void(MaskEdBox&)>& scene) {
    Visit([&] {
      const auto box = form->Get<MaskEdBox>("mskDate");
      box->SetFocus();
      On(box->Change, [this] { ++changes; });
      scene(*box);
    });
  }
  int changes = 0;
};

TEST_F(MaskEdBoxTest, EmptyBoxReadsAsTheBlankMask) {
  InBox([&](MaskEdBox& box) {
    EXPECT_EQ(box.Text(), kBlank);
    EXPECT_EQ(box.BlankMask(), kBlank);
    EXPECT_EQ(box.PromptChar(), "_");
    box.SetMask("####年##月##日");
    EXPECT_EQ(box.Text(), "____年__月__日");
    EXPECT_EQ(changes, 0);
  });
}

TEST_F(MaskEdBoxTest, ShorterMaskTakesTheCaretBack) {
  InBox([&](MaskEdBox& box) {
    box.Select(6, 2);
    box.SetMask("####");
    EXPECT_EQ(box.SelStart() + box.SelLength(), 0U);
    user.Type("1");
    EXPECT_EQ(box.Text(), "1___");
  });
}

TEST_F(MaskEdBoxTest, TypedDigitsFillTheMaskAndStepOverLiterals) {
  InBox([&](MaskEdBox& box) {
    const std::vector<std::pair<std::string, std::size_t>> expected = {{"1___年__月", 1}, {"19__年__月", 2},
                                                                       {"199_年__月", 3}, {"1990年__月", 5},
                                                                       {"1990年0_月", 6}, {"1990年03月", 8}};
    const std::string digits = "199003";
    for (std::size_t i = 0; i < digits.size(); ++i) {
      user.Type(digits.substr(i, 1));
      EXPECT_EQ(box.Text(), expected[i].first);
      EXPECT_EQ(box.SelStart(), expected[i].second);
    }
    EXPECT_EQ(changes, 6);
    EXPECT_EQ(platform.beeps, 0);
  });
}

TEST_F(MaskEdBoxTest, RefusedCharactersBeepAndChangeNothing) {
  InBox([&](MaskEdBox& box) {
    user.Type("19");
    changes = 0;
    for (const char* refused : {"a", " ", "-", "_", "#", "年", "３", "'"}) {
      platform.beeps = 0;
      user.Type(refused);
      EXPECT_EQ(platform.beeps, 1) << refused;
      EXPECT_EQ(box.Text(), "19__年__月") << refused;
      EXPECT_EQ(box.SelStart(), 2U) << refused;
    }
    EXPECT_EQ(changes, 0);
  });
}

TEST_F(MaskEdBoxTest, RefusedCharacterLeavesTheSelection) {
  InBox([&](MaskEdBox& box) {
    box.SetText("1990年03月");
    box.Select(2, 3);
    user.Type("x");
    EXPECT_EQ(box.Text(), "1990年03月");
    EXPECT_EQ(box.SelStart(), 2U);
    EXPECT_EQ(box.SelLength(), 3U);
  });
}

TEST_F(MaskEdBoxTest, DigitBeyondTheEndIsRefused) {
  InBox([&](MaskEdBox& box) {
    user.Type("199003");
    user.Type("7");
    EXPECT_EQ(box.Text(), "1990年03月");
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(box.SelStart(), 8U);
  });
}

TEST_F(MaskEdBoxTest, TypingInTheMiddleReplacesWithoutShifting) {
  InBox([&](MaskEdBox& box) {
    box.SetText("1990年03月");
    box.Select(2, 0);
    user.Type("8");
    EXPECT_EQ(box.Text(), "1980年03月");
    user.Type("5");
    EXPECT_EQ(box.Text(), "1985年03月");
    EXPECT_EQ(box.SelStart(), 5U);
    user.Type("1");
    EXPECT_EQ(box.Text(), "1985年13月");
  });
}

TEST_F(MaskEdBoxTest, DigitTypedBeforeALiteralGoesBehindIt) {
  InBox([&](MaskEdBox& box) {
    box.SetSelStart(4);
    user.Type("1");
    EXPECT_EQ(box.Text(), "____年1_月");
    EXPECT_EQ(box.SelStart(), 6U);
  });
}

TEST_F(MaskEdBoxTest, TypingOverASelectionBlanksItFirst) {
  InBox([&](MaskEdBox& box) {
    box.SetText("1990年03月");
    box.Select(2, 4);
    user.Type("7");
    EXPECT_EQ(box.Text(), "197_年_3月");
    EXPECT_EQ(box.SelStart(), 3U);
    EXPECT_EQ(box.SelLength(), 0U);
    user.Press('A', kCtrl);
    user.Type("2");
    EXPECT_EQ(box.Text(), "2___年__月");
  });
}

TEST_F(MaskEdBoxTest, BackspaceBlanksAndStepsOverLiterals) {
  InBox([&](MaskEdBox& box) {
    box.SetText("1990年03月");
    user.Press(kKeyEnd);
    const std::vector<std::pair<std::string, std::size_t>> expected = {{"1990年0_月", 6}, {"1990年__月", 5},
                                                                       {"199_年__月", 3}, {"19__年__月", 2},
                                                                       {"1___年__月", 1}, {kBlank, 0}};
    for (const auto& [text, caret] : expected) {
      user.Press(kKeyBack);
      EXPECT_EQ(box.Text(), text);
      EXPECT_EQ(box.SelStart(), caret);
    }
    EXPECT_EQ(platform.beeps, 0);
    user.Press(kKeyBack);
    EXPECT_EQ(box.Text(), kBlank);
    EXPECT_EQ(platform.beeps, 1);
  });
}

TEST_F(MaskEdBoxTest, BackspaceBehindALeadingLiteralIsRefused) {
  InBox([&](MaskEdBox& box) {
    box.SetMask("第##届");
    user.Type("12");
    box.SetSelStart(1);
    user.Press(kKeyBack);
    EXPECT_EQ(box.Text(), "第12届");
    EXPECT_EQ(box.SelStart(), 1U);
    EXPECT_EQ(platform.beeps, 1);
  });
}

TEST_F(MaskEdBoxTest, DeleteBlanksAtTheCaretWithoutShifting) {
  InBox([&](MaskEdBox& box) {
    box.SetText("1990年03月");
    box.SetSelStart(1);
    user.Press(kKeyDelete);
    EXPECT_EQ(box.Text(), "1_90年03月");
    EXPECT_EQ(box.SelStart(), 1U);
    box.SetSelStart(4);
    user.Press(kKeyDelete);
    EXPECT_EQ(box.Text(), "1_90年_3月");
    box.SetSelStart(7);
    user.Press(kKeyDelete);
    EXPECT_EQ(box.Text(), "1_90年_3月");
    EXPECT_EQ(box.SelStart(), 7U);
    EXPECT_EQ(platform.beeps, 1);
  });
}

TEST_F(MaskEdBoxTest, SelectionIsBlankedByBackspaceAndDelete) {
  InBox([&](MaskEdBox& box) {
    for (const int key : {kKeyBack, kKeyDelete}) {
      box.SetText("1990年03月");
      box.Select(3, 3);
      user.Press(key);
      EXPECT_EQ(box.Text(), "199_年_3月");
      EXPECT_EQ(box.SelStart(), 3U);
      EXPECT_EQ(box.SelLength(), 0U);
    }
  });
}

TEST_F(MaskEdBoxTest, HomeAndEndMoveTheCaret) {
  InBox([&](MaskEdBox& box) {
    user.Press(kKeyEnd);
    EXPECT_EQ(box.SelStart(), 8U);
    user.Press(kKeyHome);
    EXPECT_EQ(box.SelStart(), 0U);
    box.Select(6, 9);
    EXPECT_EQ(box.SelLength(), 2U);
    box.Select(99, 1);
    EXPECT_EQ(box.SelStart(), 8U);
    EXPECT_EQ(changes, 0);
  });
}

TEST_F(MaskEdBoxTest, CopyAndCutGiveTheTextWithItsLiterals) {
  InBox([&](MaskEdBox& box) {
    box.SetText("1990年03月");
    changes = 0;
    box.Select(2, 4);
    user.Press('C', kCtrl);
    EXPECT_EQ(platform.clipboard, "90年0");
    EXPECT_EQ(changes, 0);
    platform.clipboard.clear();
    user.Press('X', kCtrl);
    EXPECT_EQ(platform.clipboard, "90年0");
    EXPECT_EQ(box.Text(), "19__年_3月");
    EXPECT_EQ(changes, 1);
    user.Press('X', kCtrl);
    EXPECT_EQ(platform.clipboard, "90年0") << "nothing is selected";
    EXPECT_EQ(box.Text(), "19__年_3月");
    EXPECT_EQ(changes, 1);
  });
}

struct PasteCase {
  const char* pasted;
  const char* text;
  int beeps;
};

TEST_F(MaskEdBoxTest, WholeDatesArePastedInSeveralShapes) {
  const PasteCase cases[] = {
      {"1990年03月", "1990年03月", 0},    {"199003", "1990年03月", 0},
      {"1990-03", "1990年03月", 0},       {"1990/03", "1990年03月", 0},
      {"1990.3", "1990年3_月", 0},        {"1990年3月", "1990年3_月", 0},
      {"1990 年 03 月", "1990年03月", 0}, {" 1990年03月\r\n", "1990年03月", 0},
      {"-1990", "1990年__月", 0},         {"____年03月", "____年03月", 0},
      {"1990年__月", "1990年__月", 0},    {"19900312", "1990年03月", 1},
      {"1990-03-12", "1990年03月", 1},    {"x1990", "1990年__月", 1},
      {"90年", "90__年__月", 0},          {"#1990", "1990年__月", 1},
  };
  InBox([&](MaskEdBox& box) {
    for (const auto& [pasted, text, beeps] : cases) {
      box.SetText("2001年12月");
      box.Select(0, 8);
      platform.beeps = 0;
      user.Paste(pasted);
      EXPECT_EQ(box.Text(), text) << pasted;
      EXPECT_EQ(platform.beeps, beeps) << pasted;
    }
  });
}

TEST_F(MaskEdBoxTest, PasteWithoutADigitChangesNothing) {
  InBox([&](MaskEdBox& box) {
    box.SetText("1990年03月");
    changes = 0;
    box.Select(0, 8);
    user.Paste("不详");
    EXPECT_EQ(platform.beeps, 1);
    user.Paste("");
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(box.Text(), "1990年03月");
    EXPECT_EQ(box.SelLength(), 8U);
    EXPECT_EQ(changes, 0);
  });
}

TEST_F(MaskEdBoxTest, PasteAtTheCaretReplacesFromThere) {
  InBox([&](MaskEdBox& box) {
    box.SetText("1990年03月");
    box.SetSelStart(5);
    user.Paste("年12");
    EXPECT_EQ(box.Text(), "1990年12月");
    box.SetSelStart(0);
    user.Paste("__85");
    EXPECT_EQ(box.Text(), "__85年12月");
    box.SetSelStart(8);
    user.Paste("1");
    EXPECT_EQ(box.Text(), "__85年12月");
    EXPECT_EQ(platform.beeps, 1);
  });
}

TEST_F(MaskEdBoxTest, PasteKeepsThePartsApartWhereALiteralRepeats) {
  InBox([&](MaskEdBox& box) {
    box.SetMask("##-##-##");
    user.Paste("12-34-56");
    EXPECT_EQ(box.Text(), "12-34-56");
    user.Press('A', kCtrl);
    user.Paste("1-3-5");
    EXPECT_EQ(box.Text(), "1_-3_-5_");
    EXPECT_EQ(platform.beeps, 0);
  });
}

TEST_F(MaskEdBoxTest, PasteEndsBehindAllLiteralsThatFollow) {
  InBox([&](MaskEdBox& box) {
    box.SetMask("##--##");
    user.Paste("12-");
    EXPECT_EQ(box.Text(), "12--__");
    EXPECT_EQ(box.SelStart(), 4U);
  });
}

TEST_F(MaskEdBoxTest, DeleteLeavesTheBlankMaskOfATextThatDoesNotFitAlsoWhereNoDigitFollows) {
  InBox([&](MaskEdBox& box) {
    box.SetMask("未详");
    box.SetText("1990");
    user.Press(kKeyDelete);
    EXPECT_EQ(box.Text(), "未详");
    EXPECT_EQ(platform.beeps, 0);
  });
}

TEST_F(MaskEdBoxTest, PasteRaisesChangeOnce) {
  InBox([&](MaskEdBox& box) {
    user.Paste("1990年03月");
    EXPECT_EQ(changes, 1);
    box.Select(0, 8);
    user.Paste("199003");
    EXPECT_EQ(changes, 1);
  });
}

TEST_F(MaskEdBoxTest, ChangeComesAtOnceAndOnlyIfTheTextDiffers) {
  InBox([&](MaskEdBox& box) {
    std::string seen;
    On(box.Change, [&] { seen = box.Text(); });
    box.SetText("1990年03月");
    EXPECT_EQ(seen, "1990年03月");
    EXPECT_EQ(changes, 1);
    box.SetText("1990年03月");
    EXPECT_EQ(changes, 1);
    box.SetSelStart(0);
    user.Type("1");
    EXPECT_EQ(changes, 1);
    box.SetText(kBlank);
    box.SetText("");
    EXPECT_EQ(changes, 2);
  });
}

TEST_F(MaskEdBoxTest, AssignedTextThatIsTooShortIsPadded) {
  InBox([&](MaskEdBox& box) {
    box.SetText("1990");
    EXPECT_EQ(box.Text(), "1990年__月");
    box.SetText("1990年");
    EXPECT_EQ(box.Text(), "1990年__月");
    EXPECT_EQ(changes, 1);
    box.SetText("");
    EXPECT_EQ(box.Text(), kBlank);
  });
}

TEST_F(MaskEdBoxTest, AssignedTextThatDoesNotFitIsKeptAsItIs) {
  InBox([&](MaskEdBox& box) {
    for (const char* text : {"1990-03", "不详", "1990年03月05日", "1990年3月", "199003", "1990年03月 "}) {
      box.SetText(text);
      EXPECT_EQ(box.Text(), text);
    }
  });
}

TEST_F(MaskEdBoxTest, FirstEditingKeyStartsFromTheBlankMaskWhereTheTextDoesNotFit) {
  InBox([&](MaskEdBox& box) {
    const auto start = [&] {
      box.SetText("1990-03");
      box.Select(2, 3);
    };
    start();
    user.Type("2");
    EXPECT_EQ(box.Text(), "2___年__月");
    start();
    user.Press(kKeyBack);
    EXPECT_EQ(box.Text(), kBlank);
    start();
    user.Press(kKeyDelete);
    EXPECT_EQ(box.Text(), kBlank);
    start();
    user.Press('X', kCtrl);
    EXPECT_EQ(platform.clipboard, "90-");
    EXPECT_EQ(box.Text(), kBlank);
    start();
    user.Paste("1985年");
    EXPECT_EQ(box.Text(), "1985年__月");
    EXPECT_EQ(platform.beeps, 0);
  });
}

TEST_F(MaskEdBoxTest, RefusedCharacterLosesNothingThatDoesNotFit) {
  InBox([&](MaskEdBox& box) {
    box.SetText("1990-03");
    changes = 0;
    box.Select(2, 3);
    user.Type("x");
    user.Paste("不详");
    EXPECT_EQ(box.Text(), "1990-03");
    EXPECT_EQ(box.SelStart(), 2U);
    EXPECT_EQ(box.SelLength(), 3U);
    EXPECT_EQ(platform.beeps, 2);
    EXPECT_EQ(changes, 0);
  });
}

TEST_F(MaskEdBoxTest, TextReplacedFromOutsideGoesThroughTheMask) {
  InBox([&](MaskEdBox& box) {
    box.SetText("2001年12月");
    box.UserReplaceAll("1990-03");
    EXPECT_EQ(box.Text(), "1990年03月");
    box.UserReplaceAll("不详");
    EXPECT_EQ(box.Text(), "1990年03月");
    EXPECT_EQ(platform.beeps, 1);
    box.UserReplaceAll("");
    EXPECT_EQ(box.Text(), kBlank);
    EXPECT_EQ(changes, 3);
  });
}

TEST_F(MaskEdBoxTest, DisabledBoxTakesNothing) {
  InBox([&](MaskEdBox& box) {
    box.SetEnabled(false);
    box.UserType("1");
    box.UserPaste("1990");
    box.UserBackspace();
    box.UserDelete();
    box.UserReplaceAll("1990");
    EXPECT_EQ(box.Text(), kBlank);
    EXPECT_EQ(platform.beeps, 0);
  });
}

TEST_F(MaskEdBoxTest, LiteralsNeverMoveAndTheLengthNeverChanges) {
  const std::vector<std::string> masks = {"####年##月", "####年##月##日", "####",
                                          "##-##-##",   "(##)第#届",      "######"};
  const std::vector<std::string> pieces = {"0", "7", "年",         "月",    "_",  "-",
                                           "x", "#", "1990年03月", "12-34", "  ", "日"};
  std::mt19937 random(20240131);
  const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random() % bound); };
  InBox([&](MaskEdBox& box) {
    for (const auto& mask : masks) {
      box.SetMask(mask);
      const auto mask_characters = environment::Characters(mask);
      const std::size_t size = mask_characters.size();
      for (int step = 0; step < 3000; ++step) {
        const std::string before = box.Text();
        const int beeps_before = platform.beeps;
        const int changes_before = changes;
        switch (below(9)) {
          case 0:
          case 1:
          case 2: user.Type(pieces[below(8)]); break;  // one character
          case 3: user.Paste(pieces[below(pieces.size())] + pieces[below(pieces.size())]); break;
          case 4: user.Press(kKeyBack); break;
          case 5: user.Press(kKeyDelete); break;
          case 6: box.Select(below(size + 2), below(size + 2)); break;
          case 7: box.UserCommand(EditCommand::kCut); break;
          default: box.SetSelStart(below(size + 1)); break;
        }
        const auto characters = environment::Characters(box.Text());
        ASSERT_EQ(characters.size(), size) << box.Text();
        for (std::size_t i = 0; i < size; ++i) {
          const std::string& character = characters[i];
          if (mask_characters[i] == "#") {
            ASSERT_TRUE(character == "_" || (character >= "0" && character <= "9")) << box.Text();
          } else {
            ASSERT_EQ(character, mask_characters[i]) << box.Text();
          }
        }
        ASSERT_LE(box.SelStart() + box.SelLength(), size);
        ASSERT_EQ(changes - changes_before, box.Text() == before ? 0 : 1) << before << " " << box.Text();
        ASSERT_LE(beeps_before, platform.beeps);
      }
    }
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
