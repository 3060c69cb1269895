#include "platform/toolkit/loop/message_box.h"

#include "platform/toolkit/controls/mnemonic.h"

namespace dossierkit::toolkit {
namespace {

constexpr int kIconMask = 0xF0;

bool Asks(int flags) { return flags & kYesNo; }

}  // namespace

std::vector<MessageButton> MessageButtonsOf(int flags) {
  if (!Asks(flags)) return {{kAnswerOk, "确定", "OK", true}};
  return {{kAnswerYes, "是(&Y)", "Yes", true}, {kAnswerNo, "否(&N)", "No", false}};
}

std::optional<MessageAnswer> MessageClosed(int flags) {
  if (Asks(flags)) return std::nullopt;
  return kAnswerOk;
}

std::optional<MessageAnswer> MessageAnswerOf(int flags, const KeyStroke& stroke) {
  if (stroke.code == kKeyEscape) return MessageClosed(flags);
  for (const MessageButton& button : MessageButtonsOf(flags)) {
    if (stroke.code != 0 && MnemonicOf(button.caption) == stroke.code) return button.answer;
  }
  return std::nullopt;
}

int MessageIconOf(int flags) {
  const int icon = flags & kIconMask;
  return icon == kQuestionIcon || icon == kExclamationIcon || icon == kInformationIcon ? icon : 0;
}

MessageAnswer MessageUnanswered(int flags) { return Asks(flags) ? kAnswerNo : kAnswerOk; }

}  // namespace dossierkit::toolkit
