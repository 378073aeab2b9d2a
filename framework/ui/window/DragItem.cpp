// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/window/DragItem.h"

#include "framework/core/files/FolderItem.h"
#include "framework/core/files/Paths.h"

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

}  // namespace

DragItem::DragItem(std::string_view uriList) : path_(Paths::FromUrl(firstUri(uriList))) {}

Ref<framework::FolderItem> DragItem::FolderItem() const {
    if (path_ && !item_) item_ = New<framework::FolderItem>(String(*path_));
    return item_;
}

}  // namespace framework
