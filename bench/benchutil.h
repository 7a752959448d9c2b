// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <vector>

namespace CgBench {

/// True when CG_BENCH_SMOKE is set: CI runs every benchmark once on small sizes.
inline bool smoke()
{
    const char* v = std::getenv("CG_BENCH_SMOKE");
    return v && *v && std::strcmp(v, "0") != 0;
}

/// Row counts 10,000 / 100,000 / 1,000,000, or 1,000 in a smoke run.
inline void rowSizes(benchmark::internal::Benchmark* b)
{
    if (smoke()) {
        b->Arg(1000);
        return;
    }
    b->Arg(10000)->Arg(100000)->Arg(1000000);
}

/// Resident memory of the process in bytes, from /proc/self/statm.
long residentBytes();

/// The numbers 0 … n-1 in a fixed random order (so that sorting has work to do), kept for the
/// last n asked for.
const std::vector<int>& shuffled(int n);

/// Bytes of the heap in use (glibc mallinfo2().uordblks): operator new and malloc alike.
long heapInUse();

/// Gives the freed memory of the last round back, so that no contender pays in its timed part for
/// consolidating the previous one's millions of small free chunks (unless CG_BENCH_NO_TRIM is set).
void settleHeap();

} // namespace CgBench
