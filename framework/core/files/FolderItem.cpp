// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/FolderItem.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Descriptor.h"
#include "base/DiskFacts.h"
#include "framework/core/files/BinaryStream.h"
#include "framework/core/files/ChildList.h"
#include "framework/core/files/FileType.h"
#include "framework/core/files/Paths.h"
#include "framework/core/files/TextInputStream.h"
#include "framework/core/files/TextOutputStream.h"
#include "framework/core/process/AnsweredFile.h"
#include "framework/core/process/ShowURL.h"

namespace framework {

using base::PathKind;
using internal::Disk;

namespace {

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

FolderItem::FolderItem(const String& pathOrSaveInfo, int /*mode*/) : disk_(Disk::Users()) {
    const std::string_view text = pathOrSaveInfo.Bytes();
    path_ = String(Paths::IsUrl(text) ? disk_.Clean(Paths::FromUrl(text).value_or("")) : disk_.Follow(text));
}

FolderItem::FolderItem(Exact, const Disk& disk, String path) : path_(std::move(path)), disk_(disk) {}

std::vector<Ref<FolderItem>> FoldersOf(const std::vector<std::string>& paths) {
    std::vector<Ref<FolderItem>> folders;
    for (const std::string& path : Disk::Users().FoldersOf(paths)) {
        folders.push_back(path.empty() ? Nil : New<FolderItem>(FolderItem::Exact{}, Disk::Users(), String(path)));
    }
    return folders;
}

Ref<FolderItem> FolderItem::Own(const String& path) {
    return New<FolderItem>(Exact{}, Disk::Own(), String(Disk::Own().Follow(path.Bytes())));
}

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
    return at(relative ? disk_.Clean(path) : path);
}

Ref<FolderItem> FolderItem::Child(const String& name) const {
    const Ref<FolderItem> child = TrueChild(name);
    return child ? at(disk_.Follow(child->path_.Bytes())) : Nil;
}

Ref<FolderItem> FolderItem::at(std::string_view path) const {
    return New<FolderItem>(Exact{}, disk_, String(path));
}

const Ref<internal::ChildList>& FolderItem::list() const {
    return children_ = New<internal::ChildList>(disk_, path_.ToStd());
}

int FolderItem::Count() const {
    return static_cast<int>(list()->Count());
}

int FolderItem::CountError() const {
    return children_ ? children_->Failure() : 0;
}

Ref<FolderItem> FolderItem::TrueItem(int index) const {
    const Ref<internal::ChildList> children = children_ ? children_ : list();
    if (index < 1 || static_cast<std::size_t>(index) > children->Count()) return Nil;
    const auto place = static_cast<std::size_t>(index - 1);
    const Ref<FolderItem> child = at(Paths::Join(path_.Bytes(), children->NameAt(place)));
    child->siblings_ = children;
    child->place_ = place;
    return child;
}

base::PathFacts FolderItem::facts() const {
    return disk_.FactsAt(path_.ToStd());
}

bool FolderItem::Exists() const {
    return facts().kind != PathKind::missing;
}

bool FolderItem::Directory() const {
    return facts().kind == PathKind::folder;
}

String FolderItem::FolderWithin(int milliseconds) const {
    return String(disk_.FoldersOf({path_.ToStd()}, milliseconds).front());
}

int FolderItem::AccessError(int rights) const {
    if (internal::AnsweredFile::WasSilent(path_.Bytes())) return ETIMEDOUT;
    return disk_.AccessFailure(path_.ToStd(), rights);
}

bool FolderItem::IsSame(const Ref<FolderItem>& other) const {
    const base::PathFacts mine = facts();
    const base::PathFacts its = other->facts();
    return mine.kind != PathKind::missing && its.kind != PathKind::missing && mine.device == its.device &&
           mine.inode == its.inode;
}

std::uint64_t FolderItem::Length() const {
    const auto told = internal::AnsweredFile::LengthOf(path_.Bytes());
    return told ? *told : facts().length;
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
    return folder.empty() ? Nil : at(folder);
}

String FolderItem::Type() const {
    PathKind kind = siblings_ ? siblings_->KindAt(place_) : PathKind::unknown;
    if (kind == PathKind::unknown) kind = facts().kind;
    if (kind == PathKind::folder) return FileType::NameForFolder();
    if (kind == PathKind::other || kind == PathKind::link) return {};
    String byName = FileType::NameForFile(Paths::LastPart(path_.Bytes()));
    if (!byName.IsEmpty()) return byName;
    const internal::FileCodes codes = siblings_ ? siblings_->CodesAt(place_) : this->codes();
    return codes.type.empty() ? String() : FileType::NameForCodes(String(codes.type), String(codes.creator));
}

bool FolderItem::CreateAsFolder(mode_t permissions) const {
    return ::mkdir(path(), permissions) == 0 || Directory();
}

void FolderItem::CloseToOthers() const {
    const base::Descriptor folder = base::Descriptor::Open(path(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    struct stat status {};
    if (::fstat(folder.Number(), &status) == 0) ::fchmod(folder.Number(), status.st_mode & S_IRWXU);
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

internal::FileCodes FolderItem::codes() const {
    const std::string folder(Paths::EnclosingFolder(path_.Bytes()));
    return disk_.CodesOf(folder, {std::string(Paths::LastPart(path_.Bytes()))}).front();
}

String FolderItem::MacType() const {
    return String(codes().type);
}

void FolderItem::MacType(const String& code) const {
    writeAttribute(path(), base::typeAttribute, code);
}

String FolderItem::MacCreator() const {
    return String(codes().creator);
}

void FolderItem::MacCreator(const String& code) const {
    writeAttribute(path(), base::creatorAttribute, code);
}

bool FolderItem::Visible() const {
    return !Name().Bytes().starts_with('.');
}

void FolderItem::Visible(bool /*visible*/) const {}

int FolderItem::MacVRefNum() const {
    const std::uint64_t device = facts().device;
    return static_cast<int>(static_cast<std::uint32_t>(device ^ (device >> 32U)));
}

}  // namespace framework
