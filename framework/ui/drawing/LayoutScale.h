// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace framework::native {

/// The pixels of the toolkit to one pixel of the layouts, which are drawn for a desktop font of 10 points: with a
/// larger font the whole layout grows with it, so that each text keeps its room. Never below 1. It is that of the
/// program's start; who changes the desktop's font sees it at the next one. Main thread, once the toolkit is there.
double LayoutScale();

int ToToolkit(int pixels);
int FromToolkit(int pixels);

}  // namespace framework::native
