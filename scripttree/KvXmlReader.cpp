#include "scripttree/KvXmlReader.h"

#include <tinyxml.h>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace {

constexpr std::string_view kCdataStart = "<![CDATA[";
constexpr std::string_view kCommentStart = "<!--";

bool StartsWith(const char* text, std::string_view start)
{
    return std::strncmp(text, start.data(), start.size()) == 0;
}

/// \a start is in lower case; the text may be in any.
bool StartsWithNoCase(const char* text, std::string_view start)
{
    return std::equal(start.begin(), start.end(), text, [](char expected, char c) {
        return std::tolower(static_cast<unsigned char>(c)) == expected;
    });
}

/// In UTF-8, byte-order marks and the two noncharacters beside them count as white space.
bool IsByteOrderMark(const char* p)
{
    return StartsWith(p, "\xEF\xBB\xBF") || StartsWith(p, "\xEF\xBF\xBE") ||
           StartsWith(p, "\xEF\xBF\xBF");
}

std::string_view Between(const char* start, const char* end)
{
    return {start, static_cast<std::size_t>(end - start)};
}

/// The place behind \a end's first occurrence, or the text's end; \a content ends before it.
const char* ReadUpTo(const char* p, const char* end, std::string_view& content)
{
    const char* found = std::strstr(p, end);
    const char* stop = found != nullptr ? found : p + std::strlen(p);
    content = Between(p, stop);
    return found != nullptr ? found + std::strlen(end) : stop;
}

TiXmlEncoding ForTinyXml(EKvXmlEncoding encoding)
{
    switch (encoding) {
        case EKvXmlEncoding::Utf8:
            return TIXML_ENCODING_UTF8;
        case EKvXmlEncoding::Legacy:
            return TIXML_ENCODING_LEGACY;
        case EKvXmlEncoding::Unknown:
            break;
    }
    return TIXML_ENCODING_UNKNOWN;
}

}  // namespace

CKvXmlReader::CKvXmlReader(const char* text)
    : m_encoding(StartsWith(text, "\xEF\xBB\xBF") ? EKvXmlEncoding::Utf8 : EKvXmlEncoding::Unknown)
{
}

const char* CKvXmlReader::SkipSpace(const char* p) const
{
    for (;;) {
        if (m_bytes.IsSpace(*p))
            ++p;
        else if (*p == '\xEF' && m_encoding == EKvXmlEncoding::Utf8 && IsByteOrderMark(p))
            p += 3;
        else
            return p;
    }
}

EKvXmlPiece CKvXmlReader::Identify(const char* p) const
{
    if (*p != '<')
        return EKvXmlPiece::None;
    if (m_bytes.IsNameStart(p[1]))
        return EKvXmlPiece::Element;
    if (p[1] == '/')
        return EKvXmlPiece::EndTag;
    if (StartsWithNoCase(p, "<?xml"))
        return EKvXmlPiece::Declaration;
    if (StartsWith(p, kCommentStart))
        return EKvXmlPiece::Comment;
    return StartsWith(p, kCdataStart) ? EKvXmlPiece::Cdata : EKvXmlPiece::Unknown;
}

const char* CKvXmlReader::ReadName(const char* p, std::string_view& name) const
{
    if (!m_bytes.IsNameStart(*p))
        return nullptr;
    const char* end = p + 1;
    while (m_bytes.IsNamePart(*end))
        ++end;
    name = Between(p, end);
    return end;
}

const char* CKvXmlReader::ReadAttribute(const char* p, CKvXmlAttribute& attribute) const
{
    if (const char* end = ReadPlainAttribute(p, attribute))
        return end;
    TiXmlAttribute parsed;
    const char* end = parsed.Parse(p, nullptr, ForTinyXml(m_encoding));
    if (end == nullptr)
        return nullptr;
    ReadName(p, attribute.name);
    attribute.value = parsed.Value();
    return end;
}

/// Null when the attribute is not written NAME="VALUE", or its value needs decoding.
const char* CKvXmlReader::ReadPlainAttribute(const char* p, CKvXmlAttribute& attribute) const
{
    p = ReadName(p, attribute.name);
    if (p == nullptr || *p != '=')
        return nullptr;
    const char quote = p[1];
    if (quote != '"' && quote != '\'')
        return nullptr;
    const char* value = p + 2;
    const char* end = value;
    while (*end != quote && m_bytes.IsPlain(*end))
        ++end;
    if (*end != quote)
        return nullptr;
    attribute.value = TKvString<char>::OfLength(value, static_cast<int>(end - value));
    return end + 1;
}

const char* CKvXmlReader::ReadText(const char* p, std::string& text) const
{
    if (const char* end = ReadPlainText(p, text))
        return end;
    TiXmlText parsed("");
    p = parsed.Parse(p, nullptr, ForTinyXml(m_encoding));
    text = parsed.ValueTStr();
    if (std::all_of(text.begin(), text.end(), [&](char c) { return m_bytes.IsSpace(c); }))
        text.clear();
    return p;
}

/// Null when the text needs decoding or its white space condensing.
const char* CKvXmlReader::ReadPlainText(const char* p, std::string& text) const
{
    const char* end = p;
    for (; *end != '<'; ++end) {
        const bool condensed = *end == ' ' && !m_bytes.IsSpace(end[1]) && end[1] != '<';
        if (m_bytes.IsSpace(*end) ? !condensed : !m_bytes.IsPlain(*end))
            return nullptr;
    }
    text.assign(p, end);
    return end;
}

const char* CKvXmlReader::ReadCdata(const char* p, std::string_view& content) const
{
    return ReadUpTo(p + kCdataStart.size(), "]]>", content);
}

const char* CKvXmlReader::ReadUnknown(const char* p, std::string_view& value) const
{
    return ReadUpTo(p + 1, ">", value);
}

const char* CKvXmlReader::ReadComment(const char* p) const
{
    std::string_view content;
    return ReadUpTo(p + kCommentStart.size(), "-->", content);
}

const char* CKvXmlReader::ReadDeclaration(const char* p) const
{
    TiXmlDeclaration declaration;
    return declaration.Parse(p, nullptr, ForTinyXml(m_encoding));
}

const char* CKvXmlReader::ReadTopDeclaration(const char* p)
{
    TiXmlDeclaration declaration;
    p = declaration.Parse(p, nullptr, ForTinyXml(m_encoding));
    if (m_encoding != EKvXmlEncoding::Unknown)
        return p;
    const char* encoding = declaration.Encoding();
    const bool utf8 = *encoding == '\0' || StartsWithNoCase(encoding, "utf-8") ||
                      StartsWithNoCase(encoding, "utf8");
    m_encoding = utf8 ? EKvXmlEncoding::Utf8 : EKvXmlEncoding::Legacy;
    return p;
}
