#include "scripttree/KvTmlReader.h"

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "core/KvIdentifier.h"
#include "scripttree/KvScriptTreeNode.h"
#include "serial/KvMemFileReader.h"

namespace {

using EType = CKvScriptTreeAttribute::EType;

/// The smallest records that an image can hold, in bytes; they bound what its counts may promise.
constexpr int kMinNodeSize = 16;
constexpr int kMinAttributeSize = 12;
constexpr int kMinNameSize = 1;

/// Remembers the names that were met last, one for each value of a CRC's low bits: the register is
/// then asked once for each name of a document, not once for each node and attribute.
class CRecentNames
{
public:
    const CKvIdentifier& Get(std::uint64_t crc)
    {
        CKvIdentifier& recent = m_names[static_cast<std::size_t>(crc) % m_names.size()];
        if (recent.GetCrc64() != crc)
            recent = CKvIdentifier(crc);
        return recent;
    }

private:
    std::array<CKvIdentifier, 256> m_names;
};

/// One tree being read.
class CTreeReader
{
public:
    explicit CTreeReader(CKvMemFileReader& reader) : m_reader(reader) {}

    bool Read(CKvScriptTreeNode& root);

private:
    /// A node whose children are being read.
    struct CPlace
    {
        CKvScriptTreeNode* node;
        int childrenLeft;
    };

    bool ReadNode(CKvScriptTreeNode& node);
    bool ReadAttribute(CKvScriptTreeNode& node);

    CKvMemFileReader& m_reader;
    CRecentNames m_names;
    std::vector<CPlace> m_path;

    /// The children that the records read so far have promised and not yet brought: together they
    /// must fit into what is left, else a chain of nodes could each claim nearly all of the image.
    std::int64_t m_promised = 0;
};

bool CTreeReader::Read(CKvScriptTreeNode& root)
{
    if (!ReadNode(root))
        return false;
    while (!m_path.empty()) {
        CPlace& place = m_path.back();
        if (place.childrenLeft == 0) {
            m_path.pop_back();
            continue;
        }
        --place.childrenLeft;
        --m_promised;
        if (!ReadNode(*place.node->AddNewChild(CKvIdentifier())))
            return false;
    }
    return true;
}

/// Reads a node's own fields; the children that follow are noted.
bool CTreeReader::ReadNode(CKvScriptTreeNode& node)
{
    std::uint64_t crc = 0;
    std::uint32_t attributes = 0;
    std::uint32_t children = 0;
    m_reader.ReadU64(crc);
    m_reader.ReadU32(attributes);
    if (!m_reader.ReadU32(children))
        return false;
    if (attributes > static_cast<std::uint32_t>(m_reader.GetRemaining()) / kMinAttributeSize ||
        m_promised + children > m_reader.GetRemaining() / kMinNodeSize)
        return false;
    node.SetIdentifier(m_names.Get(crc));
    node.ExpectCounts(static_cast<int>(attributes), static_cast<int>(children));
    for (std::uint32_t i = 0; i < attributes; ++i) {
        if (!ReadAttribute(node))
            return false;
    }
    if (children > 0)
        m_path.push_back({&node, static_cast<int>(children)});
    m_promised += children;
    return true;
}

bool CTreeReader::ReadAttribute(CKvScriptTreeNode& node)
{
    std::uint64_t crc = 0;
    std::uint32_t type = 0;
    m_reader.ReadU64(crc);
    if (!m_reader.ReadU32(type))
        return false;
    const CKvIdentifier& name = m_names.Get(crc);
    if (type == EType::TYPE_FLOAT) {
        float value = 0;
        m_reader.ReadF32(value);
        node.AddAttribute(CKvScriptTreeAttribute(name, value));
    } else if (type == EType::TYPE_STRING) {
        TKvString<char> value;
        m_reader.ReadString(value);
        node.AddAttribute(CKvScriptTreeAttribute(name, std::move(value)));
    } else if (type == EType::TYPE_INT) {
        std::int32_t value = 0;
        m_reader.ReadS32(value);
        node.AddAttribute(CKvScriptTreeAttribute(name, value));
    } else if (type == EType::TYPE_U64) {
        std::uint64_t value = 0;
        m_reader.ReadU64(value);
        node.AddAttribute(CKvScriptTreeAttribute(name, value));
    } else {
        return false;
    }
    return !m_reader.HasFailed();
}

}  // namespace

bool KvReadTmlTree(CKvMemFileReader& reader, CKvScriptTreeNode& root)
{
    return CTreeReader(reader).Read(root);
}

bool KvReadTmlNames(CKvMemFileReader& reader)
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
