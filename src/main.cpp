#include <windows.h>

#include <optional>

#include "app/exit.h"
#include "app/main_window.h"
#include "app/startup.h"
#include "app/viewer_role.h"
#include "documents/open_requests.h"
#include "output/print.h"
#include "platform/win32/wide.h"
#include "session/session.h"
#include "store/working_documents.h"

namespace {

using namespace quillmere;

constexpr int kExitNoWindow = 1;

// Libraries come from the program's own folder and from the system, never from the folder of a
// document that is being opened.
void restrictLibrarySearch() {
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
  SetDllDirectoryW(L"");
}

// A document on a drive without a disk is missing. The system would ask for the disk, even while
// the rows of the binders are being painted.
void askForNoDisks() {
  SetErrorMode(SEM_FAILCRITICALERRORS);
}

int runInteractively(const LaunchArguments& arguments, int showCommand) {
  if (!registerMainWindowClass() || !createMainWindow()) return kExitNoWindow;
  showMainWindow(showCommand);
  if (!arguments.filePath.empty()) {
    openRequested(arguments.filePath, 0, kWorkingDocsToHead, true);
  }
  if (session.viewerRole) arrangeViewerPanels();
  offerDesktopShortcut();
  const int code = runMessageLoop();
  handOnWaitingFiles();
  return code;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR commandLine, int showCommand) {
  restrictLibrarySearch();
  askForNoDisks();
  const std::u16string line = platform::fromWide(commandLine);
  const LaunchArguments arguments = readCommandLine(line);
  if (arguments.printChild) return runPrintChild(line);
  session.viewerRole = arguments.viewerRole;
  if (const std::optional<int> code = confirmDefaultHandler(arguments)) return *code;
  if (const std::optional<int> code = handOverToRunningInstance(arguments)) return *code;
  return runInteractively(arguments, showCommand);
}
