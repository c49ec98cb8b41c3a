// What an editor needs to know of an enumeration: its name and its values with their names.

#pragma once

#include <span>

/// An enumeration that describes itself. Virtual functions stand in the documented order.
struct SKvEnum
{
    struct SValue
    {
        const char* name;
        int value;
    };

    /// Ownership: all of it is the program's and lives as long as the fields it describes.
    struct SEntry
    {
        const char* name;
        std::span<const SValue> values;
    };

    virtual ~SKvEnum() = default;

    virtual const SEntry* GetEntry() const = 0;
};
