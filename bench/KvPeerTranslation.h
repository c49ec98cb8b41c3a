// A script tree in the text forms that the peers read: a node is a name, a list of attributes (name
// and value) and a list of children. Empty lists are left out, and so is white space.

#pragma once

#include <span>
#include <string>
#include <string_view>

class CKvScriptTreeNode;

/// What flatc and protoc are told about these texts.
extern const std::string_view kKvFlatSchema;
extern const std::string_view kKvProtoSchema;

/// JSON for flatc. Values are those of the generated inputs: nothing but '"' and '\' is escaped.
std::string KvTreeAsJson(const CKvScriptTreeNode& root);

/// The text form of a protocol buffer, for protoc, with the same escapes.
std::string KvTreeAsProtoText(const CKvScriptTreeNode& root);

/// The child's work: translates a document. Arguments are the paths of the XML file, the JSON file
/// and the text file.
[[nodiscard]] bool KvRunTranslate(std::span<const char* const> arguments);

/// True when both files hold the same but for white space.
bool KvAreAlikeButForSpace(const std::string& path, const std::string& otherPath);
