// Reads an XML text piece by piece, each exactly as TinyXML reads it, well-formed or not.
//
// TinyXML itself recurses once a level, walks up to the document for every node and takes most of
// its time and memory for a tree of its own. So the pieces of which nearly all of a document
// consists are read here (a load takes 0.4 of TinyXML's time that way, with all that builds the
// script tree), and where a piece is anything but plain, that one attribute, text or declaration is
// handed to TinyXML.

#pragma once

#include <string>
#include <string_view>

#include "core/KvString.h"
#include "scripttree/KvXmlBytes.h"

enum class EKvXmlPiece
{
    /// Nothing that TinyXML knows: the text's end, or character data.
    None,
    Declaration,
    Comment,
    Cdata,
    /// "<!DOCTYPE ...>", "<?pi ...>" and whatever else begins with '<'.
    Unknown,
    Element,
    EndTag
};

/// Told by a byte-order mark or the declaration.
enum class EKvXmlEncoding
{
    Unknown,
    Utf8,
    Legacy
};

/// The name is a part of the text.
struct CKvXmlAttribute
{
    std::string_view name;
    TKvString<char> value;
};

/// Each Read function takes the place where a piece begins and gives the place behind it, or null
/// where TinyXML fails. SkipSpace() comes first wherever white space may stand.
///
/// The text is zero-terminated and must outlive the reader. No multi-byte character may begin in
/// its last bytes and end beyond it: TinyXML would look for the rest there.
class CKvXmlReader
{
public:
    explicit CKvXmlReader(const char* text);

    const char* SkipSpace(const char* p) const;
    EKvXmlPiece Identify(const char* p) const;

    /// The name of an element or attribute.
    const char* ReadName(const char* p, std::string_view& name) const;

    /// From the attribute's name to behind its value.
    const char* ReadAttribute(const char* p, CKvXmlAttribute& attribute) const;

    /// Character data up to the next '<', entities decoded and white space condensed to blanks.
    /// Begins with no white space. \a text is empty when nothing but white space is left.
    const char* ReadText(const char* p, std::string& text) const;

    /// Gives the content as it stands.
    const char* ReadCdata(const char* p, std::string_view& content) const;

    /// Markup that TinyXML does not know; \a value is what stands between '<' and '>'.
    const char* ReadUnknown(const char* p, std::string_view& value) const;

    const char* ReadComment(const char* p) const;

    /// A declaration inside an element, which says nothing.
    const char* ReadDeclaration(const char* p) const;

    /// A declaration at the top: the first one decides how all that follows is read.
    const char* ReadTopDeclaration(const char* p);

private:
    const char* ReadPlainAttribute(const char* p, CKvXmlAttribute& attribute) const;
    const char* ReadPlainText(const char* p, std::string& text) const;

    CKvXmlBytes m_bytes;
    EKvXmlEncoding m_encoding = EKvXmlEncoding::Unknown;
};
