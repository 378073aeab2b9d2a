// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QString>

#include "framework/core/text/String.h"

namespace framework::native {

/// What stands for the rest of a text that is cut short.
inline constexpr QChar kRest(0x2026);

/// The place at `end`, or a little before it, where `text` can be cut between two characters as a person sees them; its
/// size where it is no longer than that.
qsizetype CutPlace(const QString& text, qsizetype end);

/// A text of the same length in which a sign stands for each character that would not be seen but change what is: texts
/// of files could look like others by them. Line ends and tabulators stay.
QString Harmless(QString text);

/// A harmless text for the screen, or its beginning of at most `longest` UTF-16 units and a mark for the rest.
QString ToQt(const String& text, qsizetype longest);

}  // namespace framework::native
