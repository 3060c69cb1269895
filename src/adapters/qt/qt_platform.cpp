#include "adapters/qt/qt_platform.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QCompleter>
#include <QFileDialog>
#include <QPointer>
#include <QScreen>
#include <stdexcept>

#include "adapters/qt/create_view.h"
#include "adapters/qt/file_dialog.h"
#include "adapters/qt/message_dialog.h"
#include "adapters/qt/pictures.h"
#include "adapters/qt/program_style.h"
#include "adapters/qt/qt_application.h"
#include "adapters/qt/texts.h"
#include "adapters/qt/translator.h"
#include "adapters/qt/window_view.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"

// The toolbar's pictures are compiled in; a linker leaves them out of a program unless somebody asks for
// them.
static void LoadIcons() { Q_INIT_RESOURCE(dossierkit_icons); }

namespace dossierkit::qt {
namespace {

// The arguments that an application object refers to for its whole life.
int argument_count = 1;
char program_name[] = "DossierKit";
char* arguments[] = {program_name, nullptr};

// A plain application object where the program has none.
std::unique_ptr<QApplication> MakeApplication() {
  if (!QCoreApplication::instance()) return std::make_unique<QApplication>(argument_count, arguments);
  if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
    throw std::logic_error("the program's application object is no QApplication: it can show no windows");
  return nullptr;
}

}  // namespace

struct QtPlatform::Parts {
  std::unique_ptr<QApplication> made;
  QtApplication application;
  ViewContext context;

  explicit Parts(const QtOptions& options)
      : made(MakeApplication()),
        application(Metrics(options.scale)),
        context{application, Metrics(options.scale)} {}
};

QtPlatform::QtPlatform(const QtOptions& options) {
  LoadIcons();
  parts_ = std::make_unique<Parts>(options);
}

QtPlatform::~QtPlatform() = default;

void QtPlatform::StandOver(QWidget* window) { parts_->application.SetHostWindow(window); }

std::unique_ptr<toolkit::View> QtPlatform::CreateView(toolkit::Control& control) {
  return MakeView(parts_->context, control);
}

void QtPlatform::RunLoop(toolkit::Form& form) {
  const auto done = [&] { return form.GetDesktop().LoopEnded(form); };
  if (done()) return;
  if (auto* view = static_cast<WindowView*>(form.GetView())) view->Present();
  parts_->context.application.RunUntil(done);
  if (auto* view = static_cast<WindowView*>(form.GetView())) {
    // It was hidden only; its place in the stack goes to the window below.
    view->Withdraw();
    parts_->context.application.RemoveWindow(*view);
  }
  parts_->context.application.ReactivateTop();
}

void QtPlatform::WakeLoop() { parts_->context.application.WakeLoops(); }

toolkit::MessageAnswer QtPlatform::ShowMessage(const std::string& text, int flags, const std::string& title) {
  QtApplication& application = parts_->context.application;
  WindowView* below = application.TopWindow();
  // A message of a window that is about to show stands over that window.
  if (below && !below->Widget()->isVisible()) below->Present();
  const QPointer<MessageDialog> box = new MessageDialog(parts_->context.metrics, ToQString(text), flags,
                                                        ToQString(title), below ? below->Widget() : nullptr);
  if (!below) application.Adopt(*box);
  box->OnAnswer([&application] { application.WakeLoops(); });
  box->show();
  box->activateWindow();
  application.RunUntil([&] { return !box || box->Answered(); });
  const auto answer = box                         ? box->Answer()
                      : (flags & toolkit::kYesNo) ? toolkit::kAnswerNo
                                                  : toolkit::kAnswerOk;
  if (box) {
    box->hide();
    box->deleteLater();
  }
  application.ReactivateTop();
  return answer;
}

std::string QtPlatform::ChooseFile(const toolkit::CommonDialog& request) {
  QtApplication& application = parts_->context.application;
  WindowView* below = application.TopWindow();
  const TextsInChinese texts;
  auto dialog = MakeFileDialog(request.filter, request.init_dir, below ? below->Widget() : nullptr);
  if (!below) application.Adopt(*dialog);
  // Its list of suggestions is a window that has no parent.
  for (const auto* completer : dialog->findChildren<QCompleter*>()) application.Adopt(*completer->popup());
  bool answered = false;
  QObject::connect(dialog.get(), &QDialog::finished, dialog.get(), [&] {
    answered = true;
    application.WakeLoops();
  });
  dialog->show();
  dialog->activateWindow();
  application.RunUntil([&] { return answered; });
  const QStringList chosen = dialog->selectedFiles();
  const bool accepted = dialog->result() == QDialog::Accepted && !chosen.isEmpty();
  std::string path = accepted ? ToUtf8(chosen.first()) : std::string();
  // With its list of suggestions, which would stay on show and keep the keyboard.
  dialog.reset();
  application.ReactivateTop();
  return path;
}

toolkit::Picture QtPlatform::LoadPicture(const std::string& path, const toolkit::Rect& place) {
  // In pixels of the finest screen there is.
  return ReadPicture(path, parts_->context.metrics.Pixels(place).size() * qApp->devicePixelRatio());
}

toolkit::Rect QtPlatform::Screen() const {
  const QSize size = QGuiApplication::primaryScreen()->size();
  const Metrics& metrics = parts_->context.metrics;
  return {0, 0, metrics.Twips(size.width()), metrics.Twips(size.height())};
}

void QtPlatform::Beep() { QApplication::beep(); }

void QtPlatform::ShowBusy(bool busy) {
  if (busy) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QGuiApplication::restoreOverrideCursor();
  }
}

std::string QtPlatform::ClipboardText() { return ToUtf8(QGuiApplication::clipboard()->text()); }

void QtPlatform::SetClipboardText(const std::string& text) {
  QGuiApplication::clipboard()->setText(ToQString(text));
}

void DressApplication(QApplication& application, double scale) {
  const Metrics metrics(scale);
  QApplication::setStyle(new ProgramStyle(metrics));
  QApplication::setPalette(ProgramPalette());
  QApplication::setFont(metrics.ProgramFont());
  auto* translator = new Translator;
  translator->setParent(&application);
  QCoreApplication::installTranslator(translator);
}

}  // namespace dossierkit::qt
