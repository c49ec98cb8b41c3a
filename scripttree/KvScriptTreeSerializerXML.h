// The XML form of script trees: elements are nodes, XML attributes are text attributes, character
// data becomes nodes with the null identifier and a text. Parsing is TinyXML's.

#pragma once

#include "core/KvString.h"

class CKvFileHandle;
class CKvScriptTree;
class CKvScriptTreeNode;
class TiXmlNode;

/// Virtual functions stand in the documented slot order. Load() and Save() reach the others through
/// the virtual table. There is no state: one object loads and saves any number of trees.
class CKvScriptTreeSerializerXML
{
public:
    virtual ~CKvScriptTreeSerializerXML();

    virtual bool SupportLoad() const { return true; }
    virtual bool SupportSave() const { return true; }
    virtual bool SupportParse() const { return true; }
    virtual bool SupportDump() const { return true; }

    /// Reads a document from a file.
    ///
    /// Errors: false; the tree is as it was when the file cannot be read whole or is empty, and
    ///         empty when its text does not parse.
    [[nodiscard]] virtual bool Load(CKvScriptTree& tree, const TKvString<char>& path);

    /// The same from an open handle, which stays open and is read from its start.
    [[nodiscard]] virtual bool LoadXmlFromFileHandle(CKvScriptTree& tree, CKvFileHandle* handle);

    /// Replaces the tree by the document in \a text, up to its first zero byte. Names get
    /// registered as they are read, also those of a text that then fails.
    ///
    /// Errors: false and an empty tree for a text that is not well-formed, has no element or does
    ///         not fit into memory. Nesting and counts are not limited.
    [[nodiscard]] virtual bool Parse(CKvScriptTree& tree, const TKvString<char>& text);

    /// Writes the document to a file, which is replaced when complete.
    ///
    /// Errors: false when the file cannot be written whole; it is then as it was. A tree without
    ///         root leaves an empty file and gives false.
    [[nodiscard]] virtual bool Save(CKvScriptTree& tree, const TKvString<char>& path);

    /// Gives the document as indented text. Values are written as they are, nothing is escaped, and
    /// node texts are left out: a value with '"', '<' or '&' does not read back.
    ///
    /// Errors: false for a tree without root and for a text of 2 GiB or more.
    [[nodiscard]] virtual bool Dump(CKvScriptTree& tree, TKvString<char>& out);

protected:
    /// Fills \a node from \a xml and, moved over piece by piece, all below it: \a xml keeps its
    /// attributes but loses its children, so that both trees never stand in memory together.
    void ParseTiXmlNode(TiXmlNode* xml, CKvScriptTreeNode* node);

    /// Appends the text of \a node and all below it, indented from \a depth on. False for null.
    bool RecursiveDump(CKvScriptTreeNode* node, TKvString<char>& out, int depth);
};
