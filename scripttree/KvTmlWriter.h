// Writes a document of the binary form piece by piece, so that a large one never has to stand in
// memory as a whole: single nodes, whole subtrees, and subtrees once more.

#pragma once

#include "file/KvFieldWriter.h"
#include "scripttree/KvTmlNames.h"

class CKvScriptTreeNode;

/// The bytes of a subtree, to be written again.
class CKvTmlFragment
{
    friend class CKvTmlWriter;

    explicit CKvTmlFragment(bool bigEndian) : m_fields(CKvFieldWriter::ToMemory(bigEndian)) {}

    CKvFieldWriter m_fields;
};

/// One document: exactly one tree, then Finish(). Trees are depth first, parents before children,
/// so each node that announces children must be followed by exactly as many subtrees. A write that
/// failed marks the handle, so that closing it tells; Finish() tells at once.
class CKvTmlWriter
{
public:
    /// Numbers are big-endian when asked, else little-endian. \a used are names that what stands in
    /// the file already has used.
    ///
    /// Ownership: the handle stays the caller's and open, and is written to by nobody else before
    ///            Finish() or the destructor has flushed what was collected.
    CKvTmlWriter(CKvFileHandle* handle, bool bigEndian, const CKvArray<CKvIdentifier>& used = {})
        : m_bigEndian(bigEndian), m_fields(handle, bigEndian), m_names(used)
    {
    }

    /// Writes a node's name and attributes and announces \a childCount children, none of which is
    /// written; those that \a node itself has do not count.
    void WriteNode(const CKvScriptTreeNode& node, int childCount);

    /// Writes a node with all below it.
    void WriteTree(const CKvScriptTreeNode& root);

    /// An empty one for this document.
    CKvTmlFragment MakeFragment() const { return CKvTmlFragment(m_bigEndian); }

    /// Writes a node with all below it and keeps its bytes in \a kept.
    void WriteTree(const CKvScriptTreeNode& root, CKvTmlFragment& kept);

    /// Writes a subtree again whose bytes this writer has kept, for the price of a copy.
    void WriteAgain(const CKvTmlFragment& kept) { m_fields.WriteCollected(kept.m_fields); }

    /// The names used so far, in the order of their first use.
    const CKvArray<CKvIdentifier>& GetNames() const { return m_names.Get(); }

    /// Ends the document with the table of its names. True when all writes went well.
    [[nodiscard]] bool Finish();

private:
    bool m_bigEndian;
    CKvFieldWriter m_fields;
    CKvTmlNames m_names;
};
