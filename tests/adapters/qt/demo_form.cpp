#include "tests/adapters/qt/demo_form.h"

#include <utility>

#include "tests/support/paths.h"

namespace dossierkit::qt {
namespace {

using toolkit::Label;
using toolkit::Rect;

constexpr toolkit::Color kCodedBlue = 0xFCE0C9;

const char* const kSets[] = {"基本信息",
                             "主要学习经历",
                             "工作经历",
                             "主要兼职",
                             "国内外访问、进修、培训",
                             "重要学术会议",
                             "主持或参加完成的专业成果",
                             "专业获奖信息",
                             "论文和著作目录",
                             "专业领域成果",
                             "主要成就、贡献",
                             "培养人才情况",
                             "现状和发展趋势",
                             "近期主要业务工作",
                             "已授权专利情况",
                             "单位推荐情况"};

}  // namespace

std::shared_ptr<ado::Recordset> DemoRows(int count) {
  ado::Snapshot rows;
  rows.AddColumn({"序号", ado::ColumnKind::kInteger, {}});
  rows.AddColumn({"就读院校", ado::ColumnKind::kText, {}});
  rows.AddColumn({"起始年月", ado::ColumnKind::kText, {}});
  for (int i = 1; i <= count; ++i) {
    rows.AppendInteger(i);
    rows.AppendText("清华大学" + std::to_string(i));
    rows.AppendText(std::to_string(1980 + i % 40) + "年09月");
  }
  return std::make_shared<ado::Recordset>(std::move(rows));
}

DemoPage::DemoPage(const std::string& page_name) : UserControl(page_name) {
  SetKeyPreview(true);
  BuildFields();
  BuildHelp();
}

void DemoPage::BuildFields() {
  int tab_index = 0;
  const auto labelled = [&](toolkit::Control& value, const char* caption, const Rect& place) {
    auto label = Controls().Make<Label>(value.Name().substr(0, value.Name().size() - 1) + "c");
    label->SetCaption(caption);
    label->SetFontBold(true);
    label->Move(place);
    value.SetLabelledBy(*label);
    value.SetTabIndex(tab_index++);
    return label;
  };
  grid = Controls().Make<toolkit::DataGrid>("DGItems");
  grid->Move({300, 750, 12000, 2400});
  grid->SetHeadFont({"华文细黑", 9, false});
  grid->SetTabIndex(100);
  grid->SetAccessibleName("记录列表");
  name = Controls().Make<toolkit::TextBox>("A02_A0202_v");
  name_label = labelled(*name, "就读院校", {300, 3420, 1100, 270});
  name->Move({1450, 3390, 4000, 315});
  coded = Controls().Make<toolkit::TextBox>("A02_A0204_v");
  labelled(*coded, "学    位", {6300, 3420, 1100, 270});
  coded->Move({7450, 3390, 4000, 315});
  coded->SetBackColor(kCodedBlue);
  date = Controls().Make<toolkit::MaskEdBox>("A02_A0201_v");
  labelled(*date, "起始年月", {300, 3870, 1100, 270});
  date->SetMask("####年##月");
  date->Move({1450, 3840, 4000, 315});
  notes = Controls().Make<toolkit::TextBox>("A02_A0205_v", true);
  labelled(*notes, "有关内容", {300, 4320, 1100, 270});
  notes->Move({1450, 4290, 7000, 1500});
  check = Controls().Make<toolkit::CheckBox>("chkMain");
  check->SetCaption("主要学历(&M)");
  check->SetTabIndex(tab_index++);
  check->Move({6300, 3870, 2000, 270});
  button = Controls().Make<toolkit::CommandButton>("cmdAddPhoto");
  button->SetCaption("更新照片");
  button->SetTabIndex(tab_index++);
  button->Move({9000, 5400, 1500, 390});
  photo = Controls().Make<toolkit::Image>("imgPerson");
  photo->SetBorder(true);
  photo->Move({10800, 3900, 1400, 1900});
}

void DemoPage::BuildHelp() {
  const auto title = Controls().Make<Label>("Title");
  title->SetCaption("主要学习经历（从中专、大专或大学填起）");
  title->SetFont({"宋体", 14.25, true});
  title->Move({300, 120, 9150, 420});
  const auto operation = Controls().Make<Label>("labOpt");
  operation->SetCaption("当前操作：修改");
  operation->SetForeColor(0xFF0000);
  operation->Move({9600, 180, 2700, 300});
  Controls().Make<toolkit::Line>("Line1")->Move({300, 600, 12000, 15});
  const auto frame = Controls().Make<toolkit::Frame>("Frm2");
  frame->SetCaption("界面说明");
  frame->Move({300, 6300, 12000, 2400});
  help = Controls().Make<Label>("LabInterFace");
  help->SetContainer(*frame);
  help->SetForeColor(0xFFFFFF);
  help->SetBackColor(toolkit::kAppWorkspace);
  help->SetOpaque(true);
  help->SetWordWrap(true);
  help->SetCaption(
      "从中专、大专或大学填起，包括国外学习经历\r\n加粗标题为必填项\r\n蓝色文本框可双击鼠标左键选择代码");
  help->Move({90, 270, 11820, 2040});
}

void DemoPage::UserControl_Show() { name->SetFocus(); }

void DemoPage::UserControl_KeyDown(int& key, int shift) { keys.emplace_back(key, shift); }

void DemoPage::UserControl_KeyPress(char32_t& key) {
  characters += key;
  if (key == U'\'') key = 0;
}

DemoForm::DemoForm(toolkit::Desktop& desktop, std::string form_name, int width, int height)
    : Form(desktop, std::move(form_name)) {
  SetCaption("人员维护");
  SetSizable(true);
  SetDesignSize(width, height);
}

void DemoForm::BuildDesign() {
  const auto cool_bar = Controls().Make<toolkit::CoolBar>("CBar1");
  cool_bar->Move({0, 0, 15240, 510});
  const auto band = Controls().Make<toolkit::PictureBox>("P2");
  band->SetContainer(*cool_bar);
  band->Move({30, 30, 1995, 450});
  const auto person = Controls().Make<Label>("labPersonName");
  person->SetContainer(*band);
  person->SetFont({"宋体", 14.25, true});
  person->SetCaption("张明远");
  person->Move({30, 30, 1920, 330});
  bar = Controls().Make<toolkit::Toolbar>("TbMain");
  bar->SetContainer(*cool_bar);
  bar->Move({2220, 90, 12930, 330});
  bar->AddButton("Add", "增加(&N)", 3, true);
  bar->AddButton("Delete", "删除(&D)", 5);
  bar->AddButton("Save", "保存(&S)", 6, true);
  bar->AddButton("Cancel", "取消(&C)", 7);
  bar->AddSeparator();
  bar->AddButton("Exit", "退出(&X)", 9);
  const auto menu_frame = Controls().Make<toolkit::Frame>("frmVMenu");
  menu_frame->SetBorder(false);
  menu_frame->Move({15, 360, 2115, 10245});
  menu = Controls().Make<toolkit::VerticalMenu>("VMenu1", "信息集", static_cast<int>(std::size(kSets)));
  menu->SetContainer(*menu_frame);
  menu->Move({0, 120, 2055, 10095});
  menu->SetTabIndex(1000);
  for (int i = 1; i <= menu->menuitemsmax(); ++i) {
    menu->set_menuitemcur(i);
    menu->set_menuitemcaption(kSets[i - 1]);
    menu->set_menuitemicon(tests::SourceFolder() + "\\data/icons\\" + (i == 2 ? "USER.ICO" : "xinxj.ico"));
  }
  menu->set_menuitemcur(2);
  area = Controls().Make<toolkit::Frame>("frmCtrl");
  area->SetBorder(false);
  area->Move({2175, 525, 12945, 9375});
  SetPanes(*cool_bar, *menu_frame, *area);
  rows = DemoRows(row_count);
  NewPage();
}

void DemoForm::NewPage() {
  DropPage();
  page = Controls().Make<DemoPage>("ctrlUserA02");
  page->SetContainer(*area);
  page->Move({0, 0, 13000, 9800});
  page->grid->SetDataSource(rows);
  page->grid->SetColumnWidth(0, 0);
  page->grid->SetColumnWidth(1, 4500);
}

void DemoForm::DropPage() {
  if (!page) return;
  for (std::size_t i = 0; i < Controls().Count(); ++i) {
    if (Controls().At(i) == page) Controls().Remove(i);
  }
  page.reset();
}

void DemoForm::Form_Activate() {
  ++activations;
  if (on_activate) on_activate();
}

}  // namespace dossierkit::qt
