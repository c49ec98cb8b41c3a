// The example bytes of a format's document, so that a test holds what the document shows.

#pragma once

#include <fstream>
#include <regex>
#include <sstream>
#include <string>

/// The bytes of a document's annotated example, all its table rows "| offset | `hex` | ...". Empty
/// when an offset is not the number of the bytes before it.
inline std::string KvDocumentedBytes(const std::string& path)
{
    const std::regex row(R"(\| (\d+) \| `([0-9A-F ]+)` \|.*)");
    std::ifstream document(path);
    std::string bytes;
    std::smatch cells;
    for (std::string line; std::getline(document, line);) {
        if (!std::regex_match(line, cells, row))
            continue;
        if (std::stoul(cells[1]) != bytes.size())
            return "";
        std::istringstream hex(cells[2]);
        for (int byte = 0; hex >> std::hex >> byte;)
            bytes += static_cast<char>(byte);
    }
    return bytes;
}
