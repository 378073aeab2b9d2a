// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/window/DragItem.h"

#include <QByteArray>
#include <QString>
#include <QSysInfo>

#include "framework/core/files/FolderItem.h"

namespace framework {
namespace {

std::string_view firstUri(std::string_view list) {
    while (!list.empty()) {
        const std::size_t end = list.find_first_of("\r\n");
        const std::string_view line = list.substr(0, end);
        if (!line.empty() && line.front() != '#') return line;
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
    }
    return {};
}

bool isThisMachine(std::string_view host) {
    return host.empty() || host == "localhost" || host == QSysInfo::machineHostName().toStdString();
}

}  // namespace

std::optional<std::string> internal::PathFromUri(std::string_view uri) {
    constexpr std::string_view kScheme = "file:";
    if (!uri.starts_with(kScheme)) return std::nullopt;
    uri.remove_prefix(kScheme.size());
    if (uri.starts_with("//")) {
        uri.remove_prefix(2);
        const std::size_t slash = uri.find('/');
        if (slash == std::string_view::npos || !isThisMachine(uri.substr(0, slash))) return std::nullopt;
        uri.remove_prefix(slash);
    }
    if (!uri.starts_with('/')) return std::nullopt;
    const QByteArray encoded(uri.data(), static_cast<qsizetype>(uri.size()));
    std::string path = QByteArray::fromPercentEncoding(encoded).toStdString();
    if (path.find('\0') != std::string::npos) return std::nullopt;
    return path;
}

DragItem::DragItem(std::string_view uriList) : path_(internal::PathFromUri(firstUri(uriList))) {}

Ref<framework::FolderItem> DragItem::FolderItem() const {
    if (!path_) return Nil;
    return New<framework::FolderItem>(String(*path_));
}

}  // namespace framework
