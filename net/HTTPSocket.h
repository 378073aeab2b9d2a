// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"
#include "net/HTTPHead.h"
#include "net/InternetHeaders.h"
#include "net/SOAPSocket.h"

namespace marrowbeck {

/// A client of HTTP/1.0 (RFC 1945) that serves one request at a time, on a connection of its own; the end of the
/// connection is the end of the answer. A new request abandons the one that runs.
///
/// A URL with a blank or a control character in it is none: the request fails as one to a host that does not exist.
///
/// Each kind of request comes in four forms: as a page in memory or as a download into a file, and each of them either
/// with events or, with a time-out, by waiting. An answer is an answer whatever its status: redirections are not
/// followed, and no transfer coding is undone. A challenge (401, 407) is put to the handler of its event, and the
/// request is sent again for as long as that answers True. Every scheme of a URL is spoken as plain HTTP.
///
/// The waiting forms return when the answer is complete, on an error, or after `timeout` seconds in which nothing
/// happened; a timeout below 1 means never. A page's bytes count as something happening, those of a download do not.
/// They raise no event but those of the challenges. On the main thread they hold up the window, unless Yield is set.
///
/// With events, there is no time-out. Events come as SocketCore says; a handler may begin a new request.
class HTTPSocket : public TCPSocket, public _SOAPSocket {
  public:
    /// What ErrorCode says besides the codes of SocketCore.
    enum : int {
        TimedOut = -1,         ///< Nothing happened in time; the connection was closed.
        DownloadUnusable = 1,  ///< The file is a folder, or could not be made or opened.
        DownloadLost = 2,      ///< Not all of the answer could be written, and the file was removed: see LossReason.
        HeadTooLong = 3,       ///< The head of the answer is one that no server sends: see IsTooLong.
        UnfitHead = 4,         ///< The head of the request would have held a control character: nothing was sent.
    };

    HTTPSocket();

    /// The port where the URL names none.
    int DefaultPort = 80;
    /// The proxy's host; empty for none.
    String HTTPProxyAddress;
    /// The proxy's port; 0 for DefaultPort.
    int HTTPProxyPort = 0;
    /// What each request sends along. Host, Content-type and Content-length are set by the request itself, and so are
    /// Authorization and Proxy-Authorization in answer to a challenge.
    Ref<InternetHeaders> requestHeaders;
    /// Whether the waiting forms serve the program's events meanwhile.
    bool Yield = false;

    /// On a challenge, in all forms. True sends the request again with the name and the password that were filled in;
    /// there is no limit to this.
    Event<bool(HTTPSocket& sender, String realm, Ref<InternetHeaders> headers, String& name, String& password)>
        OnAuthenticationRequired;
    /// Before the request is written. Post content may still be set.
    Event<void(HTTPSocket& sender)> OnConnected;
    /// The end of a download: all of it is on the disk.
    Event<void(HTTPSocket& sender, String url, int httpStatus, Ref<InternetHeaders> headers, Ref<FolderItem> file)>
        OnDownloadComplete;
    /// The request failed; see ErrorCode.
    Event<void(HTTPSocket& sender, int code)> OnError;
    /// The head of the answer is there.
    Event<void(HTTPSocket& sender, Ref<InternetHeaders> headers, int httpStatus)> OnHeadersReceived;
    /// The end of a page. Without an answer the status is 0 and the headers are Nil.
    Event<void(HTTPSocket& sender, String url, int httpStatus, Ref<InternetHeaders> headers, String content)>
        OnPageReceived;
    /// A piece of the body. The total is 0 where the answer does not name it.
    Event<void(HTTPSocket& sender, int bytesReceived, int totalBytes, String newData)> OnReceiveProgress;
    /// As OnAuthenticationRequired, for the proxy's challenge.
    Event<bool(HTTPSocket& sender, String realm, Ref<InternetHeaders> headers, String& name, String& password)>
        OnProxyAuthenticationRequired;

    void Event_Connected() override;
    void Event_DataAvailable() override;
    void Event_Error() override;
    void Event_SendComplete() override {}

    virtual void ClearRequestHeaders();
    /// The entries as "application/x-www-form-urlencoded", in the dictionary's order. Escapes more than it must (hyphen
    /// and underscore) and leaves bytes above 127 as they are.
    virtual String EncodeFormData(const Ref<Dictionary>& form) const;
    /// 0, one of the codes above, or the socket's LastErrorCode.
    int ErrorCode() const override { return mErrorCode; }

    virtual void Get(const String& url);
    virtual void Get(const String& url, const Ref<FolderItem>& file);
    /// True when there was no error.
    virtual bool Get(const String& url, const Ref<FolderItem>& file, int timeout);
    /// The page; after an error, what had arrived.
    String Get(const String& url, int timeout) override;
    /// Asks for the head alone. OnHeadersReceived is the only answer.
    virtual void GetHeaders(const String& url);
    /// Nil when no head came.
    virtual Ref<InternetHeaders> GetHeaders(const String& url, int timeout);
    /// The status of the last answer; 0 before there is one.
    virtual int HTTPStatusCode() const { return _httpStatusCode; }
    /// What the system says of a download that was lost, for people.
    String LossReason() const { return lossReason_; }
    /// The head of the last answer; Nil when it held no header.
    virtual Ref<InternetHeaders> PageHeaders() const;
    virtual void Post(const String& url);
    virtual void Post(const String& url, const Ref<FolderItem>& file);
    virtual bool Post(const String& url, const Ref<FolderItem>& file, int timeout);
    String Post(const String& url, int timeout) override;
    /// As Get, with a method of the caller's; it goes out in the case in which it is given.
    virtual void SendRequest(const String& method, const String& url);
    virtual void SendRequest(const String& method, const String& url, const Ref<FolderItem>& file);
    virtual bool SendRequest(const String& method, const String& url, const Ref<FolderItem>& file, int timeout);
    virtual String SendRequest(const String& method, const String& url, int timeout);
    /// Has the next Post send a form; Nil takes it back.
    virtual void SetFormData(const Ref<Dictionary>& form);
    /// Has the next Post send this. A request of another kind forgets it.
    void SetPostContent(const String& content, const String& contentType) override;
    /// An empty value removes the header.
    virtual void SetRequestHeader(const String& name, const String& value);

  protected:
    // What reads the texts of a stranger, open to those who try it with the worst of them.

    void _ParseHeaders(const String& text);
    bool _SetAuthentication(const String& kind);
    Ref<Dictionary> _ParseAuthenticationParams(const String& text) const;
    String _CreateAuthenticationData(const String& scheme, const String& name, const String& password,
                                     const Ref<Dictionary>& params);

  private:
    class Protection;

    Ref<InternetHeaders> GetRequestHeaders() const override { return requestHeaders; }
    void SetError(int code);
    void WaitForPage();

    void _InitializeRequestHeaders();
    void _DoConnect(String url, String action, Ref<FolderItem> file);
    void _ParseURL(const String& url);
    bool _SetDownloadFile(const Ref<FolderItem>& file);
    void _KillDownloadStream();
    void breakOff(int code);
    void loseDownload();
    bool isFit(const String& action) const;
    void _SendRequest(const String& action);
    String _EncodeURLString(const String& text) const;

    void _ResetVariables();
    void _HandleNewData();
    void _ReadHead();
    void _ProcessData(const String& data);
    void _ProcessPage();

    String _CreateNonce() const;
    String _EncodeHex(const String& data) const;

    int mErrorCode = 0;
    /// Whether a waiting form runs.
    bool synchronous = false;
    /// Whether an answer is being read: it is not read from within its own events.
    bool threadProtection = false;
    int timeoutSeconds = 0;
    /// Values of the headers that answer a challenge, sent once.
    String _authenticationKey;
    String _proxyAuthenticationKey;
    bool _connectionValid = false;
    int _currentLength = 0;
    /// Nil for a page.
    Ref<FolderItem> _downloadFile;
    Ref<BinaryStream> _downloadStream;
    String _httpAction;
    int _httpStatusCode = 0;
    String _pageBuffer;
    bool _pageComplete = false;
    /// Nil until the head is there.
    Ref<InternetHeaders> _pageHeaders;
    String _path;
    String _postContent;
    String _postContentType;
    /// The URL as the caller gave it.
    String _processingURL;
    /// The URL's host, with its colon and port.
    String _server;
    int _totalLength = 0;
    String _lastServerNonce;
    Ref<Dictionary> _Nonces;

    HeadSearch headSearch_;
    String lossReason_;
    /// Counts the connections, so that what comes back from a handler can see whether its own is still the one.
    unsigned request_ = 0;
};

}  // namespace marrowbeck
