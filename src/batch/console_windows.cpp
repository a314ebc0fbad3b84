// clang-format off
#include <windows.h>
#include <shellapi.h>  // builds on windows.h
// clang-format on

#include <fcntl.h>
#include <io.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "batch/console.h"
#include "model/platform.h"

namespace quillane {
namespace {

std::atomic<int> noted = 0;
std::atomic<bool> reading = false;
HANDLE mainThread = nullptr;
UINT codePageBefore = 0;

HANDLE Handle(std::FILE* stream) {
  return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

/// Called by the system in a thread of its own.
BOOL WINAPI NoteEvent(DWORD event) {
  if (noted != 0) return FALSE;
  const bool isKey = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
  noted = isKey ? SIGINT : SIGTERM;
  for (; reading; Sleep(50)) CancelSynchronousIo(mainThread);
  // If the console closes or the user logs off, the system ends the program as soon as this
  // returns, or some seconds later. Until then the run completes its step and its files.
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

void CatchSignals() {
  mainThread = OpenThread(THREAD_TERMINATE, FALSE, GetCurrentThreadId());  // to cancel its reads
  SetConsoleCtrlHandler(NoteEvent, TRUE);
}

int NotedSignal() { return noted; }

std::filesystem::path StreamPath(std::FILE*) { return {}; }

bool NamesStream(const std::filesystem::path&, std::FILE*) { return false; }

std::FILE* OpenToRead(const std::filesystem::path& path) { return OpenFile(path, "rb"); }

std::FILE* OpenToWrite(const std::filesystem::path& path) { return OpenFile(path, "wb"); }

std::ptrdiff_t ReadSome(std::FILE* stream, char* bytes, std::size_t size) {
  reading = true;
  const int count = noted == 0 ? _read(_fileno(stream), bytes, static_cast<unsigned>(size)) : 0;
  reading = false;
  if (noted == 0) return count;
  errno = EINTR;
  return -1;
}

bool WaitToWrite(std::FILE*) { return true; }

bool Claim(const std::filesystem::path& path, bool) {
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::weakly_canonical(path, error);
  const std::wstring name = L"quillane" + std::to_wstring(std::hash<std::wstring>()(whole));
  // Never closed, so it lasts as long as the process.
  return CreateMutexW(nullptr, FALSE, name.c_str()) == nullptr ||
         GetLastError() != ERROR_ALREADY_EXISTS;
}

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
