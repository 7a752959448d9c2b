// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "benchutil.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <random>
#include <malloc.h>
#include <unistd.h>

long CgBench::residentBytes()
{
    long pages = 0, resident = 0;
    if (FILE* f = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(f, "%ld %ld", &pages, &resident) != 2)
            resident = 0;
        std::fclose(f);
    }
    return resident * ::sysconf(_SC_PAGESIZE);
}

long CgBench::heapInUse()
{
    return long(mallinfo2().uordblks);
}

void CgBench::settleHeap()
{
    if (!std::getenv("CG_BENCH_NO_TRIM"))
        malloc_trim(0);
}

const std::vector<int>& CgBench::shuffled(int n)
{
    static std::vector<int> values;
    if (int(values.size()) != n) {
        values.resize(size_t(n));
        std::iota(values.begin(), values.end(), 0);
        std::shuffle(values.begin(), values.end(), std::mt19937(20240601));
    }
    return values;
}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
