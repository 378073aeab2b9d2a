// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdfind/FolderSearch.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

namespace marrowbeck::tools {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t sideBySide = 32;
constexpr std::size_t mostHeld = 256;

/// What is held for so long takes no other's place.
constexpr auto held = 1s;
constexpr auto betweenSweeps = 500ms;
/// The last files of a folder are not waited for longer than that after the others.
constexpr auto straggling = 3s;
/// Who comes so late was stopped meanwhile, as by a key, and has not waited for any answer.
constexpr auto stopped = 5s;

/// Bytes that are worth passing on.
constexpr std::size_t parcel = std::size_t{256} * 1024;

}  // namespace

FolderSearch::FolderSearch(std::string_view type, bool isStrict, char ending, std::chrono::milliseconds patience)
    : terms_{.types = WantedTypes(type),
             .isStrict = isStrict,
             .ending = ending,
             .user = geteuid(),
             .pool = DiskPool(sideBySide, mostHeld, std::max(std::thread::hardware_concurrency(), 1U))},
      patience_(patience) {}

void FolderSearch::begin(const std::string& folder) {
    top_.path = folder;
    while (top_.path.ends_with('/')) top_.path.pop_back();
    top_.path += '/';
    awakeSince_ = lastSweep_ = Clock::now();
    way_.push_back(&top_);
    beginOne(top_, true);
    terms_.pool.add(std::exchange(tasks_, {}));
}

int FolderSearch::run(const Take& take) {
    while (!looks_.empty()) {
        wait();
        if (top_.findings.failure != 0) return top_.findings.failure;
        beginSome();
        passOn(take);
    }
    take(found_, told_);
    return 0;
}

void FolderSearch::beginOne(Node& node, bool mayBeLink) {
    auto look = std::make_shared<FolderLook>(terms_, node.path, [this, &node] {
        const std::lock_guard lock(mutex_);
        over_.push_back(&node);
        isOver_.notify_one();
    });
    looks_[&node] = look;
    if (isGone_) return look->giveUp(Clock::now(), true);
    tasks_.emplace_back([look, mayBeLink] { look->read(mayBeLink); });
}

/// Begins folders in about the order in which they are passed on, so that little has to wait for its turn.
void FolderSearch::beginSome() {
    while (!waiting_.empty() && looks_.size() < sideBySide + held_) {
        Node& node = *waiting_.back();
        const std::size_t index = node.begun++;
        if (node.begun == node.below.size()) waiting_.pop_back();
        node.below[index] = std::make_unique<Node>();
        node.below[index]->path = node.path + std::exchange(node.findings.below[index].name, {});
        beginOne(*node.below[index], false);
    }
    if (!tasks_.empty()) terms_.pool.add(std::exchange(tasks_, {}));
}

/// Until some folder is over.
void FolderSearch::wait() {
    std::vector<Node*> over;
    while (over.empty()) {
        std::unique_lock lock(mutex_);
        isOver_.wait_for(lock, betweenSweeps, [this] { return !over_.empty(); });
        over = std::exchange(over_, {});
        lock.unlock();
        if (Clock::now() - lastSweep_ >= betweenSweeps) sweep();
        // Others may have a turn now.
        if (over.empty() && held_ > 0 && !waiting_.empty()) return;
    }
    for (Node* const node : over) settle(*node);
}

void FolderSearch::settle(Node& node) {
    node.findings = looks_.extract(&node).mapped()->takeFindings();
    node.isOver = true;
    FolderFindings& findings = node.findings;
    if (findings.failure != 0) {
        const std::string line = "mdfind: " + node.path.substr(0, node.path.size() - 1) + ": " +
                                 std::generic_category().message(findings.failure) + "\n";
        findings.told.insert(0, line);
        for (FolderFindings::Below& below : findings.below) below.told += line.size();
    }
    node.below.resize(findings.below.size());
    if (!node.below.empty()) waiting_.push_back(&node);
}

/// Sees who waits for long.
void FolderSearch::sweep() {
    const auto now = Clock::now();
    if (now - std::exchange(lastSweep_, now) > stopped) awakeSince_ = now;
    for (const auto& [node, look] : looks_) look->lookPast(now - held);
    held_ = static_cast<std::size_t>(std::count_if(
        looks_.begin(), looks_.end(), [now](const auto& look) { return look.second->isHeld(now - held); }));
    held_ = std::min(held_, mostHeld);
    if (!isProbed_.exchange(true)) {
        probedAt_ = now;
        terms_.pool.add([this] { isProbed_ = false; });
    }
    if (awakeSince_ <= now - straggling) {
        for (const auto& [node, look] : looks_) look->giveUpStragglers(now - straggling);
    }
    const auto limit = now - patience_;
    if (awakeSince_ > limit) return;
    isGone_ = isGone_ || (isProbed_ && probedAt_ < limit && terms_.lastBegin < limit.time_since_epoch().count());
    for (const auto& [node, look] : looks_) look->giveUp(limit, isGone_);
}

/// Passes on what is known up to the first folder that is not over.
void FolderSearch::passOn(const Take& take) {
    while (!way_.empty() && way_.back()->isOver) {
        Node& node = *way_.back();
        const FolderFindings& findings = node.findings;
        const bool isLast = node.passed == node.below.size();
        const std::size_t found = isLast ? findings.found.size() : findings.below[node.passed].found;
        const std::size_t told = isLast ? findings.told.size() : findings.below[node.passed].told;
        const auto paths = std::string_view(findings.found).substr(node.found, found - node.found);
        told_.append(findings.told, node.told, told - node.told);
        node.found = found;
        node.told = told;
        if (found_.size() + paths.size() >= parcel) {
            take(std::exchange(found_, {}), std::exchange(told_, {}));
            take(paths, {});
        } else {
            found_ += paths;
        }
        if (isLast) {
            way_.pop_back();
            if (!way_.empty()) way_.back()->below[way_.back()->passed - 1].reset();
            continue;
        }
        Node* const next = node.below[node.passed].get();
        if (next == nullptr) return;
        ++node.passed;
        way_.push_back(next);
    }
}

}  // namespace marrowbeck::tools
