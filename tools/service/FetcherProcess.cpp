// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/FetcherProcess.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Frames.h"
#include "base/WriteAll.h"
#include "tools/disk/DiskPool.h"
#include "tools/service/Descriptors.h"
#include "tools/service/FileNote.h"
#include "tools/service/InputFile.h"

namespace marrowbeck::tools {

namespace {

/// Twice as many as are asked for ahead: when one search is given up, what it has asked for holds nobody up.
constexpr std::size_t sideBySide = 64;
constexpr std::size_t mostLeftBehind = 256;

/// So many files are handed over together while the disk is quick.
constexpr std::size_t parcel = 8;

constexpr std::size_t largestFrame = std::size_t{1} << 20;

/// What is wanted of a file.
struct Wish {
    std::uint32_t id = 0;
    std::uint32_t reader = 0;
    std::string path;
    std::string question;
};

class FileService {
  public:
    explicit FileService(int socket) : socket_(socket), pool_(sideBySide, mostLeftBehind) {}

    /// Serves until the supervisor has gone.
    void run() {
        base::FrameStream frames(largestFrame);
        std::vector<base::Descriptor> descriptors;
        std::array<char, 65536> buffer;
        while (true) {
            const ssize_t count = receiveWith(socket_, buffer, descriptors);
            if (count <= 0) return;
            frames.append({buffer.data(), static_cast<std::size_t>(count)});
            while (const auto body = frames.next()) {
                if (!take(*body, descriptors)) return;
            }
            if (frames.isBroken()) return;
            descriptors.clear();
            begin();
        }
    }

  private:
    /// A file that was opened, or only a question, on its way to a reader.
    struct Parcel {
        FileNote note;
        std::unique_ptr<InputFile> file;
        std::string question;
    };

    bool take(std::string_view body, std::vector<base::Descriptor>& descriptors) {
        if (body.empty()) return false;
        const char letter = body.front();
        body.remove_prefix(1);
        const auto number = base::takeNumber(body);
        if (!number) return false;
        const std::lock_guard lock(mutex_);
        if (letter == 'R' && !descriptors.empty()) {
            readers_[*number] = std::move(descriptors.front());
            descriptors.erase(descriptors.begin());
        } else if (letter == 'G') {
            readers_.erase(*number);
        } else if (letter == 'C') {
            wanted_.erase(*number);
        } else if (letter == 'L') {
            plan([this, wish = Wish{*number, 0, std::string(body), {}}] { look(wish); }, *number);
        } else if (letter == 'O') {
            const auto reader = base::takeNumber(body);
            const auto length = base::takeNumber(body);
            if (!length || *length > body.size()) return false;
            Wish wish{*number, *reader, std::string(body.substr(0, *length)), std::string(body.substr(*length))};
            if (wish.path.empty()) {
                parcels_.push_back({{wish.id, wish.reader, {}, false, {}}, nullptr, std::move(wish.question)});
                return handOver();
            }
            plan([this, wish = std::move(wish)] { open(wish); }, *number);
        } else {
            return false;
        }
        return true;
    }

    void plan(DiskPool::Task task, std::uint32_t id) {
        wanted_.insert(id);
        planned_.push_back(std::move(task));
    }

    /// What was told at one time is begun at one time.
    void begin() {
        if (planned_.empty()) return;
        waiting_ += planned_.size();
        pool_.add(std::exchange(planned_, {}));
    }

    // On the threads of the pool.

    bool isWanted(std::uint32_t id) {
        const std::lock_guard lock(mutex_);
        return wanted_.contains(id);
    }

    void look(const Wish& wish) {
        beginOne();
        FileNote note{wish.id, 0, {}, false, {}};
        if (isWanted(wish.id)) note.file = base::FileIdentity::of(wish.path);
        endOne({std::move(note), nullptr, {}});
    }

    void open(const Wish& wish) {
        beginOne();
        if (!isWanted(wish.id)) return;
        auto file = std::make_unique<InputFile>(wish.path);
        FileNote note{wish.id, 0, {}, file->isForbidden(), file->error()};
        if (file->isOpen()) {
            note.file = base::FileIdentity(file->status());
            note.reader = wish.reader;
            file->fetchHead();
        } else if (file->isForbidden()) {
            note.file = base::FileIdentity::of(wish.path);
        }
        endOne({std::move(note), std::move(file), wish.question});
    }

    /// While others wait to be begun, what is ready waits for them; the last of them may keep nothing back.
    void beginOne() {
        if (--waiting_ > 0) return;
        std::vector<Parcel> done;
        const std::lock_guard lock(mutex_);
        handOver();
        done = std::exchange(handed_, {});
    }

    void endOne(Parcel parcelled) {
        std::vector<Parcel> done;
        {
            const std::lock_guard lock(mutex_);
            if (wanted_.erase(parcelled.note.id) == 0) return;
            parcels_.push_back(std::move(parcelled));
            if (waiting_ > 0 && parcels_.size() < parcel) return;
            handOver();
            done = std::exchange(handed_, {});
        }
        // Here the files are closed, which may take as long as their disk likes.
    }

    /// With the lock held.
    bool handOver() {
        std::string notes;
        for (Parcel& one : parcels_) {
            // One that has gone meanwhile is told by the supervisor's own socket to it.
            if (!readers_.contains(one.note.reader)) one.note.reader = 0;
            notes += base::framed(bytesOf(one.note));
        }
        const bool isHeard = base::writeAll(socket_, notes);
        for (const auto& [number, socket] : readers_) hand(number, socket.Number());
        handed_.insert(handed_.end(), std::make_move_iterator(parcels_.begin()),
                       std::make_move_iterator(parcels_.end()));
        parcels_.clear();
        return isHeard;
    }

    void hand(std::uint32_t number, int socket) const {
        std::string questions;
        std::vector<int> files;
        for (const Parcel& one : parcels_) {
            if (one.note.reader != number) continue;
            questions += base::framed(questionBytes(one));
            if (one.file) files.push_back(one.file->descriptor());
        }
        // A few questions are far less than a socket takes; and who does not take them has died.
        if (!questions.empty()) sendWith(socket, questions, files);
    }

    static std::string questionBytes(const Parcel& one) {
        const auto size = one.file ? static_cast<std::uint64_t>(one.file->status().st_size) : 0;
        return base::numberBytes(one.note.id) + base::numberBytes(one.file ? 1 : 0) +
               base::numberBytes(static_cast<std::uint32_t>(size >> 32)) +
               base::numberBytes(static_cast<std::uint32_t>(size)) + one.question;
    }

    const int socket_;
    std::mutex mutex_;
    std::map<std::uint32_t, base::Descriptor> readers_;
    std::set<std::uint32_t> wanted_;
    std::vector<Parcel> parcels_;
    std::vector<Parcel> handed_;
    std::vector<DiskPool::Task> planned_;
    /// Tasks that no thread has begun.
    std::atomic<std::size_t> waiting_ = 0;
    DiskPool pool_;
};

}  // namespace

void serveFiles(int socket) {
    // Never destroyed: threads that a disk holds still have it in hand.
    auto* const service = new FileService(socket);
    service->run();
}

}  // namespace marrowbeck::tools
