#include "platform/windows/processes.h"

#include <windows.h>
// After it: uses its types.
#include <shellapi.h>

#include <unordered_map>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "platform/windows/command_line.h"
#include "platform/windows/file_status.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_folders.h"
#include "platform/windows/system_path.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

// The started processes that nobody has found ended yet. A handle keeps the identifier of an ended
// process from coming to another one.
std::unordered_map<int, KernelHandle>& LivingChildren() {
  static std::unordered_map<int, KernelHandle> children;
  return children;
}

void ForgetEndedChildren() {
  std::erase_if(LivingChildren(), [](const auto& child) {
    return ::WaitForSingleObject(child.second.get(), 0) != WAIT_TIMEOUT;
  });
}

WORD ShowOf(StartWindow window) {
  return static_cast<WORD>(window == StartWindow::kMinimised ? SW_SHOWMINNOACTIVE : SW_SHOWNORMAL);
}

bool IsScript(std::string_view program) {
  const std::string name = LowerCase(program);
  return name.ends_with(".bat") || name.ends_with(".cmd");
}

// Starts a process that has nothing of this one's but the current folder and the environment. Gives
// the system's code.
DWORD Create(const std::wstring& program, std::wstring commandLine, WORD show,
             KernelHandle& process) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESHOWWINDOW;
  start.wShowWindow = show;
  // A console of its own, for programs that have one: this process's input and output are not the
  // child's, and an interrupt key there does not reach it.
  constexpr DWORD kFlags = CREATE_NEW_CONSOLE | CREATE_UNICODE_ENVIRONMENT;
  PROCESS_INFORMATION made{};
  if (!::CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, kFlags,
                        nullptr, nullptr, &start, &made)) {
    return ::GetLastError();
  }
  const KernelHandle thread(made.hThread);
  process.reset(made.hProcess);
  return ERROR_SUCCESS;
}

// Starts a program that needs more rights than this one: the system asks the user.
DWORD CreateElevated(const std::wstring& program, const std::vector<std::wstring>& arguments,
                     WORD show, KernelHandle& process) {
  std::wstring line = CommandLineOf(L"", arguments);
  line.erase(0, 2);  // the program's own name
  SHELLEXECUTEINFOW request{};
  request.cbSize = sizeof request;
  request.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_FLAG_NO_UI;
  request.lpVerb = L"runas";
  request.lpFile = program.c_str();
  request.lpParameters = line.c_str();
  request.nShow = show;
  if (!::ShellExecuteExW(&request)) return ::GetLastError();
  process.reset(request.hProcess);
  return ERROR_SUCCESS;
}

}  // namespace

int StartWindowsProcess(std::string_view program, const std::vector<std::string>& arguments,
                        StartWindow window) {
  ForgetEndedChildren();
  const std::wstring path = SystemPath(program);
  if (!WindowsAttributes(program)) {
    throw RuntimeError::About(kFileNotFound, std::string(program));
  }
  if (IsFolderAt(path)) throw RuntimeError::About(kPermissionDenied, std::string(program));
  // Programs see their own name as people write it.
  const std::wstring name = Wide(PlainPath(path));
  std::vector<std::wstring> words;
  words.reserve(arguments.size());
  for (const std::string& argument : arguments) words.push_back(Wide(argument));

  KernelHandle process;
  DWORD code = ERROR_SUCCESS;
  if (IsScript(program)) {
    const std::wstring interpreter = SystemProgram(L"cmd.exe");
    code =
        Create(interpreter, ScriptCommandLineOf(interpreter, name, words), ShowOf(window), process);
  } else {
    code = Create(path, CommandLineOf(name, words), ShowOf(window), process);
  }
  if (code == kElevationRequired) code = CreateElevated(name, words, ShowOf(window), process);
  if (code != ERROR_SUCCESS) throw ErrorFromCode(code, program);
  const int identifier = static_cast<int>(::GetProcessId(process.get()));
  LivingChildren().insert_or_assign(identifier, std::move(process));
  return identifier;
}

void StartCommandLine(const std::wstring& program, std::wstring commandLine) {
  KernelHandle process;
  const DWORD code = Create(program, std::move(commandLine), SW_SHOWNORMAL, process);
  if (code != ERROR_SUCCESS) throw ErrorFromCode(code, Narrow(program));
}

bool WindowsProcessLives(int process) {
  ForgetEndedChildren();
  return LivingChildren().contains(process);
}

}  // namespace tarvo
