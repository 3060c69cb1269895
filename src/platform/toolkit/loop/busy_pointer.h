// BusyPointer: the pointer says "wait" once an event of the user's takes long.
#pragma once

#include <chrono>

namespace dossierkit::toolkit {

class Platform;

// The one thread is busy then: it looks at the clock where the work comes by, so that a view set need do
// nothing for it but change the pointer.
class BusyPointer {
 public:
  explicit BusyPointer(Platform& platform) : platform_(platform) {}

  // To be called now and then in the course of an event: the busy pointer shows after 300 ms of it.
  void Tick();

  // An event lasts as long as the outermost of these; the pointer is as before at its end.
  class Event {
   public:
    explicit Event(BusyPointer& pointer);
    ~Event();
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

   private:
    BusyPointer& pointer_;
  };

 private:
  struct State {
    int events = 0;  // inside one another
    bool shown = false;
    std::chrono::steady_clock::time_point since;
  };

 public:
  // A window, message box or file dialog runs a loop of its own, in which events begin afresh: it is the user
  // who takes the time.
  class Pause {
   public:
    explicit Pause(BusyPointer& pointer);
    ~Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

   private:
    BusyPointer& pointer_;
    State outer_;
  };

 private:
  void Hide();

  Platform& platform_;
  State state_;
};

}  // namespace dossierkit::toolkit
