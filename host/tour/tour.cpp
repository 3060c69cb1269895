#include "host/tour/tour.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

#include "host/tour/player.h"

namespace dossierkit::host {
namespace {

constexpr int kWindowWidth = 1016;
constexpr int kWindowHeight = 741;

using Lines = std::vector<std::string>;

const std::string kThisPerson = " where A00 in (select A00 from A01 where A0101='林知远')";
const std::string kBasicData =
    "select A0101,A0102,A0103,A0114,A0104,A0106,A0115,A0131,A0136 from A01 where A0101='林知远'";
const std::string kStored = "林知远|1|01|110101|1985/6/12|11|江淮省农业科学院|110101198506120014|1";
const std::string kWorkHistory =
    "select A0399,A0301,A0301A,A0302,A0304 from A03" + kThisPerson + " order by A0399";
const std::string kVisits = "select A0599,A0501,A0503 from A05" + kThisPerson + " order by A0599";
const std::string kEducation = "select A0299,A0201,A0202,A0203 from A02" + kThisPerson + " order by A0299";
const std::string kPosts = "select A0499,A0401,A0403,A0404 from A04" + kThisPerson + " order by A0499";

// Two of the sample's photographs.
const std::string kFirstPhoto = "2909406C-2E41-4788-A5EC-52ED01088475.jpg";
const std::string kSecondPhoto = "985FB4E7-2A09-4EE8-ABB2-997659BA1B0D.jpg";

std::string Bytes(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// Plays the steps one after another, each with its picture and its rows.
class Tour {
 public:
  Tour(const Query& query, std::filesystem::path folder, std::filesystem::path photos)
      : query_(query), folder_(std::move(folder)), photos_(std::move(photos)) {}

  void Prepare() {
    NewPerson();
    Photograph();
    WorkHistory();
    Questions();
    Limit();
    Leave();
  }
  Player& GetPlayer() { return player_; }

 private:
  // Ends a step: its picture, and the rows that the query must give now.
  void Step(const std::string& title, const std::string& sql, const Lines& expected) {
    ++steps_;
    const std::string number = (steps_ < 10 ? "0" : "") + std::to_string(steps_);
    const std::string label = number + " " + title;
    player_.Picture(folder_ / (number + ".png"));
    player_.Check([this, label, sql, expected] {
      const Lines rows = query_(sql);
      std::cout << label << "\n";
      for (const std::string& row : rows) std::cout << "     " << row << "\n";
      if (rows.empty()) std::cout << "     （没有记录）\n";
      if (rows == expected) return;
      std::string wanted;
      for (const std::string& row : expected) wanted += "\n  " + row;
      throw std::runtime_error(label + "：数据库中的记录不对，应该是" + (wanted.empty() ? "空" : wanted));
    });
  }

  void Enter(int times = 1) { player_.Press(Qt::Key_Return, {}, times); }
  void Tab() { player_.Press(Qt::Key_Tab); }
  void Save() { player_.Press(Qt::Key_S, Qt::ControlModifier); }
  void Add() { player_.Press(Qt::Key_N, Qt::ControlModifier); }
  void OpenSet(const QString& caption) { player_.ClickItem("信息集", caption); }
  // Replaces the whole text of the field with the focus.
  void Retype(const QString& text) {
    player_.Press(Qt::Key_A, Qt::ControlModifier);
    player_.Type(text);
  }

  void NewPerson() {
    player_.Resize(kWindowWidth, kWindowHeight);
    Step("新增人员：空白的基本信息", kBasicData, {});
    player_.Click("姓名");
    player_.Type("林知远");
    OpenSet("工作经历");
    Step("基本信息未保存，询问是否保存", kBasicData, {});
    player_.Click("否");
    Step("必须先维护基本信息集", kBasicData, {});
    player_.Click("确定");
    player_.Click("保存");
    Step("保存失败：必填项和身份证号", kBasicData, {});
    player_.Click("确定");
    Codes();
    player_.Click("从事专业");
    player_.Type("水稻栽培");
    player_.Click("工作单位");
    player_.Type("江淮省农业科学院");
    player_.Click("手机号码");
    player_.Type("10000000099");
    player_.Click("身份证号");
    player_.Type("1101011985061200");
    Tab();
    Step("身份证号的长度不对", kBasicData, {});
    player_.Click("确定");
    Retype("110101198506120014");
    Step("填好的基本信息", kBasicData, {});
    player_.Click("保存");
    Step("新人员已保存", kBasicData, {kStored});
  }

  // The coded fields, and the birth date among them.
  void Codes() {
    player_.Click("性别");
    player_.Type("男性");
    Tab();
    player_.Type("hz");
    Tab();
    ChooseFirst();
    player_.Type("cqs");
    Tab();
    Step("简码 cqs 只有一个：重庆市", kBasicData, {});
    player_.Click("户籍所在地");
    Retype("bjs");
    Tab();
    Step("简码 bjs 不止一个：代码窗口列出三个", kBasicData, {});
    ChooseFirst();
    player_.DoubleClick("户籍所在地");
    for (int level = 1; level < 3; ++level) {
      player_.Press(Qt::Key_Right);
      player_.Press(Qt::Key_Down);
    }
    Step("双击打开代码窗口，浏览三级行政区划", kBasicData, {});
    Enter();
    player_.Click("出生日期");
    player_.Type("19851341");
    Tab();
    Step("日期不存在，留在出生日期一栏", kBasicData, {});
    player_.Click("确定");
    Retype("19850612");
    player_.Click("文化程度");
    player_.Type("bsyjsby");
    Tab();
  }

  // Takes the first row that the picker has found: from its tree, which holds the focus, to its list.
  void ChooseFirst() {
    Tab();
    Enter();
  }

  // Chooses the photograph of another person of the sample in the preview.
  void ChoosePhotograph(const std::string& file) {
    player_.Click("更新照片");
    player_.Click("选择(S)...");
    player_.ChooseFile("文件名(N)：", "打开(O)", QString::fromStdString((photos_ / file).string()));
  }

  void Photograph() {
    ChoosePhotograph(kFirstPhoto);
    Step("预览：还没有照片，已选新照片", kBasicData, {kStored});
    player_.Click("确   定");
    CheckPhotograph(kFirstPhoto);
    ChoosePhotograph(kSecondPhoto);
    Step("预览：当前照片和新照片", kBasicData, {kStored});
    player_.Click("确   定");
    Step("替换照片之前的询问", kBasicData, {kStored});
    player_.Click("是");
    CheckPhotograph(kSecondPhoto);
    Step("照片已替换", kBasicData, {kStored});
  }

  // The person's photograph must be that file now, byte for byte.
  void CheckPhotograph(const std::string& file) {
    player_.Check([this, file] {
      const Lines ids = query_("select A00 from A01 where A0101='林知远'");
      if (ids.size() != 1 || Bytes(photos_ / (ids.front() + ".jpg")) != Bytes(photos_ / file))
        throw std::runtime_error("照片不是所选的文件 " + file);
    });
  }

  // A record typed by keyboard alone; Enter in its last field saves it and opens the next.
  void TypeWork(const QString& from, const QString& to, const QString& unit) {
    player_.Type(from);
    Enter();
    player_.Type(to);
    Enter();
    player_.Type(unit);
    Enter();
    player_.Type("gjgcs");
    Enter(2);
  }

  void WorkHistory() {
    OpenSet("工作经历");
    TypeWork("200807", "201206", "青禾县种子站");
    Step("第一条工作经历，只用键盘", kWorkHistory, {"1|2008/7/1|2012/6/1|青禾县种子站|082"});
    TypeWork("201907", "", "江淮省农业科学院");
    Step("第二条工作经历", kWorkHistory,
         {"1|2008/7/1|2012/6/1|青禾县种子站|082", "2|2019/7/1|NULL|江淮省农业科学院|082"});
    TypeWork("201207", "201906", "云溪市农业局");
    Step("第三条工作经历，按时间排在第二", kWorkHistory,
         {"1|2008/7/1|2012/6/1|青禾县种子站|082", "2|2012/7/1|2019/6/1|云溪市农业局|082",
          "3|2019/7/1|NULL|江淮省农业科学院|082"});
    player_.ClickRow("记录列表", 2);
    player_.Press(Qt::Key_Comma, Qt::ControlModifier);
    Step("在列表中移动到第二条", kWorkHistory,
         {"1|2008/7/1|2012/6/1|青禾县种子站|082", "2|2012/7/1|2019/6/1|云溪市农业局|082",
          "3|2019/7/1|NULL|江淮省农业科学院|082"});
    player_.Click("工作单位");
    Retype("云溪市农业农村局");
    Save();
    Step("第二条已修改", kWorkHistory,
         {"1|2008/7/1|2012/6/1|青禾县种子站|082", "2|2012/7/1|2019/6/1|云溪市农业农村局|082",
          "3|2019/7/1|NULL|江淮省农业科学院|082"});
    player_.ClickRow("记录列表", 2);
    player_.Click("删除");
    Step("删除之前的询问", kWorkHistory,
         {"1|2008/7/1|2012/6/1|青禾县种子站|082", "2|2012/7/1|2019/6/1|云溪市农业农村局|082",
          "3|2019/7/1|NULL|江淮省农业科学院|082"});
    player_.Click("是");
  }

  // A record with its first date and its name; Ctrl+S saves it and opens the next.
  void TypeVisit(const QString& from, const QString& name) {
    player_.Type(from);
    Enter(2);
    player_.Type(name);
    Save();
  }

  // Each question about edits once; nothing of what is typed before it is stored.
  void Questions() {
    // The deletion renumbers with the rows of all persons in mind, so the numbers are left out.
    Step("第三条已删除", "select A0301,A0301A,A0302,A0304 from A03" + kThisPerson + " order by A0301",
         {"2008/7/1|2012/6/1|青禾县种子站|082", "2012/7/1|2019/6/1|云溪市农业农村局|082"});
    OpenSet("访问进修");
    TypeVisit("201003", "青禾大学");
    TypeVisit("201509", "云溪农业研究所");
    const Lines visits = {"1|2010/3/1|青禾大学", "2|2015/9/1|云溪农业研究所"};
    Step("两条访问进修经历", kVisits, visits);
    player_.Type("202401");
    player_.ClickRow("记录列表", 1);
    Step("移动之前的询问", kVisits, visits);
    player_.Click("是");
    player_.Click("访问机构名称");
    player_.Type("某");
    Add();
    Step("增加之前的询问", kVisits, visits);
    player_.Click("否");
    player_.Type("2024");
    player_.Click("取消");
    Step("取消：第一次询问", kVisits, visits);
    player_.Click("是");
    Step("取消：第二次询问", kVisits, visits);
    player_.Click("否");
    Education();
  }

  void Education() {
    OpenSet("学习经历");
    for (const char* from : {"200309", "200709"}) {
      player_.Type(from);
      Enter(2);
      player_.Type("江淮农业大学");
      Enter();
      player_.Type("农学");
      Save();
    }
    player_.ClickRow("记录列表", 0);
    player_.Click("专业");
    player_.Type("某");
    player_.ClickRow("记录列表", 1);
    const Lines stored = {"1|2003/9/1|江淮农业大学|农学", "2|2007/9/1|江淮农业大学|农学"};
    Step("学习经历：移动之前的询问，是为不保存", kEducation, stored);
    player_.Click("是");
    Step("移动之后，没有保存", kEducation, stored);
  }

  void Limit() {
    OpenSet("主要兼职");
    Lines stored;
    for (int i = 1; i <= 5; ++i) {
      const std::string year = std::to_string(2010 + i);
      player_.Type(QString::fromStdString(year + "01"));
      Enter(2);
      player_.Type(QString("学会%1").arg(i));
      Enter();
      player_.Type("理事");
      Save();
      stored.push_back(std::to_string(i) + "|" + year + "/1/1|学会" + std::to_string(i) + "|理事");
    }
    Step("第五条已保存，达到上限", kPosts, stored);
    player_.Click("确定");
  }

  void Leave() {
    OpenSet("基本信息");
    player_.Click("删除");
    Step("删除此人之前的询问", kBasicData, {kStored});
    player_.Click("否");
    OpenSet("近期工作");
    player_.Type("耐旱水稻");
    player_.Click("退出");
    Step("退出之前的询问", "select count(*) from A15" + kThisPerson, {"0"});
    player_.Click("否");
  }

  const Query& query_;
  std::filesystem::path folder_;
  std::filesystem::path photos_;
  int steps_ = 0;
  Player player_;
};

}  // namespace

bool PlayTour(IUserCtrl& component, const Query& query, const std::filesystem::path& folder) {
  Tour tour(query, folder, std::filesystem::absolute(component.PhotoPath));
  tour.Prepare();
  tour.GetPlayer().Start();
  const bool saved = component.ShowDossier();
  const Player& player = tour.GetPlayer();
  if (player.Failed()) {
    std::cerr << player.Failure().toStdString() << "\n";
    return false;
  }
  if (!player.Finished() || !saved) {
    std::cerr << "演示没有播放完。\n";
    return false;
  }
  return true;
}

}  // namespace dossierkit::host
