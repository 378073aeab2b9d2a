// SPDX-License-Identifier: GPL-2.0-or-later
#include "tests/catalogue/CatalogueTest.h"

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/support/UpdateCheck.h"

namespace marrowbeck::test {
namespace {

void write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string joined(const std::vector<std::string>& fields) {
    std::string bytes;
    for (std::size_t i = 0; i < fields.size(); ++i) bytes += (i == 0 ? "" : std::string(1, '\0')) + fields[i];
    return bytes;
}

}  // namespace

CatalogueTest::CatalogueTest() : root(std::string(std::getenv("HOME")) + "/test"), pictures(root + "/pictures") {
    std::filesystem::create_directories(pictures);
    std::filesystem::create_directories(root + "/tools");
    // Each answer lies beside its file.
    replaceTool("mdls",
                "echo \"mdls $*\" >> " + root + "/log\nfor last; do :; done\n" +
                    "case \"$*\" in *ExposureTime*) exec cat \"$last.camera\";; esac\nexec cat \"$last.image\"\n");
    replaceTool("mdfind",
                "echo \"mdfind $*\" >> " + root + "/log\ncat " + root + "/found\nexit $(cat " + root + "/status)\n");
    found({});
    Shell::SetToolsFolder(String(root + "/tools"));
    framework::internal::SetAlertPresenter([this](const String& text) { messages.push_back(text.ToStd()); });
    SwitchUpdateCheckOff();
    App::Current()->Event_Open();
    window = Global<Window1>();
}

CatalogueTest::~CatalogueTest() {
    window->SizeThread1->Kill();
    window->PicturescaleThread1->Kill();
    framework::internal::SetAlertPresenter([](const String&) {});
}

std::string CatalogueTest::addFile(const std::string& name, std::size_t size) {
    const std::string path = pictures + "/" + name;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    write(path, std::string(size, 'x'));
    return path;
}

std::string CatalogueTest::addImage(const std::string& name, const std::string& width, const std::string& height) {
    const std::string path = addFile(name);
    answer(path, plainFields(width, height));
    return path;
}

void CatalogueTest::answer(const std::string& path, const std::vector<std::string>& fields) {
    write(path + ".image", joined(fields));
}

void CatalogueTest::answerCamera(const std::string& path, const std::vector<std::string>& fields) {
    write(path + ".camera", joined(fields));
}

void CatalogueTest::found(const std::vector<std::string>& paths, int status) const {
    std::string bytes;
    for (const std::string& path : paths) bytes += path + '\0';
    write(root + "/found", bytes);
    write(root + "/status", std::to_string(status));
}

void CatalogueTest::replaceTool(const std::string& name, const std::string& script) const {
    const std::string path = root + "/tools/" + name;
    write(path, "#!/bin/sh\n" + script);
    chmod(path.c_str(), 0755);
}

void CatalogueTest::useRealTools() {
    Shell::SetToolsFolder(MARROWBECK_TOOLS, {"mdls", "sips", "look"});
}

void CatalogueTest::useSlowDisk(std::vector<std::string> resident) const {
    for (const std::string& name : resident) {
        std::filesystem::remove(root + "/tools/" + name);
        std::filesystem::create_symlink(MARROWBECK_TOOLS "/" + name, root + "/tools/" + name);
    }
    std::filesystem::create_symlink(MARROWBECK_SLOW_LOOK, root + "/tools/look");
    resident.emplace_back("look");
    Shell::SetToolsFolder(String(root + "/tools"), resident);
}

std::string CatalogueTest::asked() {
    const std::string path = std::string(std::getenv("HOME")) + "/asked";
    std::ifstream log(path);
    std::string lines{std::istreambuf_iterator<char>(log), {}};
    std::filesystem::resize_file(path, 0);
    return lines;
}

void CatalogueTest::search() {
    search(pictures);
}

void CatalogueTest::search(const std::string& folder) {
    App::Current()->Event_OpenDocument(New<FolderItem>(String(folder)));
    runToEnd();
}

void CatalogueTest::runToEnd() {
    ASSERT_TRUE(RunUntil([this] { return window->SizeThread1->State() == Thread::NotRunning; }));
}

std::vector<std::string> CatalogueTest::commands() {
    std::vector<std::string> lines;
    std::ifstream log(root + "/log");
    for (std::string line; std::getline(log, line);) lines.push_back(line);
    log.close();
    std::filesystem::remove(root + "/log");
    return lines;
}

std::vector<std::string> CatalogueTest::names() const {
    std::vector<std::string> names;
    for (int row = 0; row < window->Listbox1->ListCount(); ++row) names.push_back(cell(row, 0));
    return names;
}

std::string CatalogueTest::cell(int row, int column) const {
    return window->Listbox1->Cell(row, column).ToStd();
}

std::string CatalogueTest::helpTag(int row, int column) const {
    return window->Listbox1->CellHelpTag(row, column).ToStd();
}

std::vector<std::string> CatalogueTest::plainFields(const std::string& width, const std::string& height) {
    return {"32", "RGB", "(null)", "(null)", "(null)", "0", "(null)", "JPEG image", height, width, "(null)"};
}

}  // namespace marrowbeck::test
