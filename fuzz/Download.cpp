// Responses of a web server. The socket of this target is the one below, which gives the input in
// pieces; the linker takes it in place of the host's.

#include <array>

#include "fuzz/KvFuzz.h"
#include "platform/KvPlatformSocket.h"
#include "system/KvDownload.h"

namespace {

/// What the server sends: a byte for the size of each piece, 0 for the end of the connection.
CKvFuzzInput s_response(nullptr, 0);
EKvReceiveStatus s_end = EKvReceiveStatus::Ended;
std::string s_received;

}  // namespace

EKvNetworkStatus KvPlatformStartNetwork()
{
    return EKvNetworkStatus::Ready;
}

void KvPlatformStopNetwork() {}

bool KvPlatformLookUpHost(const char*, std::uint32_t& address)
{
    address = 0;
    return true;
}

void KvPlatformSetSocketTimeout(unsigned int) {}

void KvPlatformRedirectConnections(std::uint16_t) {}

CKvPlatformSocket::~CKvPlatformSocket()
{
    m_handle = -1;
}

bool CKvPlatformSocket::Open()
{
    m_handle = 0;
    return true;
}

bool CKvPlatformSocket::Connect(std::uint32_t, std::uint16_t)
{
    return m_handle == 0;
}

bool CKvPlatformSocket::Send(const void*, std::size_t)
{
    return m_handle == 0;
}

EKvReceiveStatus CKvPlatformSocket::Receive(void* buffer, std::size_t sizeBytes,
                                            std::size_t& receivedBytes)
{
    const std::string_view piece =
        s_response.Take(std::min<std::size_t>(s_response.TakeByte(), sizeBytes));
    receivedBytes = piece.copy(static_cast<char*>(buffer), piece.size());
    s_received += piece;
    return piece.empty() ? s_end : EKvReceiveStatus::Received;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::array kEnds = {EKvReceiveStatus::Ended, EKvReceiveStatus::Failed,
                                  EKvReceiveStatus::TimedOut};
    s_response = CKvFuzzInput(data, size);
    s_received.clear();
    s_end = kEnds[s_response.TakeByte() % kEnds.size()];
    std::string buffer(s_response.TakeByte(), '#');
    const std::string untouched = buffer;
    unsigned int bodySize = 77;
    const bool succeeds = KvDownloadFile("host", "/path", buffer.data(),
                                         static_cast<unsigned int>(buffer.size()), bodySize);

    const std::size_t header = s_received.find("\r\n\r\n");
    const bool hasHeader = header != std::string::npos;
    const std::string body = hasHeader ? s_received.substr(header + 4) : "";
    const bool isNotFound = s_received.size() >= 12 && s_received.compare(9, 3, "404") == 0;
    const bool fits = body.size() <= buffer.size();
    const bool isWhole = s_end != EKvReceiveStatus::TimedOut;
    KvRequire(succeeds == (hasHeader && !isNotFound && fits && isWhole),
              "a download succeeds with a header, a status but 404, and a body that fits");
    if (succeeds)
        KvRequire(bodySize == body.size() && buffer.compare(0, body.size(), body) == 0,
                  "the body is what follows the header");
    else
        KvRequire(bodySize == 77 && buffer == untouched, "a failure leaves the buffer alone");
    return 0;
}
