// SPDX-License-Identifier: GPL-2.0-or-later
// From the socket's events to those of the request: the head, the body and the end of an answer.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

#include "net/HTTPSocket.h"

namespace marrowbeck {

/// While one lives, no other reading of the answer begins. A request that began meanwhile has the mark for its own.
class HTTPSocket::Protection {
  public:
    explicit Protection(HTTPSocket& socket) : socket_(&socket), request_(socket.request_) {
        socket.threadProtection = true;
    }
    ~Protection() {
        if (socket_->request_ == request_) socket_->threadProtection = false;
    }
    Protection(const Protection&) = delete;
    Protection& operator=(const Protection&) = delete;

  private:
    Ref<HTTPSocket> socket_;
    unsigned request_;
};

void HTTPSocket::Event_Connected() {
    _connectionValid = true;
    _ResetVariables();
    const unsigned request = request_;
    if (!synchronous) OnConnected.Raise(*this);
    if (request != request_) return;
    if (_httpAction.IsEmpty()) _httpAction = "GET";
    _SendRequest(_httpAction);
}

void HTTPSocket::_ResetVariables() {
    _pageBuffer = "";
    _pageHeaders = Nil;
    _httpStatusCode = 0;
    _totalLength = 0;
    _currentLength = 0;
    _pageComplete = false;
    headSearch_.Reset();
}

void HTTPSocket::Event_DataAvailable() {
    _HandleNewData();
}

void HTTPSocket::_HandleNewData() {
    if (threadProtection) return;
    const Protection protection(*this);
    if (_pageHeaders) {
        _ProcessData(ReadAll());
    } else {
        _ReadHead();
    }
}

void HTTPSocket::_ReadHead() {
    const std::string_view received = LookaheadBytes();
    const auto found = headSearch_.Look(received);
    // Without an end, what is there is looked at for its size alone: no more would come behind a full buffer.
    if (found ? IsTooLong(received.substr(0, found->headSize)) : received.size() >= IncomingLimit) {
        breakOff(HeadTooLong);
        return;
    }
    if (!found) return;
    _ParseHeaders(Read(static_cast<int>(found->headSize)));

    const unsigned request = request_;
    const bool again = (_httpStatusCode == 401 && _SetAuthentication("WWW")) ||
                       (_httpStatusCode == 407 && _SetAuthentication("Proxy"));
    // Here and below: a handler that began a new request has abandoned this one.
    if (request != request_) return;
    if (again) {
        _DoConnect(_processingURL, _httpAction, _downloadFile);
        return;
    }
    if (!synchronous) OnHeadersReceived.Raise(*this, _pageHeaders, _httpStatusCode);
    if (request != request_) return;
    Read(static_cast<int>(found->emptyLineSize));
    _ProcessData(ReadAll());
}

void HTTPSocket::_ParseHeaders(const String& text) {
    const HTTPHead head = ReadHTTPHead(text);
    _httpStatusCode = head.httpStatusCode;
    _totalLength = head.totalLength;
    _pageHeaders = head.headers;
}

void HTTPSocket::_ProcessData(const String& data) {
    if (_httpAction == "HEAD") return;
    // A body of more than 2 GiB goes on arriving while its count stands at the end of the range.
    const std::int64_t length = std::int64_t{_currentLength} + LenB(data);
    _currentLength = static_cast<int>(std::min<std::int64_t>(length, std::numeric_limits<int>::max()));
    if (_downloadStream) {
        _downloadStream->Write(data);
        if (_downloadStream->Failed()) {
            loseDownload();
            return;
        }
    } else {
        _pageBuffer += data;
    }
    const unsigned request = request_;
    if (!synchronous) OnReceiveProgress.Raise(*this, _currentLength, _totalLength, data);
    if (request != request_) return;
    // A refused challenge whose connection ended while its handler was asking.
    if ((_httpStatusCode == 401 || _httpStatusCode == 407) && !IsConnected()) _ProcessPage();
}

// The other side's closing comes in as an error as well, and no code is looked at: on a connection that once stood, the
// answer is over.
void HTTPSocket::Event_Error() {
    if (!std::exchange(_connectionValid, false)) {
        SetError(LastErrorCode());
    } else if (LookaheadBytes().empty()) {
        _ProcessPage();
    } else {
        _HandleNewData();
    }
}

void HTTPSocket::_ProcessPage() {
    if (_pageComplete) return;
    const bool wasDownload = static_cast<bool>(_downloadStream);
    // A full disk may show no sooner than here.
    if (wasDownload && !(_downloadStream->Sync() && _downloadStream->Close())) {
        loseDownload();
        return;
    }
    _pageComplete = true;
    const Ref<FolderItem> file = _downloadFile;
    _KillDownloadStream();
    if (synchronous || _httpAction == "HEAD") return;
    if (wasDownload) {
        OnDownloadComplete.Raise(*this, _processingURL, _httpStatusCode, _pageHeaders, file);
    } else {
        OnPageReceived.Raise(*this, _processingURL, _httpStatusCode, _pageHeaders, _pageBuffer);
    }
}

/// Ends the request, and leaves nothing of a file that would pass for the whole one.
void HTTPSocket::loseDownload() {
    lossReason_ = _downloadStream->FailureReason();
    // The place may be a link to the file, or a device, which is not ours to remove.
    const Ref<FolderItem> file =
        _downloadStream->IsOrdinaryFile() ? FolderItem::Own(_downloadFile->AbsolutePath()) : Nil;
    _KillDownloadStream();
    if (file) file->Delete();
    breakOff(DownloadLost);
}

void HTTPSocket::breakOff(int code) {
    Close();
    Purge();
    _connectionValid = false;
    SetError(code);
}

Ref<InternetHeaders> HTTPSocket::PageHeaders() const {
    if (_pageHeaders && _pageHeaders->Count() > 0) return _pageHeaders;
    return Nil;
}

void HTTPSocket::SetError(int code) {
    mErrorCode = code;
    if (!synchronous) OnError.Raise(*this, code);
}

}  // namespace marrowbeck
