// Writes script trees as indented XML text.

#pragma once

#include "core/KvString.h"

class CKvScriptTreeNode;

/// Appends the text of \a root and all below it, indented from \a depth on. A name without
/// registered text logs its warning wherever it is written.
///
/// Errors: false, with \a out as it was, when it would become 2 GiB or more; that is found out
///         before memory is asked for.
/// Cost:   two passes over the tree, the first of which counts; the memory of the text, once.
[[nodiscard]] bool KvDumpXml(const CKvScriptTreeNode& root, int depth, TKvString<char>& out);
