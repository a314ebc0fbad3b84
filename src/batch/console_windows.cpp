#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>  // after windows.h

#include <cstdlib>
#include <string>
#include <vector>

#include "batch/console.h"

namespace quillane {
namespace {

volatile std::sig_atomic_t noted = 0;
UINT codePageBefore = 0;

HANDLE Handle(std::FILE* stream) {
  return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

/// Called by a thread of its own.
BOOL WINAPI NoteEvent(DWORD event) {
  const bool isKey = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
  noted = isKey ? SIGINT : SIGTERM;
  // Where the console closes or the user leaves, the system ends the program as soon as this
  // returns, or some seconds later: time for the step and the files.
  if (!isKey) Sleep(INFINITE);
  return TRUE;
}

}  // namespace

void TakeArguments(int& argc, char**& argv) {
  static std::vector<std::string> texts;
  static std::vector<char*> pointers;
  int count = 0;
  wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
  if (wide == nullptr) return;
  for (int i = 0; i < count; ++i) {
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, nullptr, 0, nullptr, nullptr);
    std::string& text = texts.emplace_back(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, text.data(), length, nullptr, nullptr);
  }
  LocalFree(wide);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  argc = count;
  argv = pointers.data();
}

void PrepareStreams() {
  for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
  codePageBefore = GetConsoleOutputCP();
  if (codePageBefore == 0 || !SetConsoleOutputCP(CP_UTF8)) return;
  std::atexit([] { SetConsoleOutputCP(codePageBefore); });
}

void PrepareToolkit() {}

void CatchSignals() { SetConsoleCtrlHandler(NoteEvent, TRUE); }

const volatile std::sig_atomic_t& NotedSignal() { return noted; }

bool CanRedrawLines(std::FILE* stream) {
  DWORD mode = 0;
  return GetConsoleMode(Handle(stream), &mode) != 0 &&
         SetConsoleMode(Handle(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

int TerminalWidth(std::FILE* stream) {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  const bool told = GetConsoleScreenBufferInfo(Handle(stream), &info) != 0;
  const int width = info.srWindow.Right - info.srWindow.Left + 1;
  return told && width > 1 ? width : 80;
}

}  // namespace quillane
