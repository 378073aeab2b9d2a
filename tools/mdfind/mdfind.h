// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "tools/service/ToolResult.h"

namespace marrowbeck::tools {

/// `mdfind [-0] [-strict] -onlyin FOLDER QUERY...`: the absolute paths of the images below a
/// folder, in byte order, each ended by a NUL with `-0` and by a line end without.
/// `QUERY`, in one word or in several, is `kMDItemContentType ==` with
/// `public.jpeg`, `public.tiff` or `public.png`, or `kMDItemContentTypeTree ==`
/// with `*image` or `public.image`. Hidden files are left out, links are not followed.
///
/// Files that may not be read are left out, and folders in the folder that may not are told on standard error. With
/// `-strict` nothing is left out unsaid, for whom half an answer is none: such files are printed too, those whose type
/// only their content could have told are told like the folders, and the status is `exitFailure` where anything was
/// told, with all that was found printed all the same.
ToolResult mdfind(const Arguments& arguments);

}  // namespace marrowbeck::tools
