#pragma once

// The only place that includes Exiv2, so that its traps are met once.
#include <exiv2/exiv2.hpp>
#include <memory>
#include <string>

namespace marrowbeck::tools {

/// Opens a picture and reads its metadata, as far as it makes sense: what was read
/// before a fault is kept. `absolutePath` must begin with a slash, as Exiv2 takes
/// other paths for addresses on the network, or for standard input. Videos count as
/// no picture. Nil when the format is unknown. Never throws on account of the
/// file, and prints nothing. Not for two threads at a time, as XMP is global.
std::unique_ptr<Exiv2::Image> openExiv2Image(const std::string& absolutePath);

/// What `read` returns, or an empty result where Exiv2 throws. It does so when a
/// value is read, converted or printed, not only when a file is opened.
template <typename Read>
auto guarded(Read read) -> decltype(read()) {
    try {
        return read();
    } catch (...) {  // its XMP part throws more than standard exceptions
        return {};
    }
}

}  // namespace marrowbeck::tools
