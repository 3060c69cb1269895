// View: what an adapter puts on the screen for one control of the model.
#pragma once

namespace dossierkit::toolkit {

// In which respect a control's model changed.
enum class Aspect {
  kPlacement,  // container, position, size
  kState,      // visible, enabled, of the control itself
  kStyle,      // colours, font, tool tip, accessible name
  kText,       // text, caption, value, selection inside a text
  kContent,    // rows, items, buttons, picture, columns
  kSelection,  // current row or item
  kFocus,      // the control has got the focus
};

// A view shows the model's state and reports what the user wants by the model's User... methods. It
// is created for a control that is part of a shown window, and destroyed when the control is removed,
// at times inside one of its own reports: a native widget then goes later.
class View {
 public:
  virtual ~View() = default;
  // The model changed; show it. Must not report anything back for what it shows.
  virtual void Show(Aspect aspect) = 0;
  // The row of a list under a point in twips of the control, or -1.
  virtual int RowAt(int /*x*/, int /*y*/) const { return -1; }
};

}  // namespace dossierkit::toolkit
