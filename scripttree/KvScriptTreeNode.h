// One node of a script tree: a name, attributes and children in order, and an optional text. Names
// need not be unique; every look-up takes the first in list order.

#pragma once

#include <memory>

#include "core/KvArray.h"
#include "core/KvIdentifier.h"
#include "core/KvString.h"
#include "scripttree/KvScriptTreeAttribute.h"

struct CKvVector2;

/// Fields stand in the documented order; the destructor is the only virtual function.
///
/// Ownership: a node owns the children in its list, but its destructor does not release them:
///            Empty() does, as do the tree that holds the node and CKvOwnedScriptTreeNode.
///            Nothing here recurses, however deep a tree is.
class CKvScriptTreeNode
{
public:
    /// A node with the null identifier.
    CKvScriptTreeNode();
    explicit CKvScriptTreeNode(const CKvIdentifier& identifier) : m_identifier(identifier) {}

    /// A deep copy.
    CKvScriptTreeNode(const CKvScriptTreeNode& other);

    /// Becomes a deep copy; the children of before are released. \a other may be one of them.
    CKvScriptTreeNode& operator=(const CKvScriptTreeNode& other);

    virtual ~CKvScriptTreeNode();

    const CKvIdentifier& GetIdentifier() const { return m_identifier; }
    void SetIdentifier(const CKvIdentifier& identifier) { m_identifier = identifier; }

    /// The character data of a text node.
    const TKvString<char>& GetText() const { return m_text; }

    /// Null or "" clears.
    void SetText(const char* text) { m_text = text; }

    /// Says how many attributes and children are about to be added, so that the first append makes
    /// room for exactly these. Lists that have room already are left alone.
    void ExpectCounts(int attributeCount, int childCount);

    // --- Attributes

    /// Appends a copy, whatever names are there.
    void AddAttribute(const CKvScriptTreeAttribute& attribute) { m_attributes.Add(attribute); }
    void AddAttribute(CKvScriptTreeAttribute&& attribute)
    {
        m_attributes.Add(static_cast<CKvScriptTreeAttribute&&>(attribute));
    }

    int GetAttributeCount() const { return m_attributes.GetCount(); }

    /// Errors: a shared empty attribute for an index outside the list.
    const CKvScriptTreeAttribute& GetAttribute(int index) const;
    CKvScriptTreeAttribute& GetAttribute(int index);

    /// The first attribute of that name, or null.
    const CKvScriptTreeAttribute* FindAttribute(const CKvIdentifier& identifier) const;
    CKvScriptTreeAttribute* FindAttribute(const CKvIdentifier& identifier);

    /// Removes the first attribute that is equal to the given one, if any.
    void RemoveAttribute(const CKvScriptTreeAttribute& attribute);

    // --- Children

    /// Appends. Ownership: the node takes the child. Null is not appended.
    void AddChild(CKvScriptTreeNode* child);

    /// Appends a node with the float attributes "red", "green" and "blue".
    void AddChild(const CKvIdentifier& identifier, const CKvRGB<float>& color);

    /// Makes a node, appends it and gives it.
    CKvScriptTreeNode* AddNewChild(const CKvIdentifier& identifier);

    /// Appends all pointers in order. Ownership: the node takes the children.
    void AddChildrenArray(CKvArray<CKvScriptTreeNode*> children);

    int GetChildCount() const { return m_children.GetCount(); }

    /// Errors: null for an index outside the list.
    CKvScriptTreeNode* GetChild(int index) const;

    /// The first child of that name, or null.
    CKvScriptTreeNode* FindChild(const CKvIdentifier& identifier) const;

    int GetChildrenCountById(const CKvIdentifier& identifier) const;

    /// Empties the array, then appends the direct children of that name in order.
    void GetChildrenByIdArray(const CKvIdentifier& identifier,
                              CKvArray<CKvScriptTreeNode*>& children);
    void GetChildrenByIdArray(const CKvIdentifier& identifier,
                              CKvArray<const CKvScriptTreeNode*>& children) const;

    /// Take children out of the list. Ownership: the caller owns what is taken out. What is not
    /// there is not an error.
    void RemoveChild(int index);
    void RemoveChild(CKvScriptTreeNode* child);
    void RemoveChildrenById(const CKvIdentifier& identifier);

    /// Releases all descendants; name, attributes and text stay.
    void Empty();

    // --- Searches: the first attribute of the given name, its text ("" without one) taken as an
    // identifier, equals \a value. They give the first match in document order, or null.

    CKvScriptTreeNode* FindChildByAttribute(const CKvIdentifier& attribute,
                                            const CKvIdentifier& value) const;

    /// With \a recursive, depth first through all descendants, parents before their children.
    CKvScriptTreeNode* FindChildByAttribute(const CKvIdentifier& attribute,
                                            const CKvIdentifier& value, bool recursive);

    const CKvScriptTreeNode* FindChildByIdAndAttributeValue(const CKvIdentifier& childName,
                                                            const CKvIdentifier& attribute,
                                                            const CKvIdentifier& value) const;
    CKvScriptTreeNode* FindChildByIdAndAttributeValue(const CKvIdentifier& childName,
                                                      const CKvIdentifier& attribute,
                                                      const CKvIdentifier& value);

    // --- Whole subtrees

    /// Takes name, attributes and text of \a source and appends deep copies of its children behind
    /// the own ones. \a source may be any node, also this one, a descendant or an ancestor.
    ///
    /// Cost: linear; besides the copy 24 bytes of memory a level.
    void Copy(const CKvScriptTreeNode* source);

    /// Takes the name of \a other and, behind the own ones, its attributes and children; \a other
    /// is left without. Either all of it happens or, when memory is short, nothing.
    void Absorb(CKvScriptTreeNode& other);

    /// Equal in name, attributes, text and children, all in order.
    ///
    /// Cost: linear; 16 bytes of memory for each node beside those being compared and their
    ///       ancestors.
    bool operator==(const CKvScriptTreeNode& other) const;

    // --- Typed reads of the first attribute of a name. The form with an output tells whether the
    // attribute is there and reads as that type, and leaves the output alone when not; the forms
    // without give 0, false, "" or the default for a missing attribute.

    /// Valid until the attribute changes.
    const TKvString<char>& GetAttributeValueAsString(const CKvIdentifier& identifier) const;
    bool GetAttributeValueAsString(const CKvIdentifier& identifier, TKvString<char>& value) const;
    bool GetAttributeValueAsWString(const CKvIdentifier& identifier,
                                    TKvString<wchar_t>& value) const;

    /// True exactly for "1" and "true".
    bool GetAttributeValueAsBool(const CKvIdentifier& identifier) const;
    bool GetAttributeValueAsBoolDefault(const CKvIdentifier& identifier, bool defaultValue) const;
    bool GetAttributeValueAsBool(const CKvIdentifier& identifier, bool& value) const;

    /// Decimal; a text without a number gives 0, or false in the form with an output.
    int GetAttributeValueAsInt(const CKvIdentifier& identifier) const;
    int GetAttributeValueAsIntDefault(const CKvIdentifier& identifier, int defaultValue) const;
    bool GetAttributeValueAsInt(const CKvIdentifier& identifier, int& value) const;

    float GetAttributeValueAsFloat(const CKvIdentifier& identifier) const;
    float GetAttributeValueAsFloatDefault(const CKvIdentifier& identifier,
                                          float defaultValue) const;
    bool GetAttributeValueAsFloat(const CKvIdentifier& identifier, float& value) const;

    /// Decimal, hexadecimal after "0x" or octal after "0"; a text without a number gives 0. Every
    /// value that the unsigned 64-bit constructor wrote reads back.
    std::uint64_t GetAttributeValueAsU64(const CKvIdentifier& identifier) const;
    bool GetAttributeValueAsU64(const CKvIdentifier& identifier, std::uint64_t& value) const;

    /// Numbers separated by white space, in storage order; further text is ignored.
    bool GetAttributeValueAsVector2(const CKvIdentifier& identifier, CKvVector2& value) const;
    bool GetAttributeValueAsVector3(const CKvIdentifier& identifier, CKvVector3& value) const;
    bool GetAttributeValueAsQuaternion(const CKvIdentifier& identifier, CKvQuaternion& value) const;
    bool GetAttributeValueAsColor(const CKvIdentifier& identifier, CKvRGB<float>& value) const;
    bool GetAttributeValueAsColor(const CKvIdentifier& identifier, CKvRGBA<float>& value) const;

private:
    void CopyOwn(const CKvScriptTreeNode& source);
    CKvArray<CKvScriptTreeNode*> JoinChildren(const CKvScriptTreeNode& other) const;

    CKvIdentifier m_identifier;
    CKvArray<CKvScriptTreeAttribute> m_attributes;
    CKvArray<CKvScriptTreeNode*> m_children;
    TKvString<char> m_text;
};

/// Releases a node with all its descendants.
struct CKvScriptTreeNodeRelease
{
    void operator()(CKvScriptTreeNode* node) const;
};

/// A node that is in no tree yet, with all its descendants.
using CKvOwnedScriptTreeNode = std::unique_ptr<CKvScriptTreeNode, CKvScriptTreeNodeRelease>;
