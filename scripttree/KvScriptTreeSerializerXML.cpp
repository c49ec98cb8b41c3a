#include "scripttree/KvScriptTreeSerializerXML.h"

#include <tinyxml.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "core/KvId.h"
#include "core/KvOutOfMemory.h"
#include "file/KvCompressedFileReader.h"
#include "file/KvFile.h"
#include "file/KvWholeFileWriter.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeLoad.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvXmlDump.h"
#include "scripttree/KvXmlLimits.h"

namespace {

/// The parser reads past its buffer when a text ends inside a multi-byte character.
constexpr std::size_t kParserPadding = 3;

std::unique_ptr<char[]> CopyPadded(const TKvString<char>& text)
{
    const auto size = static_cast<std::size_t>(text.GetLength());
    auto padded = std::make_unique_for_overwrite<char[]>(size + 1 + kParserPadding);
    std::copy_n(text.GetText(), size, padded.get());
    std::fill_n(padded.get() + size, 1 + kParserPadding, '\0');
    return padded;
}

int CountAttributes(const TiXmlElement& element)
{
    int count = 0;
    for (const TiXmlAttribute* a = element.FirstAttribute(); a != nullptr; a = a->Next())
        ++count;
    return count;
}

bool IsComment(const TiXmlNode& xml)
{
    return xml.Type() == TiXmlNode::TINYXML_COMMENT;
}

int CountChildren(const TiXmlNode& xml)
{
    int count = 0;
    for (const TiXmlNode* child = xml.FirstChild(); child != nullptr; child = child->NextSibling())
        count += IsComment(*child) ? 0 : 1;
    return count;
}

/// Takes over all but the children.
void FillOwn(const TiXmlNode& xml, CKvScriptTreeNode& node)
{
    if (xml.Type() == TiXmlNode::TINYXML_TEXT) {
        node.SetIdentifier(KVID::GetSingleton().null);
        node.SetText(xml.Value());
        return;
    }
    node.SetIdentifier(CKvIdentifier(xml.Value()));
    const TiXmlElement* element = xml.ToElement();
    node.ExpectCounts(element != nullptr ? CountAttributes(*element) : 0, CountChildren(xml));
    if (element == nullptr)
        return;
    for (const TiXmlAttribute* a = element->FirstAttribute(); a != nullptr; a = a->Next())
        node.AddAttribute(CKvScriptTreeAttribute(CKvIdentifier(a->Name()), a->Value()));
}

}  // namespace

CKvScriptTreeSerializerXML::~CKvScriptTreeSerializerXML() = default;

bool CKvScriptTreeSerializerXML::Load(CKvScriptTree& tree, const TKvString<char>& path)
{
    return KvLoadThroughHandle(
        path, [&](CKvFileHandle* handle) { return LoadXmlFromFileHandle(tree, handle); });
}

bool CKvScriptTreeSerializerXML::LoadXmlFromFileHandle(CKvScriptTree& tree, CKvFileHandle* handle)
{
    return KvFalseWhenOutOfMemory([&] {
        CKvFile file(handle);
        int size = 0;
        CKvCompressedFileReader reader(&file, size);
        if (size == 0)
            return false;
        TKvString<char> text;
        text.SetLength(size);
        if (text.GetBuffer() == nullptr || reader.Read(text.GetBuffer(), size) != size)
            return false;
        return Parse(tree, text);  // up to a zero byte, where texts end
    });
}

bool CKvScriptTreeSerializerXML::Parse(CKvScriptTree& tree, const TKvString<char>& text)
{
    CKvOwnedScriptTreeNode root;
    const bool parsed = KvFalseWhenOutOfMemory([&] {
        std::unique_ptr<char[]> padded = CopyPadded(text);
        if (!KvMeasureXml(padded.get()).IsWithinLimits())
            return false;
        TiXmlDocument document;
        document.SetTabSize(0);  // nobody asks for rows and columns, which cost a pass of their own
        document.Parse(padded.get(), nullptr, TIXML_ENCODING_UNKNOWN);
        TiXmlElement* element = document.FirstChildElement();
        if (document.Error() || element == nullptr)
            return false;
        padded.reset();
        root.reset(new CKvScriptTreeNode);
        ParseTiXmlNode(element, root.get());
        return true;
    });
    tree.Empty();  // not earlier: the text may be one of the tree's own
    if (parsed)
        tree.SetRootNode(root.release());
    return parsed;
}

bool CKvScriptTreeSerializerXML::Save(CKvScriptTree& tree, const TKvString<char>& path)
{
    return KvFalseWhenOutOfMemory([&] {
        CKvWholeFileWriter writer;
        if (writer.Open(path, EKvFileSystemOpenMode::WriteText) != EKvFileSystemError::Success)
            return false;
        TKvString<char> text;
        const bool dumped = Dump(tree, text);
        if (!dumped && tree.GetRootNode() != nullptr)
            return false;
        CKvFile(writer.GetHandle()).Write(text.GetText(), text.GetLength());
        return writer.Commit() == EKvFileSystemError::Success && dumped;
    });
}

bool CKvScriptTreeSerializerXML::Dump(CKvScriptTree& tree, TKvString<char>& out)
{
    if (tree.GetRootNode() == nullptr)
        return false;
    out = "";
    return RecursiveDump(tree.GetRootNode(), out, 0);
}

void CKvScriptTreeSerializerXML::ParseTiXmlNode(TiXmlNode* xml, CKvScriptTreeNode* node)
{
    if (xml == nullptr || node == nullptr)
        return;
    struct CPlace
    {
        TiXmlNode* xml;
        CKvScriptTreeNode* node;
    };
    FillOwn(*xml, *node);
    std::vector<CPlace> path = {{xml, node}};
    while (!path.empty()) {
        const CPlace place = path.back();
        if (TiXmlNode* child = place.xml->FirstChild()) {
            if (IsComment(*child)) {
                place.xml->RemoveChild(child);
                continue;
            }
            CKvScriptTreeNode* childNode = place.node->AddNewChild(CKvIdentifier());
            FillOwn(*child, *childNode);
            path.push_back({child, childNode});
        } else {
            path.pop_back();
            if (!path.empty())
                path.back().xml->RemoveChild(place.xml);
        }
    }
}

bool CKvScriptTreeSerializerXML::RecursiveDump(CKvScriptTreeNode* node, TKvString<char>& out,
                                               int depth)
{
    if (node == nullptr)
        return false;
    return KvFalseWhenOutOfMemory([&] { return KvDumpXml(*node, depth, out); });
}
