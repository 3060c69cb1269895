// View: what an adapter puts on the screen for one control of the model.
#pragma once

namespace dossierkit::toolkit {

// In which respect a control's model changed.
enum class Aspect {
  kPlacement,  // container, position, size
  kState,      // visible, enabled, of the control itself
  kStyle,      // colours, fonts, alignment, tool tip, accessible name of the control
  kText,       // text with its selection, caption, value
  kContent,    // rows, items with their texts and colours, buttons, picture, columns with their widths
  kSelection,  // current row or item, which nodes are open; caret and selection in a text that stays
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
  // How many whole rows of a list, tree, grid or menu are in sight at a time.
  virtual int RowsInSight() const { return 1; }
};

}  // namespace dossierkit::toolkit
