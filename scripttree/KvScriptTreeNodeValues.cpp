// The node's typed reads: find the first attribute of a name and parse its text.

#include <array>

#include "core/KvNumberText.h"
#include "math/KvColor.h"
#include "math/KvQuaternion.h"
#include "math/KvVector2.h"
#include "math/KvVector3.h"
#include "scripttree/KvScriptTreeNode.h"

namespace {

bool IsTrue(const TKvString<char>& text)
{
    return text == "1" || text == "true";
}

/// Reads the leading numbers of an attribute's text, all of them or none.
template <std::size_t N>
bool ReadFloats(const CKvScriptTreeAttribute* attribute, std::array<float, N>& values)
{
    if (attribute == nullptr)
        return false;
    const char* text = attribute->GetValue().GetText();
    std::array<float, N> read = {};
    for (float& value : read) {
        if (!kvScanFloat(text, value))
            return false;
    }
    values = read;
    return true;
}

}  // namespace

const TKvString<char>& CKvScriptTreeNode::GetAttributeValueAsString(
    const CKvIdentifier& identifier) const
{
    const CKvScriptTreeAttribute* attribute = FindAttribute(identifier);
    return attribute != nullptr ? attribute->GetValue() : TKvString<char>::STR_EMPTY;
}

bool CKvScriptTreeNode::GetAttributeValueAsString(const CKvIdentifier& identifier,
                                                  TKvString<char>& value) const
{
    const CKvScriptTreeAttribute* attribute = FindAttribute(identifier);
    if (attribute == nullptr)
        return false;
    value = attribute->GetValue();
    return true;
}

bool CKvScriptTreeNode::GetAttributeValueAsWString(const CKvIdentifier& identifier,
                                                   TKvString<wchar_t>& value) const
{
    const CKvScriptTreeAttribute* attribute = FindAttribute(identifier);
    if (attribute == nullptr)
        return false;
    value = attribute->GetWValue();
    return true;
}

bool CKvScriptTreeNode::GetAttributeValueAsBool(const CKvIdentifier& identifier) const
{
    return IsTrue(GetAttributeValueAsString(identifier));
}

bool CKvScriptTreeNode::GetAttributeValueAsBoolDefault(const CKvIdentifier& identifier,
                                                       bool defaultValue) const
{
    const CKvScriptTreeAttribute* attribute = FindAttribute(identifier);
    return attribute != nullptr ? IsTrue(attribute->GetValue()) : defaultValue;
}

bool CKvScriptTreeNode::GetAttributeValueAsBool(const CKvIdentifier& identifier, bool& value) const
{
    const CKvScriptTreeAttribute* attribute = FindAttribute(identifier);
    if (attribute == nullptr)
        return false;
    value = IsTrue(attribute->GetValue());
    return true;
}

int CKvScriptTreeNode::GetAttributeValueAsInt(const CKvIdentifier& identifier) const
{
    return GetAttributeValueAsIntDefault(identifier, 0);
}

int CKvScriptTreeNode::GetAttributeValueAsIntDefault(const CKvIdentifier& identifier,
                                                     int defaultValue) const
{
    const CKvScriptTreeAttribute* attribute = FindAttribute(identifier);
    return attribute != nullptr ? kvStringToS32(attribute->GetValue().GetText()) : defaultValue;
}

bool CKvScriptTreeNode::GetAttributeValueAsInt(const CKvIdentifier& identifier, int& value) const
{
    const CKvScriptTreeAttribute* attribute = FindAttribute(identifier);
    if (attribute == nullptr)
        return false;
    const char* text = attribute->GetValue().GetText();
    return kvScanInt(text, value);
}

float CKvScriptTreeNode::GetAttributeValueAsFloat(const CKvIdentifier& identifier) const
{
    return GetAttributeValueAsFloatDefault(identifier, 0.0f);
}

float CKvScriptTreeNode::GetAttributeValueAsFloatDefault(const CKvIdentifier& identifier,
                                                         float defaultValue) const
{
    const CKvScriptTreeAttribute* attribute = FindAttribute(identifier);
    return attribute != nullptr ? kvStringToFloat(attribute->GetValue().GetText()) : defaultValue;
}

bool CKvScriptTreeNode::GetAttributeValueAsFloat(const CKvIdentifier& identifier,
                                                 float& value) const
{
    std::array<float, 1> read = {};
    if (!ReadFloats(FindAttribute(identifier), read))
        return false;
    value = read[0];
    return true;
}

std::uint64_t CKvScriptTreeNode::GetAttributeValueAsU64(const CKvIdentifier& identifier) const
{
    std::uint64_t value = 0;
    GetAttributeValueAsU64(identifier, value);
    return value;
}

bool CKvScriptTreeNode::GetAttributeValueAsU64(const CKvIdentifier& identifier,
                                               std::uint64_t& value) const
{
    const CKvScriptTreeAttribute* attribute = FindAttribute(identifier);
    if (attribute == nullptr)
        return false;
    value = kvScanU64(attribute->GetValue().GetText());
    return true;
}

bool CKvScriptTreeNode::GetAttributeValueAsVector2(const CKvIdentifier& identifier,
                                                   CKvVector2& value) const
{
    std::array<float, 2> read = {};
    if (!ReadFloats(FindAttribute(identifier), read))
        return false;
    value = CKvVector2(read[0], read[1]);
    return true;
}

bool CKvScriptTreeNode::GetAttributeValueAsVector3(const CKvIdentifier& identifier,
                                                   CKvVector3& value) const
{
    std::array<float, 3> read = {};
    if (!ReadFloats(FindAttribute(identifier), read))
        return false;
    value = CKvVector3(read[0], read[1], read[2]);
    return true;
}

bool CKvScriptTreeNode::GetAttributeValueAsQuaternion(const CKvIdentifier& identifier,
                                                      CKvQuaternion& value) const
{
    std::array<float, 4> read = {};
    if (!ReadFloats(FindAttribute(identifier), read))
        return false;
    value = CKvQuaternion(read[0], read[1], read[2], read[3]);
    return true;
}

bool CKvScriptTreeNode::GetAttributeValueAsColor(const CKvIdentifier& identifier,
                                                 CKvRGB<float>& value) const
{
    std::array<float, 3> read = {};
    if (!ReadFloats(FindAttribute(identifier), read))
        return false;
    value = CKvRGB<float>(read[0], read[1], read[2]);
    return true;
}

bool CKvScriptTreeNode::GetAttributeValueAsColor(const CKvIdentifier& identifier,
                                                 CKvRGBA<float>& value) const
{
    std::array<float, 4> read = {};
    if (!ReadFloats(FindAttribute(identifier), read))
        return false;
    value = CKvRGBA<float>(read[0], read[1], read[2], read[3]);
    return true;
}
