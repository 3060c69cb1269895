// View: what an adapter puts on the screen for one control of the model.
#pragma once

namespace dossierkit::toolkit {

// In which respect a control's model changed.
enum class Aspect {
  kPlacement,  // container, position, size
  kState,      // visible, enabled, of the control itself; whether its tab is in front
  kStyle,      // colours, fonts, alignment, borders, tool tip, accessible name, the default button
  kText,       // text with its selection, caption, value
  kContent,  // rows, items with their texts and colours, enabled buttons, picture, columns with their widths
  kSelection,  // current row or item, which nodes are open, the tab in front; caret and selection in a text
               // that stays
  kFocus,      // the control has got the focus, or keeps it where a check refused to let it go
};

// A view shows the model's state and reports what the user wants by the model's User... methods.
//
// Its life. A view is created for a control of a window that shows or is about to, after the view of the
// control's container, and shows everything at once, without being told. It is destroyed when the control is
// removed, and when the window hides or unloads: the controls of a page before the page, all controls before
// the window. That may happen inside one of its own reports; its native widget then goes later, and reports
// nothing more. What the program sets while a control has no view shows in the next one.
//
// What it is told. Show comes at once, in the call that changed the model, at times also where nothing
// differs from before. It must not report anything back for what it shows. A control's tab index, tag and
// MaxLength, the fields of a dialog and the design of a window are the model's alone: no view is told. In
// order:
//   - a caption: kText; then kStyle, where the accessible name comes from it; then kStyle of each control
//     that it names;
//   - a text that the user edited: kText, before Change; also where the model refused all of it or ignored
//     the report, since the native widget may have edited already;
//   - a row, node, item or tab that the user chose, opened or closed: kSelection, last of all, also where a
//     check or a handler refused, so that the native selection goes back; a column's width: kContent
//     likewise;
//   - the focus: LostFocus of the one, kFocus of the other, then GotFocus; kFocus of the former alone where
//     its check refused;
//   - another tab in front: kSelection of the strip, then kState of each control on the two tabs;
//   - other rows: kContent, then kSelection where the program selects one. Many rows may come one by one: a
//     view may put kContent and kSelection off until Settle, or until the system has nothing else to do (see
//     row_updates.h).
// A hidden or disabled control hides and disables what stands in it; that is not told again.
//
// Containers. The container may change while the view exists: kPlacement tells it, and the new container's
// view exists already. A control stands in no other window than its owner's. What stands in a container goes
// with it when that is shown, hidden, disabled or moved. Within one container the frames lie below everything
// else; otherwise what was made later lies above.
//
// Reports may be made at any time. One that comes while the window takes no input, to a control that cannot
// be reached, or about a row that is not there changes nothing; the view is told to show the model once more.
class View {
 public:
  virtual ~View() = default;
  // The model changed; show it.
  virtual void Show(Aspect aspect) = 0;
  // A report of this view has ended: what it has put off is to show now.
  virtual void Settle() {}
  // The row of a list under a point in twips of the control, or -1.
  virtual int RowAt(int /*x*/, int /*y*/) const { return -1; }
  // How many whole rows of a list, tree, grid or menu are in sight at a time.
  virtual int RowsInSight() const { return 1; }
};

}  // namespace dossierkit::toolkit
