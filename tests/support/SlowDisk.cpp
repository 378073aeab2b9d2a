// SPDX-License-Identifier: GPL-2.0-or-later
// slow_disk SOURCE MOUNT MILLISECONDS [COUNTS]: a view of the folder SOURCE at MOUNT in which each question to the disk
// takes so long, as on a network share, however many are asked at a time. Read-only, until it is ended by SIGTERM.
//
// Of a file with "never opened", "never read" or "never seen" in its name, that question is not answered before then;
// the last is from the second look at it on, since behind a first one the system has all other names of the folder wait
// in line. With COUNTS, what was asked stands there once the view has ended: a line for each file and folder and kind
// of question, with the number and the name behind it. SIGUSR1 begins the counting anew.
//
// slow_disk --try: whether this machine lets a program make such a view, as status 0 or another.

#define FUSE_USE_VERSION 312
#include <dirent.h>
#include <fcntl.h>
#include <fuse.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace {

namespace fs = std::filesystem;

/// As much at a time as some network file system reads.
constexpr unsigned mostRead = 131072;

class View {
  public:
    View(fs::path source, double milliseconds) : source_(std::move(source)), delay_(milliseconds) {}

    /// The real path, once the disk has let itself be waited for.
    fs::path ask(std::string_view question, std::string_view path) {
        const auto never = [&](std::string_view its, std::string_view word) {
            return question == its && path.find(word) != std::string_view::npos;
        };
        const bool isFirst = count(question, path);
        while ((never("getattr", "never seen") && !isFirst) || never("open", "never opened") ||
               never("read", "never read"))
            pause();
        std::this_thread::sleep_for(delay_);
        return source_ / path.substr(1);
    }

    void countAnew() {
        const std::lock_guard lock(mutex_);
        counts_.clear();
    }

    void writeCounts(const char* path) {
        const std::lock_guard lock(mutex_);
        std::ofstream file(path);
        for (const auto& [asked, count] : counts_) file << asked.first << ' ' << count << ' ' << asked.second << '\n';
    }

  private:
    /// Whether it is the first question about this path.
    bool count(std::string_view question, std::string_view path) {
        const std::lock_guard lock(mutex_);
        ++counts_[{std::string(question), std::string(path)}];
        return met_.emplace(path).second;
    }

    const fs::path source_;
    const std::chrono::duration<double, std::milli> delay_;
    std::mutex mutex_;
    std::map<std::pair<std::string, std::string>, unsigned> counts_;
    std::set<std::string> met_;
};

View& view() {
    return *static_cast<View*>(fuse_get_context()->private_data);
}

/// What a call of the system says, as the library wants it.
int result(ssize_t value) {
    return value < 0 ? -errno : static_cast<int>(value);
}

int getattr(const char* path, struct stat* status, fuse_file_info* /*file*/) {
    return result(lstat(view().ask("getattr", path).c_str(), status));
}

int access(const char* path, int mode) {
    return result(::access(view().ask("access", path).c_str(), mode));
}

int readdir(const char* path, void* buffer, fuse_fill_dir_t fill, off_t /*offset*/, fuse_file_info* /*file*/,
            fuse_readdir_flags /*flags*/) {
    DIR* const folder = opendir(view().ask("readdir", path).c_str());
    if (folder == nullptr) return -errno;
    // Without their kinds, as some file systems have it: each is a question of its own.
    while (const dirent* const entry = ::readdir(folder))
        fill(buffer, entry->d_name, nullptr, 0, fuse_fill_dir_flags{});
    closedir(folder);
    return 0;
}

int readlink(const char* path, char* target, std::size_t size) {
    const ssize_t length = ::readlink(view().ask("readlink", path).c_str(), target, size - 1);
    if (length < 0) return -errno;
    target[length] = '\0';
    return 0;
}

int open(const char* path, fuse_file_info* file) {
    const int descriptor = ::open(view().ask("open", path).c_str(), O_RDONLY | O_CLOEXEC);
    file->fh = static_cast<std::uint64_t>(descriptor);
    return descriptor < 0 ? -errno : 0;
}

int read(const char* path, char* bytes, std::size_t size, off_t offset, fuse_file_info* file) {
    view().ask("read", path);
    return result(pread(static_cast<int>(file->fh), bytes, size, offset));
}

int release(const char* /*path*/, fuse_file_info* file) {
    return result(close(static_cast<int>(file->fh)));
}

int getxattr(const char* path, const char* /*name*/, char* /*value*/, std::size_t /*size*/) {
    view().ask("getxattr", path);
    return -ENODATA;
}

void* init(fuse_conn_info* connection, fuse_config* config) {
    connection->max_read = mostRead;
    config->attr_timeout = config->entry_timeout = 1;
    return fuse_get_context()->private_data;
}

constexpr fuse_operations operations() {
    fuse_operations all{};
    all.getattr = getattr;
    all.access = access;
    all.readdir = readdir;
    all.readlink = readlink;
    all.open = open;
    all.read = read;
    all.release = release;
    all.getxattr = getxattr;
    all.init = init;
    return all;
}

/// Null where no such view can be made.
fuse* mounted(View& view, const std::string& folder) {
    constexpr fuse_operations all = operations();
    fuse_args arguments = FUSE_ARGS_INIT(0, nullptr);
    fuse_opt_add_arg(&arguments, "slow_disk");
    fuse_opt_add_arg(&arguments, ("-oro,max_read=" + std::to_string(mostRead)).c_str());
    fuse* const made = fuse_new(&arguments, &all, sizeof all, &view);
    return made != nullptr && fuse_mount(made, folder.c_str()) == 0 ? made : nullptr;
}

int tryIt() {
    std::string folder = (fs::temp_directory_path() / "slow-disk-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) return 1;
    View nothing("/nonexistent", 0);
    fuse* const made = mounted(nothing, folder);
    if (made != nullptr) fuse_unmount(made);
    fs::remove(folder);
    return made == nullptr ? 1 : 0;
}

}  // namespace

int main(int count, char** words) {
    if (count == 2 && std::string_view(words[1]) == "--try") return tryIt();
    if (count < 4) return std::fputs("usage: slow_disk SOURCE MOUNT MILLISECONDS [COUNTS]\n", stderr), 2;
    const fs::path source = fs::canonical(words[1]);
    const fs::path mount = fs::canonical(words[2]);
    if (!fs::relative(mount, source).string().starts_with("..")) {
        // Whoever looked at that would look for ever.
        return std::fputs("slow_disk: the view would show itself\n", stderr), 1;
    }
    View view(source, std::strtod(words[3], nullptr));

    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    fuse* const made = mounted(view, mount);
    if (made == nullptr) return 1;
    std::thread([&] {
        int signal = 0;
        while (sigwait(&signals, &signal) == 0 && signal == SIGUSR1) view.countAnew();
        if (count > 4) view.writeCounts(words[4]);
        fuse_unmount(made);
        // What is asked still gets no other answer than that the disk is gone.
        _exit(0);
    }).detach();

    constexpr unsigned mostAtATime = 1024;
    fuse_loop_config* const loop = fuse_loop_cfg_create();
    fuse_loop_cfg_set_max_threads(loop, mostAtATime);
    fuse_loop_cfg_set_idle_threads(loop, mostAtATime);
    return fuse_loop_mt(made, loop);
}
