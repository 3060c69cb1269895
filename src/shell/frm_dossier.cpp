// The main window: its design, what happens while it loads, its resize rule.
#include "shell/frm_dossier.h"

#include "metadata/record_save.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/placed_failure.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

constexpr int kWidth = 15240;
constexpr int kHeight = 11115;
constexpr int kDesignItems = 16;
constexpr int kAfterThePage = 1000;  // the menu's place in the tab order

}  // namespace

frmDossier::frmDossier(toolkit::Desktop& desktop) : DossierWindow(desktop, "frmDossier") {
  SetCaption("人员维护");
  SetSizable(true);
  SetDesignSize(kWidth, kHeight);
}

void frmDossier::BuildDesign() {
  CBar1_ = Controls().Make<toolkit::CoolBar>("CBar1");
  CBar1_->Move({0, 0, 15240, 510});
  CBar1_->AddBand({1995, 1995, 450});
  CBar1_->AddBand({10005, 10005, 330});

  const auto band = Controls().Make<toolkit::PictureBox>("P2");
  band->SetContainer(*CBar1_);
  band->Move({30, 30, 1995, 450});
  labPersonName_ = Controls().Make<toolkit::Label>("labPersonName");
  labPersonName_->SetContainer(*band);
  labPersonName_->Move({30, 30, 1920, 330});
  labPersonName_->SetFont({"宋体", 14.25, true});

  TbMain_ = Controls().Make<toolkit::Toolbar>("TbMain");
  TbMain_->SetContainer(*CBar1_);
  TbMain_->Move({2220, 90, 12930, 330});
  TbMain_->SetAccessibleName("工具栏");
  // Add and Save let the field with the focus be checked first; the others run at once, so that a bad
  // value can always be left behind.
  TbMain_->AddButton("Add", "增加(&N)", 3, true);
  TbMain_->AddButton("Delete", "删除(&D)", 5);
  TbMain_->AddButton("Save", "保存(&S)", 6, true);
  TbMain_->AddButton("Cancel", "取消(&C)", 7);
  TbMain_->AddSeparator();
  TbMain_->AddButton("Exit", "退出(&X)", 9);

  const auto menu_frame = Controls().Make<toolkit::Frame>("frmVMenu");
  menu_frame->SetBorder(false);
  menu_frame->Move({15, 360, 2115, 10245});
  VMenu1_ = Controls().Make<toolkit::VerticalMenu>("VMenu1", "菜单", kDesignItems);
  VMenu1_->SetContainer(*menu_frame);
  VMenu1_->Move({0, 120, 2055, 10095});
  VMenu1_->SetTabIndex(kAfterThePage);
  VMenu1_->SetAccessibleName("信息集");

  frmCtrl_ = Controls().Make<toolkit::Frame>("frmCtrl");
  frmCtrl_->SetBorder(false);
  frmCtrl_->Move({2175, 525, 12945, 9375});
  SetPanes(*CBar1_, *menu_frame, *frmCtrl_);

  hooks_.clear();
  hooks_.push_back(
      TbMain_->ButtonClick.Subscribe([this](toolkit::ToolbarButton& button) { TbMain_ButtonClick(button); }));
  hooks_.push_back(VMenu1_->MenuItemClick.Subscribe(
      [this](std::int32_t& group, std::int32_t& item) { VMenu1_MenuItemClick(group, item); }));
}

toolkit::Toolbar& frmDossier::TbMain() {
  Controls();  // fails while the window is unloaded
  return *TbMain_;
}

toolkit::VerticalMenu& frmDossier::VMenu1() {
  Controls();
  return *VMenu1_;
}

toolkit::Label& frmDossier::labPersonName() {
  Controls();
  return *labPersonName_;
}

void frmDossier::Form_Load() {
  CurItem = 1;
  PrevItem = 1;
  VMenu1().set_menucaption("信息集");
  LoadMenu();
  IsSaved = false;
  NameExtraItem();
  if (OperationType == 0) {
    DealType = 0;
    labPersonName().SetCaption("");
  } else if (OperationType == 3) {
    DealType = 3;
    LoadPersonName();
  }
  // Required: also after the person was refused, on the closed window.
  VMenu1_MenuItemClick(1, 1);
}

void frmDossier::LoadMenu() {
  ado::Recordset sets;
  const std::string query = "SELECT * FROM s_infotable where tblname like 'a%' order by OtherProp";
  sets.Open(query, gConnection());
  if (sets.RecordCount() > 0) {
    SetCount = environment::ToInt16(std::int64_t{sets.RecordCount()});
    auto& menu = VMenu1();
    // Required: counted in 16 bits as well, so that 32,767 sets fail (6).
    menu.set_menuitemsmax(environment::ToInt16(std::int64_t{SetCount} + 1));
    for (std::int16_t i = 1; i <= SetCount; ++i) {
      menu.set_menuitemcur(i);
      environment::At(
          {.set = environment::TextOr(sets.Fields("tblname"), ""), .doing = "读取菜单", .statement = query},
          [&] {
            menu.set_menuitemcaption(environment::TextOf(sets.Fields("tbldesc")));
            menu.set_menuitemkey(environment::TextOf(sets.Fields("tblname")));
          });
      sets.MoveNext();
    }
  }
  sets.Close();
}

// The item behind the sets of the database, by the person type; with another type it stays as it is.
void frmDossier::NameExtraItem() {
  const char* caption = PersonType == 1   ? "单位推荐情况"
                        : PersonType == 2 ? "个人自荐情况"
                                          : "获奖者推荐情况";
  if (PersonType < 1 || PersonType > 3) return;
  auto& menu = VMenu1();
  menu.set_menuitemcur(SetCount + 1);
  menu.set_menuitemkey("B0" + std::to_string(PersonType));
  menu.set_menuitemcaption(caption);
}

void frmDossier::LoadPersonName() {
  ado::Recordset person;
  person.Open("select a0101 from a01 where a00='" + personID + "'", gConnection());
  if (person.RecordCount() != 1) {
    GetDesktop().MsgBox("无法维护此人信息。可能不存在此人Id号或Id号重复。", toolkit::kOkOnly, Caption());
    Unload();
    return;
  }
  labPersonName().SetCaption(environment::TextOr(person.Fields(0), ""));
}

void frmDossier::ResetItemIcon(std::int16_t item) {
  VMenu1().set_menuitemcur(item);
  VMenu1().set_menuitemicon(TheRuntime().app_path + "\\xinxj.ico");
}

void frmDossier::Form_Resize() {
  CBar1_->SetMinHeight(0, 390);
  CBar1_->SetMinHeight(1, 390);
  const auto page = GetUserCtrl();
  if (!page) return;
  toolkit::Rect place = page->Place();
  if (const int width = Place().width - place.left; width > 0) place.width = width;
  page->Move(place);
  if (const int height = Place().height - place.top; height > 0) place.height = height;
  page->Move(place);
}

bool frmDossier::Save(DossierPage& ctrl) {
  try {
    return SaveRecord(*this, ctrl);
  } catch (const std::exception& failure) {
    GetDesktop().MsgBox(failure.what(), toolkit::kOkOnly, "信息保存");
    return false;
  }
}

void frmDossier::SetState(std::int32_t, const std::string&) {}

}  // namespace dossierkit
