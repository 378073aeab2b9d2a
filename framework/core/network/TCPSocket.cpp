// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/network/TCPSocket.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/ByteQueue.h"
#include "base/Descriptor.h"
#include "framework/core/network/HostLookup.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/threads/Dispatch.h"

namespace framework {

namespace {

/// The most that one event announces, so that a fast line does not hold up the window.
constexpr std::size_t kPiece = std::size_t{64} * 1024;
/// How long an address may leave us without an answer. The system itself would wait for two minutes.
constexpr std::chrono::seconds kConnectLimit{30};

bool mustWait(int error) {
    return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

}  // namespace

/// The life of a socket between Connect and Close. The toolkit only tells when to look; what there is to see is found
/// by Serve, so that the event loop and Poll are the same to it.
class TCPSocket::Connection {
  public:
    explicit Connection(TCPSocket& owner) : owner_(owner) {
        timer_.setSingleShot(true);
        timer_.setTimerType(Qt::PreciseTimer);  // the others may be early, and then the limit would not be reached
        QObject::connect(&timer_, &QTimer::timeout, [this] { Serve(); });
    }

    void Open(const String& address, int port);
    void Close();
    bool IsOpen() const { return phase_ == Phase::Connected; }
    void Serve();
    void Write(const String& bytes);
    String Take(std::size_t count, TextEncoding encoding);
    const base::ByteQueue& Incoming() const { return incoming_; }
    void Purge();

  private:
    enum class Phase { Closed, LookingUp, Connecting, Connected };
    using Clock = std::chrono::steady_clock;

    void serveLookup();
    void serveAttempt();
    void serveConnection();
    void tryNextAddress();
    bool sendSome();
    void receiveSome();
    void fail(int code);
    bool raise(void (SocketCore::*event)());
    void watch();
    void watch(std::unique_ptr<QSocketNotifier>& notifier, QSocketNotifier::Type type, int descriptor);

    TCPSocket& owner_;
    Phase phase_ = Phase::Closed;
    /// Counts the connections, so that what comes back from a handler can see whether its own is still there.
    unsigned session_ = 0;
    bool handling_ = false;
    int failure_ = NoError;
    std::optional<HostLookup> lookup_;
    std::vector<SocketAddress> addresses_;
    base::Descriptor descriptor_;
    Clock::time_point attemptEnd_;
    base::ByteQueue incoming_;
    base::ByteQueue outgoing_;
    QTimer timer_;
    std::unique_ptr<QSocketNotifier> reader_;
    std::unique_ptr<QSocketNotifier> writer_;
};

void TCPSocket::Connection::Open(const String& address, int port) {
    Close();
    incoming_.Clear();
    const bool validPort = port > 0 && port <= 65535;
    failure_ = validPort ? NameNotResolved : InvalidPort;
    lookup_.emplace(validPort ? address.ToStd() : std::string(), port);
    phase_ = Phase::LookingUp;
    if (lookup_->SignalDescriptor() < 0) {
        failure_ = SocketFailed;
        timer_.start(0);
    }
    watch();
}

void TCPSocket::Connection::Close() {
    ++session_;
    handling_ = false;
    phase_ = Phase::Closed;
    timer_.stop();
    reader_.reset();
    writer_.reset();
    lookup_.reset();
    addresses_.clear();
    outgoing_.Clear();
    descriptor_.Close();
}

void TCPSocket::Connection::Serve() {
    if (handling_) return;
    const Ref<TCPSocket> keep(&owner_);  // a handler may drop the last reference but this
    if (phase_ == Phase::LookingUp) serveLookup();
    if (phase_ == Phase::Connecting) serveAttempt();
    if (phase_ == Phase::Connected) serveConnection();
    watch();
}

void TCPSocket::Connection::serveLookup() {
    if (!lookup_->IsOver()) return;
    addresses_ = lookup_->Addresses();
    reader_.reset();
    lookup_.reset();
    std::reverse(addresses_.begin(), addresses_.end());
    tryNextAddress();
}

/// Turns to the next address, which is the last of those left. Without one, the connection has failed.
void TCPSocket::Connection::tryNextAddress() {
    writer_.reset();
    while (!addresses_.empty()) {
        const SocketAddress address = addresses_.back();
        addresses_.pop_back();
        descriptor_ =
            base::Descriptor(::socket(address.bytes.ss_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        failure_ = descriptor_.IsOpen() ? ConnectFailed : SocketFailed;
        if (!descriptor_.IsOpen()) continue;
        const int result =
            ::connect(descriptor_.Number(), reinterpret_cast<const sockaddr*>(&address.bytes), address.size);
        if (result == 0 || errno == EINPROGRESS || errno == EINTR) {
            phase_ = Phase::Connecting;
            attemptEnd_ = Clock::now() + kConnectLimit;
            timer_.start(kConnectLimit);
            return;
        }
    }
    fail(failure_);
}

void TCPSocket::Connection::serveAttempt() {
    pollfd state{descriptor_.Number(), POLLOUT, 0};
    if (::poll(&state, 1, 0) != 1) {
        if (Clock::now() >= attemptEnd_) tryNextAddress();
        return;
    }
    int error = 0;
    socklen_t size = sizeof error;
    ::getsockopt(descriptor_.Number(), SOL_SOCKET, SO_ERROR, &error, &size);
    if (error != 0) {
        tryNextAddress();
        return;
    }
    timer_.stop();
    addresses_.clear();
    phase_ = Phase::Connected;
    raise(&SocketCore::Event_Connected);
}

void TCPSocket::Connection::serveConnection() {
    if (!outgoing_.IsEmpty() && sendSome() && !raise(&SocketCore::Event_SendComplete)) return;
    if (incoming_.Size() < IncomingLimit) receiveSome();
}

/// Sends what the line takes now; True when that was the last of it.
bool TCPSocket::Connection::sendSome() {
    while (!outgoing_.IsEmpty()) {
        const std::string_view bytes = outgoing_.Bytes();
        const ssize_t sent = ::send(descriptor_.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0) {
            // Whether the line is broken shows when the last data of the other side has been read.
            if (!mustWait(errno)) outgoing_.Clear();
            return false;
        }
        outgoing_.Drop(static_cast<std::size_t>(sent));
    }
    return true;
}

void TCPSocket::Connection::receiveSome() {
    std::array<char, kPiece> piece;
    const std::size_t room = std::min(piece.size(), IncomingLimit - incoming_.Size());
    const ssize_t count = ::recv(descriptor_.Number(), piece.data(), room, 0);
    if (count > 0) {
        incoming_.Append({piece.data(), static_cast<std::size_t>(count)});
        raise(&SocketCore::Event_DataAvailable);
    } else if (count == 0 || !mustWait(errno)) {
        fail(LostConnection);
    }
}

void TCPSocket::Connection::fail(int code) {
    Close();
    owner_.setLastErrorCode(code);
    raise(&SocketCore::Event_Error);
}

/// Runs the handler of an event through the door. False when the handler has closed this connection.
bool TCPSocket::Connection::raise(void (SocketCore::*event)()) {
    const unsigned session = session_;
    handling_ = true;
    watch();
    Dispatch([this, event] { (owner_.*event)(); });
    if (session != session_) return false;
    handling_ = false;
    return true;
}

/// Has the toolkit look at what this waits for now, and at nothing else.
void TCPSocket::Connection::watch() {
    int reading = -1;
    int writing = -1;
    if (phase_ == Phase::LookingUp) reading = lookup_->SignalDescriptor();
    if (phase_ == Phase::Connecting) writing = descriptor_.Number();
    if (phase_ == Phase::Connected && incoming_.Size() < IncomingLimit) reading = descriptor_.Number();
    if (phase_ == Phase::Connected && !outgoing_.IsEmpty()) writing = descriptor_.Number();
    watch(reader_, QSocketNotifier::Read, handling_ ? -1 : reading);
    watch(writer_, QSocketNotifier::Write, handling_ ? -1 : writing);
}

void TCPSocket::Connection::watch(std::unique_ptr<QSocketNotifier>& notifier, QSocketNotifier::Type type,
                                  int descriptor) {
    if (!notifier && descriptor >= 0) {
        notifier = std::make_unique<QSocketNotifier>(descriptor, type);
        QObject::connect(notifier.get(), &QSocketNotifier::activated, [this] { Serve(); });
    }
    if (notifier) notifier->setEnabled(descriptor >= 0);
}

void TCPSocket::Connection::Write(const String& bytes) {
    if (phase_ == Phase::Closed) {
        owner_.setLastErrorCode(InvalidState);
        return;
    }
    outgoing_.Append(bytes.Bytes());
    watch();
}

String TCPSocket::Connection::Take(std::size_t count, TextEncoding encoding) {
    String taken(incoming_.Bytes().substr(0, count), encoding);
    incoming_.Drop(count);
    watch();
    return taken;
}

void TCPSocket::Connection::Purge() {
    incoming_.Clear();
    watch();
}

TCPSocket::TCPSocket() : connection_(std::make_unique<Connection>(*this)) {}

TCPSocket::~TCPSocket() = default;

void TCPSocket::Connect() {
    setLastErrorCode(NoError);
    connection_->Open(address_, Port());
}

void TCPSocket::Close() {
    connection_->Close();
}

bool TCPSocket::IsConnected() const {
    return connection_->IsOpen();
}

void TCPSocket::Poll() {
    connection_->Serve();
}

void TCPSocket::Purge() {
    connection_->Purge();
}

String TCPSocket::Read(int count, TextEncoding encoding) {
    return connection_->Take(static_cast<std::size_t>(std::max(count, 0)), encoding);
}

String TCPSocket::ReadAll(TextEncoding encoding) {
    return connection_->Take(connection_->Incoming().Size(), encoding);
}

String TCPSocket::Lookahead(TextEncoding encoding) const {
    return String(connection_->Incoming().Bytes(), encoding);
}

std::string_view TCPSocket::LookaheadBytes() const {
    return connection_->Incoming().Bytes();
}

void TCPSocket::Write(const String& bytes) {
    connection_->Write(bytes);
}

}  // namespace framework
