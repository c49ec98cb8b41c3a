#include "scripttree/KvXmlBytes.h"

#include <cctype>
#include <cstddef>

CKvXmlBytes::CKvXmlBytes()
{
    for (int byte = 0; byte < 256; ++byte) {
        const bool beyondAscii = byte >= 127;  // counts as a letter, whatever it encodes
        const bool mark = byte == '-' || byte == '.' || byte == ':';
        const bool start = beyondAscii || std::isalpha(byte) != 0 || byte == '_';
        const bool part = start || std::isalnum(byte) != 0 || mark;
        const bool plain = byte > 0 && byte < 128 && byte != '&';
        m_classes[static_cast<std::size_t>(byte)] = static_cast<unsigned char>(
            (std::isspace(byte) != 0 ? kSpace : 0) | (start ? kNameStart : 0) |
            (part ? kNamePart : 0) | (plain ? kPlain : 0));
    }
}
