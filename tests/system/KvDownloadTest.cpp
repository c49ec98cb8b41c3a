#include "system/KvDownload.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "platform/KvPlatformSocket.h"

namespace {

constexpr unsigned int kCapacity = 10;
const std::string kPath = "/a%20%s%n\xC3\x84.bin";
const std::string kFailed = "<failed>";
const std::string kFound =
    "\nWinsock 2.2 initialized via wsa2_32.dll\nHost lookup succeeded for 127.0.0.1";

/// What a server does when all pieces of its answer are sent. Stall says nothing more and Repeat
/// sends the last one again, both until the client leaves. HangUp does not even read the request,
/// and Absent does not listen.
enum EServerEnd
{
    Close,
    Reset,
    Stall,
    Repeat,
    HangUp,
    Absent
};

/// Takes one client and gives its request.
std::string Serve(int listener, const std::vector<std::string>& pieces, EServerEnd end)
{
    const int client = accept(listener, nullptr, nullptr);
    if (end == HangUp)
        shutdown(client, SHUT_WR);  // what the client still sends is then a broken pipe
    std::string request;
    std::string piece(65536, '\0');
    for (ssize_t size = 1; size > 0 && end != HangUp && !request.ends_with("\r\n\r\n");) {
        size = recv(client, piece.data(), piece.size(), 0);
        request += piece.substr(0, size > 0 ? static_cast<std::size_t>(size) : 0);
    }
    for (const std::string& answer : pieces) {
        while (send(client, answer.data(), answer.size(), MSG_NOSIGNAL) > 0 && end == Repeat &&
               &answer == &pieces.back()) {
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));  // for the client to take it
    }
    const linger atOnce = {1, 0};
    if (end == Stall)
        recv(client, piece.data(), piece.size(), 0);
    if (end == Reset)
        setsockopt(client, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    close(client);
    return request;
}

struct CRun
{
    std::string body;  // kFailed where the result is false
    std::string printed;
    std::string request;
};

CRun Download(const std::vector<std::string>& pieces, EServerEnd end,
              const std::string& path = kPath, const char* host = "127.0.0.1")
{
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = {AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    socklen_t length = sizeof address;
    EXPECT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), length), 0);
    EXPECT_EQ(getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length), 0);
    EXPECT_TRUE(end == Absent || listen(listener, 1) == 0);
    KvPlatformRedirectConnections(ntohs(address.sin_port));
    KvPlatformSetSocketTimeout(end == Stall ? 100 : 0);

    auto request = std::async(std::launch::async, Serve, listener, pieces, end);
    std::vector<char> buffer(kCapacity, '#');  // on the heap, where overruns are seen
    unsigned int size = 77;
    testing::internal::CaptureStdout();
    const bool received = KvDownloadFile(host, path.c_str(), buffer.data(), kCapacity, size);
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(received || (size == 77 && buffer == std::vector<char>(kCapacity, '#')));
    shutdown(listener, SHUT_RDWR);  // ends the waiting for a client that never came
    CRun run = {received ? std::string(buffer.data(), size) : kFailed, printed, request.get()};
    close(listener);
    return run;
}

TEST(KvDownloadTest, EveryAnswerHasItsResultAndItsPrintedText)
{
    const std::string ok = "HTTP/1.0 200 OK\r\nA: b\r\n\r\n";
    const std::string mib(1 << 20, 'h');
    const struct
    {
        const char* name;
        std::vector<std::string> pieces;
        EServerEnd end;
        std::string body;
        std::string shownHeader;  // empty when none is shown
    } rows[] = {
        {"many pieces", {ok, "0", "12", "3456", "78", "9"}, Close, "0123456789", ok},
        {"a byte too long", {ok + "0123456789a"}, Close, kFailed, ok},
        {"not found", {"HTTP/1.0 404 Not Found\r\n\r\nx"}, Close, kFailed, ""},
        {"server error", {"HTTP/1.0 500 No\r\n\r\nx"}, Close, "x", "HTTP/1.0 500 No\r\n\r\n"},
        {"lying", {"H\r\ncontent-length: 9\r\n\r\n"}, Close, "", "H\r\ncontent-length: 9\r\n\r\n"},
        {"NUL bytes", {ok + std::string("a\0b\0", 4)}, Close, std::string("a\0b\0", 4), ok},
        {"controls", {"H\t\x1B[2J\x7F\x9B\x07\r\n\r\n\x1B"}, Close, "\x1B", "H\t?[2J???\r\n\r\n"},
        {"reset", {ok + "01234"}, Reset, "01234", ok},
        {"silence", {}, Stall, kFailed, ""},
        {"silence in the body", {ok + "01234"}, Stall, kFailed, ""},
        {"endless header", {mib}, Repeat, kFailed, ""},
        {"endless body", {ok + "0", mib}, Repeat, kFailed, ok},
    };
    const std::string request = "GET " + kPath + " HTTP/1.0\r\nHost: 127.0.0.1\r\n\r\n";
    const std::string sent =
        kFound + "\nNow connected to 127.0.0.1 via port 80" +
        "\nHTTP request constructed successfully:\n" + request +
        "Successfully sent HTTP request to the server\nWaiting for download to complete";
    for (const auto& row : rows) {
        const CRun run = Download(row.pieces, row.end);
        EXPECT_EQ(run.body, row.body) << row.name;
        EXPECT_EQ(run.request, request) << row.name;
        std::string came = "\n\nFile starts at offset " + std::to_string(row.shownHeader.size());
        came.append("\n\nInitial response from server:\n").append(row.shownHeader);
        EXPECT_EQ(run.printed, sent + (row.shownHeader.empty() ? "" : came)) << row.name;
    }
}

TEST(KvDownloadTest, AnAnswerMayBreakOffOrBeSplitAnywhere)
{
    const std::string answer = "HTTP/1.0 200 OK\r\n\r\n0123456789";
    for (std::size_t at = 0; at <= answer.size(); ++at) {
        const std::string begun = answer.substr(0, at);
        EXPECT_EQ(Download({begun}, Close).body, at < 19 ? kFailed : begun.substr(19)) << at;
        EXPECT_EQ(Download({begun, answer.substr(at)}, Close).body, "0123456789") << at;
    }
}

TEST(KvDownloadTest, WithoutAServerOrWithLinesOfTheCallerItFails)
{
    const std::string path(16 << 20, 'p');  // more than the system buffers
    EXPECT_GT(Download({"\r\n\r\n"}, Close, path).request.size(), path.size());
    EXPECT_TRUE(Download({}, HangUp, path).printed.ends_with("\r\n\r\nsend() failed"));
    EXPECT_EQ(Download({}, Absent).printed, kFound + "\nconnect() failed");
    const std::string unknown = Download({}, Close, "/", "no-such-host.invalid").printed;
    EXPECT_EQ(unknown, "\nWinsock 2.2 initialized via wsa2_32.dll\ngethostbyname() failed");
    EXPECT_EQ(Download({}, Close, "/", "127.0.0.1\r\nX: y").printed, "");
    EXPECT_EQ(Download({}, Close, "/ HTTP/1.0\nX: y").printed, "");
}

}  // namespace
