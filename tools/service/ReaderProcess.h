// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <vector>

#include "tools/service/Tool.h"

namespace marrowbeck::tools {

/// The life of a reader, in its own process: confines itself, then answers the questions that come through `socket`
/// until that is closed. Returns without a word when it cannot be confined.
///
/// Its first word is a byte, with which comes what `confine` gives, where it gives something.
///
/// A question is a frame of its id, a number, 1 where it is about a content, that content's length in bytes (two
/// numbers, the higher first), and the words; the contents' descriptors come in the order of the questions, none later
/// than its question. An answer is a frame of the id, one byte, 0 where the file makes no sense, and what `Tool::read`
/// says.
void serveQuestions(Tool& tool, const std::vector<std::string>& folders, int socket);

}  // namespace marrowbeck::tools
