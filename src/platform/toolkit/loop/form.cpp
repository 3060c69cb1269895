#include "platform/toolkit/loop/form.h"

#include <exception>
#include <utility>

#include "platform/environment/during.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/shown_text.h"
#include "platform/toolkit/controls/user_control.h"
#include "platform/toolkit/loop/desktop.h"

namespace dossierkit::toolkit {

Form::Form(Desktop& desktop, std::string name) : Control(Kind::kForm, std::move(name)), desktop_(desktop) {}

Form::~Form() {
  if (!controls_) return;
  try {
    controls_->Clear();
  } catch (...) {
    // Nobody is left to hear of it.
  }
}

void Form::SetCaption(std::string caption) {
  caption_ = std::move(caption);
  CaptionChanged();
}

void Form::SetDesignSize(int width, int height) {
  design_width_ = width;
  design_height_ = height;
  Move({0, 0, width + kBorderWidth, height + kBorderHeight});
}

void Form::SetPanes(Control& bar, Control& side, Control& scrolled) {
  panes_ = {bar.weak_from_this(), side.weak_from_this(), scrolled.weak_from_this()};
}

toolkit::Controls& Form::Controls() {
  if (!loaded_) throw environment::MakeFailure(environment::kObjectUnloaded);
  return *controls_;
}

void Form::Load() {
  const environment::During loading(loading_);
  loaded_ = true;
  // The design comes afresh; a size that the user gave the window in a former visit is not kept.
  SetDesignSize(design_width_, design_height_);
  controls_ = std::make_shared<toolkit::Controls>(*this);
  try {
    BuildDesign();
    Form_Load();
  } catch (...) {
    UnloadAfterFailure();
    throw;
  }
}

void Form::ShowModal() {
  if (InVisit()) throw environment::MakeFailure(environment::kAlreadyShown);
  const BusyPointer::Event busy(desktop_.Busy());
  if (!loaded_) Load();
  if (!loaded_) throw environment::MakeFailure(environment::kObjectUnloaded);
  const auto keep = shared_from_this();
  shown_ = true;
  try {
    desktop_.RunModal(*this, [this] {
      CreateViews();
      Form_Resize();
      if (!LoopEnded()) Form_Activate();
      if (!LoopEnded() && !ActiveControl() && !queue_.HasPages()) FocusFirstStop();
    });
  } catch (...) {
    shown_ = false;
    UnloadAfterFailure();
    throw;
  }
  shown_ = false;
  queue_.ForgetKeys();
  DestroyViews();
}

bool Form::LoopEnded() const { return desktop_.LoopEnded(*this); }

void Form::Hide() { desktop_.EndLoop(*this); }

void Form::Unload() {
  if (!loaded_) return;
  loaded_ = false;
  queue_.Forget();
  std::exception_ptr failure;
  try {
    controls_->Clear();
  } catch (...) {
    failure = std::current_exception();
  }
  DestroyViews();
  ForgetDesign();
  desktop_.EndLoop(*this);
  if (failure) std::rethrow_exception(failure);
}

// The failure that is on its way counts, not one of the unloading.
void Form::UnloadAfterFailure() {
  try {
    Unload();
  } catch (...) {
  }
}

void Form::CreateViews() {
  Control::CreateViews();
  if (!loaded_) return;
  for (const auto& control : *controls_) CreateViewsOf(*control);
}

void Form::DestroyViews() {
  if (controls_) {
    for (const auto& control : *controls_) DestroyViewsOf(*control);
  }
  Control::DestroyViews();
}

std::unique_ptr<View> Form::CreateView(Control& control) {
  Tick();
  return desktop_.GetPlatform().CreateView(control);
}

std::shared_ptr<Control> Form::CreateControl(const std::string& class_name, const std::string& name) {
  return desktop_.Create(class_name, name);
}

std::string Form::ChooseFile(const CommonDialog& request) { return desktop_.ChooseFile(request); }

std::string Form::ClipboardText() { return WithLineBreaks(desktop_.GetPlatform().ClipboardText()); }

void Form::SetClipboardText(const std::string& text) {
  desktop_.GetPlatform().SetClipboardText(environment::Replace(text, "\r\n", "\n"));
}

void Form::Beep() { desktop_.Beep(); }

void Form::Tick() { desktop_.Busy().Tick(); }

bool Form::Composing() const { return desktop_.Composing(); }

void Form::UserCompose(bool composing) { desktop_.SetComposing(composing); }

void Form::PreviewKeyPress(char32_t& character) {
  if (key_preview_) Form_KeyPress(character);
}

// A window that set no focus itself starts on its first tab stop.
void Form::FocusFirstStop() {
  if (const auto first = focus_.NextTabStop(*controls_, true)) MoveFocus(*first);
}

bool Form::Deliver(const std::function<void()>& event) {
  if (!desktop_.IsTopmost(*this) || desktop_.MessageShown()) return false;
  const auto keep = weak_from_this().lock();
  const InputQueue::Event counted(queue_);
  const BusyPointer::Event busy(desktop_.Busy());
  try {
    event();
    if (queue_.Outermost()) RunQueue();
  } catch (...) {
    desktop_.Fail(std::current_exception());
  }
  return true;
}

void Form::RunQueue() {
  while (loaded_ && desktop_.IsTopmost(*this)) {
    const auto next = queue_.Next();
    if (!next) return;
    if (const auto* size = std::get_if<Size>(&*next)) {
      Resize(size->width, size->height);
    } else if (const auto* page = std::get_if<std::shared_ptr<UserControl>>(&*next)) {
      (*page)->Appear();
    } else {
      keys_.Send(std::get<SentKeys>(*next).keys);
    }
  }
}

void Form::SendKeys(const std::string& keys) {
  UserControl* page = ActiveControl() ? ActiveControl()->Page() : nullptr;
  queue_.AddKeys({keys, page ? page->weak_from_this() : std::weak_ptr<Control>(), page != nullptr});
}

void Form::UserClose() {
  if (!desktop_.IsTopmost(*this) || desktop_.MessageShown()) {
    desktop_.Beep();
    return;
  }
  Deliver([this] { Unload(); });
}

void Form::UserResize(int width, int height) {
  queue_.SetSize({});
  if (!Deliver([&] { Resize(width, height); })) queue_.SetSize(Size{width, height});
}

void Form::Resize(int width, int height) {
  if (width == Place().width && height == Place().height) return;
  Move({Place().left, Place().top, width, height});
  Form_Resize();
}

Form* FormOf(Control& control) {
  ControlWindow* window = control.Window();
  return window ? static_cast<Form*>(&window->AsControl()) : nullptr;
}

}  // namespace dossierkit::toolkit
