// SPDX-License-Identifier: GPL-2.0-or-later
#include "tests/framework/ui/SampleProgram.h"

#include <QCoreApplication>
#include <QProcess>
#include <cstdio>

#include "framework/core/desktop/Application.h"
#include "framework/core/files/FolderItem.h"
#include "framework/ui/start/Runtime.h"
#include "framework/ui/window/Global.h"

namespace framework::testing {
namespace {

void say(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

class SampleWindow : public Window {
  public:
    void Event_Open() override { say("window opens"); }
    void Event_Close() override {
        say("window closes");
        Quit(7);
    }
};

class SampleApplication : public Application {
  public:
    void Event_Open() override {
        say("open");
        Global<SampleWindow>()->Show();
    }
    void Event_OpenDocument(const Ref<FolderItem>& item) override {
        say("document " + item->AbsolutePath().ToStd());
        if (item->Name() == "last") Global<SampleWindow>()->Close();
    }
    void Event_Close() override { say("close"); }
};

}  // namespace

int RunSampleProgram(int argc, char** argv) {
    Ref<Application> application;
    const int started = RunFrameworkInitialization(argc, argv, {"Sample", "org.example.sample"}, [&] {
        application = New<SampleApplication>();
        say("startup");
        return 0;
    });
    return started != 0 ? started : RuntimeRun();
}

SampleRun StartSampleProgram(const std::vector<std::string>& arguments) {
    // Through a shell, which hands on bytes that are no valid text where the toolkit would not.
    std::string command = "exec /proc/" + std::to_string(QCoreApplication::applicationPid()) + "/exe ";
    command += kSampleProgramFlag;
    for (const std::string& argument : arguments) command += " " + argument;
    QProcess process;
    process.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QString::fromStdString(command)});
    process.waitForFinished(30000);
    const bool exited = process.exitStatus() == QProcess::NormalExit;
    return {process.readAllStandardOutput().toStdString(), exited ? process.exitCode() : -1};
}

}  // namespace framework::testing
