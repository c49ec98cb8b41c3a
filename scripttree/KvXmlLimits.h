// The guard in front of TinyXML, whose parser recurses once per nested element and compares each
// attribute of an element with all before it.

#pragma once

#include <cstdint>

/// The deepest nesting of elements and the most attributes of one element that are handed to the
/// parser. It and its tree's destruction need some 350 bytes of stack a level.
inline constexpr int kKvXmlMaxDepth = 4000;
inline constexpr int kKvXmlMaxAttributes = 10000;

/// The most steps that the parser may take from nodes up to their document and along the attributes
/// of elements: some for every byte of the text, and as many as cost a fraction of a second. Many
/// deep or wide elements would otherwise take hours, each of them within the limits above.
inline constexpr std::int64_t kKvXmlStepsPerByte = 64;
inline constexpr std::int64_t kKvXmlFreeSteps = 50'000'000;

/// How far a text reaches for these limits. Measuring ends at the first one that is exceeded.
struct CKvXmlExtent
{
    int depth = 0;
    int attributes = 0;
    std::int64_t steps = 0;
    std::int64_t maxSteps = 0;

    bool IsWithinLimits() const
    {
        return depth <= kKvXmlMaxDepth && attributes <= kKvXmlMaxAttributes && steps <= maxSteps;
    }
};

/// Measures a text exactly as TinyXML 2.6.2 reads it, well-formed or not, without building
/// anything.
///
/// \a text must be followed by at least three more zero bytes behind its terminator: inside a
/// multi-byte character neither TinyXML nor this function looks for the end.
CKvXmlExtent KvMeasureXml(const char* text);
