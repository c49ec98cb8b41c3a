#include "scripttree/KvScriptTreeSerializerTML.h"

#include <climits>
#include <cstdint>
#include <memory>
#include <unordered_set>

#include "core/KvNumberText.h"
#include "core/KvOutOfMemory.h"
#include "core/KvSaltedHash.h"
#include "core/KvText.h"
#include "file/KvFieldWriter.h"
#include "file/KvFile.h"
#include "file/KvWholeFileWriter.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeLoad.h"
#include "scripttree/KvScriptTreeName.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeWalk.h"
#include "scripttree/KvTmlReader.h"
#include "serial/KvMemFileReader.h"

namespace {

using EType = CKvScriptTreeAttribute::EType;

/// The distinct names of a document in the order of their first use.
class CNamesSeen
{
public:
    explicit CNamesSeen(CKvArray<CKvIdentifier>& names) : m_names(names)
    {
        for (const CKvIdentifier& name : names)
            m_seen.insert(name.GetCrc64());
    }

    void Add(const CKvIdentifier& name)
    {
        if (m_seen.insert(name.GetCrc64()).second)
            m_names.Add(name);
    }

private:
    CKvArray<CKvIdentifier>& m_names;
    std::unordered_set<std::uint64_t, CKvSaltedHash> m_seen;
};

void WriteAttribute(CKvFieldWriter& writer, const CKvScriptTreeAttribute& attribute)
{
    const char* text = attribute.GetValue().GetText();
    writer.WriteU64(attribute.GetIdentifier().GetCrc64());
    if (kvIsFloat(text)) {
        writer.WriteU32(EType::TYPE_FLOAT);
        writer.WriteF32(kvStringToFloat(text));
    } else if (kvIsInt(text)) {
        writer.WriteU32(EType::TYPE_INT);
        writer.WriteS32(kvStringToS32(text));
    } else {
        writer.WriteU32(EType::TYPE_STRING);
        writer.WriteText(attribute.GetValue());
    }
}

/// Writes a node's own fields: all but its children.
void WriteNode(CKvFieldWriter& writer, const CKvScriptTreeNode& node, CNamesSeen& names)
{
    writer.WriteU64(node.GetIdentifier().GetCrc64());
    writer.WriteU32(static_cast<std::uint32_t>(node.GetAttributeCount()));
    writer.WriteU32(static_cast<std::uint32_t>(node.GetChildCount()));
    names.Add(node.GetIdentifier());
    for (int i = 0; i < node.GetAttributeCount(); ++i) {
        WriteAttribute(writer, node.GetAttribute(i));
        names.Add(node.GetAttribute(i).GetIdentifier());
    }
}

}  // namespace

CKvScriptTreeSerializerTML::~CKvScriptTreeSerializerTML() = default;

bool CKvScriptTreeSerializerTML::Load(CKvScriptTree& tree, const TKvString<char>& path)
{
    return KvLoadThroughHandle(
        path, [&](CKvFileHandle* handle) { return LoadTmlFromFileHandle(tree, handle); });
}

bool CKvScriptTreeSerializerTML::LoadTmlFromFileHandle(CKvScriptTree& tree, CKvFileHandle* handle)
{
    int size = 0;
    const std::unique_ptr<unsigned char[]> image(
        static_cast<unsigned char*>(CKvFile(handle).ReadEntireFile(size)));
    return image != nullptr &&
           LoadTmlFromMemory(tree, image.get(), static_cast<unsigned int>(size));
}

bool CKvScriptTreeSerializerTML::LoadTmlFromMemory(CKvScriptTree& tree, void* data,
                                                   unsigned int size)
{
    if (size > INT_MAX)
        return false;
    return KvFalseWhenOutOfMemory([&] {
        CKvMemFileReader reader(data, static_cast<int>(size));
        CKvOwnedScriptTreeNode root(new CKvScriptTreeNode);
        if (!RecursiveLoad(reader, root.get()) || !KvReadTmlNames(reader))
            return false;
        if (tree.GetRootNode() != nullptr)
            tree.GetRootNode()->Absorb(*root);
        else
            tree.SetRootNode(root.release());
        return true;
    });
}

bool CKvScriptTreeSerializerTML::Parse(CKvScriptTree&, const TKvString<char>&)
{
    return false;
}

bool CKvScriptTreeSerializerTML::Save(CKvScriptTree& tree, const TKvString<char>& path,
                                      bool bigEndian)
{
    return KvFalseWhenOutOfMemory([&] {
        CKvWholeFileWriter file;
        if (file.Open(path, EKvFileSystemOpenMode::WriteBinary) != EKvFileSystemError::Success)
            return false;
        if (tree.GetRootNode() != nullptr) {
            CKvArray<CKvIdentifier> names;
            if (!RecursiveSave(file.GetHandle(), tree.GetRootNode(), names, bigEndian))
                return false;
            CKvFieldWriter writer(file.GetHandle(), bigEndian);
            writer.WriteU32(static_cast<std::uint32_t>(names.GetCount()));
            for (const CKvIdentifier& name : names)
                writer.WriteText(KvGetNameText(name));
        }
        return file.Commit() == EKvFileSystemError::Success;
    });
}

bool CKvScriptTreeSerializerTML::Dump(CKvScriptTree&, TKvString<char>&)
{
    return false;
}

bool CKvScriptTreeSerializerTML::RecursiveSave(CKvFileHandle* handle, CKvScriptTreeNode* node,
                                               CKvArray<CKvIdentifier>& names, bool bigEndian)
{
    CKvFieldWriter writer(handle, bigEndian);
    CNamesSeen namesSeen(names);
    for (TKvScriptTreeWalk walk(node); walk.Next();) {
        if (!walk.IsLeaving())
            WriteNode(writer, *walk.GetNode(), namesSeen);
    }
    return true;
}

bool CKvScriptTreeSerializerTML::RecursiveLoad(CKvMemFileReader& reader, CKvScriptTreeNode* node)
{
    return KvReadTmlTree(reader, *node);
}
