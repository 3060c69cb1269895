#include "platform/toolkit/loop/desktop.h"

#include <algorithm>

#include "platform/environment/during.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::toolkit {

void Desktop::RegisterClass(const std::string& class_name, Factory factory) {
  classes_[environment::LowerCase(class_name)] = std::move(factory);
}

std::shared_ptr<Control> Desktop::Create(const std::string& class_name, const std::string& name) const {
  const auto found = classes_.find(environment::LowerCase(class_name));
  if (found == classes_.end()) {
    const auto failure = environment::MakeFailure(environment::kUnknownClass);
    throw environment::Failure(failure.number(), failure.description() + "：" + class_name);
  }
  return found->second(name);
}

class Desktop::Showing {
 public:
  explicit Showing(Desktop& desktop) : shown_(desktop.message_shown_), pause_(desktop.busy_) {
    desktop.composing_ = false;
  }

 private:
  environment::During shown_;
  BusyPointer::Pause pause_;
};

MessageAnswer Desktop::MsgBox(const std::string& text, int flags, const std::string& title) {
  const Showing showing(*this);
  return platform_.ShowMessage(text, flags, title);
}

std::string Desktop::ChooseFile(const CommonDialog& request) {
  const Showing showing(*this);
  return platform_.ChooseFile(request);
}

bool Desktop::IsTopmost(const Form& form) const {
  return !frames_.empty() && frames_.back()->form == &form && !frames_.back()->ended;
}

Form* Desktop::TopmostForm() const { return frames_.empty() ? nullptr : frames_.back()->form; }

bool Desktop::LoopEnded(const Form& form) const {
  const auto frame =
      std::find_if(frames_.begin(), frames_.end(), [&](const Frame* f) { return f->form == &form; });
  return frame == frames_.end() || (*frame)->ended;
}

void Desktop::RunModal(Form& form, const std::function<void()>& at_start) {
  Frame frame{&form, false, nullptr};
  composing_ = false;
  {
    struct Push {
      std::vector<Frame*>& frames;
      Push(std::vector<Frame*>& all, Frame* frame_shown) : frames(all) { frames.push_back(frame_shown); }
      ~Push() { frames.pop_back(); }
    } pushed(frames_, &frame);
    form.Deliver(at_start);
    if (!frame.ended) {
      const BusyPointer::Pause pause(busy_);
      platform_.RunLoop(form);
    }
  }
  if (frame.failure) std::rethrow_exception(frame.failure);
}

void Desktop::EndLoop(const Form& form) {
  for (Frame* frame : frames_) {
    if (frame->form == &form) frame->ended = true;
  }
  platform_.WakeLoop();
}

void Desktop::Fail(std::exception_ptr failure) {
  if (frames_.empty()) return;
  Frame& frame = *frames_.back();
  if (!frame.failure) frame.failure = std::move(failure);
  frame.ended = true;
  platform_.WakeLoop();
}

}  // namespace dossierkit::toolkit
