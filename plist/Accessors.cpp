// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstdint>

#include "plist/plist.h"

namespace marrowbeck {
namespace {

String textOf(bool value) {
    return value ? "true" : "false";
}

/// Six hexadecimal digits: a colour's own text without its sign in front.
String textOf(Color value) {
    return Mid(Variant(value).StringValue(), 3);
}

std::int32_t hexadecimal(const String& digits) {
    return ToInteger(CDbl("&h" + digits));
}

}  // namespace

void plistDict::store(const String& key, const String& word, const String& text) {
    values->Value(key, text);
    types->Value(key, word);
    searched->Value(key, false);
}

void plistDict::SetString(const String& key, const String& value) {
    if (CheckType(key, "string") != 0) store(key, "string", value);
}

void plistDict::SetInteger(const String& key, double value) {
    if (CheckType(key, "integer") != 0) store(key, "integer", Format(value, "-#"));
}

void plistDict::SetDouble(const String& key, double value) {
    if (CheckType(key, "real") != 0) store(key, "real", Format(value, "#.#"));
}

void plistDict::SetReal(const String& key, double value) {
    // It asks for one type and stores another: so it creates a key, and never changes one that it created.
    if (CheckType(key, "double") != 0) store(key, "real", Format(value, "#.#"));
}

void plistDict::SetBoolean(const String& key, bool value) {
    if (CheckType(key, "boolean") != 0) store(key, "boolean", textOf(value));
    indexOf = -1;
}

void plistDict::SetDate(const String& key, const Ref<Date>& value) {
    if (CheckType(key, "date") != 0) store(key, "date", value->SQLDateTime());
}

void plistDict::SetData(const String& key, const String& value) {
    store(key, "data", value);
}

void plistDict::SetColor(const String& key, Color value) {
    if (CheckType(key, "string") == 0) return;
    store(key, "string", textOf(value));
    indexOf = -1;
}

String plistDict::GetValue(const String& key, const String& defaultValue) {
    if (!Exists(key)) SetString(key, defaultValue);
    if (rootClass) SetError(false, "");
    if (values->HasKey(key)) return TypeOK(key) ? values->Value(key).StringValue() : String();
    SetError(true, "Key " + key + " does not exist");
    return {};
}

String plistDict::GetValue(const String& key) {
    return GetValue(key, "");
}

String plistDict::GetString(const String& key, const String& defaultValue) {
    return GetValue(key, defaultValue);
}

String plistDict::GetString(const String& key) {
    return GetString(key, "");
}

String plistDict::GetData(const String& key, const String& defaultValue) {
    return GetValue(key, defaultValue);
}

String plistDict::GetData(const String& key) {
    return GetData(key, "");
}

bool plistDict::isDate(const String& key) {
    if (GetType(key) != "date") return false;
    SetError(true, "Type Mismatch: " + key + " is a date");
    return true;
}

std::int32_t plistDict::GetInteger(const String& key, std::int32_t defaultValue) {
    if (!Exists(key)) SetInteger(key, defaultValue);
    if (!TypeOK(key)) return 0;
    return isDate(key) ? -1 : ToInteger(CDbl(GetValue(key)));
}

std::int32_t plistDict::GetInteger(const String& key) {
    return GetInteger(key, 0);
}

double plistDict::GetDouble(const String& key, double defaultValue) {
    if (!Exists(key)) SetDouble(key, defaultValue);
    if (!TypeOK(key)) return 0;
    return isDate(key) ? -1 : CDbl(GetValue(key));
}

double plistDict::GetDouble(const String& key) {
    return GetDouble(key, 0);
}

double plistDict::GetReal(const String& key, double defaultValue) {
    if (!Exists(key)) SetReal(key, defaultValue);
    if (!TypeOK(key)) return 0;
    return isDate(key) ? -1 : CDbl(GetValue(key));
}

double plistDict::GetReal(const String& key) {
    return GetReal(key, 0);
}

bool plistDict::GetBoolean(const String& key, bool defaultValue) {
    if (!Exists(key)) SetBoolean(key, defaultValue);
    const String word = GetType(key);
    if (word == "boolean") return values->Value(key).StringValue() == "true";
    SetError(true, "Type Mismatch: " + key + " is a " + word);
    return false;
}

bool plistDict::GetBoolean(const String& key) {
    return GetBoolean(key, true);
}

Ref<Date> plistDict::GetDate(const String& key, const Ref<Date>& defaultValue) {
    const auto date = New<Date>();
    if (!Exists(key)) SetDate(key, defaultValue);
    if (TypeOK(key)) date->SQLDateTime(GetValue(key));
    return date;
}

Ref<Date> plistDict::GetDate(const String& key) {
    return GetDate(key, New<Date>());
}

Color plistDict::GetColor(const String& key, Color defaultValue) {
    if (!Exists(key)) SetColor(key, defaultValue);
    const String word = GetType(key);
    if (word != "string") {
        SetError(true, "Type Mismatch: " + key + " is a " + word);
        return {};
    }
    const String text = GetValue(key);
    return RGB(hexadecimal(Left(text, 2)), hexadecimal(Mid(text, 3, 2)), hexadecimal(Right(text, 2)));
}

Color plistDict::GetColor(const String& key) {
    return GetColor(key, RGB(0, 0, 0));
}

}  // namespace marrowbeck
