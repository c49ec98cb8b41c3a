#include "bench/KvGoals.h"

#include <cstdarg>
#include <cstdio>

namespace {

/// Twice the depth costs twice as much where the cost is linear and four times where it is
/// quadratic; caches that no longer hold the tree cost something too.
constexpr double kLinear = 3;

constexpr CKvGoal kGoals[] = {
    {"1", "CPU, tool / yardstick", 1.0, 0.5},
    {"2", "instructions, tool / yardstick", 1.15, 0.45},
    {"3", "peak memory, tool / yardstick", 0.72, 0.55},
    {"4a", "growth of user CPU to 240,000 objects, exponent", 1.05, 1.02},
    {"4b", "growth of user CPU to 1,000,000 objects, exponent", 1.05, 1.02},
    {"5", "CPU, 10,000 rules / 100 rules", 1.3, 1.12},
    {"6", "CPU of much output / plain copy of it", 8, 4},
    {"7", "peak memory of much output, bytes per byte", 3, 1},
    {"8a", "XML to binary tree, CPU / flatc -b", 0.4, 0.15},
    {"8b", "XML to binary tree, CPU / protoc --encode", 0.4, 0.15},
    {"9", "binary tree load, CPU / reading the file", 12, 6},
    {"10", "20 objects, million instructions beyond yardstick", 5, 2},
    {"11a", "1,000 excepted texts in a rule, exponent", 1.2, 1.1},
    {"11b", "10,000 overrides in a rule, exponent", 1.2, 1.1},
    {"11c", "10,000 templates, exponent", 1.2, 1.1},
    {"11d", "100,000 distinct names saved, exponent", 1.2, 1.1},
    {"11e", "one element among 1,000,000 siblings, exponent", 1.2, 1.1},
    {"12a", "depth 1,000,000 / 500,000, CPU: level", kLinear, kLinear},
    {"12b", "depth: rules", kLinear, kLinear},
    {"12c", "depth: template", kLinear, kLinear},
    {"12d", "depth: binary tree saved and loaded", kLinear, kLinear},
    {"12e", "depth: XML dump", kLinear, kLinear},
    {"12f", "depth: copy", kLinear, kLinear},
    {"12g", "depth: compare", kLinear, kLinear},
    {"12h", "depth: release", kLinear, kLinear},
};

constexpr std::size_t kMostNoteBytes = 500;

}  // namespace

std::span<const CKvGoal> KvGoals()
{
    return kGoals;
}

std::string_view KvVerdict(const CKvGoal& goal, const CKvFinding& finding)
{
    if (finding.fails)
        return "MISSED";
    if (!finding.figure)
        return "not measured";
    if (*finding.figure <= goal.aim)
        return "met";
    // Also for a figure that is not a number.
    return *finding.figure <= goal.must ? "aim missed" : "MISSED";
}

void KvPrintGoals(const CKvFindings& findings)
{
    std::printf("%-4s %-49s %9s %6s %6s  %-12s %s\n", "#", "what", "figure", "must", "aim", "",
                "measured");
    for (const CKvGoal& goal : kGoals) {
        for (const CKvFinding& finding : findings) {
            if (finding.row != goal.row)
                continue;
            const std::string figure = finding.figure ? KvNote("%.3f", *finding.figure) : "-";
            std::printf("%-4s %-49s %9s %6.2f %6.2f  %-12s %s\n", goal.row.data(), goal.what.data(),
                        figure.c_str(), goal.must, goal.aim, KvVerdict(goal, finding).data(),
                        finding.note.c_str());
        }
    }
}

std::string KvNote(const char* format, ...)
{
    char text[kMostNoteBytes + 1] = {};
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return text;
}
