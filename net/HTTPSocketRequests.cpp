// SPDX-License-Identifier: GPL-2.0-or-later
// The forms of a request, and what each of them sets in motion: the road from the caller to the socket.

#include <algorithm>
#include <string_view>
#include <utility>

#include "net/HTTPSocket.h"

namespace marrowbeck {

namespace {

/// Whether no byte is a control character. One of them in a head would begin what nobody meant: another line, another
/// request.
bool isLine(const String& text) {
    const std::string_view bytes = text.Bytes();
    return std::none_of(bytes.begin(), bytes.end(), [](unsigned char byte) { return byte < ' ' || byte == 0x7F; });
}

/// The same for what stands between blanks.
bool isWord(const String& text) {
    return isLine(text) && text.Bytes().find(' ') == std::string_view::npos;
}

/// Long credentials of the Basic scheme are divided into lines, by us.
bool isKey(const String& key) {
    return key.Bytes().starts_with("Basic ") || isLine(key);
}

}  // namespace

HTTPSocket::HTTPSocket() {
    _InitializeRequestHeaders();
    DefaultPort = 80;
}

void HTTPSocket::_InitializeRequestHeaders() {
    SetRequestHeader("Accept", "*/*");
    SetRequestHeader("Accept-Language", "en");
}

void HTTPSocket::ClearRequestHeaders() {
    requestHeaders->DeleteAllHeaders();
}

void HTTPSocket::SetRequestHeader(const String& name, const String& value) {
    if (!requestHeaders) requestHeaders = New<InternetHeaders>();
    if (value.IsEmpty()) {
        requestHeaders->Delete(name);
    } else {
        requestHeaders->SetHeader(name, value);
    }
}

void HTTPSocket::Get(const String& url) {
    SendRequest("GET", url);
}

void HTTPSocket::Get(const String& url, const Ref<FolderItem>& file) {
    SendRequest("GET", url, file);
}

bool HTTPSocket::Get(const String& url, const Ref<FolderItem>& file, int timeout) {
    return SendRequest("GET", url, file, timeout);
}

String HTTPSocket::Get(const String& url, int timeout) {
    return SendRequest("GET", url, timeout);
}

void HTTPSocket::GetHeaders(const String& url) {
    SendRequest("HEAD", url);
}

Ref<InternetHeaders> HTTPSocket::GetHeaders(const String& url, int timeout) {
    SendRequest("HEAD", url, timeout);
    return _pageHeaders;
}

void HTTPSocket::Post(const String& url) {
    SendRequest("POST", url);
}

void HTTPSocket::Post(const String& url, const Ref<FolderItem>& file) {
    SendRequest("POST", url, file);
}

bool HTTPSocket::Post(const String& url, const Ref<FolderItem>& file, int timeout) {
    return SendRequest("POST", url, file, timeout);
}

String HTTPSocket::Post(const String& url, int timeout) {
    return SendRequest("POST", url, timeout);
}

void HTTPSocket::SendRequest(const String& method, const String& url) {
    SendRequest(method, url, Nil);
}

void HTTPSocket::SendRequest(const String& method, const String& url, const Ref<FolderItem>& file) {
    synchronous = false;
    _DoConnect(url, method, file);
}

bool HTTPSocket::SendRequest(const String& method, const String& url, const Ref<FolderItem>& file, int timeout) {
    timeoutSeconds = timeout;
    synchronous = true;
    _DoConnect(url, method, file);
    WaitForPage();
    return mErrorCode == 0;
}

String HTTPSocket::SendRequest(const String& method, const String& url, int timeout) {
    SendRequest(method, url, Nil, timeout);
    return _pageBuffer;
}

// By value: they may be members of this very object, which change on the way.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void HTTPSocket::_DoConnect(String url, String action, Ref<FolderItem> file) {
    mErrorCode = 0;
    _ParseURL(url);
    _processingURL = url;
    // What is no URL leads nowhere, and empties no file.
    const bool isUrl = isWord(url);
    if (!isUrl) file = Nil;
    if (!_SetDownloadFile(file)) return;
    if (!isUrl) {
        Address("");
    } else if (!HTTPProxyAddress.IsEmpty()) {
        Address(HTTPProxyAddress);
        Port(HTTPProxyPort == 0 ? DefaultPort : HTTPProxyPort);
    }
    _httpAction = std::move(action);
    Close();
    Purge();
    // Whatever of an earlier request still waits for a handler to return finds that it is over.
    ++request_;
    threadProtection = false;
    _connectionValid = false;
    // And where nobody answers, nothing is left of an earlier answer.
    _ResetVariables();
    Connect();
}

void HTTPSocket::_ParseURL(const String& url) {
    const int scheme = InStr(url, "://");
    const String rest = scheme < 1 ? url : Mid(url, scheme + 3);
    _server = NthField(rest, "/", 1);
    _path = Mid(rest, Len(_server) + 1);
    if (_path.IsEmpty()) _path = "/";
    const int port = ToInteger(Val(NthField(_server, ":", 2)));
    Port(port == 0 ? DefaultPort : port);
    Address(NthField(_server, ":", 1));
}

bool HTTPSocket::_SetDownloadFile(const Ref<FolderItem>& file) {
    _KillDownloadStream();
    if (!file) return true;
    const bool isFolder = file->Exists() && file->Directory();
    const Ref<TextOutputStream> made = isFolder ? Nil : file->CreateTextFile();
    if (made) {
        made->Close();
        _downloadStream = file->OpenAsBinaryFile(true);
    }
    if (!_downloadStream) {
        SetError(DownloadUnusable);
        return false;
    }
    _downloadFile = file;
    return true;
}

void HTTPSocket::_KillDownloadStream() {
    _downloadFile = Nil;
    if (!_downloadStream) return;
    _downloadStream->Close();
    _downloadStream = Nil;
}

/// Whether the head of the request, which is complete but for the credentials, holds nothing that would break it.
bool HTTPSocket::isFit(const String& action) const {
    if (!isWord(action) || !isKey(_authenticationKey) || !isKey(_proxyAuthenticationKey)) return false;
    for (int index = 0; index < requestHeaders->Count(); ++index) {
        if (!isWord(requestHeaders->Name(index)) || !isLine(requestHeaders->Value(index))) return false;
        LoopYield();
    }
    return true;
}

void HTTPSocket::_SendRequest(const String& action) {
    if (!requestHeaders) requestHeaders = New<InternetHeaders>();
    requestHeaders->SetHeader("Host", _server);
    if (action == "POST") {
        requestHeaders->SetHeader("Content-type", _postContentType);
        requestHeaders->SetHeader("Content-length", Format(LenB(_postContent), "0"));
    } else {
        SetPostContent("", "");
        SetRequestHeader("Content-type", "");
        SetRequestHeader("Content-length", "");
    }
    if (!isFit(action)) {
        _authenticationKey = "";
        _proxyAuthenticationKey = "";
        breakOff(UnfitHead);
        return;
    }
    if (!_authenticationKey.IsEmpty()) SetRequestHeader("Authorization", _authenticationKey);
    if (!_proxyAuthenticationKey.IsEmpty()) SetRequestHeader("Proxy-Authorization", _proxyAuthenticationKey);
    if (!HTTPProxyAddress.IsEmpty()) _path = _processingURL;

    String request = action + " " + _path + " HTTP/1.0\r\n" + requestHeaders->_FormatHTTPHeaders();
    // Credentials go out once, and only in answer to a challenge.
    if (!_authenticationKey.IsEmpty()) SetRequestHeader("Authorization", "");
    if (!_proxyAuthenticationKey.IsEmpty()) SetRequestHeader("Proxy-Authorization", "");
    _authenticationKey = "";
    _proxyAuthenticationKey = "";
    // The content is bytes: joining it must not change its encoding.
    request += "\r\n\r\n" + _postContent.Labelled(Encodings::Undefined);
    Write(request);
}

void HTTPSocket::SetFormData(const Ref<Dictionary>& form) {
    if (form) {
        SetPostContent(EncodeFormData(form), "application/x-www-form-urlencoded");
    } else {
        SetPostContent("", "");
    }
}

void HTTPSocket::SetPostContent(const String& content, const String& contentType) {
    _postContent = content;
    _postContentType = contentType;
}

String HTTPSocket::EncodeFormData(const Ref<Dictionary>& form) const {
    String text;
    for (int index = 0; index < form->Count(); ++index) {
        const Variant key = form->Key(index);
        text += "&" + _EncodeURLString(key.StringValue()) + "=" + _EncodeURLString(form->Value(key).StringValue());
        LoopYield();
    }
    return Mid(text, 2);
}

String HTTPSocket::_EncodeURLString(const String& text) const {
    String encoded = text;
    // The percent sign comes first, so that no escape is escaped again.
    for (const char c : std::string_view("%&=,/\\][{}`~-_()*^$#!+;<>\r\n")) {
        const String character(std::string_view(&c, 1));
        encoded = ReplaceAll(encoded, character, "%" + Right("00" + Hex(Asc(character)), 2));
        LoopYield();
    }
    // After the plus sign, which was escaped among the others.
    return ReplaceAll(encoded, " ", "+");
}

}  // namespace marrowbeck
