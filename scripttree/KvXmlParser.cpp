#include "scripttree/KvXmlParser.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "scripttree/KvNameCache.h"
#include "scripttree/KvXmlReader.h"

namespace {

/// The most bytes of a multi-byte character that TinyXML may look for behind the terminator.
constexpr std::size_t kPadding = 3;

/// How many bytes TinyXML takes for a character that begins with this one, in UTF-8.
std::size_t GetCharacterSize(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0xC2 || byte > 0xF4)
        return 1;
    if (byte >= 0xF0)
        return 4;
    return byte >= 0xE0 ? 3 : 2;
}

/// Whether a character may begin inside the text and end beyond it.
bool EndsInsideCharacter(std::string_view text)
{
    for (std::size_t left = 1; left <= std::min(kPadding, text.size()); ++left) {
        if (GetCharacterSize(text[text.size() - left]) > left)
            return true;
    }
    return false;
}

CKvOwnedScriptTreeNode MakeNode(const CKvIdentifier& identifier)
{
    return CKvOwnedScriptTreeNode(new CKvScriptTreeNode(identifier));
}

CKvOwnedScriptTreeNode MakeTextNode(const char* text)
{
    CKvOwnedScriptTreeNode node(new CKvScriptTreeNode);
    node->SetText(text);
    return node;
}

/// The nodes of one text. Finished ones wait until their parent's end, so that its list of children
/// is made once and of the exact size.
class CXmlParser
{
public:
    explicit CXmlParser(const char* text) : m_text(text), m_reader(text) {}

    CKvOwnedScriptTreeNode Parse();

private:
    struct COpenElement
    {
        std::string_view name;
        CKvOwnedScriptTreeNode node;

        /// The place of its first child among the finished nodes.
        std::size_t firstChild;
    };

    const char* ReadElement(const char* p);
    const char* ReadContent(const char* p);
    const char* ReadStartTag(const char* p);
    const char* ReadAttributes(const char* p);
    const char* ReadEndTag(const char* p);
    const char* ReadText(const char* p);
    const char* ReadCdata(const char* p);
    const char* ReadUnknown(const char* p);
    bool HasEqualAttributes();
    CKvOwnedScriptTreeNode MakeElement(std::string_view name);
    void CloseElement();

    const char* m_text;
    CKvXmlReader m_reader;
    CKvNameCache m_names;
    std::vector<COpenElement> m_open;
    std::vector<CKvOwnedScriptTreeNode> m_finished;

    // Kept from piece to piece for their memory.
    std::vector<CKvXmlAttribute> m_attributes;
    std::vector<std::string_view> m_sortedNames;
    std::string m_content;
};

CKvOwnedScriptTreeNode CXmlParser::Parse()
{
    const char* p = m_text;
    while (p != nullptr) {
        p = m_reader.SkipSpace(p);
        std::string_view value;
        switch (m_reader.Identify(p)) {
            case EKvXmlPiece::Element:
                p = ReadElement(p);
                if (p == nullptr)
                    return nullptr;
                m_finished.resize(1);  // elements behind the first one are read for their errors
                break;
            case EKvXmlPiece::Declaration:
                p = m_reader.ReadTopDeclaration(p);
                break;
            case EKvXmlPiece::Comment:
                p = m_reader.ReadComment(p);
                break;
            case EKvXmlPiece::Cdata:
                p = m_reader.ReadCdata(p, value);
                break;
            case EKvXmlPiece::Unknown:
            case EKvXmlPiece::EndTag:
                p = m_reader.ReadUnknown(p, value);
                break;
            case EKvXmlPiece::None:
                p = nullptr;  // the rest is not looked at
                break;
        }
    }
    return m_finished.empty() ? nullptr : std::move(m_finished.front());
}

/// A whole top-level element.
const char* CXmlParser::ReadElement(const char* p)
{
    p = ReadStartTag(p);
    while (p != nullptr && !m_open.empty())
        p = ReadContent(m_reader.SkipSpace(p));
    return p;
}

/// One piece of the innermost open element's content.
const char* CXmlParser::ReadContent(const char* p)
{
    switch (m_reader.Identify(p)) {
        case EKvXmlPiece::Element:
            return ReadStartTag(p);
        case EKvXmlPiece::EndTag:
            return ReadEndTag(p);
        case EKvXmlPiece::Comment:
            return m_reader.ReadComment(p);
        case EKvXmlPiece::Cdata:
            return ReadCdata(p);
        case EKvXmlPiece::Unknown:
            return ReadUnknown(p);
        case EKvXmlPiece::Declaration:
            m_finished.push_back(MakeTextNode(""));
            return m_reader.ReadDeclaration(p);
        case EKvXmlPiece::None:
            break;
    }
    return *p != '\0' ? ReadText(p) : nullptr;
}

/// From '<' to behind '>'. The element is open afterwards unless its tag ended with "/>".
const char* CXmlParser::ReadStartTag(const char* p)
{
    std::string_view name;
    p = m_reader.ReadName(m_reader.SkipSpace(p + 1), name);
    if (p != nullptr)
        p = ReadAttributes(p);
    if (p == nullptr || HasEqualAttributes())
        return nullptr;
    CKvOwnedScriptTreeNode node = MakeElement(name);
    if (*p == '>') {
        m_open.push_back({name, std::move(node), m_finished.size()});
        return p + 1;
    }
    m_finished.push_back(std::move(node));
    return p[1] == '>' ? p + 2 : nullptr;
}

/// Up to the '>' or '/' that ends the start tag.
const char* CXmlParser::ReadAttributes(const char* p)
{
    m_attributes.clear();
    for (;;) {
        p = m_reader.SkipSpace(p);
        if (*p == '>' || *p == '/')
            return p;
        p = m_reader.ReadAttribute(p, m_attributes.emplace_back());
        if (p == nullptr)
            return nullptr;
    }
}

/// Names that differ in case alone are different ones here. Sorting keeps many from being compared
/// each with each.
bool CXmlParser::HasEqualAttributes()
{
    constexpr std::size_t kFew = 8;
    if (m_attributes.size() <= kFew) {
        for (std::size_t i = 1; i < m_attributes.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                if (m_attributes[i].name == m_attributes[j].name)
                    return true;
            }
        }
        return false;
    }
    m_sortedNames.clear();
    for (const CKvXmlAttribute& attribute : m_attributes)
        m_sortedNames.push_back(attribute.name);
    std::sort(m_sortedNames.begin(), m_sortedNames.end());
    return std::adjacent_find(m_sortedNames.begin(), m_sortedNames.end()) != m_sortedNames.end();
}

CKvOwnedScriptTreeNode CXmlParser::MakeElement(std::string_view name)
{
    CKvOwnedScriptTreeNode node = MakeNode(m_names.Get(name));
    node->ExpectCounts(static_cast<int>(m_attributes.size()), 0);
    for (CKvXmlAttribute& attribute : m_attributes)
        node->AddAttribute({m_names.Get(attribute.name), std::move(attribute.value)});
    return node;
}

const char* CXmlParser::ReadEndTag(const char* p)
{
    const std::string_view name = m_open.back().name;
    if (std::strncmp(p + 2, name.data(), name.size()) != 0)
        return nullptr;
    CloseElement();
    p = m_reader.SkipSpace(p + 2 + name.size());
    return *p == '>' ? p + 1 : nullptr;
}

void CXmlParser::CloseElement()
{
    COpenElement element = std::move(m_open.back());
    m_open.pop_back();
    const auto children = m_finished.begin() + static_cast<std::ptrdiff_t>(element.firstChild);
    element.node->ExpectCounts(0, static_cast<int>(m_finished.end() - children));
    std::for_each(children, m_finished.end(), [&](CKvOwnedScriptTreeNode& child) {
        element.node->AddChild(child.get());
        static_cast<void>(child.release());  // the element's own now
    });
    m_finished.erase(children, m_finished.end());
    m_finished.push_back(std::move(element.node));
}

const char* CXmlParser::ReadText(const char* p)
{
    p = m_reader.ReadText(p, m_content);
    if (!m_content.empty())
        m_finished.push_back(MakeTextNode(m_content.c_str()));
    return p;
}

const char* CXmlParser::ReadCdata(const char* p)
{
    std::string_view content;
    p = m_reader.ReadCdata(p, content);
    m_content = content;
    m_finished.push_back(MakeTextNode(m_content.c_str()));
    return p;
}

/// Markup that is not known names a node.
const char* CXmlParser::ReadUnknown(const char* p)
{
    std::string_view value;
    p = m_reader.ReadUnknown(p, value);
    m_content = value;
    m_finished.push_back(MakeNode(CKvIdentifier(m_content.c_str())));
    return p;
}

}  // namespace

CKvOwnedScriptTreeNode KvParseXml(const char* text)
{
    const std::string_view whole(text);
    if (!EndsInsideCharacter(whole))
        return CXmlParser(text).Parse();
    auto padded = std::make_unique<char[]>(whole.size() + 1 + kPadding);
    std::copy(whole.begin(), whole.end(), padded.get());
    return CXmlParser(padded.get()).Parse();
}
