#include "bench/KvBenchReport.h"

#include <cstdio>

namespace {

constexpr double kBytesPerMegabyte = 1e6;
constexpr double kMillisecondsPerSecond = 1e3;

void PrintCost(const CKvProcessCost& cost)
{
    std::printf(" | %8.1f %8.1f %8.1f", cost.userSeconds * kMillisecondsPerSecond,
                cost.systemSeconds * kMillisecondsPerSecond, cost.peakBytes / kBytesPerMegabyte);
}

const char* Verdict(const CKvBenchFigure& figure)
{
    if (!figure.goal)
        return "-";
    return figure.value <= *figure.goal ? "met" : "MISSED";
}

}  // namespace

void KvPrintWorkloads(const std::vector<CKvWorkload>& workloads)
{
    std::printf("%-13s %9s %9s | %26s | %26s\n", "", "level", "output", "tool", "yardstick");
    std::printf("%-13s %9s %9s | %8s %8s %8s | %8s %8s %8s\n", "workload", "MB", "MB", "user ms",
                "sys ms", "peak MB", "user ms", "sys ms", "peak MB");
    for (const CKvWorkload& workload : workloads) {
        std::printf("%-13s %9.2f %9.2f", workload.name.c_str(),
                    static_cast<double>(workload.levelBytes) / kBytesPerMegabyte,
                    static_cast<double>(workload.outputBytes) / kBytesPerMegabyte);
        PrintCost(workload.tool);
        PrintCost(workload.yardstick);
        std::printf("\n");
    }
}

void KvPrintFigures(const std::vector<CKvBenchFigure>& figures)
{
    std::printf("%-58s %8s %8s  %s\n", "figure", "value", "goal", "");
    for (const CKvBenchFigure& figure : figures) {
        std::printf("%-58s %8.3f", figure.what.c_str(), figure.value);
        if (figure.goal)
            std::printf(" %8.2f", *figure.goal);
        else
            std::printf(" %8s", "-");
        std::printf("  %s\n", Verdict(figure));
    }
}
