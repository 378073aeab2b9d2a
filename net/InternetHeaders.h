// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// A block of named text headers, as in HTTP and in mails, read from text and written as text. A name may occur several
/// times, and is found whatever its case; it keeps the case in which it came first.
///
/// The store is the design: the first occurrence of a name stands under the name itself, the next ones under the name
/// followed by ":1", ":2" and so on without a gap. No name holds a colon, so that the part of a key before its colon is
/// the name. The operations count occurrences and iteration places from 0.
class InternetHeaders : public Object {
  public:
    InternetHeaders();

    /// Adds an occurrence of `name` behind those that are there.
    void AppendHeader(const String& name, const String& value);
    /// All values of `name`, joined by ", ".
    String CommaSeparatedValues(const String& name) const;
    /// The number of headers; occurrences count one by one.
    int Count() const;
    /// Removes all occurrences of `name`.
    void Delete(const String& name);
    /// Removes one occurrence, and the ones behind it move up.
    void Delete(const String& name, int index);
    /// The text that was read, see Source, stays.
    void DeleteAllHeaders();
    /// The name at a place of the iteration, in the order in which the headers came. A place that does not exist raises
    /// OutOfBoundsException.
    String Name(int index) const;
    /// How many occurrences `name` has.
    int NameCount(const String& name) const;
    /// Leaves exactly one occurrence of `name`, with this value.
    void SetHeader(const String& name, const String& value);
    /// Gives one occurrence another value; where it does not exist, a header is added.
    void SetHeader(const String& name, const String& value, int index);
    /// The text that was read, whatever was changed since; for a block made by hand, the headers as they are.
    String Source() const;
    /// The value at a place of the iteration; empty behind the last.
    String Value(int index) const;
    /// The first value of `name`; empty when there is none.
    String Value(const String& name) const;
    /// The value of an occurrence; empty when there is none. An index below 1 means the first.
    String Value(const String& name, int index) const;

    /// The headers in the order of a mail: Return-Path, Received, Date, Subject, From, To and CC first, then the rest.
    /// BCC is left out. No line is folded, and the last has no line end.
    String _FormatEmailHeaders() const;
    /// The headers as lines of name, ": " and value, without a line end behind the last.
    String _FormatHTTPHeaders() const;
    /// Replaces the block by what `text` holds, in linear time. Its lines end in CR LF, else in LF, else in CR; one
    /// that begins with a blank or a tab goes on with the line before. Lines without a colon are left out.
    void _ParseHeaders(const String& text);

  protected:
    /// The line end that `text` uses: CR LF before LF before CR, and CR LF where it has none.
    String _DetermineEOLCharacter(const String& text) const;

    Ref<Dictionary> _Headers;
    String _rawHeaders;
};

}  // namespace marrowbeck
