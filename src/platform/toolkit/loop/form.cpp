#include "platform/toolkit/loop/form.h"

#include <exception>
#include <utility>

#include "platform/environment/failure.h"
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
  struct Loading {
    bool& flag;
    explicit Loading(bool& loading) : flag(loading) { flag = true; }
    ~Loading() { flag = false; }
  } loading(loading_);
  loaded_ = true;
  // The design comes afresh; a size that the user gave the window in a former visit is not kept.
  SetDesignSize(design_width_, design_height_);
  panes_ = {};
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
  if (!loaded_) Load();
  if (!loaded_) throw environment::MakeFailure(environment::kObjectUnloaded);
  const auto keep = shared_from_this();
  shown_ = true;
  try {
    desktop_.RunModal(*this, [this] {
      CreateViews();
      Form_Resize();
      if (!LoopEnded()) Form_Activate();
      if (!LoopEnded() && !focus_ && shows_.empty()) FocusFirstStop();
    });
  } catch (...) {
    shown_ = false;
    UnloadAfterFailure();
    throw;
  }
  shown_ = false;
  sent_keys_.clear();
  DestroyViews();
}

bool Form::LoopEnded() const { return desktop_.LoopEnded(*this); }

void Form::Hide() { desktop_.EndLoop(*this); }

void Form::Unload() {
  if (!loaded_) return;
  loaded_ = false;
  shows_.clear();
  sent_keys_.clear();
  late_size_.reset();
  std::exception_ptr failure;
  try {
    controls_->Clear();
  } catch (...) {
    failure = std::current_exception();
  }
  focus_.reset();
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
  for (const auto& control : *controls_) control->CreateViews();
}

void Form::DestroyViews() {
  if (controls_) {
    for (const auto& control : *controls_) control->DestroyViews();
  }
  Control::DestroyViews();
}

void Form::PageAdded(const std::shared_ptr<UserControl>& page) { shows_.push_back(page); }

bool Form::Deliver(const std::function<void()>& event) {
  if (!desktop_.IsTopmost(*this) || desktop_.MessageShown()) return false;
  const auto keep = weak_from_this().lock();
  ++depth_;
  try {
    event();
    if (depth_ == 1) RunQueues();
  } catch (...) {
    desktop_.Fail(std::current_exception());
  }
  --depth_;
  return true;
}

void Form::RunQueues() {
  while (loaded_ && desktop_.IsTopmost(*this)) {
    if (late_size_) {
      const auto [width, height] = *std::exchange(late_size_, std::nullopt);
      Resize(width, height);
    } else if (!shows_.empty()) {
      const auto page = shows_.front().lock();
      shows_.pop_front();
      if (page && !page->Removed()) page->UserControl_Show();
    } else if (!sent_keys_.empty()) {
      const SentKeys sent = sent_keys_.front();
      sent_keys_.pop_front();
      DeliverSentKeys(sent);
    } else {
      return;
    }
  }
}

void Form::SendKeys(const std::string& keys) {
  UserControl* page = focus_ ? focus_->Page() : nullptr;
  sent_keys_.push_back({keys, page ? page->weak_from_this() : std::weak_ptr<Control>(), page != nullptr});
}

void Form::UserClose() {
  if (!desktop_.IsTopmost(*this) || desktop_.MessageShown()) {
    desktop_.Beep();
    return;
  }
  Deliver([this] { Unload(); });
}

void Form::UserResize(int width, int height) {
  late_size_.reset();
  if (!Deliver([&] { Resize(width, height); })) late_size_ = {width, height};
}

void Form::Resize(int width, int height) {
  if (width == Place().width && height == Place().height) return;
  Move({Place().left, Place().top, width, height});
  Form_Resize();
}

}  // namespace dossierkit::toolkit
