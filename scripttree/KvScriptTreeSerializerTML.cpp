#include "scripttree/KvScriptTreeSerializerTML.h"

#include <climits>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/KvOutOfMemory.h"
#include "file/KvFile.h"
#include "file/KvWholeFileWriter.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeLoad.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvTmlWriter.h"
#include "serial/KvMemFileReader.h"

namespace {

using EType = CKvScriptTreeAttribute::EType;

/// The smallest records that an image can hold, in bytes; they bound what its counts may promise.
constexpr int kMinNodeSize = 16;
constexpr int kMinAttributeSize = 12;
constexpr int kMinNameSize = 1;

bool ReadAttribute(CKvMemFileReader& reader, CKvScriptTreeNode& node)
{
    std::uint64_t crc = 0;
    std::uint32_t type = 0;
    reader.ReadU64(crc);
    reader.ReadU32(type);
    const CKvIdentifier identifier(crc);
    if (type == EType::TYPE_U64) {
        std::uint64_t value = 0;
        reader.ReadU64(value);
        node.AddAttribute(CKvScriptTreeAttribute(identifier, value));
    } else if (type == EType::TYPE_INT) {
        std::int32_t value = 0;
        reader.ReadS32(value);
        node.AddAttribute(CKvScriptTreeAttribute(identifier, value));
    } else if (type == EType::TYPE_FLOAT) {
        float value = 0;
        reader.ReadF32(value);
        node.AddAttribute(CKvScriptTreeAttribute(identifier, value));
    } else if (type == EType::TYPE_STRING) {
        TKvString<char> value;
        reader.ReadString(value);
        node.AddAttribute(CKvScriptTreeAttribute(identifier, value));
    } else {
        return false;
    }
    return !reader.HasFailed();
}

/// Reads a node's own fields and how many children follow. \a promised counts the children that the
/// records read so far have promised and not yet brought: together they must fit into what is left,
/// else a chain of nodes could each claim nearly all of the image.
bool ReadNode(CKvMemFileReader& reader, CKvScriptTreeNode& node, std::int64_t promised,
              int& childCount)
{
    std::uint64_t crc = 0;
    std::uint32_t attributes = 0;
    std::uint32_t children = 0;
    reader.ReadU64(crc);
    reader.ReadU32(attributes);
    reader.ReadU32(children);
    if (reader.HasFailed() ||
        attributes > static_cast<std::uint32_t>(reader.GetRemaining()) / kMinAttributeSize)
        return false;
    if (promised + children > reader.GetRemaining() / kMinNodeSize)
        return false;
    childCount = static_cast<int>(children);
    node.SetIdentifier(CKvIdentifier(crc));
    node.ExpectCounts(static_cast<int>(attributes), childCount);
    for (std::uint32_t i = 0; i < attributes; ++i) {
        if (!ReadAttribute(reader, node))
            return false;
    }
    return true;
}

/// Reads the name table and, when it is whole, registers its texts.
bool ReadNames(CKvMemFileReader& reader)
{
    std::uint32_t count = 0;
    if (!reader.ReadU32(count) ||
        count > static_cast<std::uint32_t>(reader.GetRemaining()) / kMinNameSize)
        return false;
    CKvMemFileReader ahead = reader;
    TKvString<char> name;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (!ahead.ReadString(name))
            return false;
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        reader.ReadString(name);
        const CKvIdentifier registered(name);
    }
    return true;
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
        if (!RecursiveLoad(reader, root.get()) || !ReadNames(reader))
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
    writer.WriteTree(*node);
    names = writer.GetNames();
    return true;
}

bool CKvScriptTreeSerializerTML::RecursiveLoad(CKvMemFileReader& reader, CKvScriptTreeNode* node)
{
    struct CPlace
    {
        CKvScriptTreeNode* node;
        int childrenLeft;
    };
    int childCount = 0;
    if (!ReadNode(reader, *node, 0, childCount))
        return false;
    std::int64_t promised = childCount;
    std::vector<CPlace> path = {{node, childCount}};
    while (!path.empty()) {
        if (path.back().childrenLeft == 0) {
            path.pop_back();
            continue;
        }
        --path.back().childrenLeft;
        --promised;
        CKvScriptTreeNode* child = path.back().node->AddNewChild(CKvIdentifier());
        if (!ReadNode(reader, *child, promised, childCount))
            return false;
        promised += childCount;
        if (childCount > 0)
            path.push_back({child, childCount});
    }
    return true;
}
