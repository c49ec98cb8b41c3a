// A universally unique identifier as a plain value of 16 bytes. Nothing here makes or reads one.

#pragma once

#include <array>
#include <type_traits>

/// All zero unless given.
struct kvUUID
{
    std::array<unsigned char, 16> bytes = {};

    constexpr bool operator==(const kvUUID&) const = default;
};

static_assert(sizeof(kvUUID) == 16 && std::is_trivially_copyable_v<kvUUID>);
