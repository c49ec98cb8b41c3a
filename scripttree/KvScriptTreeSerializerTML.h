// The binary form of script trees, which the game reads at run time: node records without header or
// padding, followed by a table of the names' texts. Values are stored by what their text reads as:
// a number with a point as a float, a whole number as an int, all else as text.

#pragma once

#include "core/KvArray.h"
#include "core/KvString.h"

class CKvFileHandle;
class CKvIdentifier;
class CKvMemFileReader;
class CKvScriptTree;
class CKvScriptTreeNode;

/// Virtual functions stand in the documented slot order. There is no state.
class CKvScriptTreeSerializerTML
{
public:
    virtual ~CKvScriptTreeSerializerTML();

    // What these tell is about text forms; loading and saving files below work all the same.
    virtual bool SupportLoad() const { return false; }
    virtual bool SupportSave() const { return false; }
    virtual bool SupportParse() const { return false; }
    virtual bool SupportDump() const { return false; }

    /// Reads an image in the machine's byte order from a file. A root that the tree has takes the
    /// image's name and, behind its own, the image's attributes and children.
    ///
    /// Errors: false, with the tree as it was, when the file cannot be read whole, the image ends
    ///         early, promises more than it holds or has a type code outside 1 to 4.
    [[nodiscard]] virtual bool Load(CKvScriptTree& tree, const TKvString<char>& path);

    /// The same from an open handle, which stays open.
    [[nodiscard]] virtual bool LoadTmlFromFileHandle(CKvScriptTree& tree, CKvFileHandle* handle);

    /// The same from memory, which is only read and stays the caller's.
    [[nodiscard]] virtual bool LoadTmlFromMemory(CKvScriptTree& tree, void* data,
                                                 unsigned int size);

    /// False: the format has no text form.
    virtual bool Parse(CKvScriptTree& tree, const TKvString<char>& text);

    /// Writes the tree to a file, which is replaced when complete; numbers are big-endian when
    /// asked, else little-endian. A tree without root gives an empty file.
    ///
    /// Errors: false when the file cannot be written whole; it is then as it was.
    [[nodiscard]] virtual bool Save(CKvScriptTree& tree, const TKvString<char>& path,
                                    bool bigEndian);

    /// False: the format has no text form.
    virtual bool Dump(CKvScriptTree& tree, TKvString<char>& out);

protected:
    /// Writes the record of \a node with all below it and appends each name not yet in \a names.
    /// Always true: a failed write marks the handle.
    bool RecursiveSave(CKvFileHandle* handle, CKvScriptTreeNode* node,
                       CKvArray<CKvIdentifier>& names, bool bigEndian);

    /// Reads the record at the reader into \a node, which keeps what it has, with all below it.
    /// False for a record that does not hold what it promises; \a node then has what came before.
    bool RecursiveLoad(CKvMemFileReader& reader, CKvScriptTreeNode* node);
};
