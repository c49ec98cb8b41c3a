#include "bench/KvPeerTranslation.h"

#include <algorithm>

#include "bench/KvBenchFile.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeName.h"
#include "scripttree/KvScriptTreeSerializerXML.h"
#include "scripttree/KvScriptTreeWalk.h"

namespace {

using CWalk = TKvScriptTreeWalk<const CKvScriptTreeNode>;

void AppendQuoted(std::string& out, const char* text)
{
    out += '"';
    for (; *text != 0; ++text) {
        if (*text == '"' || *text == '\\')
            out += '\\';
        out += *text;
    }
    out += '"';
}

/// "name":..., "value":... or name:..., value:...
void AppendField(std::string& out, std::string_view key, const TKvString<char>& text)
{
    out.append(key).append(":");
    AppendQuoted(out, text.GetText());
}

void AppendJsonNode(std::string& out, const CKvScriptTreeNode& node)
{
    AppendField(out, "{\"name\"", KvGetNameText(node.GetIdentifier()));
    for (int i = 0; i < node.GetAttributeCount(); ++i) {
        const CKvScriptTreeAttribute& attribute = node.GetAttribute(i);
        out += i == 0 ? ",\"attributes\":[" : ",";
        AppendField(out, "{\"name\"", KvGetNameText(attribute.GetIdentifier()));
        AppendField(out, ",\"value\"", attribute.GetValue());
        out += '}';
    }
    if (node.GetAttributeCount() > 0)
        out += ']';
}

void AppendProtoNode(std::string& out, const CKvScriptTreeNode& node)
{
    AppendField(out, "name", KvGetNameText(node.GetIdentifier()));
    for (int i = 0; i < node.GetAttributeCount(); ++i) {
        const CKvScriptTreeAttribute& attribute = node.GetAttribute(i);
        AppendField(out, " attributes{name", KvGetNameText(attribute.GetIdentifier()));
        AppendField(out, " value", attribute.GetValue());
        out += '}';
    }
}

void EraseSpace(std::string& text)
{
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
}

}  // namespace

const std::string_view kKvFlatSchema =
    "table Attribute { name: string; value: string; }\n"
    "table Node { name: string; attributes: [Attribute]; children: [Node]; }\n"
    "root_type Node;\n";

const std::string_view kKvProtoSchema =
    "syntax = \"proto3\";\n"
    "message Attribute { string name = 1; string value = 2; }\n"
    "message Node {\n"
    "  string name = 1; repeated Attribute attributes = 2; repeated Node children = 3;\n"
    "}\n";

std::string KvTreeAsJson(const CKvScriptTreeNode& root)
{
    std::string out;
    for (CWalk walk(&root); walk.Next();) {
        const CKvScriptTreeNode& node = *walk.GetNode();
        if (walk.IsLeaving()) {
            out += node.GetChildCount() > 0 ? "]}" : "}";
            continue;
        }
        // A child before this one ended with its brace.
        if (walk.GetDepth() > 0)
            out += out.back() == '}' ? "," : ",\"children\":[";
        AppendJsonNode(out, node);
    }
    return out;
}

std::string KvTreeAsProtoText(const CKvScriptTreeNode& root)
{
    std::string out;
    for (CWalk walk(&root); walk.Next();) {
        const bool isRoot = walk.GetDepth() == 0;
        if (walk.IsLeaving()) {
            out += isRoot ? "" : "}";
            continue;
        }
        out += isRoot ? "" : " children{";
        AppendProtoNode(out, *walk.GetNode());
    }
    return out;
}

bool KvRunTranslate(std::span<const char* const> arguments)
{
    CKvScriptTree tree;
    CKvScriptTreeSerializerXML xml;
    return arguments.size() == 3 && xml.Load(tree, arguments[0]) &&
           KvWriteWholeFile(arguments[1], KvTreeAsJson(*tree.GetRootNode())) &&
           KvWriteWholeFile(arguments[2], KvTreeAsProtoText(*tree.GetRootNode()));
}

bool KvAreAlikeButForSpace(const std::string& path, const std::string& otherPath)
{
    std::string text;
    std::string other;
    if (!KvReadWholeFile(path, text) || !KvReadWholeFile(otherPath, other))
        return false;
    EraseSpace(text);
    EraseSpace(other);
    return text == other;
}
