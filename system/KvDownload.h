// Fetches one file from a web server, with a plain HTTP/1.0 GET (RFC 1945) on port 80 over IPv4.

#pragma once

/// Gets \a path, sent as it is, from \a host and copies the body into \a buffer, without a
/// terminator. Blocks until the server closes the connection. Every step prints a line on standard
/// output, the header that came included, whose ISO 8859-1 controls but line ends and tabs show
/// as '?'. The texts are fixed; they name Winsock on every system.
///
/// A body counts as whole when the connection ends, even if it breaks: the header's Content-Length
/// is compared for the developer trace alone. Every status but 404 is a success; the status is the
/// three characters from the tenth on, be it a status line or not.
///
/// Units:  \a capacity and \a size in bytes.
/// Errors: false when the host is unknown or does not answer, when it falls silent for longer than
///         KvPlatformSetSocketTimeout() allows, for status 404, without the blank line that ends a
///         header (CR LF CR LF) within 1 MiB, for a body above \a capacity and when memory runs
///         out. False too, before anything is printed or sent, when \a host or \a path hold a
///         control byte: it would add lines to the request. \a buffer and \a size are then as they
///         were.
/// Cost:   room for \a capacity, 1 MiB and 8 KiB; reading stops where the result is false anyway.
[[nodiscard]] bool KvDownloadFile(const char* host, const char* path, char* buffer,
                                  unsigned int capacity, unsigned int& size);
