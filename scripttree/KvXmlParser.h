// Builds script trees from XML texts.

#pragma once

#include "scripttree/KvScriptTreeNode.h"

/// Gives the first element of a zero-terminated text with all below it: what a parse of the whole
/// text by TinyXML gives, but on an explicit stack, however deep it is. Nothing at or behind the
/// terminator is read.
///
/// Names are registered as they are read, also those of a text that turns out not to be
/// well-formed.
///
/// Errors: null when TinyXML fails on the text or it has no element. Throws std::bad_alloc when
///         memory runs out, with nothing lost.
CKvOwnedScriptTreeNode KvParseXml(const char* text);
