// The example bytes of a format's document, so that a test holds what the document shows.

#pragma once

#include <fstream>
#include <sstream>
#include <string>

/// The bytes of a document's annotated example, all its table rows "| offset | `hex` | ...". Empty
/// when an offset is not the number of the bytes before it.
inline std::string KvDocumentedBytes(const std::string& path)
{
    std::ifstream document(path);
    std::string bytes;
    for (std::string line; std::getline(document, line);) {
        std::istringstream cells(line);
        std::size_t offset = 0;
        char bars[2] = {};
        char quote = 0;
        if (!(cells >> bars[0] >> offset >> bars[1] >> quote) || quote != '`')
            continue;
        if (offset != bytes.size())
            return "";
        for (int byte = 0; cells >> std::hex >> byte;)
            bytes += static_cast<char>(byte);
    }
    return bytes;
}
