// The example bytes of a format's document, so that a test holds what the document shows.

#pragma once

#include <cctype>
#include <fstream>
#include <sstream>
#include <string>

/// The bytes of a document's annotated example: of all its table rows "| offset | `hex` | ... |"
/// the first column of hexadecimal bytes, or the one \a column behind it. Empty when an offset is
/// not the number of the bytes before it.
inline std::string KvDocumentedBytes(const std::string& path, int column = 0)
{
    std::ifstream document(path);
    std::string bytes;
    for (std::string line; std::getline(document, line);) {
        std::size_t cell = line.find("| ", 2);
        if (line.rfind("| ", 0) != 0 || std::isdigit(static_cast<unsigned char>(line[2])) == 0 ||
            cell == std::string::npos || line[cell + 2] != '`')
            continue;
        if (std::stoul(line.substr(2)) != bytes.size())
            return "";
        for (int skipped = 0; skipped < column; ++skipped)
            cell = line.find("| ", cell + 2);
        std::istringstream cells(line.substr(cell + 3, line.find('`', cell + 3) - cell - 3));
        for (int byte = 0; cells >> std::hex >> byte;)
            bytes += static_cast<char>(byte);
    }
    return bytes;
}
