// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace marrowbeck::tools {

/// The life of the process that opens files, and may be kept waiting by their disks. It is our own code alone, with the
/// user's rights, and never looks at what it reads. Many files are opened side by side; each is handed, with its first
/// bytes in memory, straight to the reader that was chosen for it. Ends when `socket` is closed.
///
/// What it is told is a frame of a letter and what belongs to it; numbers are as everywhere in frames:
/// - `R` number: a reader, whose socket comes with the frame's first byte
/// - `G` number: that reader is gone
/// - `O` id, reader, length of the path, path, question: open the file and hand it over; without a path only the
/// question
/// - `L` id, path: look at the file
/// - `C` id: of no interest any more
/// It answers with a FileNote for each file, told before a reader gets it; those of one reader in the order in which
/// the reader gets them.
void serveFiles(int socket);

}  // namespace marrowbeck::tools
