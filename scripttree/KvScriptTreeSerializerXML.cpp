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
#include "scripttree/KvXmlParser.h"

namespace {

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
        root = KvParseXml(text.GetText());
        return root != nullptr;
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
