// The operating system's connections: one TCP socket over IPv4 that asks a server, with every wait
// bounded. The rest of the system stands in platform/KvPlatform.h, whose rules hold here too; each
// system has one source file.

#pragma once

#include <cstddef>
#include <cstdint>

enum class EKvNetworkStatus
{
    Ready,
    /// The system's network library does not start.
    Failed,
    /// It started, but is not of the version that was asked for: it must be stopped.
    OtherVersion
};

/// Makes the functions below usable. Systems that need no start are always ready.
///
/// Ownership: unless it failed, each start is followed by one KvPlatformStopNetwork().
[[nodiscard]] EKvNetworkStatus KvPlatformStartNetwork();
void KvPlatformStopNetwork();

/// Gives the first IPv4 address of a host: its name, or four numbers with points between.
///
/// Units:  \a address as a number, 127.0.0.1 is 0x7F000001.
/// Errors: false when the host has no such address or nobody can tell.
/// Cost:   as long as the system's own look-up takes; the time-out does not bound it.
[[nodiscard]] bool KvPlatformLookUpHost(const char* host, std::uint32_t& address);

/// Sets how long a socket waits for the other side before it gives up: for a connection, for room
/// to send, for bytes to receive. It counts anew whenever something moved. To be set while no
/// socket is in use.
///
/// Units: milliseconds; 0 brings the default of 30 seconds back.
void KvPlatformSetSocketTimeout(unsigned int timeoutMs);

/// Sends connections to this port, whichever they ask for, so that a test can stand in for a server
/// whose port is fixed. 0 ends it.
void KvPlatformRedirectConnections(std::uint16_t port);

enum class EKvReceiveStatus
{
    Received,
    /// The other side has sent all.
    Ended,
    /// The connection is lost.
    Failed,
    TimedOut
};

/// One connection; closed by its destructor. No call is ended by a signal, and none raises one.
class CKvPlatformSocket
{
public:
    CKvPlatformSocket() = default;
    CKvPlatformSocket(const CKvPlatformSocket&) = delete;
    CKvPlatformSocket& operator=(const CKvPlatformSocket&) = delete;
    ~CKvPlatformSocket();

    /// To be called once, before all others.
    ///
    /// Errors: false when the system gives no socket; nothing else may then be called.
    [[nodiscard]] bool Open();

    /// Errors: false when nobody listens there or nobody answered in time.
    [[nodiscard]] bool Connect(std::uint32_t address, std::uint16_t port);

    /// Sends all bytes, in as many pieces as it takes.
    ///
    /// Errors: false when the connection is lost or the other side takes nothing more in time.
    [[nodiscard]] bool Send(const void* data, std::size_t sizeBytes);

    /// Waits for bytes and gives those that are there, at most \a sizeBytes; \a receivedBytes is 0
    /// unless some were received.
    [[nodiscard]] EKvReceiveStatus Receive(void* buffer, std::size_t sizeBytes,
                                           std::size_t& receivedBytes);

private:
    /// What the system calls the socket; no system numbers one -1.
    std::intptr_t m_handle = -1;
};
