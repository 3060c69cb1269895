#include "adapters/win32/win32_platform.h"

#include <optional>
#include <utility>

#include "adapters/win32/application.h"
#include "adapters/win32/clipboard.h"
#include "adapters/win32/create_view.h"
#include "adapters/win32/file_dialog.h"
#include "adapters/win32/message_dialog.h"
#include "adapters/win32/modality.h"
#include "adapters/win32/pictures.h"
#include "adapters/win32/surroundings.h"
#include "adapters/win32/window_view.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::win32 {

struct Win32Platform::Parts {
  CommonControls controls;
  Application application;
  Looks looks;
  ViewContext context{application, looks};
  std::shared_ptr<void> life = std::make_shared<int>(0);
};

Win32Platform::Win32Platform() : parts_(std::make_unique<Parts>()) {}

Win32Platform::~Win32Platform() = default;

std::unique_ptr<toolkit::View> Win32Platform::CreateView(toolkit::Control& control) {
  const InSurroundings surroundings(parts_->controls);
  return MakeView(parts_->context, control);
}

void Win32Platform::RunLoop(toolkit::Form& form) {
  Application& application = parts_->application;
  const auto view = [&] { return static_cast<WindowView*>(form.GetView()); };
  if (form.LoopEnded()) return;
  {
    const InSurroundings surroundings(parts_->controls);
    if (view()) view()->Present();
  }
  application.RunUntil([&] { return form.LoopEnded() || !view() || !view()->Handle(); });
  // The program ends, or its owner took the window along.
  if (!form.LoopEnded()) form.UserClose();
  if (view()) {
    // It was hidden only; its place in the stack goes to the window below.
    view()->Withdraw();
    application.RemoveWindow(*view());
  }
  application.ReactivateTop();
}

void Win32Platform::WakeLoop() { parts_->application.WakeLoops(); }

toolkit::MessageAnswer Win32Platform::ShowMessage(const std::string& text, int flags,
                                                  const std::string& title) {
  Application& application = parts_->application;
  // A message of a window that is about to show stands over that window.
  if (WindowView* below = application.TopWindow();
      below && below->Handle() && !IsWindowVisible(below->Handle())) {
    const InSurroundings surroundings(parts_->controls);
    below->Present();
  }
  std::optional<InSurroundings> surroundings(parts_->controls);
  const int dpi = parts_->context.LookOfNext().GetMetrics().Dpi();
  MessageDialog box(parts_->looks, dpi, text, flags, title, application.OwnerOfNext());
  box.OnAnswer([&application] { application.WakeLoops(); });
  {
    // Enabled again before the box goes, so that the one below becomes the active one.
    const OthersDisabled others(box.Handle());
    box.Show();
    surroundings.reset();  // the host's windows hear messages meanwhile
    application.RunUntil([&] { return box.Answered(); });
  }
  box.Hide();
  application.ReactivateTop();
  return box.Answer();
}

std::string Win32Platform::ChooseFile(const toolkit::CommonDialog& request) {
  const InSurroundings surroundings(parts_->controls);
  std::string path = win32::ChooseFile(request.filter, request.init_dir, parts_->application.OwnerOfNext());
  parts_->application.ReactivateTop();
  return path;
}

toolkit::Picture Win32Platform::LoadPicture(const std::string& path, const toolkit::Rect& place) {
  const InSurroundings surroundings(parts_->controls);
  const RECT pixels = parts_->context.LookOfNext().GetMetrics().Pixels(place);
  return ReadPicture(path, {pixels.right - pixels.left, pixels.bottom - pixels.top});
}

toolkit::Rect Win32Platform::Screen() const {
  const InSurroundings surroundings(parts_->controls);
  const toolkit::Scale scale(DotsPerInch(nullptr) / 96.0);
  return {0, 0, scale.Twips(GetSystemMetrics(SM_CXSCREEN)), scale.Twips(GetSystemMetrics(SM_CYSCREEN))};
}

void Win32Platform::Beep() { MessageBeep(MB_OK); }

void Win32Platform::ShowBusy(bool busy) { parts_->application.ShowBusy(busy); }

std::string Win32Platform::ClipboardText() { return ReadClipboard(); }

void Win32Platform::SetClipboardText(const std::string& text) { WriteClipboard(text); }

void Win32Platform::InLoop(std::function<void()> work) {
  parts_->application.Later(parts_->life, std::move(work));
}

}  // namespace dossierkit::win32
