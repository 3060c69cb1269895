// Control: what all controls, pages and windows have in common.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/environment/event.h"
#include "platform/toolkit/controls/key_stroke.h"
#include "platform/toolkit/controls/view.h"

namespace dossierkit::toolkit {

class ControlWindow;
class UserControl;

enum class Kind {
  kTextBox,
  kMaskEdBox,
  kCheckBox,
  kLabel,
  kImage,
  kPictureBox,
  kFrame,
  kLine,
  kCommandButton,
  kListBox,
  kTreeView,
  kTabStrip,
  kDataGrid,
  kToolbar,
  kCoolBar,
  kVerticalMenu,
  kCommonDialog,
  kUserControl,
  kForm,
};

// Sizes and places in twips, 1440 to the inch, 15 to the pixel at 96 dpi.
struct Rect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool operator==(const Rect&) const = default;
};

struct Font {
  std::string name = "宋体";
  double size = 9;  // points
  bool bold = false;
  bool operator==(const Font&) const = default;
};

// A colour: blue, green, red in the bytes from the third to the first, or 0x80000000 plus the number
// of a system colour.
using Color = std::uint32_t;
inline constexpr Color kWindowBackground = 0x80000005;
inline constexpr Color kWindowText = 0x80000008;
inline constexpr Color kAppWorkspace = 0x8000000C;
inline constexpr Color kButtonFace = 0x8000000F;
inline constexpr Color kButtonShadow = 0x80000010;
inline constexpr Color kButtonText = 0x80000012;

enum MouseButton { kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };

// A control is shared: its owner's Controls holds it, and whoever delivers one of its events.
class Control : public std::enable_shared_from_this<Control> {
 public:
  Control(Kind kind, std::string name);
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  Kind GetKind() const { return kind_; }
  const std::string& Name() const { return name_; }

  // The control in which this one is placed, or its owner itself.
  Control* Container() const;
  void SetContainer(Control& container);
  // The page or window whose Controls holds this one; nullptr for a window and a removed control.
  Control* Owner() const { return owner_; }
  // The page on which it stands, itself for a page; nullptr where there is none.
  UserControl* Page();
  // The window in which it stands; nullptr if in none yet or any more.
  virtual ControlWindow* Window();

  const Rect& Place() const { return place_; }
  virtual void Move(const Rect& place);

  bool Visible() const { return visible_; }
  virtual void SetVisible(bool visible);
  bool Enabled() const { return enabled_; }
  virtual void SetEnabled(bool enabled);
  // Visible and enabled, with all containers, in a visible window. A hidden tab does not count as
  // hidden.
  bool Reachable();

  // The order of tab stops and the tag are the model's alone: no view is told.
  int TabIndex() const { return tab_index_; }
  void SetTabIndex(int index) { tab_index_ = index; }
  // False for kinds that never take the focus.
  bool TakesFocus() const;
  bool TabStop() const { return tab_stop_ && TakesFocus(); }
  void SetTabStop(bool stop) { tab_stop_ = stop; }

  const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }
  Color BackColor() const { return back_color_; }
  void SetBackColor(Color color);
  Color ForeColor() const { return fore_color_; }
  void SetForeColor(Color color);
  const Font& GetFont() const { return font_; }
  void SetFont(const Font& font);
  const std::string& ToolTipText() const { return tool_tip_; }
  void SetToolTipText(std::string text);

  // What a screen reader says: the explicit name, else the text of the labelling control, else the
  // control's own caption.
  std::string AccessibleName() const;
  void SetAccessibleName(std::string name);
  void SetLabelledBy(Control& label);
  // The labelling control; nullptr without one.
  std::shared_ptr<const Control> LabelledBy() const { return labelled_by_.lock(); }
  // The caption that stands on the control itself; empty for kinds without one.
  virtual std::string OwnCaption() const { return {}; }

  // Moves the focus here. Throws 5 where the control or a container is hidden or disabled or the
  // window is not visible. A Validate of the control that has the focus may refuse; nothing happens
  // then.
  void SetFocus();
  bool HasFocus();

  // Removed from its owner: it raises nothing and takes no focus any more.
  bool Removed() const { return removed_; }

  environment::Event<> GotFocus;
  environment::Event<> LostFocus;
  environment::Event<bool&> Validate;                // set the argument to keep the focus
  environment::Event<int&, int> KeyDown;             // key code, shift mask; 0 swallows the key
  environment::Event<char32_t&> KeyPress;            // character; 0 swallows it
  environment::Event<int, int, int, int> MouseDown;  // button, shift, x, y in twips
  environment::Event<int, int, int, int> MouseMove;

  // Raises an event of this control, keeping control, page and window alive meanwhile; nothing, and
  // no further subscriber, once the control was removed.
  template <typename... Parameters, typename... Arguments>
  void Raise(environment::Event<Parameters...>& event, Arguments&&... arguments) {
    if (removed_) return;
    const KeepAlive keep(*this);
    event.RaiseWhile([this] { return !removed_; }, std::forward<Arguments>(arguments)...);
  }

  // Reports of the view. UserMouseDown moves the focus first where the kind takes it and gives false
  // if that was refused: the native widget must then not see the press.
  bool UserMouseDown(int button, int shift, int x, int y);
  void UserMouseMove(int button, int shift, int x, int y);
  // The native focus was set from outside (accessibility): follows it, or puts it back.
  void UserFocus();
  // A key that nobody swallowed came to this control: true where the model did what it means here, and the
  // native widget must not see it.
  virtual bool ActOnKey(const KeyStroke& /*stroke*/) { return false; }

  // The window moved the focus here: shows it and raises GotFocus.
  void ReceiveFocus();

  View* GetView() const { return view_.get(); }
  void ShowAspect(Aspect aspect);

 protected:
  // The caption changed: shows it, and the accessible name that it is, here and of the controls that this one
  // names.
  void CaptionChanged();

  // One report of the view: runs `event` as one event of the user's where the window takes input now and this
  // control can be reached, and keeps control, page and window alive meanwhile. False where it did not run.
  // Whatever became of it, the view shows the aspect `then` at its end: the native widget may have gone
  // ahead.
  bool Report(std::optional<Aspect> then, const std::function<void()>& event);
  bool Report(const std::function<void()>& event) { return Report(std::nullopt, event); }
  // The focus comes here, for a report; false where that was refused.
  bool TakeFocus();
  // How many rows Page Up and Page Down move by: one row stays in sight.
  int RowsOfAPage() const;

  // Keeps a control, its page and its window alive during a report or an event.
  class KeepAlive {
   public:
    explicit KeepAlive(Control& control);

   private:
    std::shared_ptr<Control> self_, owner_, window_;
  };

  // Called by the owner's Controls and by the window.
  friend class Controls;
  friend class ControlWindow;
  friend class UserControl;
  virtual void OnRemoved();
  // The focus came here; GotFocus follows.
  virtual void OnFocus() {}
  virtual void CreateViews();  // this one's and those of what it owns
  virtual void DestroyViews();

 private:
  Kind kind_;
  std::string name_;
  Control* owner_ = nullptr;
  std::weak_ptr<Control> container_;
  Rect place_;
  bool visible_ = true;
  bool enabled_ = true;
  int tab_index_ = 0;
  bool tab_stop_ = true;
  bool removed_ = false;
  std::string tag_;
  Color back_color_ = kButtonFace;
  Color fore_color_ = kButtonText;
  Font font_;
  std::string tool_tip_;
  std::string accessible_name_;
  std::weak_ptr<const Control> labelled_by_;
  std::vector<std::weak_ptr<Control>> labels_;  // the controls that this one names
  std::unique_ptr<View> view_;
};

}  // namespace dossierkit::toolkit
