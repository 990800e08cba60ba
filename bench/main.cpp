// Measures the editor against the XML library alone. All figures of a run are ratios within that run.
#include <benchmark/benchmark.h>

#include <array>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "Memory.h"
#include "Operations.h"
#include "Report.h"

namespace {

int run(int argc, char** argv) {
    // Memory first: a process that has not yet worked with large documents has no free memory to hide them in.
    if (argc == 1) {
        vrn::bench::printMemory();
    }
    // Repetitions in random order keep a disturbance from hitting one side of a ratio only. What the caller says comes last and
    // so wins.
    std::vector<std::string> arguments{argv[0], "--benchmark_min_time=0.05", "--benchmark_repetitions=3",
                                       "--benchmark_enable_random_interleaving=true",
                                       "--benchmark_report_aggregates_only=false"};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    std::vector<char*> pointers;
    pointers.reserve(arguments.size());
    for (auto& argument : arguments) {
        pointers.push_back(argument.data());
    }
    int count = static_cast<int>(pointers.size());
    benchmark::Initialize(&count, pointers.data());
    if (benchmark::ReportUnrecognizedArguments(count, pointers.data())) {
        return 2;
    }
    vrn::bench::registerOperations();
    vrn::bench::Report report;
    benchmark::RunSpecifiedBenchmarks(&report);
    report.printTables();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "vrn-bench: " << error.what() << '\n';
        return 1;
    }
}
