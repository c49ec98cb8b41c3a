// The table of goals: what the tool and the library must reach, and what a run has found.

#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A row of the table. Figures are better the smaller they are.
struct CKvGoal
{
    std::string_view row;
    std::string_view what;
    double must;
    double aim;
};

std::span<const CKvGoal> KvGoals();

/// What was found for a row.
struct CKvFinding
{
    std::string_view row;

    /// Nothing when it was not measured; the note says why.
    std::optional<double> figure;

    /// With which peers and inputs, and what the figure is made of.
    std::string note;

    /// What the row asks for does not work at all, whatever the figure.
    bool fails = false;
};

using CKvFindings = std::vector<CKvFinding>;

/// "met", "aim missed", "MISSED" or "not measured".
std::string_view KvVerdict(const CKvGoal& goal, const CKvFinding& finding);

/// Prints to standard output every row that something was found for.
void KvPrintGoals(const CKvFindings& findings);

/// A text made as printf makes it, of at most 500 bytes.
[[gnu::format(printf, 1, 2)]] std::string KvNote(const char* format, ...);
