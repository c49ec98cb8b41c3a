#include "scripttree/KvXmlLimits.h"

#include <tinyxml.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <string_view>
#include <vector>

namespace {

bool StartsWith(const char* text, std::string_view start)
{
    return std::strncmp(text, start.data(), start.size()) == 0;
}

/// How the parser classes bytes: by the C library, whose answers may depend on the process's
/// locale, so that they are asked once for each document.
class CByteClasses
{
public:
    CByteClasses()
    {
        for (int byte = 0; byte < 256; ++byte) {
            const bool beyondAscii = byte >= 127;  // counts as a letter, whatever it encodes
            const bool mark = byte == '-' || byte == '.' || byte == ':';
            const bool start = beyondAscii || std::isalpha(byte) != 0 || byte == '_';
            const bool part = start || std::isalnum(byte) != 0 || mark;
            const bool plain = byte >= ' ' && byte < 127 && byte != '&' && byte != '<' &&
                               byte != '"' && byte != '\'';
            m_classes[static_cast<std::size_t>(byte)] = static_cast<unsigned char>(
                (std::isspace(byte) != 0 ? kSpace : 0) | (start ? kNameStart : 0) |
                (part ? kNamePart : 0) | (plain ? kPlain : 0));
        }
    }

    bool IsSpace(char c) const { return Has(c, kSpace); }
    bool IsNameStart(char c) const { return Has(c, kNameStart); }
    bool IsNamePart(char c) const { return Has(c, kNamePart); }

    /// Most of what values and texts are made of: ASCII that means itself wherever it stands.
    bool IsPlain(char c) const { return Has(c, kPlain); }

private:
    static constexpr int kSpace = 1;
    static constexpr int kNameStart = 2;
    static constexpr int kNamePart = 4;
    static constexpr int kPlain = 8;

    bool Has(char c, int kind) const
    {
        return (m_classes[static_cast<unsigned char>(c)] & kind) != 0;
    }

    std::array<unsigned char, 256> m_classes = {};
};

/// In UTF-8, byte-order marks and the two noncharacters beside them count as white space.
bool IsByteOrderMark(const char* p)
{
    return StartsWith(p, "\xEF\xBB\xBF") || StartsWith(p, "\xEF\xBF\xBE") ||
           StartsWith(p, "\xEF\xBF\xBF");
}

enum class EMarkup
{
    None,
    Declaration,
    Comment,
    Cdata,
    Unknown,
    Element
};

/// \a start is in lower case; the text may be in any.
bool StartsWithNoCase(const char* text, std::string_view start)
{
    return std::equal(start.begin(), start.end(), text, [](char expected, char c) {
        return std::tolower(static_cast<unsigned char>(c)) == expected;
    });
}

/// Walks a text the way the parser does. Each Read function gives the place behind what it read, or
/// null where the parser fails; a null place ends the whole document.
class CXmlWalker
{
public:
    explicit CXmlWalker(const char* text) : m_text(text) {}

    CKvXmlExtent Walk();

private:
    const char* SkipSpace(const char* p) const;
    EMarkup Identify(const char* p) const;
    const char* ReadName(const char* p) const;
    const char* ReadCharacter(const char* p) const;
    const char* ReadQuoted(const char* p, char quote) const;
    const char* ReadBareValue(const char* p) const;
    const char* ReadAttribute(const char* p) const;
    const char* ReadText(const char* p) const;
    const char* ReadMarkup(const char* p, EMarkup markup) const;
    const char* ReadDeclaration(const char* p);
    const char* ReadStartTag(const char* p);
    const char* ReadEndTag(const char* p);
    const char* ReadContent(const char* p);
    const char* ReadElement(const char* p);

    const char* m_text;
    CByteClasses m_bytes;
    TiXmlEncoding m_encoding = TIXML_ENCODING_UNKNOWN;
    CKvXmlExtent m_extent;

    /// The names of the elements that are open.
    std::vector<std::string_view> m_open;
};

const char* CXmlWalker::SkipSpace(const char* p) const
{
    if (p == nullptr)
        return nullptr;
    for (;;) {
        if (*p == '\xEF' && m_encoding == TIXML_ENCODING_UTF8 && IsByteOrderMark(p))
            p += 3;
        else if (m_bytes.IsSpace(*p))
            ++p;
        else
            return p;
    }
}

EMarkup CXmlWalker::Identify(const char* p) const
{
    if (p == nullptr || *p != '<')
        return EMarkup::None;
    if (StartsWithNoCase(p, "<?xml"))
        return EMarkup::Declaration;
    if (StartsWith(p, "<!--"))
        return EMarkup::Comment;
    if (StartsWith(p, "<![CDATA["))
        return EMarkup::Cdata;
    return m_bytes.IsNameStart(p[1]) ? EMarkup::Element : EMarkup::Unknown;
}

const char* CXmlWalker::ReadName(const char* p) const
{
    if (!m_bytes.IsNameStart(*p))
        return nullptr;
    while (m_bytes.IsNamePart(*p))
        ++p;
    return p;
}

/// A numeric reference runs to the next ';', wherever that is, and its digits from there back to
/// the nearest 'x' or '#'. Any other '&' that starts no known entity is taken by itself.
const char* ReadReference(const char* p)
{
    if (p[1] == '#' && p[2] != '\0') {
        const bool hexadecimal = p[2] == 'x';
        if (hexadecimal && p[3] == '\0')
            return nullptr;
        const char* end = std::strchr(p + (hexadecimal ? 3 : 2), ';');
        if (end == nullptr)
            return nullptr;
        const char start = hexadecimal ? 'x' : '#';
        for (const char* digit = end - 1; *digit != start; --digit) {
            const auto byte = static_cast<unsigned char>(*digit);
            const bool valid =
                (byte >= '0' && byte <= '9') ||
                (hexadecimal && ((byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F')));
            if (!valid)
                return nullptr;
        }
        return end + 1;
    }
    constexpr std::array<std::string_view, 5> kEntities = {"&amp;", "&lt;", "&gt;", "&quot;",
                                                           "&apos;"};
    for (const std::string_view entity : kEntities) {
        if (StartsWith(p, entity))
            return p + entity.size();
    }
    return p + 1;
}

const char* CXmlWalker::ReadCharacter(const char* p) const
{
    const auto byte = static_cast<unsigned char>(*p);
    if (m_encoding == TIXML_ENCODING_UTF8 && byte >= 0xC2 && byte <= 0xF4) {
        if (byte >= 0xF0)
            return p + 4;
        return p + (byte >= 0xE0 ? 3 : 2);
    }
    return *p == '&' ? ReadReference(p) : p + 1;
}

const char* CXmlWalker::ReadQuoted(const char* p, char quote) const
{
    while (p != nullptr && *p != '\0' && *p != quote)
        p = m_bytes.IsPlain(*p) ? p + 1 : ReadCharacter(p);
    // The parser takes a value that ends with the document for a failure.
    return p != nullptr && *p != '\0' && p[1] != '\0' ? p + 1 : nullptr;
}

const char* CXmlWalker::ReadBareValue(const char* p) const
{
    for (; *p != '\0' && !m_bytes.IsSpace(*p) && *p != '/' && *p != '>'; ++p) {
        if (*p == '\'' || *p == '"')
            return nullptr;
    }
    return *p != '\0' ? p : nullptr;
}

const char* CXmlWalker::ReadAttribute(const char* p) const
{
    p = ReadName(p);
    if (p == nullptr || *p == '\0')
        return nullptr;
    p = SkipSpace(p);
    if (*p != '=')
        return nullptr;
    p = SkipSpace(p + 1);
    if (*p == '\'' || *p == '"')
        return ReadQuoted(p + 1, *p);
    return ReadBareValue(p);
}

/// Character data up to the next '<', which stays. References can reach past one.
const char* CXmlWalker::ReadText(const char* p) const
{
    while (p != nullptr && *p != '\0' && *p != '<')
        p = m_bytes.IsPlain(*p) || m_bytes.IsSpace(*p) ? p + 1 : ReadCharacter(p);
    return p != nullptr && *p != '\0' && p[1] != '\0' ? p : nullptr;
}

/// Everything that is neither element nor declaration.
const char* CXmlWalker::ReadMarkup(const char* p, EMarkup markup) const
{
    if (markup == EMarkup::Comment) {
        const char* end = std::strstr(p + 4, "-->");
        return end != nullptr ? end + 3 : nullptr;
    }
    if (markup == EMarkup::Cdata) {
        const char* end = std::strstr(p + 9, "]]>");
        return end != nullptr && end[3] != '\0' ? end + 3 : nullptr;
    }
    const char* end = std::strchr(p, '>');
    return end != nullptr ? end + 1 : nullptr;
}

/// Lets the parser itself read the declaration: the encoding it names decides how all that follows
/// is read, unless the encoding is known already or the declaration stands inside an element.
const char* CXmlWalker::ReadDeclaration(const char* p)
{
    TiXmlDeclaration declaration;
    p = declaration.Parse(p, nullptr, m_encoding);
    if (m_encoding != TIXML_ENCODING_UNKNOWN || !m_open.empty())
        return p;
    const char* encoding = declaration.Encoding();
    const bool utf8 = *encoding == '\0' || StartsWithNoCase(encoding, "utf-8") ||
                      StartsWithNoCase(encoding, "utf8");
    m_encoding = utf8 ? TIXML_ENCODING_UTF8 : TIXML_ENCODING_LEGACY;
    return p;
}

/// From '<' to behind '>'. The element is open afterwards unless its tag ended with "/>". The
/// parser keeps the element even when it fails to read its tag.
const char* CXmlWalker::ReadStartTag(const char* p)
{
    m_extent.depth = std::max(m_extent.depth, static_cast<int>(m_open.size()) + 1);
    const char* name = SkipSpace(p + 1);
    p = ReadName(name);
    if (p == nullptr || *p == '\0')
        return nullptr;
    const std::string_view nameText(name, static_cast<std::size_t>(p - name));

    int attributes = 0;
    for (;;) {
        p = SkipSpace(p);
        if (*p == '/')
            return p[1] == '>' ? p + 2 : nullptr;
        if (*p == '>') {
            m_open.push_back(nameText);
            return p + 1;
        }
        p = ReadAttribute(p);
        if (p == nullptr || *p == '\0')
            return nullptr;
        m_extent.attributes = std::max(m_extent.attributes, ++attributes);
        m_extent.steps += attributes;
        if (!m_extent.IsWithinLimits())
            return nullptr;
    }
}

const char* CXmlWalker::ReadEndTag(const char* p)
{
    if (!StartsWith(p + 2, m_open.back()))
        return nullptr;
    p = SkipSpace(p + 2 + m_open.back().size());
    m_open.pop_back();
    return *p == '>' ? p + 1 : nullptr;
}

/// One piece of the innermost open element's content, \a p being at no white space.
const char* CXmlWalker::ReadContent(const char* p)
{
    if (*p == '<' && p[1] == '/')
        return ReadEndTag(p);
    m_extent.steps += static_cast<std::int64_t>(m_open.size());
    if (*p != '<')
        return ReadText(p);
    const EMarkup markup = Identify(p);
    if (markup == EMarkup::Element)
        return ReadStartTag(p);
    return markup == EMarkup::Declaration ? ReadDeclaration(p) : ReadMarkup(p, markup);
}

/// A whole top-level element.
const char* CXmlWalker::ReadElement(const char* p)
{
    p = ReadStartTag(p);
    while (!m_open.empty() && p != nullptr) {
        p = SkipSpace(p);
        if (*p == '\0' || !m_extent.IsWithinLimits())
            return nullptr;
        p = ReadContent(p);
    }
    return p;
}

CKvXmlExtent CXmlWalker::Walk()
{
    m_extent.maxSteps =
        kKvXmlFreeSteps + kKvXmlStepsPerByte * static_cast<std::int64_t>(std::strlen(m_text));
    if (StartsWith(m_text, "\xEF\xBB\xBF"))
        m_encoding = TIXML_ENCODING_UTF8;
    const char* p = SkipSpace(m_text);
    for (EMarkup markup = Identify(p); markup != EMarkup::None; markup = Identify(p)) {
        if (markup == EMarkup::Element)
            p = ReadElement(p);
        else
            p = markup == EMarkup::Declaration ? ReadDeclaration(p) : ReadMarkup(p, markup);
        p = SkipSpace(p);
    }
    return m_extent;
}

}  // namespace

CKvXmlExtent KvMeasureXml(const char* text)
{
    return CXmlWalker(text).Walk();
}
