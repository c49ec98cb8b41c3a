// The guard in front of TinyXML, whose parser recurses once per nested element and compares each
// attribute of an element with all before it.

#pragma once

/// The deepest nesting of elements and the most attributes of one element that are handed to the
/// parser. It and its tree's destruction need some 350 bytes of stack a level.
inline constexpr int kKvXmlMaxDepth = 4000;
inline constexpr int kKvXmlMaxAttributes = 10000;

/// How far a text reaches for these limits. Values stop at the first one above its limit.
struct CKvXmlExtent
{
    int depth = 0;
    int attributes = 0;

    bool IsWithinLimits() const
    {
        return depth <= kKvXmlMaxDepth && attributes <= kKvXmlMaxAttributes;
    }
};

/// Measures a text exactly as TinyXML 2.6.2 reads it, well-formed or not, without building
/// anything.
///
/// \a text must be followed by at least three more zero bytes behind its terminator: inside a
/// multi-byte character neither TinyXML nor this function looks for the end.
CKvXmlExtent KvMeasureXml(const char* text);
