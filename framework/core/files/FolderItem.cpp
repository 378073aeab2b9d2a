// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/FolderItem.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Descriptor.h"
#include "framework/core/files/BinaryStream.h"
#include "framework/core/files/FileType.h"
#include "framework/core/files/Paths.h"
#include "framework/core/files/TextInputStream.h"
#include "framework/core/files/TextOutputStream.h"
#include "framework/core/process/ShowURL.h"
#include "framework/core/threads/Waiting.h"

namespace framework {

namespace {

constexpr const char* kTypeAttribute = "user.mac.type";
constexpr const char* kCreatorAttribute = "user.mac.creator";

String readAttribute(const char* path, const char* name) {
    std::array<char, 64> value;
    const ssize_t size = ::lgetxattr(path, name, value.data(), value.size());
    return size <= 0 ? String() : String(std::string_view(value.data(), static_cast<std::size_t>(size)));
}

void writeAttribute(const char* path, const char* name, const String& value) {
    // A file system without attributes, or a file of somebody else, simply goes without.
    if (value.IsEmpty()) {
        ::lremovexattr(path, name);
    } else {
        ::lsetxattr(path, name, value.CString(), value.ByteCount(), 0);
    }
}

bool copyContent(base::Descriptor& from, base::Descriptor& to) {
    std::vector<char> buffer(std::size_t{256} * 1024);
    while (true) {
        const ssize_t count = from.Read(buffer.data(), buffer.size());
        if (count <= 0) return count == 0;
        if (!to.Write({buffer.data(), static_cast<std::size_t>(count)})) return false;
    }
}

}  // namespace

struct FolderItem::Entry {
    std::string name;
    Kind kind;
};

/// The children of a folder as they were at one moment.
class FolderItem::Listing {
  public:
    explicit Listing(const char* path) {
        errno = 0;
        const std::unique_ptr<DIR, Close> folder(::opendir(path));
        while (const dirent* found = folder ? ::readdir(folder.get()) : nullptr) {
            const std::string_view name = found->d_name;
            if (name != "." && name != "..") entries_.push_back({std::string(name), kindOf(found->d_type)});
            LoopYield();
            errno = 0;
        }
        error_ = errno;
        constexpr std::size_t kBetweenYields = 1024;
        std::size_t comparisons = 0;
        std::sort(entries_.begin(), entries_.end(), [&comparisons](const Entry& a, const Entry& b) {
            if (++comparisons % kBetweenYields == 0) LoopYield();
            return a.name < b.name;
        });
    }

    const std::vector<Entry>& Entries() const { return entries_; }
    /// Why there may be more of them; 0 where these are all.
    int Error() const { return error_; }

  private:
    struct Close {
        void operator()(DIR* folder) const { ::closedir(folder); }
    };

    static Kind kindOf(unsigned char type) {
        switch (type) {
            case DT_UNKNOWN:
                return Kind::Unknown;
            case DT_REG:
                return Kind::File;
            case DT_DIR:
                return Kind::Folder;
            case DT_LNK:
                return Kind::Link;
            default:
                return Kind::Other;
        }
    }

    std::vector<Entry> entries_;
    int error_ = 0;
};

FolderItem::FolderItem(const String& pathOrSaveInfo, int /*mode*/) {
    const std::string_view text = pathOrSaveInfo.Bytes();
    path_ = String(Paths::IsUrl(text) ? Paths::Normalise(Paths::FromUrl(text).value_or(""))
                                      : Paths::FollowLink(Paths::Normalise(text)));
}

FolderItem::FolderItem(Exact, String path, Kind kind) : path_(std::move(path)), listedKind_(kind) {}

FolderItem::~FolderItem() = default;

Ref<FolderItem> GetFolderItem(const String& pathOrSaveInfo, int mode) {
    auto item = New<FolderItem>(pathOrSaveInfo, mode);
    return item->AbsolutePath().IsEmpty() ? Nil : item;
}

Ref<FolderItem> FolderItem::TrueChild(const String& name) const {
    const std::string_view bytes = name.Bytes();
    constexpr std::string_view kImpossible("/\0", 2);
    if (path_.IsEmpty() || bytes.find_first_of(kImpossible) != std::string_view::npos) return Nil;
    const std::string path = Paths::Join(path_.Bytes(), bytes);
    const bool relative = bytes.empty() || bytes == "." || bytes == "..";
    return New<FolderItem>(Exact{}, String(relative ? Paths::Normalise(path) : path));
}

Ref<FolderItem> FolderItem::Child(const String& name) const {
    const Ref<FolderItem> child = TrueChild(name);
    return child ? New<FolderItem>(Exact{}, String(Paths::FollowLink(child->path_.ToStd()))) : Nil;
}

const FolderItem::Listing& FolderItem::list() const {
    listing_ = std::make_unique<const Listing>(path());
    return *listing_;
}

int FolderItem::Count() const {
    return static_cast<int>(list().Entries().size());
}

int FolderItem::CountError() const {
    return listing_ ? listing_->Error() : 0;
}

Ref<FolderItem> FolderItem::TrueItem(int index) const {
    const std::vector<Entry>& entries = (listing_ ? *listing_ : list()).Entries();
    if (index < 1 || static_cast<std::size_t>(index) > entries.size()) return Nil;
    const Entry& entry = entries[static_cast<std::size_t>(index - 1)];
    return New<FolderItem>(Exact{}, String(Paths::Join(path_.Bytes(), entry.name)), entry.kind);
}

FolderItem::Kind FolderItem::kind() const {
    struct stat facts;
    if (::lstat(path(), &facts) != 0) return Kind::Missing;
    if (S_ISREG(facts.st_mode)) return Kind::File;
    if (S_ISDIR(facts.st_mode)) return Kind::Folder;
    return S_ISLNK(facts.st_mode) ? Kind::Link : Kind::Other;
}

bool FolderItem::Exists() const {
    return kind() != Kind::Missing;
}

bool FolderItem::Directory() const {
    return kind() == Kind::Folder;
}

bool FolderItem::IsSame(const Ref<FolderItem>& other) const {
    struct stat mine;
    struct stat its;
    return ::lstat(path(), &mine) == 0 && ::lstat(other->path(), &its) == 0 && mine.st_dev == its.st_dev &&
           mine.st_ino == its.st_ino;
}

std::uint64_t FolderItem::Length() const {
    struct stat facts;
    const bool there = ::stat(path(), &facts) == 0 || ::lstat(path(), &facts) == 0;
    return there ? static_cast<std::uint64_t>(facts.st_size) : 0;
}

String FolderItem::Name() const {
    return String(Paths::LastPart(path_.Bytes()));
}

String FolderItem::DisplayName() const {
    return Paths::ForDisplay(Paths::LastPart(path_.Bytes()));
}

String FolderItem::ShellPath() const {
    return String(Paths::EscapeForShell(path_.Bytes()));
}

String FolderItem::URLPath() const {
    return path_.IsEmpty() ? String() : String(Paths::ToUrl(path_.Bytes()));
}

String FolderItem::GetSaveInfo(const Ref<FolderItem>& /*relativeTo*/, int /*mode*/) const {
    return URLPath();
}

Ref<FolderItem> FolderItem::Parent() const {
    const std::string_view folder = Paths::EnclosingFolder(path_.Bytes());
    return folder.empty() ? Nil : New<FolderItem>(Exact{}, String(folder));
}

String FolderItem::Type() const {
    const Kind listed = listedKind_ == Kind::Unknown ? kind() : listedKind_;
    if (listed == Kind::Folder) return FileType::NameForFolder();
    if (listed == Kind::Other) return {};
    if (listed == Kind::Link) {
        struct stat facts;
        if (::stat(path(), &facts) != 0 || !S_ISREG(facts.st_mode)) return {};
    }
    String byName = FileType::NameForFile(Paths::LastPart(path_.Bytes()));
    if (!byName.IsEmpty()) return byName;
    const String code = MacType();
    return code.IsEmpty() ? String() : FileType::NameForCodes(code, MacCreator());
}

bool FolderItem::CreateAsFolder() const {
    return ::mkdir(path(), 0777) == 0 || Directory();
}

bool FolderItem::Delete() const {
    return (Directory() ? ::rmdir(path()) : ::unlink(path())) == 0;
}

bool FolderItem::CopyFileTo(const Ref<FolderItem>& destination) const {
    const Ref<FolderItem> target = destination->Directory() ? destination->TrueChild(Name()) : destination;
    base::Descriptor from = base::Descriptor::OpenForReading(path());
    struct stat facts;
    if (!target || !from.IsOpen() || ::fstat(from.Number(), &facts) != 0) return false;
    base::Descriptor to = base::Descriptor::Open(target->path(), O_WRONLY | O_CREAT | O_EXCL, facts.st_mode & 0777U);
    if (!to.IsOpen()) return false;
    if (!copyContent(from, to) || !to.Close()) {
        target->Delete();
        return false;
    }
    if (const String code = MacType(); !code.IsEmpty()) target->MacType(code);
    if (const String code = MacCreator(); !code.IsEmpty()) target->MacCreator(code);
    return true;
}

bool FolderItem::MoveFileTo(const Ref<FolderItem>& destination) const {
    return !Directory() && ::rename(path(), destination->path()) == 0;
}

Ref<TextInputStream> FolderItem::OpenAsTextFile() const {
    base::Descriptor file = base::Descriptor::OpenForReading(path());
    return file.IsOpen() ? New<TextInputStream>(std::move(file)) : Nil;
}

Ref<TextOutputStream> FolderItem::CreateTextFile(mode_t permissions) const {
    base::Descriptor file =
        base::Descriptor::Open(path(), O_WRONLY | O_CREAT | O_TRUNC | O_NOCTTY | O_NONBLOCK, permissions);
    return file.IsOpen() ? New<TextOutputStream>(std::move(file)) : Nil;
}

Ref<BinaryStream> FolderItem::OpenAsBinaryFile(bool write) const {
    base::Descriptor file = write ? base::Descriptor::Open(path(), O_RDWR) : base::Descriptor::OpenForReading(path());
    return file.IsOpen() ? New<BinaryStream>(std::move(file)) : Nil;
}

bool FolderItem::Launch(bool /*activate*/) const {
    return Exists() && ShowURL(URLPath());
}

String FolderItem::MacType() const {
    return readAttribute(path(), kTypeAttribute);
}

void FolderItem::MacType(const String& code) const {
    writeAttribute(path(), kTypeAttribute, code);
}

String FolderItem::MacCreator() const {
    return readAttribute(path(), kCreatorAttribute);
}

void FolderItem::MacCreator(const String& code) const {
    writeAttribute(path(), kCreatorAttribute, code);
}

bool FolderItem::Visible() const {
    return !Name().Bytes().starts_with('.');
}

void FolderItem::Visible(bool /*visible*/) const {}

int FolderItem::MacVRefNum() const {
    struct stat facts;
    if (::lstat(path(), &facts) != 0) return 0;
    return static_cast<int>(static_cast<std::uint32_t>(facts.st_dev ^ (facts.st_dev >> 32U)));
}

}  // namespace framework
