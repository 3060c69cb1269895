#include "tests/support/scripted_win32.h"

#include <exception>
#include <stdexcept>

#include "platform/toolkit/loop/form.h"
#include "tests/support/stage.h"
#include "tests/support/win32_user.h"

namespace dossierkit::tests {

void ScriptedWin32::RunLoop(toolkit::Form& form) {
  const Scene scene = NextScene();
  // What the scene throws must not pass through Windows.
  std::exception_ptr failure;
  InLoop([&] {
    try {
      if (scene) scene(form);
    } catch (...) {
      failure = std::current_exception();
    }
    if (!form.LoopEnded()) form.UserClose();
  });
  Win32Platform::RunLoop(form);
  if (failure) std::rethrow_exception(failure);
}

toolkit::MessageAnswer ScriptedWin32::ShowMessage(const std::string& text, int flags,
                                                  const std::string& title) {
  const headless::Message message = {text, flags, title};
  messages.push_back(message);
  const auto answer = NextAnswer(message);
  InLoop([&] {
    if (on_message) on_message(message);
    const HWND focus = GetFocus();
    PressAt(focus ? focus : GetActiveWindow(), answer == toolkit::kAnswerNo ? 'N' : VK_RETURN,
            answer == toolkit::kAnswerNo ? toolkit::kAlt : 0);
  });
  const auto given = Win32Platform::ShowMessage(text, flags, title);
  if (given != answer) throw std::logic_error("the box was answered otherwise: " + text);
  return given;
}

std::string ScriptedWin32::ChooseFile(const toolkit::CommonDialog& request) { return NextChoice(request); }

std::unique_ptr<Stage> MakeStage() { return std::make_unique<StageOf<ScriptedWin32, Win32User>>(); }

}  // namespace dossierkit::tests
