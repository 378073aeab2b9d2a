// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/process/Shell.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/core/objects/Exceptions.h"
#include "framework/core/process/ChildProcess.h"
#include "framework/core/process/CommandLine.h"
#include "framework/core/process/ResidentTool.h"
#include "framework/core/process/WorkingFolder.h"

namespace framework {

using internal::ChildProcess;
using internal::ResidentTool;
using internal::WorkingFolder;

namespace {

std::string& toolsFolder() {
    static std::string folder;
    return folder;
}

std::string searchPath() {
    const char* inherited = std::getenv("PATH");
    std::string path = toolsFolder();
    if (!path.empty()) path += ':';
    return path + (inherited ? inherited : "/usr/local/bin:/usr/bin:/bin");
}

std::vector<std::string> environmentWith(const std::string& path) {
    constexpr std::string_view kPath = "PATH=";
    std::vector<std::string> environment{std::string(kPath) + path};
    for (char** entry = environ; *entry; ++entry) {
        if (!std::string_view(*entry).starts_with(kPath)) environment.emplace_back(*entry);
    }
    return environment;
}

/// The tools that stay open, by name.
std::map<std::string, ResidentTool, std::less<>>& residentTools() {
    static std::map<std::string, ResidentTool, std::less<>> tools;
    return tools;
}

/// The tool whose name a line begins with; null for any other line.
ResidentTool* residentTool(std::string_view line) {
    return internal::ResidentToolCalled(line.substr(0, line.find(' ')));
}

/// Starts the command of `line`: by itself when the line is nothing but words, which saves a process, and through the
/// shell otherwise. The difference does not show.
ChildProcess start(const std::string& line) {
    const std::string path = searchPath();
    const std::vector<std::string> environment = environmentWith(path);
    if (const auto words = internal::PlainWords(line)) {
        const std::string program = internal::FindProgram(words->front(), path);
        if (!program.empty()) {
            const bool isOurs = !toolsFolder().empty() && program.starts_with(toolsFolder() + "/");
            const auto files = isOurs ? ChildProcess::NewFiles::ownersOnly : ChildProcess::NewFiles::usual;
            if (auto child = ChildProcess::Start(program, *words, environment, WorkingFolder(),
                                                 ChildProcess::InputKind::empty, files)) {
                return std::move(*child);
            }
        }
    }
    if (auto child = ChildProcess::Start("/bin/sh", {"sh", "-c", line}, environment, WorkingFolder())) {
        return std::move(*child);
    }
    throw ShellNotAvailableException("No process could be started for a command.", errno);
}

}  // namespace

ResidentTool* internal::ResidentToolCalled(std::string_view name) {
    const auto found = residentTools().find(name);
    return found == residentTools().end() ? nullptr : &found->second;
}

void Shell::SetToolsFolder(const String& folder, const std::vector<std::string>& resident) {
    toolsFolder() = folder.ToStd();
    residentTools().clear();
    for (const std::string& name : resident) {
        residentTools().try_emplace(name, [name] {
            return ChildProcess::Start(toolsFolder() + "/" + name, {name, "-stay_open"}, environmentWith(searchPath()),
                                       WorkingFolder(), ChildProcess::InputKind::open,
                                       ChildProcess::NewFiles::ownersOnly);
        });
    }
}

void Shell::PassErrorsOn() {
    ChildProcess::PassErrorsOn();
}

void Shell::TidyUpAtSignals() {
    internal::RemoveWorkingFolderAtSignals();
}

void Shell::Prepare() {
    for (auto& [name, tool] : residentTools()) tool.Prepare();
}

void Shell::Expect(const String& command) {
    const std::string line = command.ToStd();
    if (ResidentTool* const tool = residentTool(line)) tool->Expect(line);
}

void Shell::ExpectNothing() {
    for (auto& [name, tool] : residentTools()) tool.ExpectNothing();
}

void Shell::ExpectNothing(const String& command) {
    const std::string line = command.ToStd();
    if (ResidentTool* const tool = residentTool(line)) tool->ExpectNothing(line);
}

void Shell::Execute(const String& command) {
    errorCode_ = 0;
    result_ = String();
    const std::string line = command.ToStd();
    if (ResidentTool* const tool = residentTool(line)) {
        if (const auto answer = tool->Ask(line)) {
            errorCode_ = answer->status;
            result_ = String(answer->output, Encodings::UTF8);
            return;
        }
    }
    ChildProcess child = start(line);
    const std::string output = child.ReadOutput();
    errorCode_ = child.Wait();
    result_ = String(output, Encodings::UTF8);
}

}  // namespace framework
