// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/objects/Array.h"
#include "framework/core/text/String.h"

/// Texts as rows of fields. Fields count from 1; separators are found without regard to case, as in every search.
namespace framework {

/// The pieces between the separators. The empty text has none; a separator at the end is followed by an empty piece. An
/// empty separator separates nothing.
Array<String> Split(const String& text, const String& separator);
/// The n-th of these pieces, or the empty text when there is no such piece.
String NthField(const String& text, const String& separator, int n);
/// The number of pieces: as many as Split gives, but 1 for the empty text, so that a loop over the fields of a line
/// meets an empty line too.
int CountFields(const String& text, const String& separator);

}  // namespace framework
