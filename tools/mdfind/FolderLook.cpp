// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdfind/FolderLook.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <ctime>
#include <system_error>

#include "tools/disk/WaitMeter.h"
#include "tools/service/InputFile.h"

namespace marrowbeck::tools {

namespace {

using namespace std::chrono_literals;

/// So many files are looked at in one go where that takes a microsecond each.
constexpr std::size_t handful = 512;
/// No look that has to wait takes less.
constexpr auto promptLook = 50us;

/// In a namespace that has no names for them the owners of files go by this number, whoever they are.
constexpr uid_t nobodyKnown = 65534;

/// To some milliseconds, at a fifth of the price.
FolderLook::Clock::rep coarseNow() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return FolderLook::Clock::duration(std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec))
        .count();
}

/// Mode and owner, as the system has them or gets them with one question. False with errno.
bool lookAt(int folder, const char* name, struct statx& facts) {
    return statx(folder, name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC,
                 STATX_TYPE | STATX_MODE | STATX_UID, &facts) == 0;
}

/// The owner's rights are in the mode, whatever a list of others' rights says.
bool isOwnToRead(const struct statx& facts, uid_t user) {
    return facts.stx_uid == user && user != nobodyKnown && (facts.stx_mode & S_IRUSR) != 0;
}

}  // namespace

FolderLook::FolderLook(SearchTerms& terms, std::string path, std::function<void()> over)
    : terms_(terms), path_(std::move(path)), over_(std::move(over)) {}

void FolderLook::read(bool mayBeLink) {
    terms_.lastBegin = coarseNow();
    askedAt_ = coarseNow();
    auto stage = Stage::waiting;
    if (!stage_.compare_exchange_strong(stage, Stage::reading)) return;
    const WaitMeter meter;
    const int failure = readEntries(mayBeLink);
    isNear_ = !meter.hasWaited();
    judge();
    lastAnswer_ = coarseNow();
    stage = Stage::reading;
    if (!stage_.compare_exchange_strong(stage, Stage::looking)) return;
    findings_.failure = failure;
    // Others may begin with the questions meanwhile.
    const bool isWorthOthers = !isNear_ || entries_.size() > handful;
    if (isWorthOthers) terms_.pool.add([self = shared_from_this()] { self->look(); });
    sort();
    // One more than there are questions, so that it is not over before this is done with it.
    if (--undecided_ == 0) return finish();
    if (isNear_) look();
}

int FolderLook::readEntries(bool mayBeLink) {
    // With a slash behind it a link would be followed.
    const std::string path = mayBeLink ? path_ : path_.substr(0, path_.size() - 1);
    folder_ = base::Descriptor::Open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | (mayBeLink ? 0 : O_NOFOLLOW));
    if (!folder_.IsOpen()) return errno;
    alignas(dirent64) std::array<char, 32768> buffer;
    while (true) {
        askedAt_ = coarseNow();
        const ssize_t count = getdents64(folder_.Number(), buffer.data(), buffer.size());
        if (count <= 0) return count < 0 ? errno : 0;
        for (ssize_t at = 0; at < count;) {
            const auto* const entry = reinterpret_cast<const dirent64*>(buffer.data() + at);
            at += entry->d_reclen;
            const unsigned char type = entry->d_type;
            if (entry->d_name[0] == '.' || (type != DT_REG && type != DT_DIR && type != DT_UNKNOWN)) continue;
            Entry& kept = entries_.emplace_back();
            kept.start = names_.size();
            kept.length = std::strlen(entry->d_name);
            kept.kind = type == DT_REG ? Kind::file : type == DT_DIR ? Kind::folder : Kind::unknown;
            names_.append(entry->d_name, kept.length + 1);
            if (kept.kind == Kind::folder) asFolder(kept);
        }
    }
}

/// The name with the slash with which folders stand where their contents belong: "a-b" before "a/b".
std::string_view FolderLook::asFolder(Entry& entry) {
    names_[entry.start + entry.length++] = '/';
    return name(entry);
}

/// `more` for a slash that the name has not yet.
bool FolderLook::isTooLong(const Entry& entry, std::size_t more) const {
    return path_.size() + entry.length + more >= PATH_MAX;
}

/// Decides about all of which no question is left.
void FolderLook::judge() {
    std::vector<std::string_view> files;
    for (const Entry& entry : entries_) {
        if (entry.kind == Kind::file) files.push_back(name(entry));
    }
    const std::vector<Verdict> verdicts = terms_.types.byName(files);
    auto verdict = verdicts.begin();
    std::size_t open = 1;
    for (Entry& entry : entries_) {
        if (entry.kind == Kind::file) entry.verdict = *verdict++;
        if (entry.kind != Kind::unknown && isTooLong(entry)) {
            entry.outcome = Outcome::tooLong;
        } else if (entry.kind == Kind::folder) {
            entry.outcome = Outcome::below;
        } else if (entry.kind == Kind::file && entry.verdict == Verdict::no) {
            entry.outcome = Outcome::left;
        } else if (entry.kind == Kind::file && entry.verdict == Verdict::yes && terms_.isStrict) {
            entry.outcome = Outcome::found;
        } else {
            ++open;
        }
    }
    undecided_ = open;
}

/// Asks about the entries that come next. While there are more, another of this kind waits to be begun: who is held by
/// the disk hinders nobody.
void FolderLook::look() {
    terms_.lastBegin = coarseNow();
    if (next_ + (isNear_ ? handful : 1) < entries_.size())
        terms_.pool.add([self = shared_from_this()] { self->look(); });
    auto begin = Clock::now();
    for (std::size_t asked = 0; asked < handful;) {
        const std::size_t index = next_++;
        if (index >= entries_.size()) return;
        Entry& entry = entries_[index];
        if (entry.outcome != Outcome::open) continue;
        entry.askedAt = begin.time_since_epoch().count();
        decide(entry, answerOn(entry));
        ++asked;
        const auto end = Clock::now();
        lastAnswer_ = end.time_since_epoch().count();
        if (!isNear_ && end - begin > promptLook) return;
        begin = end;
    }
}

FolderLook::Outcome FolderLook::answerOn(Entry& entry) {
    const char* const name = names_.data() + entry.start;
    Verdict verdict = entry.verdict;
    bool isLookedAt = false;
    bool isReadable = false;
    if (entry.kind == Kind::unknown) {
        struct statx facts {};
        isLookedAt = lookAt(folder_.Number(), name, facts);
        if (isLookedAt && S_ISDIR(facts.stx_mode)) return isTooLong(entry, 1) ? Outcome::tooLong : Outcome::below;
        // What cannot be looked at goes for a file, so that it is told of where all files are wanted.
        if (isLookedAt ? !S_ISREG(facts.stx_mode) : errno == ENOENT) return Outcome::left;
        if (isTooLong(entry)) return Outcome::tooLong;
        isReadable = isLookedAt && isOwnToRead(facts, terms_.user);
        verdict = terms_.types.byName(this->name(entry));
    }
    if (verdict == Verdict::no) return Outcome::left;
    if (verdict == Verdict::contentTells) return answerByContent(entry, isReadable);
    return terms_.isStrict || isReadable || mayBeRead(name, isLookedAt) ? Outcome::found : Outcome::left;
}

FolderLook::Outcome FolderLook::answerByContent(const Entry& entry, bool isReadable) {
    const InputFile file(pathOf(entry));
    // No confined reader for these: the first bytes are held against fixed patterns, and nothing that they say of
    // themselves is followed.
    const bool isWanted =
        terms_.types.isWanted(name(entry), file.isOpen() ? file.head(MimeTypes::contentBytes) : std::string());
    if (isWanted) {
        const bool isFound =
            terms_.isStrict || file.isOpen() || isReadable || mayBeRead(names_.data() + entry.start, false);
        return isFound ? Outcome::found : Outcome::left;
    }
    if (!terms_.isStrict || file.isOpen()) return Outcome::left;
    const std::lock_guard lock(reasonsMutex_);
    reasons_[&entry] = file.error();
    return Outcome::refused;
}

/// Where the folder was read without a wait, its files' rights are in memory too, and to ask for these takes a third
/// less time than a look. From afar that may be one more question, where the look alone nearly always tells.
bool FolderLook::mayBeRead(const char* name, bool isLookedAt) const {
    if (!isLookedAt && !isNear_) {
        struct statx facts {};
        if (!lookAt(folder_.Number(), name, facts)) return false;
        if (isOwnToRead(facts, terms_.user)) return true;
    }
    return faccessat(folder_.Number(), name, R_OK, AT_EACCESS) == 0;
}

void FolderLook::decide(Entry& entry, Outcome outcome) {
    auto open = Outcome::open;
    if (entry.outcome.compare_exchange_strong(open, outcome) && --undecided_ == 0) finish();
}

bool FolderLook::isHeld(Clock::time_point limit) const {
    const Clock::rep since = limit.time_since_epoch().count();
    const Stage stage = stage_;
    if (stage == Stage::reading) return askedAt_ < since;
    return stage == Stage::looking && std::any_of(entries_.begin(), entries_.end(), [since](const Entry& entry) {
               return entry.outcome == Outcome::open && entry.askedAt != 0 && entry.askedAt < since;
           });
}

void FolderLook::lookPast(Clock::time_point limit) {
    if (!isNear_ || stage_ != Stage::looking || !isHeld(limit)) return;
    isNear_ = false;
    terms_.pool.add([self = shared_from_this()] { self->look(); });
}

void FolderLook::giveUp(Clock::time_point limit, bool evenUnasked) {
    const Clock::rep since = limit.time_since_epoch().count();
    // Not to go while it is looked through.
    const auto self = shared_from_this();
    Stage stage = stage_;
    if ((stage == Stage::waiting && evenUnasked) || (stage == Stage::reading && askedAt_ < since)) {
        if (stage_.compare_exchange_strong(stage, Stage::over)) {
            findings_.failure = ETIMEDOUT;
            over_();
        }
    } else if (stage == Stage::looking) {
        for (Entry& entry : entries_) {
            const Clock::rep askedAt = entry.askedAt;
            if (askedAt == 0 ? evenUnasked : askedAt < since) decide(entry, Outcome::unanswered);
        }
    }
}

void FolderLook::giveUpStragglers(Clock::time_point limit) {
    const Clock::rep since = limit.time_since_epoch().count();
    if (stage_ != Stage::looking || lastAnswer_ > since) return;
    const auto self = shared_from_this();
    const auto isAnswered = [](const Entry& entry) { return entry.outcome != Outcome::open; };
    const auto mayGo = [&](const Entry& entry) {
        return isAnswered(entry) || (entry.askedAt != 0 && entry.askedAt < since);
    };
    if (!std::all_of(entries_.begin(), entries_.end(), mayGo)) return;
    for (Entry& entry : entries_) {
        if (!isAnswered(entry) && terms_.types.byName(name(entry)) == Verdict::yes) decide(entry, Outcome::unanswered);
    }
}

/// What is said of a file that gave no answer.
FolderLook::Outcome FolderLook::madeUpFor(const Entry& entry) {
    const Verdict verdict = entry.kind == Kind::unknown ? terms_.types.byName(name(entry)) : entry.verdict;
    if (verdict == Verdict::yes) return Outcome::found;
    if (verdict == Verdict::no) return Outcome::left;
    if (terms_.types.isWanted(name(entry), {})) return Outcome::found;
    if (!terms_.isStrict) return Outcome::left;
    const std::lock_guard lock(reasonsMutex_);
    reasons_[&entry] = std::generic_category().message(ETIMEDOUT);
    return Outcome::refused;
}

/// The order of the paths' bytes, as far as it is known what is a folder.
void FolderLook::sort() {
    order_.reserve(entries_.size());
    for (Entry& entry : entries_) order_.emplace_back(name(entry), &entry);
    std::sort(order_.begin(), order_.end());
}

/// Tells what came of the entries.
void FolderLook::finish() {
    stage_ = Stage::over;
    std::size_t length = 0;
    for (auto& [name, entry] : order_) {
        if (entry->outcome == Outcome::unanswered) entry->outcome = madeUpFor(*entry);
        if (entry->outcome == Outcome::below && entry->kind == Kind::unknown) name = asFolder(*entry);
        if (entry->outcome == Outcome::found) length += path_.size() + entry->length + 1;
    }
    if (!std::is_sorted(order_.begin(), order_.end())) std::sort(order_.begin(), order_.end());
    findings_.found.reserve(length);
    const auto tell = [this](const Entry& entry, const std::string& reason) {
        findings_.told += "mdfind: " + pathOf(entry) + ": " + reason + "\n";
    };
    for (const auto& [name, entry] : order_) {
        const Outcome outcome = entry->outcome;
        if (outcome == Outcome::left) continue;
        if (outcome == Outcome::found) {
            (findings_.found += path_).append(name) += terms_.ending;
        } else if (outcome == Outcome::below) {
            findings_.below.push_back({std::string(name), findings_.found.size(), findings_.told.size()});
        } else if (outcome == Outcome::tooLong) {
            tell(*entry, std::generic_category().message(ENAMETOOLONG));
        } else {
            const std::lock_guard lock(reasonsMutex_);
            tell(*entry, reasons_[entry]);
        }
    }
    over_();
}

}  // namespace marrowbeck::tools
