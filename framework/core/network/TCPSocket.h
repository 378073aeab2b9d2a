// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "framework/core/files/Readable.h"
#include "framework/core/files/Writeable.h"
#include "framework/core/network/SocketCore.h"
#include "framework/core/text/String.h"

namespace framework {

/// A connection by TCP to another machine, by its side that begins. What comes in waits to be read; when IncomingLimit
/// is reached, the other side is held up until some of it was read.
class TCPSocket : public SocketCore, public Readable, public Writeable {
  public:
    /// What may wait to be read, in bytes: enough to keep a fast line busy, and little enough for a program that reads
    /// nothing.
    static constexpr std::size_t IncomingLimit = std::size_t{1024} * 1024;

    TCPSocket();
    ~TCPSocket() override;

    /// The other side: a name, or an IPv4 or IPv6 address. One that holds a NUL is not resolved.
    const String& Address() const { return address_; }
    void Address(const String& address) { address_ = address; }

    void Connect() override;
    void Close() override;
    /// The same as Close.
    void Disconnect() { Close(); }
    bool IsConnected() const override;
    void Poll() override;
    void Purge() override;

    /// Takes at most `count` bytes of what has come in.
    String Read(int count, TextEncoding encoding = Encodings::Undefined) override;
    /// Takes all that has come in.
    String ReadAll(TextEncoding encoding = Encodings::Undefined);
    /// What has come in, which stays to be read.
    String Lookahead(TextEncoding encoding = Encodings::Undefined) const;
    /// The same bytes without a copy. Good until the next event or the next call that reads.
    std::string_view LookaheadBytes() const;
    /// Sends the bytes, of any number, as fast as the other side takes them; while connecting, once that is done.
    void Write(const String& bytes) override;

  private:
    class Connection;

    String address_;
    std::unique_ptr<Connection> connection_;
};

}  // namespace framework
