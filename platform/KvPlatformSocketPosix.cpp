#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstring>

#include "platform/KvPlatformSocket.h"

namespace {

using Milliseconds = std::chrono::milliseconds;

constexpr Milliseconds kDefaultTimeout(30'000);

Milliseconds s_timeout = kDefaultTimeout;
std::uint16_t s_redirectedPort = 0;

/// Waits until the socket is ready for \a events or in an error state. False when the time is up.
bool WaitFor(int handle, short events)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + s_timeout;
    for (;;) {
        const auto left = std::chrono::ceil<Milliseconds>(end - Clock::now()).count();
        pollfd entry = {handle, events, 0};
        const int ready =
            poll(&entry, 1, static_cast<int>(std::clamp<long long>(left, 0, INT_MAX)));
        if (ready >= 0 || errno != EINTR)
            return ready > 0;
    }
}

bool WouldBlock(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK;
}

}  // namespace

EKvNetworkStatus KvPlatformStartNetwork()
{
    return EKvNetworkStatus::Ready;
}

void KvPlatformStopNetwork() {}

bool KvPlatformLookUpHost(const char* host, std::uint32_t& address)
{
    addrinfo wanted = {};
    wanted.ai_family = AF_INET;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(host, nullptr, &wanted, &found) != 0)
        return false;
    sockaddr_in first = {};
    std::memcpy(&first, found->ai_addr, sizeof first);
    freeaddrinfo(found);
    address = ntohl(first.sin_addr.s_addr);
    return true;
}

void KvPlatformSetSocketTimeout(unsigned int timeoutMs)
{
    s_timeout = timeoutMs != 0 ? Milliseconds(timeoutMs) : kDefaultTimeout;
}

void KvPlatformRedirectConnections(std::uint16_t port)
{
    s_redirectedPort = port;
}

CKvPlatformSocket::~CKvPlatformSocket()
{
    if (m_handle >= 0)
        close(static_cast<int>(m_handle));
}

bool CKvPlatformSocket::Open()
{
    // Never blocking: every wait goes through WaitFor() and ends.
    m_handle = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, IPPROTO_TCP);
    return m_handle >= 0;
}

bool CKvPlatformSocket::Connect(std::uint32_t address, std::uint16_t port)
{
    const int handle = static_cast<int>(m_handle);
    sockaddr_in server = {};
    server.sin_family = AF_INET;
    server.sin_addr.s_addr = htonl(address);
    server.sin_port = htons(s_redirectedPort != 0 ? s_redirectedPort : port);
    if (connect(handle, reinterpret_cast<const sockaddr*>(&server), sizeof server) == 0)
        return true;
    if (errno != EINPROGRESS && errno != EINTR)  // in both cases the system goes on connecting
        return false;
    int error = 0;
    socklen_t length = sizeof error;
    return WaitFor(handle, POLLOUT) &&
           getsockopt(handle, SOL_SOCKET, SO_ERROR, &error, &length) == 0 && error == 0;
}

bool CKvPlatformSocket::Send(const void* data, std::size_t sizeBytes)
{
    const int handle = static_cast<int>(m_handle);
    const char* next = static_cast<const char*>(data);
    while (sizeBytes > 0) {
        const ssize_t sent = send(handle, next, sizeBytes, MSG_NOSIGNAL);
        if (sent >= 0) {
            next += sent;
            sizeBytes -= static_cast<std::size_t>(sent);
        } else if (WouldBlock(errno)) {
            if (!WaitFor(handle, POLLOUT))
                return false;
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

EKvReceiveStatus CKvPlatformSocket::Receive(void* buffer, std::size_t sizeBytes,
                                            std::size_t& receivedBytes)
{
    const int handle = static_cast<int>(m_handle);
    receivedBytes = 0;
    for (;;) {
        const ssize_t received = recv(handle, buffer, sizeBytes, 0);
        if (received > 0) {
            receivedBytes = static_cast<std::size_t>(received);
            return EKvReceiveStatus::Received;
        }
        if (received == 0)
            return EKvReceiveStatus::Ended;
        if (WouldBlock(errno)) {
            if (!WaitFor(handle, POLLIN))
                return EKvReceiveStatus::TimedOut;
        } else if (errno != EINTR) {
            return EKvReceiveStatus::Failed;
        }
    }
}
