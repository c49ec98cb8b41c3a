// What the four kinds of configurations have in common, told by tables: texts that have a name in
// the file, and texts that must not be missing. For the sources of the configurations alone.

#pragma once

#include <span>

#include "core/KvString.h"
#include "scripttree/KvScriptTreeNode.h"

/// A text and its name in the file.
template <class T>
struct TKvNamedText
{
    const char* name;
    TKvString<char> T::*text;
};

/// A text and what is said when it is empty.
template <class T>
struct TKvRequiredText
{
    TKvString<char> T::*text;
    const char* complaint;
};

/// Takes each text from the attribute of its name; a missing one gives the empty text.
template <class T>
void KvReadAttributes(const CKvScriptTreeNode& node, std::span<const TKvNamedText<T>> texts,
                      T& configuration)
{
    for (const TKvNamedText<T>& text : texts)
        configuration.*text.text = node.GetAttributeValueAsString(CKvIdentifier(text.name));
}

/// Sets an attribute's text, or appends the attribute.
inline void KvSetAttribute(CKvScriptTreeNode& node, const char* name, const TKvString<char>& value)
{
    const CKvIdentifier identifier(name);
    if (CKvScriptTreeAttribute* attribute = node.FindAttribute(identifier))
        attribute->SetValue(value);
    else
        node.AddAttribute(CKvScriptTreeAttribute(identifier, value));
}

template <class T>
void KvWriteAttributes(CKvScriptTreeNode& node, std::span<const TKvNamedText<T>> texts,
                       const T& configuration)
{
    for (const TKvNamedText<T>& text : texts)
        KvSetAttribute(node, text.name, configuration.*text.text);
}

/// The complaints about all texts that are empty, in the table's order.
template <class T>
TKvString<char> KvListMissing(std::span<const TKvRequiredText<T>> texts, const T& configuration)
{
    TKvString<char> complaints;
    for (const TKvRequiredText<T>& text : texts) {
        if ((configuration.*text.text).IsEmpty())
            complaints += text.complaint;
    }
    return complaints;
}

/// Puts the heading in front of complaints, if there are any.
inline TKvString<char> KvUnderHeading(const TKvString<char>& heading,
                                      const TKvString<char>& complaints)
{
    return complaints.IsEmpty() ? complaints : heading + complaints;
}

/// The text with every occurrence of \a pattern, found from left to right, replaced.
TKvString<char> KvReplaceAll(const TKvString<char>& text, const char* pattern,
                             const char* replacement);
