// MessageBox: what a message box offers, by its flags.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/toolkit/controls/key_stroke.h"

namespace dossierkit::toolkit {

// Flags of a message box.
enum MessageFlags {
  kOkOnly = 0,
  kYesNo = 4,
  kQuestionIcon = 32,
  kExclamationIcon = 48,
  kInformationIcon = 64,
};
enum MessageAnswer { kAnswerOk = 1, kAnswerYes = 6, kAnswerNo = 7 };

struct MessageButton {
  MessageAnswer answer;
  std::string caption;  // a mnemonic stands behind "&"
  std::string name;     // of the native widget
  bool is_default;
};

// The buttons from left to right: 是(&Y), the default, and 否(&N), or 确定 alone.
std::vector<MessageButton> MessageButtonsOf(int flags);

// What the close box and Esc mean; none where the box must be answered by one of its buttons.
std::optional<MessageAnswer> MessageClosed(int flags);

// What a key means besides arrows, Tab, Enter and the blank, which are those of any dialog: Esc, and the
// letter of a button with Alt or without.
std::optional<MessageAnswer> MessageAnswerOf(int flags, const KeyStroke& stroke);

// The icon's flag alone; 0 without one.
int MessageIconOf(int flags);

// What the box gives where it ended without an answer, as with the program.
MessageAnswer MessageUnanswered(int flags);

}  // namespace dossierkit::toolkit
