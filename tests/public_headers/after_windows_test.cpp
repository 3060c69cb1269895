// A host includes windows.h first: this file has its macros that are names elsewhere, of Win32 and of COM.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <compare>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#define min(a, b) (((a) < (b)) ? (a) : (b))
#define max(a, b) (((a) > (b)) ? (a) : (b))
#define interface struct
#define near
#define far
#define small char
#define hyper __int64
#define pascal
#define cdecl
#define IN
#define OUT
#define OPTIONAL
#define VOID void
#define CONST const
#define TRUE 1
#define FALSE 0
#define ERROR 0
#define DELETE (0x00010000L)
#define NO_ERROR 0L
#define STRICT 1
#define Yield()
#define ABSOLUTE 1
#define RELATIVE 2
#define TRANSPARENT 1
#define OPAQUE 2
#define IGNORE 0
#define INFINITE 0xFFFFFFFF
#define AddForm AddFormW
#define AppendMenu AppendMenuW
#define ChooseColor ChooseColorW
#define ChooseFont ChooseFontW
#define CopyFile CopyFileW
#define CreateDialog CreateDialogW
#define CreateEvent CreateEventW
#define CreateFile CreateFileW
#define CreateFont CreateFontW
#define CreateWindow CreateWindowW
#define DeleteFile DeleteFileW
#define DeleteForm DeleteFormW
#define DispatchMessage DispatchMessageW
#define DrawText DrawTextW
#define FindText FindTextW
#define FindWindow FindWindowW
#define GetClassName GetClassNameW
#define GetCommandLine GetCommandLineW
#define GetCurrentTime GetTickCount
#define GetForm GetFormW
#define GetJob GetJobW
#define GetMessage GetMessageW
#define GetObject GetObjectW
#define GetUserName GetUserNameW
#define InsertMenu InsertMenuW
#define LoadBitmap LoadBitmapW
#define LoadIcon LoadIconW
#define LoadImage LoadImageW
#define LoadString LoadStringW
#define MessageBox MessageBoxW
#define MoveFile MoveFileW
#define PlaySound PlaySoundW
#define PostMessage PostMessageW
#define RegisterClass RegisterClassW
#define ReplaceText ReplaceTextW
#define ReportEvent ReportEventW
#define SendMessage SendMessageW
#define SetForm SetFormW
#define SetPort SetPortW
#define StartDoc StartDocW
#define UnregisterClass UnregisterClassW
#define UpdateResource UpdateResourceW

#include "dossierkit/dossierkit.h"

namespace {

TEST(PublicHeaders, StandBehindTheMacrosOfWindows) {
  dossierkit::headless::HeadlessPlatform platform;
  const dossierkit::Component component(platform);
  dossierkit::headless::HeadlessUser user(component.GetDesktop());
  EXPECT_THROW(user.Window(), std::logic_error);
}

}  // namespace
