#include "bench/KvBenchReport.h"

#include <cstdio>

namespace {

const char* Verdict(const CKvBenchFigure& figure)
{
    if (!figure.goal)
        return "-";
    return figure.value <= *figure.goal ? "met" : "MISSED";
}

}  // namespace

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
