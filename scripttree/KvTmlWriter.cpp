#include "scripttree/KvTmlWriter.h"

#include <cstdint>

#include "core/KvNumberText.h"
#include "core/KvText.h"
#include "scripttree/KvScriptTreeName.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeWalk.h"

namespace {

using EType = CKvScriptTreeAttribute::EType;

void WriteAttribute(CKvFieldWriter& fields, const CKvScriptTreeAttribute& attribute)
{
    const char* text = attribute.GetValue().GetText();
    fields.WriteU64(attribute.GetIdentifier().GetCrc64());
    switch (kvGetNumberForm(text)) {
        case EKvNumberForm::Float:
            fields.WriteU32(EType::TYPE_FLOAT);
            fields.WriteF32(kvStringToFloat(text));
            break;
        case EKvNumberForm::Int:
            fields.WriteU32(EType::TYPE_INT);
            fields.WriteS32(kvStringToS32(text));
            break;
        case EKvNumberForm::None:
            fields.WriteU32(EType::TYPE_STRING);
            fields.WriteText(attribute.GetValue());
            break;
    }
}

/// Writes a node's own fields: all but its children.
void WriteOwn(CKvFieldWriter& fields, CKvTmlNames& names, const CKvScriptTreeNode& node,
              int childCount)
{
    const int attributeCount = node.GetAttributeCount();
    fields.WriteU64(node.GetIdentifier().GetCrc64());
    fields.WriteU32(static_cast<std::uint32_t>(attributeCount));
    fields.WriteU32(static_cast<std::uint32_t>(childCount));
    names.Add(node.GetIdentifier());
    for (int i = 0; i < attributeCount; ++i) {
        const CKvScriptTreeAttribute& attribute = node.GetAttribute(i);
        WriteAttribute(fields, attribute);
        names.Add(attribute.GetIdentifier());
    }
}

void WriteAll(CKvFieldWriter& fields, CKvTmlNames& names, const CKvScriptTreeNode& root)
{
    for (TKvScriptTreeWalk walk(&root); walk.Next();) {
        if (!walk.IsLeaving())
            WriteOwn(fields, names, *walk.GetNode(), walk.GetNode()->GetChildCount());
    }
}

}  // namespace

void CKvTmlWriter::WriteNode(const CKvScriptTreeNode& node, int childCount)
{
    WriteOwn(m_fields, m_names, node, childCount);
}

void CKvTmlWriter::WriteTree(const CKvScriptTreeNode& root)
{
    WriteAll(m_fields, m_names, root);
}

void CKvTmlWriter::WriteTree(const CKvScriptTreeNode& root, CKvTmlFragment& kept)
{
    kept.m_fields.Discard();
    WriteAll(kept.m_fields, m_names, root);
    m_fields.WriteCollected(kept.m_fields);
}

bool CKvTmlWriter::Finish()
{
    m_fields.WriteU32(static_cast<std::uint32_t>(m_names.Get().GetCount()));
    for (const CKvIdentifier& name : m_names.Get())
        m_fields.WriteText(KvGetNameText(name));
    return m_fields.Flush();
}
