#include "adapters/win32/create_view.h"

#include "adapters/win32/button_views.h"
#include "adapters/win32/grid_view.h"
#include "adapters/win32/image_view.h"
#include "adapters/win32/label_view.h"
#include "adapters/win32/list_box_view.h"
#include "adapters/win32/mask_view.h"
#include "adapters/win32/menu_view.h"
#include "adapters/win32/surface_views.h"
#include "adapters/win32/tab_strip_view.h"
#include "adapters/win32/text_view.h"
#include "adapters/win32/toolbar_view.h"
#include "adapters/win32/tree_box_view.h"
#include "adapters/win32/window_view.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::win32 {
namespace {

using toolkit::Kind;

template <typename View, typename Model>
std::unique_ptr<NativeView> Make(ViewContext& context, toolkit::Control& control) {
  return std::make_unique<View>(context, static_cast<Model&>(control));
}

std::unique_ptr<NativeView> MakeByKind(ViewContext& context, toolkit::Control& control) {
  switch (control.GetKind()) {
    case Kind::kForm: return Make<WindowView, toolkit::Form>(context, control);
    case Kind::kFrame: return Make<FrameView, toolkit::Frame>(context, control);
    case Kind::kLine: return Make<LineView, toolkit::Control>(context, control);
    case Kind::kCoolBar: return Make<CoolBarView, toolkit::Control>(context, control);
    case Kind::kTextBox: return Make<TextView, toolkit::TextBox>(context, control);
    case Kind::kMaskEdBox: return Make<MaskView, toolkit::MaskEdBox>(context, control);
    case Kind::kCheckBox: return Make<CheckBoxView, toolkit::CheckBox>(context, control);
    case Kind::kCommandButton: return Make<CommandButtonView, toolkit::CommandButton>(context, control);
    case Kind::kLabel: return Make<LabelView, toolkit::Label>(context, control);
    case Kind::kImage: return Make<ImageView, toolkit::Image>(context, control);
    case Kind::kDataGrid: return Make<GridView, toolkit::DataGrid>(context, control);
    case Kind::kToolbar: return Make<ToolbarView, toolkit::Toolbar>(context, control);
    case Kind::kVerticalMenu: return Make<MenuView, toolkit::VerticalMenu>(context, control);
    case Kind::kListBox: return Make<ListBoxView, toolkit::ListBox>(context, control);
    case Kind::kTreeView: return Make<TreeBoxView, toolkit::TreeView>(context, control);
    case Kind::kTabStrip: return Make<TabStripView, toolkit::TabStrip>(context, control);
    case Kind::kPictureBox: return Make<SurfaceView, toolkit::Control>(context, control);
    case Kind::kUserControl: return Make<PageView, toolkit::UserControl>(context, control);
    case Kind::kCommonDialog: return nullptr;
  }
  return nullptr;
}

}  // namespace

std::unique_ptr<toolkit::View> MakeView(ViewContext& context, toolkit::Control& control) {
  auto view = MakeByKind(context, control);
  if (view) view->ShowAll();
  return view;
}

}  // namespace dossierkit::win32
