// The picker: its design and its handlers. How it fills itself stands in code_tree.cpp.
#include "codes/fm_grp_cod.h"

#include <exception>

#include "codes/lookup_code.h"
#include "platform/environment/failure.h"
#include "platform/toolkit/loop/desktop.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

constexpr int kWidth = 5055;
constexpr int kHeight = 6555;

std::shared_ptr<toolkit::CommandButton> MakeButton(toolkit::Form& form, const std::string& name,
                                                   const std::string& caption, int left) {
  auto button = form.Controls().Make<toolkit::CommandButton>(name);
  button->SetCaption(caption);
  button->Move({left, 6060, 1140, 375});
  return button;
}

}  // namespace

fmGrpCod::fmGrpCod(toolkit::Desktop& desktop) : Form(desktop, "fmGrpCod") {
  SetDesignSize(kWidth, kHeight);
  SetKeyPreview(true);
  SetCenteredOnOwner(true);
}

void fmGrpCod::BuildDesign() {
  SetCaption("代码帮助窗口");
  Tab1_ = Controls().Make<toolkit::TabStrip>("Tab1");
  Tab1_->AddTab("浏览查询");
  Tab1_->AddTab("录入查询");
  Tab1_->Move({120, 120, 4815, 5820});  // what stands on its tabs is placed in it, 8 pixels from its edges
  Tab1_->SetAccessibleName("查询方式");
  txtDm_ = Controls().Make<toolkit::TextBox>("txtDm");
  txtDm_->Move({120, 540, 4575, 360});
  txtDm_->SetAccessibleName("查询内容");
  tvGrpCod_ = Controls().Make<toolkit::TreeView>("tvGrpCod");
  tvGrpCod_->Move({120, 540, 4575, 5160});
  tvGrpCod_->SetAccessibleName("代码树");
  lstDmCpt_ = Controls().Make<toolkit::ListBox>("lstDmCpt");
  lstDmCpt_->Move({120, 1020, 4575, 4680});
  lstDmCpt_->SetAccessibleName("代码列表");
  lstDmCod_ = Controls().Make<toolkit::ListBox>("lstDmCod");
  lstDmCod_->Move({kWidth + 240, 1035, 1140, 4785});
  lstDmCod_->SetAccessibleName("代码");
  lstDmCod_->SetTabStop(false);
  Tab1_->SetTabPage(*tvGrpCod_, 0);
  Tab1_->SetTabPage(*txtDm_, 1);
  Tab1_->SetTabPage(*lstDmCpt_, 1);
  const auto ok = MakeButton(*this, "cmdOK", "确定", 2535);
  const auto cancel = MakeButton(*this, "cmdCancel", "取消", 3795);
  const auto clear = MakeButton(*this, "cmdDel", "清空", 120);

  // The tabs come last, so that the focus reaches what stands on them first.
  int tab_index = 0;
  for (const auto& control : Controls()) control->SetTabIndex(tab_index++);
  Tab1_->SetTabIndex(tab_index);

  hooks_.clear();
  hooks_.push_back(ok->Click.Subscribe([this] { cmdOK_Click(); }));
  hooks_.push_back(cancel->Click.Subscribe([this] { cmdCancel_Click(); }));
  hooks_.push_back(clear->Click.Subscribe([this] { cmdDel_Click(); }));
  hooks_.push_back(txtDm_->KeyPress.Subscribe([this](char32_t& key) { txtDm_KeyPress(key); }));
  hooks_.push_back(lstDmCpt_->KeyPress.Subscribe([this](char32_t& key) { lstDmCpt_KeyPress(key); }));
  hooks_.push_back(lstDmCpt_->MouseMove.Subscribe(
      [this](int button, int /*shift*/, int x, int y) { lstDmCpt_MouseMove(button, x, y); }));
  hooks_.push_back(lstDmCpt_->DblClick.Subscribe([this] { lstDmCpt_DblClick(); }));
  hooks_.push_back(tvGrpCod_->KeyPress.Subscribe([this](char32_t& key) { tvGrpCod_KeyPress(key); }));
  hooks_.push_back(tvGrpCod_->DblClick.Subscribe([this] { tvGrpCod_DblClick(); }));
}

void fmGrpCod::ForgetDesign() {
  Tab1_.reset();
  tvGrpCod_.reset();
  txtDm_.reset();
  lstDmCpt_.reset();
  lstDmCod_.reset();
  added_.reset();
}

void fmGrpCod::Form_Activate() {
  if (tvGrpCod_->Nodes().Count() < 1) return;
  tvGrpCod_->SetFocus();
  tvGrpCod_->SelectedNode().SetExpanded(false);
}

void fmGrpCod::Form_KeyPress(char32_t& KeyAscii) {
  if (KeyAscii != U'\'') return;
  KeyAscii = 0;
  GetDesktop().Beep();
}

// Runs on Enter alone.
void fmGrpCod::txtDm_KeyPress(char32_t KeyAscii) {
  const std::string& text = txtDm_->Text();
  if (text.empty() || KeyAscii != toolkit::kKeyReturn) return;
  ClearCollection(HndList_);
  lstDmCpt_->Clear();
  lstDmCod_->Clear();
  ado::Recordset rows;
  rows.Open("select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from " + DmGrp +
                " where dmattr =true and   dmcod<>''  and dmcpt<>'' " + MatchCondition(text) +
                "    order by dmcod",
            gConnection());
  if (rows.RecordCount() > 0) {
    for (; !rows.EOF_(); rows.MoveNext()) {
      lstDmCod_->AddItem(environment::TextOf(rows.Fields("dmcod")));
      lstDmCpt_->AddItem(environment::TextOf(rows.Fields("dmcpt")));
      HndList_->push_back(environment::TextOf(rows.Fields("dmhnd")));
    }
    lstDmCpt_->SetListIndex(0);
    lstDmCpt_->SetFocus();
  }
  rows.Close();
}

void fmGrpCod::cmdOK_Click() {
  try {
    if (Tab1_->Tab() != 0) {
      TakeFromList();
    } else {
      TakeFromTree();
    }
  } catch (const std::exception& failure) {
    GetDesktop().MsgBox(failure.what(), toolkit::kExclamationIcon, Caption());
  }
}

void fmGrpCod::TakeFromList() {
  const int row = lstDmCpt_->ListIndex();
  if (row < 0) {
    GetDesktop().MsgBox("请选择代码。");
    return;
  }
  Take(lstDmCod_->List(row), lstDmCpt_->List(row));
}

// A heading has no tag; it is not taken, and nothing is said.
void fmGrpCod::TakeFromTree() {
  const toolkit::Node node = tvGrpCod_->SelectedNode();
  if (!node.Tag().empty()) Take(node.Tag(), node.Text());
}

void fmGrpCod::Take(const std::string& code, const std::string& caption) {
  Dmcpt = caption;
  Dmcod = code;
  Cancelled = false;
  Unload();
}

void fmGrpCod::cmdDel_Click() { Take("", ""); }

void fmGrpCod::tvGrpCod_KeyPress(char32_t KeyAscii) {
  if (Tab1_->Tab() == 0 && KeyAscii == toolkit::kKeyReturn && tvGrpCod_->SelectedItem() >= 0) cmdOK_Click();
}

void fmGrpCod::lstDmCpt_KeyPress(char32_t KeyAscii) {
  if (KeyAscii == toolkit::kKeyReturn && lstDmCpt_->ListIndex() >= 0) cmdOK_Click();
}

// The shorthand of the row under the pointer; a row without one leaves the last. Required: the bound
// lets one row more through than there are, which no list reports.
void fmGrpCod::lstDmCpt_MouseMove(int Button, int X, int Y) {
  if (Button != 0) return;
  const int row = lstDmCpt_->RowAt(X, Y);
  if (row < 0 || row > lstDmCpt_->ListCount()) return;
  const std::string& shorthand = HndList_->at(static_cast<std::size_t>(row));
  if (!shorthand.empty()) lstDmCpt_->SetToolTipText("拼音输入代码： " + shorthand);
}

fmGrpCod& CodePicker() {
  auto& runtime = TheRuntime();
  if (!runtime.picker) runtime.picker = std::make_shared<fmGrpCod>(runtime.desktop);
  return *runtime.picker;
}

void ClearCollection(const std::shared_ptr<Collection>& collection) {
  try {
    if (!collection) throw environment::MakeFailure(environment::kObjectNotSet);
    collection->clear();
  } catch (const std::exception& failure) {
    TheRuntime().desktop.MsgBox(failure.what(), toolkit::kExclamationIcon, "错误信息");
  }
}

}  // namespace dossierkit
