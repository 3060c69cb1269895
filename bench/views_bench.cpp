// The window until it is painted, on whichever views the program is linked with: views_beside.sh compares two
// of them.
#include <algorithm>
#include <chrono>
#include <iostream>
#include <string>
#include <vector>

#include "bench/bench_visit.h"
#include "bench/painted.h"
#include "codes/fm_grp_cod.h"
#include "tests/support/visit.h"

namespace dossierkit::bench {
namespace {

constexpr int kCodes = 100'000;
constexpr int kNodes = 1'000;

double Milliseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// Prints the median of that many times.
void Print(const std::string& name, int times, const std::function<void()>& work) {
  std::vector<double> samples;
  samples.reserve(static_cast<std::size_t>(times));
  for (int i = 0; i < times; ++i) samples.push_back(Milliseconds(work));
  std::sort(samples.begin(), samples.end());
  std::cout << name << " " << samples[samples.size() / 2] << std::endl;
}

void Page(tests::Visit& visit) {
  std::size_t next = 0;
  const auto change = [&] {
    visit.GoTo(AllSets()[next++ % AllSets().size()]);
    Paint();
  };
  for (std::size_t i = 0; i < AllSets().size(); ++i) change();
  Print("change-of-set", 5 * static_cast<int>(AllSets().size()), change);

  visit.GoTo("A03");
  Paint();
  bool forward = false;
  Print("move-in-the-list", 50, [&] {
    forward = !forward;
    visit.user.Press(forward ? 190 : 188, toolkit::kCtrl);
    Paint();
  });

  visit.user.Click("A03_A0302_v");
  Print("key-in-a-field", 50, [&] {
    visit.user.Type("x");
    Paint();
  });
}

// From the call to the painted tree.
void Picker(tests::Visit& visit) {
  fmGrpCod& picker = CodePicker();
  picker.DmGrp = "BIG";
  Print("picker", 5, [&] {
    visit.script.WillRun([](toolkit::Form&) { Paint(); });
    picker.ShowModal();
  });
  visit.script.WillRun([&](toolkit::Form&) {
    auto& tree = *visit.user.Find<toolkit::TreeView>("tvGrpCod");
    Print("nodes-opened-at-once", 3, [&] {
      tree.Nodes().Clear();
      for (int i = 0; i < kNodes; ++i) {
        const toolkit::Node node = tree.Nodes().Add("", "节点" + std::to_string(i));
        for (int j = 0; j < 3; ++j)
          tree.Nodes().Add(node.Index(), toolkit::Relation::kChild, "", "下级" + std::to_string(j));
      }
      Paint();
      for (int i = 0; i < tree.Nodes().Count(); i += 4) tree.Nodes().At(i).SetExpanded(true);
      Paint();
    });
  });
  picker.ShowModal();
}

void Run() {
  tests::Visit visit;
  visit.database->RunScript(CodeTable(kCodes));
  visit.Open([&] {
    Paint();
    Page(visit);
    Picker(visit);
  });
}

}  // namespace
}  // namespace dossierkit::bench

int main() {
  dossierkit::bench::Run();
  return 0;
}
