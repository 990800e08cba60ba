// Ratios and growth out of what Google Benchmark measured.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace vrn::bench {

/// Prints what the console reporter prints and keeps the shortest processor time of every benchmark's repetitions: on a machine that
/// others use too, it is the one least disturbed.
class Report final : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override;
    /// The tables: each operation as a multiple of the bare work, and its growth with each dimension.
    void printTables() const;

  private:
    [[nodiscard]] double timeOf(const std::string& operation, const std::string& dimension, std::size_t size) const;
    void printOperation(const std::string& operation, const std::string& bare) const;

    std::map<std::string, double> times_;  ///< nanoseconds by "Operation/dimension/size"
};

}  // namespace vrn::bench
