// Writes a template file of a set of benchmark inputs.

#pragma once

#include <cstdint>
#include <string>

/// The name of the \a index -th template, both files counted as one.
std::string KvTemplateName(std::uint32_t index);

/// Writes the templates from number \a first to below \a end: parameters and nested sub-objects of
/// their own, and for three in four the inclusion of a fourth that came before. The templates that
/// are included include nothing, so the content of one does not grow with their number.
///
/// Errors: false when the file could not be written; what was written stays.
[[nodiscard]] bool KvWriteTemplates(std::uint32_t first, std::uint32_t end, std::uint32_t seed,
                                    const std::string& path);
