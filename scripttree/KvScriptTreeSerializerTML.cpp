#include "scripttree/KvScriptTreeSerializerTML.h"

#include <climits>
#include <memory>

#include "core/KvOutOfMemory.h"
#include "file/KvFile.h"
#include "file/KvWholeFileWriter.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeLoad.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvTmlReader.h"
#include "scripttree/KvTmlWriter.h"
#include "serial/KvMemFileReader.h"

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
            CKvTmlWriter writer(file.GetHandle(), bigEndian);
            writer.WriteTree(*tree.GetRootNode());
            if (!writer.Finish())
                return false;
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
    CKvTmlWriter writer(handle, bigEndian, names);
    const int knownCount = writer.GetNames().GetCount();
    writer.WriteTree(*node);
    for (int i = knownCount; i < writer.GetNames().GetCount(); ++i)
        names.Add(writer.GetNames()[i]);
    return true;
}

bool CKvScriptTreeSerializerTML::RecursiveLoad(CKvMemFileReader& reader, CKvScriptTreeNode* node)
{
    return KvReadTmlTree(reader, *node);
}
