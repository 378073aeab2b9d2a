// SPDX-License-Identifier: GPL-2.0-or-later
#include "catalogue/RecordText.h"

#include "framework/core/text/JsonText.h"

namespace marrowbeck {
namespace {

String csvValue(const String& value) {
    for (const String& special : {String(","), String("\""), Chr(13), Chr(10)}) {
        if (InStr(value, special) > 0) return "\"" + ReplaceAll(value, "\"", "\"\"") + "\"";
    }
    return value;
}

}  // namespace

String RecordText::Csv(const Array<String>& values) {
    String line;
    for (int i = 0; i <= values.Ubound(); ++i) line = line + (i == 0 ? "" : ",") + csvValue(values(i));
    return line + Chr(10);
}

String RecordText::Json(const Array<String>& names, const Array<String>& values) {
    String members;
    for (int i = 0; i <= values.Ubound(); ++i) {
        members = members + (i == 0 ? "" : ", ") + JsonText(names(i)) + ": " + JsonText(values(i));
    }
    return "{" + members + "}";
}

}  // namespace marrowbeck
