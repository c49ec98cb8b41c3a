// Reads the binary form of script trees from an image in memory.

#pragma once

class CKvMemFileReader;
class CKvScriptTreeNode;

/// Reads the record at the reader into \a root, which keeps what it has, with all below it.
///
/// Errors: false for a record that does not hold what it promises, at any depth; \a root then has
///         what came before.
/// Cost:   linear in the image; besides the tree 16 to 32 bytes of memory a level.
[[nodiscard]] bool KvReadTmlTree(CKvMemFileReader& reader, CKvScriptTreeNode& root);

/// Reads the table of names behind the records and, when it is whole, registers its texts.
///
/// Errors: false, with nothing registered, for a table that does not hold what it promises.
[[nodiscard]] bool KvReadTmlNames(CKvMemFileReader& reader);
