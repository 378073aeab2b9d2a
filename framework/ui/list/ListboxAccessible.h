// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace framework::native {

/// Has the toolkit tell a screen reader, of each ListboxView, headings that can be focused and pressed, from the first
/// call on. The toolkit's own can only be read.
void AnnounceHeadings();

}  // namespace framework::native
