// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/objects/Object.h"

namespace framework {

/// What all sockets have in common: their events and their errors. Events come on the main thread from the event loop,
/// or from Poll in its caller's context. Those of one connection never nest: while a handler runs, the next one waits.
/// A handler may close the socket, connect it anew or drop it.
class SocketCore : public Object {
  public:
    /// What LastErrorCode says.
    enum ErrorCode : int {
        NoError = 0,
        SocketFailed = 100,     ///< The system gave no socket.
        ConnectFailed = 101,    ///< Nobody answers at the address, or not in time.
        LostConnection = 102,   ///< The other side has closed, or the way to it broke.
        NameNotResolved = 103,  ///< The address has no meaning.
        InvalidState = 106,     ///< Nothing can be written without a connection.
        InvalidPort = 107,      ///< The port is not from 1 to 65535.
    };

    int LastErrorCode() const { return lastErrorCode_; }

    /// The port of the other side.
    int Port() const { return port_; }
    void Port(int port) { port_ = port; }

    /// Begins to connect; ends in Connected or in Error, never before this has returned. An earlier connection is
    /// closed, and what was left of its data is dropped.
    virtual void Connect() = 0;
    /// Ends the connection, or the attempt, at once. Raises no event. What has come in can still be read.
    virtual void Close() = 0;
    virtual bool IsConnected() const = 0;
    /// Delivers the events that are due, without the event loop and without waiting.
    virtual void Poll() = 0;
    /// Drops what has come in and was not read.
    virtual void Purge() = 0;

    virtual void Event_Connected() {}
    /// More data has come in.
    virtual void Event_DataAvailable() {}
    /// The attempt failed, or the connection is over because the other side closed it, in order or not. All data that
    /// came before was reported before.
    virtual void Event_Error() {}
    /// All that was written is on its way.
    virtual void Event_SendComplete() {}

  protected:
    void setLastErrorCode(int code) { lastErrorCode_ = code; }

  private:
    int lastErrorCode_ = NoError;
    int port_ = 0;
};

}  // namespace framework
