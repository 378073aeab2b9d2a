// SPDX-License-Identifier: GPL-2.0-or-later
#include "net/InternetHeaders.h"

#include "net/LineEnd.h"

namespace marrowbeck {
namespace {

const char* const kCrLf = "\r\n";

String keyOf(const String& name, int index) {
    return index == 0 ? name : name + ":" + Str(index);
}

String nameOf(const String& key) {
    return NthField(key, ":", 1);
}

/// Gathers the lines of a formatted block.
class Lines {
  public:
    void Add(const String& name, const String& value) {
        if (!first_) text_ += kCrLf;
        first_ = false;
        text_ += name + ": " + value;
    }
    const String& Text() const { return text_; }

  private:
    String text_;
    bool first_ = true;
};

}  // namespace

InternetHeaders::InternetHeaders() : _Headers(New<Dictionary>()) {}

void InternetHeaders::AppendHeader(const String& name, const String& value) {
    String key = name;
    for (int counter = 1; _Headers->HasKey(key); ++counter) {
        key = keyOf(nameOf(key), counter);
        LoopYield();
    }
    _Headers->Value(key, value);
}

String InternetHeaders::CommaSeparatedValues(const String& name) const {
    String values;
    for (int index = 0; _Headers->HasKey(keyOf(name, index)); ++index) {
        if (index > 0) values += ", ";
        values += Value(name, index);
        LoopYield();
    }
    return values;
}

int InternetHeaders::Count() const {
    return _Headers->Count();
}

void InternetHeaders::Delete(const String& name) {
    for (int index = NameCount(name) - 1; index >= 0; --index) {
        _Headers->Remove(keyOf(name, index));
        LoopYield();
    }
}

void InternetHeaders::Delete(const String& name, int index) {
    String key = keyOf(name, index);
    if (!_Headers->HasKey(key)) return;
    String next = keyOf(name, index + 1);
    for (int n = index + 1; _Headers->HasKey(next); next = keyOf(name, ++n)) {
        _Headers->Value(key, _Headers->Value(next));
        key = next;
        LoopYield();
    }
    _Headers->Remove(key);
}

void InternetHeaders::DeleteAllHeaders() {
    _Headers->Clear();
}

String InternetHeaders::Name(int index) const {
    return nameOf(_Headers->Key(index).StringValue());
}

int InternetHeaders::NameCount(const String& name) const {
    int count = 0;
    while (_Headers->HasKey(keyOf(name, count))) {
        ++count;
        LoopYield();
    }
    return count;
}

void InternetHeaders::SetHeader(const String& name, const String& value) {
    if (NameCount(name) >= 2) Delete(name);
    _Headers->Value(name, value);
}

void InternetHeaders::SetHeader(const String& name, const String& value, int index) {
    const String key = keyOf(name, index);
    if (_Headers->HasKey(key)) {
        _Headers->Value(key, value);
    } else {
        AppendHeader(key, value);
    }
}

String InternetHeaders::Source() const {
    return _rawHeaders.IsEmpty() ? _FormatHTTPHeaders() : _rawHeaders;
}

String InternetHeaders::Value(int index) const {
    return index > Count() - 1 ? String() : _Headers->Value(_Headers->Key(index)).StringValue();
}

String InternetHeaders::Value(const String& name) const {
    return Value(name, 0);
}

String InternetHeaders::Value(const String& name, int index) const {
    return _Headers->Lookup(index < 1 ? name : keyOf(name, index), "").StringValue();
}

String InternetHeaders::_DetermineEOLCharacter(const String& text) const {
    return LineEndOf(text);
}

String InternetHeaders::_FormatEmailHeaders() const {
    Lines lines;
    const auto addFirst = [this, &lines](const char* name) {
        if (_Headers->HasKey(name)) lines.Add(name, Value(name));
    };
    addFirst("Return-Path");
    for (int index = 0; index < NameCount("Received"); ++index) {
        lines.Add("Received", Value("Received", index));
        LoopYield();
    }
    for (const char* name : {"Date", "Subject", "From"}) {
        addFirst(name);
        LoopYield();
    }
    for (const char* name : {"To", "CC"}) {
        if (NameCount(name) > 0) lines.Add(name, CommaSeparatedValues(name));
        LoopYield();
    }
    for (int index = 0; index < Count(); ++index) {
        const String name = Name(index);
        const bool done = InStr(":Date:Subject:From:To:CC:BCC:Received:Return-Path:", ":" + name + ":") > 0;
        if (!done) lines.Add(name, Value(index));
        LoopYield();
    }
    return lines.Text();
}

String InternetHeaders::_FormatHTTPHeaders() const {
    Lines lines;
    for (int index = 0; index < Count(); ++index) {
        lines.Add(Name(index), Value(index));
        LoopYield();
    }
    return lines.Text();
}

void InternetHeaders::_ParseHeaders(const String& text) {
    _rawHeaders = text;
    const String eol = _DetermineEOLCharacter(text);
    _Headers = New<Dictionary>();
    const String unfolded = ReplaceAll(ReplaceAll(text, eol + " ", " "), eol + Chr(9), " ");
    // Counted here, since looking for the free key from the beginning each time would give a server that repeats one
    // name the means to hold us up.
    const Ref<Dictionary> occurrences = New<Dictionary>();
    const Array<String> lines = Split(unfolded, eol);
    for (int i = 0; i <= lines.Ubound(); ++i) {
        const String& line = lines(i);
        const int colon = InStr(line, ":");
        if (colon >= 1) {
            const String name = nameOf(line);
            const int index = occurrences->Lookup(name, 0).IntegerValue();
            _Headers->Value(keyOf(name, index), LTrim(Mid(line, colon + 1)));
            occurrences->Value(name, index + 1);
        }
        LoopYield();
    }
}

}  // namespace marrowbeck
