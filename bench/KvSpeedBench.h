// What the benchmark of the tool measures: its workloads and the figures made of them. A figure is
// made when all its workloads were measured, so a run may leave workloads out.

#pragma once

#include <vector>

#include "bench/KvBenchReport.h"
#include "bench/KvWorkload.h"

/// The 10 MB workload alone when \a quick, else all.
std::vector<CKvWorkload> KvSpeedWorkloads(bool quick);

std::vector<CKvBenchFigure> KvSpeedFigures(const std::vector<CKvWorkload>& measured);
