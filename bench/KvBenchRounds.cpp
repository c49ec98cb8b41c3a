#include "bench/KvBenchRounds.h"

#include <charconv>
#include <cstdio>

bool KvReadRounds(std::string_view text, int& rounds)
{
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, rounds);
    return error == std::errc() && stop == end && rounds >= 1 && rounds <= 1000;
}

bool KvReadRoundsOption(int argc, char** argv, const char* program, int& rounds)
{
    if (argc < 2 || (argc == 2 && KvReadRounds(argv[1], rounds)))
        return true;
    std::fprintf(stderr, "Usage: %s [ROUNDS]\n", program);
    return false;
}
