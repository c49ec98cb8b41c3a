#include "system/KvDownload.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "core/KvNumberText.h"
#include "core/KvOutOfMemory.h"
#include "core/KvText.h"
#include "core/KvTrace.h"
#include "platform/KvPlatformSocket.h"

namespace {

constexpr std::uint16_t kHttpPort = 80;

/// How much may come before the blank line that ends the header.
constexpr std::size_t kLargestHeader = std::size_t{1} << 20;

/// The most that is received at a time.
constexpr std::size_t kPieceSize = 4095;

constexpr std::string_view kBlankLine = "\r\n\r\n";
constexpr std::size_t kStatusOffset = 9;
constexpr std::string_view kNotFound = "404";

/// What a server sent. The header includes its blank line; without one there is no header yet.
struct CResponse
{
    std::string bytes;
    std::size_t headerSize = 0;

    std::string_view Header() const { return std::string_view(bytes).substr(0, headerSize); }
    std::string_view Body() const { return std::string_view(bytes).substr(headerSize); }

    /// Looks where the code of a status line stands, if so much came at all.
    bool IsNotFound() const
    {
        return bytes.size() >= kStatusOffset + kNotFound.size() &&
               bytes.compare(kStatusOffset, kNotFound.size(), kNotFound) == 0;
    }
};

/// Shows a step at once, since the next one may wait.
void Print(std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

/// False for what would end a line of the request, or drive the terminal that shows it.
bool IsFreeOfControls(std::string_view text)
{
    return std::none_of(text.begin(), text.end(), [](char unit) {
        const auto byte = static_cast<unsigned char>(unit);
        return byte < 0x20 || byte == 0x7F;
    });
}

/// What shows for a byte of a header, whose texts are ISO 8859-1 (RFC 1945, 2.2): its controls
/// other than line ends and tabs are not for the terminal.
char ShownHeaderByte(char unit)
{
    const auto byte = static_cast<unsigned char>(unit);
    const bool isControl = byte < 0x20 || (byte >= 0x7F && byte < 0xA0);
    return isControl && unit != '\r' && unit != '\n' && unit != '\t' ? '?' : unit;
}

bool StartNetwork()
{
    switch (KvPlatformStartNetwork()) {
        case EKvNetworkStatus::Failed:
            Print("\nError initializing Winsock 2.2");
            return false;
        case EKvNetworkStatus::OtherVersion:
            Print("\nWinsock 2.2 not available");
            KvPlatformStopNetwork();
            return false;
        case EKvNetworkStatus::Ready:
            break;
    }
    Print("\nWinsock 2.2 initialized via wsa2_32.dll");
    return true;
}

bool Connect(CKvPlatformSocket& socket, const std::string& host)
{
    std::uint32_t address = 0;
    if (!KvPlatformLookUpHost(host.c_str(), address)) {
        Print("\ngethostbyname() failed");
        return false;
    }
    Print("\nHost lookup succeeded for " + host);
    if (!socket.Open()) {
        Print("\nsocket() failed");
        return false;
    }
    if (!socket.Connect(address, kHttpPort)) {
        Print("\nconnect() failed");
        return false;
    }
    Print("\nNow connected to " + host + " via port 80");
    return true;
}

bool SendRequest(CKvPlatformSocket& socket, const std::string& host, const std::string& path)
{
    std::string request = "GET ";
    request.append(path).append(" HTTP/1.0\r\nHost: ").append(host).append(kBlankLine);
    Print("\nHTTP request constructed successfully:\n");
    Print(request);
    if (!socket.Send(request.data(), request.size())) {
        Print("send() failed");
        return false;
    }
    Print("Successfully sent HTTP request to the server");
    Print("\nWaiting for download to complete");
    return true;
}

void Append(CResponse& response, std::string_view piece)
{
    const std::size_t before = response.bytes.size();
    response.bytes.append(piece);
    if (response.headerSize != 0)
        return;
    const std::size_t begun = std::min(before, kBlankLine.size() - 1);  // by the bytes before
    const std::size_t found = response.bytes.find(kBlankLine, before - begun);
    if (found != std::string::npos)
        response.headerSize = found + kBlankLine.size();
}

/// Receives until the connection ends, or until no more bytes could make the download succeed.
///
/// Errors: false when the server fell silent or there is no room. A connection that breaks ends the
///         response like one that is closed.
bool ReceiveResponse(CKvPlatformSocket& socket, unsigned int capacity, CResponse& response)
{
    // The only room that it will ever take: growing would need the old and the new one together.
    const std::uint64_t room = std::uint64_t{capacity} + kLargestHeader + 2 * kPieceSize;
    if (room > response.bytes.max_size())
        return false;
    response.bytes.reserve(static_cast<std::size_t>(room));

    std::array<char, kPieceSize> piece = {};
    for (;;) {
        std::size_t received = 0;
        switch (socket.Receive(piece.data(), piece.size(), received)) {
            case EKvReceiveStatus::Received:
                break;
            case EKvReceiveStatus::Failed:
                KvTrace("\n\nrecv() failed");
                return true;
            case EKvReceiveStatus::Ended:
                return true;
            case EKvReceiveStatus::TimedOut:
                KvTrace("\n\nrecv() timed out");
                return false;
        }
        Append(response, {piece.data(), received});
        const bool isTooLong = response.headerSize == 0 ? response.bytes.size() >= kLargestHeader
                                                        : response.Body().size() > capacity;
        if (isTooLong)
            return true;
    }
}

void PrintHeader(std::string_view header)
{
    Print("\n\nFile starts at offset " + std::to_string(header.size()) + "\n");
    Print("\nInitial response from server:\n");
    for (const char unit : header)
        std::putc(ShownHeaderByte(unit), stdout);
    std::fflush(stdout);
}

/// Tells whoever works on a program that a connection broke, or that a server counts wrongly.
void TraceLengthMismatch(const CResponse& response)
{
    constexpr std::string_view kField = "\nContent-Length:";
    const std::string_view header = response.Header();
    for (std::size_t i = 0; i + kField.size() < header.size(); ++i) {
        if (kvStrncmpNoCase(header.data() + i, kField.data(), unsigned{kField.size()}) != 0)
            continue;
        const unsigned int announced = kvStringToU32(header.data() + i + kField.size());
        if (announced != response.Body().size())
            KvTrace("\n\n%zu bytes of %u came", response.Body().size(), announced);
        return;
    }
}

bool Download(const std::string& host, const std::string& path, unsigned int capacity,
              CResponse& response)
{
    CKvPlatformSocket socket;
    if (!Connect(socket, host) || !SendRequest(socket, host, path) ||
        !ReceiveResponse(socket, capacity, response))
        return false;
    if (response.headerSize == 0 || response.IsNotFound())
        return false;
    PrintHeader(response.Header());
    TraceLengthMismatch(response);
    return response.Body().size() <= capacity;
}

}  // namespace

bool KvDownloadFile(const char* host, const char* path, char* buffer, unsigned int capacity,
                    unsigned int& size)
{
    if (!IsFreeOfControls(host) || !IsFreeOfControls(path) || !StartNetwork())
        return false;
    CResponse response;
    const bool received =
        KvFalseWhenOutOfMemory([&] { return Download(host, path, capacity, response); });
    KvPlatformStopNetwork();
    if (!received)
        return false;
    size = static_cast<unsigned int>(response.Body().copy(buffer, capacity));
    return true;
}
