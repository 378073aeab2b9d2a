// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "tools/service/ToolResult.h"

namespace marrowbeck::tools {

/// `mdfind [-0] -onlyin FOLDER QUERY...`: the absolute paths of the images below a
/// folder, in byte order, each ended by a NUL with `-0` and by a line end without.
/// `QUERY`, in one word or in several, is `kMDItemContentType ==` with
/// `public.jpeg`, `public.tiff` or `public.png`, or `kMDItemContentTypeTree ==`
/// with `*image` or `public.image`. Hidden files are left out, links are not followed.
ToolResult mdfind(const Arguments& arguments);

}  // namespace marrowbeck::tools
