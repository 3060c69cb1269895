#include "adapters/headless/headless_platform.h"

#include "platform/environment/failure.h"
#include "platform/files/picture_file.h"
#include "platform/toolkit/controls/list_box.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::headless {
namespace {

// Rows that are never scrolled.
class Rows : public toolkit::View {
 public:
  explicit Rows(const toolkit::Control& control) : control_(control) {}
  void Show(toolkit::Aspect) override {}
  int RowAt(int, int y) const override {
    const auto* list = dynamic_cast<const toolkit::ListBox*>(&control_);
    const int row = y / kRowHeight;
    return list && y >= 0 && row < list->ListCount() ? row : -1;
  }
  int RowsInSight() const override { return control_.Place().height / kRowHeight; }

 private:
  const toolkit::Control& control_;
};

}  // namespace

std::unique_ptr<toolkit::View> HeadlessPlatform::CreateView(toolkit::Control& control) {
  switch (control.GetKind()) {
    case toolkit::Kind::kListBox:
    case toolkit::Kind::kTreeView:
    case toolkit::Kind::kDataGrid:
    case toolkit::Kind::kVerticalMenu: return std::make_unique<Rows>(control);
    default: return nullptr;
  }
}

void HeadlessPlatform::RunLoop(toolkit::Form& form) {
  if (const Scene scene = NextScene()) scene(form);
  if (!form.LoopEnded()) form.UserClose();
}

toolkit::MessageAnswer HeadlessPlatform::ShowMessage(const std::string& text, int flags,
                                                     const std::string& title) {
  const Message message = {text, flags, title};
  messages.push_back(message);
  if (on_message) on_message(message);
  return NextAnswer(message);
}

std::string HeadlessPlatform::ChooseFile(const toolkit::CommonDialog& request) { return NextChoice(request); }

// Without a decoder, a file that starts and ends as a JPEG does is taken for one.
toolkit::Picture HeadlessPlatform::LoadPicture(const std::string& path, const toolkit::Rect&) {
  if (on_load_picture) on_load_picture(path);
  if (path.empty()) return {};
  const std::vector<unsigned char> bytes = files::ReadPictureFile(path);
  const std::size_t size = bytes.size();
  const bool is_jpeg =
      size >= 4 && bytes[0] == 0xFF && bytes[1] == 0xD8 && bytes[size - 2] == 0xFF && bytes[size - 1] == 0xD9;
  if (!is_jpeg) throw environment::MakeFailure(environment::kInvalidPicture);
  return {std::make_shared<const std::vector<unsigned char>>(bytes), nullptr};
}

}  // namespace dossierkit::headless
