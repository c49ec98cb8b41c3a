// What a set of benchmark inputs looks like, and the options that set it on a command line.

#pragma once

#include <cstdint>
#include <string_view>

struct CKvInputParameters
{
    /// Objects of the level, all five kinds together; each takes about 417 bytes.
    std::uint32_t objects = 24'000;

    /// 1 for objects with a name and nothing else, about 30 bytes each.
    std::uint32_t bareObjects = 0;

    /// Rules, one in ten of them a "simple_fsm_create" without a pattern.
    std::uint32_t rules = 300;

    /// Share of the objects that some rule binds, 0 to 100. Exact to one object a kind when there
    /// are ten groups or more (rules * 0.9 / overlap); with fewer, kinds without a group have none.
    std::uint32_t hitPercent = 30;

    /// Rules that bind one and the same hit object, from 1. Exact when it divides rules * 0.9, else
    /// a little less.
    std::uint32_t overlap = 1;

    /// Templates, half of them in either file.
    std::uint32_t templates = 40;

    std::uint32_t exceptedPerRule = 1;

    /// Overrides a rule, each for another object of those that it binds while there are such.
    std::uint32_t overridesPerRule = 2;

    /// Parameters a rule, those of its template not counted.
    std::uint32_t parametersPerRule = 3;

    std::uint32_t seed = 1;
};

/// Sets the parameter that \a option ("--objects", "--rules", ...) names.
///
/// Errors: false when no parameter has this name, or \a value is no decimal number in its range.
[[nodiscard]] bool KvSetInputParameter(CKvInputParameters& parameters, std::string_view option,
                                       std::string_view value);

/// The lines of a usage text that list the options, each ended by a line feed.
std::string_view KvInputParameterUsage();
