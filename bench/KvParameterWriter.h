// Writes the "parameter" nodes of rules and templates.

#pragma once

#include <cstdint>

#include "bench/KvBenchRandom.h"
#include "bench/KvXmlWriter.h"

/// Writes the \a index -th parameter of an owner: a float, an integer, a text, a flag or now and
/// then a list. The name and the type follow from the index alone, so that an override can redefine
/// it.
void KvWriteParameter(CKvXmlWriter& xml, CKvBenchRandom& random, std::uint32_t index);
