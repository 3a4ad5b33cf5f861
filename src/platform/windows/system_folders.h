#pragma once

#include <optional>
#include <string>

namespace tarvo {

// The common documents folder: the one that the environment variable TARVO_COMMON_DOCUMENTS names,
// from `startFolder` when it is relative, else the system's. See Platform::SpecialFolder. Under
// Wine the variable may also hold a path of the system below, so that one value serves programs of
// both systems.
std::optional<std::string> CommonDocumentsFolder(const std::string& startFolder);
std::optional<std::string> UserDocumentsFolder();

// See Platform::ProgramFolder.
std::string RunningProgramsFolder();

// The path of a program that stands in the system's folder ("cmd.exe") or in the folder above it
// ("explorer.exe"); never one of the same name in another folder.
std::wstring SystemProgram(const std::wstring& name);
std::wstring DesktopProgram(const std::wstring& name);

// Whether programs for 32-bit systems run.
bool Runs32BitPrograms();

}  // namespace tarvo
