// The stage of the views without a screen.
#include "adapters/headless/headless_platform.h"
#include "adapters/headless/headless_user.h"
#include "tests/support/stage.h"

namespace dossierkit::tests {
namespace {

// The user that comes with those views.
class Clerk : public User {
 public:
  explicit Clerk(toolkit::Desktop& desktop) : user_(desktop) {}

  toolkit::Form& Window() override { return user_.Window(); }
  std::shared_ptr<toolkit::Control> Find(const std::string& name) override { return user_.Find(name); }
  void Click(const std::string& name, int button) override { user_.Click(name, button); }
  void DoubleClick(const std::string& name) override { user_.DoubleClick(name); }
  void ClickToolbar(const std::string& key) override { user_.ClickToolbar(key); }
  void ClickMenu(int item) override { user_.ClickMenu(item); }
  void ClickRow(int row) override { user_.ClickRow(row); }
  void ClickListRow(const std::string& name, int row) override { user_.ClickListRow(name, row); }
  void ClickNode(const std::string& name, const std::string& key) override { user_.ClickNode(name, key); }
  void SelectTab(const std::string& name, int tab) override { user_.SelectTab(name, tab); }
  void FoldNode(const std::string& name, const std::string& key) override { user_.FoldNode(name, key); }
  void Type(const std::string& text) override { user_.Type(text); }
  void Press(int key, int shift) override { user_.Press(key, shift); }
  void Tab() override { user_.Tab(); }
  void BackTab() override { user_.BackTab(); }
  void Paste(const std::string& text) override { user_.Paste(text); }
  void Close() override { user_.Close(); }

 private:
  headless::HeadlessUser user_;
};

}  // namespace

std::unique_ptr<Stage> MakeStage() { return std::make_unique<StageOf<headless::HeadlessPlatform, Clerk>>(); }

}  // namespace dossierkit::tests
