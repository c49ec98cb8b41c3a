// Writes the document that the game reads: one state-machine block for every instance that stands
// alone and one object block for every object that an instance is bound to. The document is as
// large as rules times objects, so it goes to its file piece by piece and never stands in memory.

#pragma once

#include "core/KvString.h"

struct CFSMInstanceLists;

/// Writes the document of the instances, which are only read, as a whole file in the binary form.
///
/// Errors: false when the file cannot be written whole or a list would have more than INT_MAX
///         children; the file is then as it was.
/// Cost:   memory for the largest state-machine block alone.
[[nodiscard]] bool WriteGameDocument(const CFSMInstanceLists& instances,
                                     const TKvString<char>& path, bool bigEndian);
