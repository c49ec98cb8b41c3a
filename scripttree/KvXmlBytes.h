// How TinyXML classes the bytes of a text.

#pragma once

#include <array>

/// One look-up a byte instead of a call. The classes are the C library's, whose answers may depend
/// on the process's locale, so that they are asked once for each document.
class CKvXmlBytes
{
public:
    CKvXmlBytes();

    bool IsSpace(char c) const { return Has(c, kSpace); }
    bool IsNameStart(char c) const { return Has(c, kNameStart); }
    bool IsNamePart(char c) const { return Has(c, kNamePart); }

    /// Whether the byte stands for itself in values and texts, in any encoding: ASCII but for '&'
    /// and the terminator.
    bool IsPlain(char c) const { return Has(c, kPlain); }

private:
    static constexpr int kSpace = 1;
    static constexpr int kNameStart = 2;
    static constexpr int kNamePart = 4;
    static constexpr int kPlain = 8;

    bool Has(char c, int kind) const
    {
        return (m_classes[static_cast<unsigned char>(c)] & kind) != 0;
    }

    std::array<unsigned char, 256> m_classes = {};
};
