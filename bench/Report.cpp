#include "Report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

#include "DocumentSets.h"

namespace vrn::bench {

namespace {

// The slope of a straight line through the points' logarithms: the power with which the time grows.
double growthExponent(const std::vector<std::pair<double, double>>& points) {
    double sumX = 0;
    double sumY = 0;
    double sumXX = 0;
    double sumXY = 0;
    for (const auto& [size, time] : points) {
        const double x = std::log(size);
        const double y = std::log(time);
        sumX += x;
        sumY += y;
        sumXX += x * x;
        sumXY += x * y;
    }
    const auto n = static_cast<double>(points.size());
    return (n * sumXY - sumX * sumY) / (n * sumXX - sumX * sumX);
}

constexpr std::array<std::pair<const char*, const char*>, 7> operations{{{"SetXmlDocuments", "BareLoad"},
                                                                         {"NextMethod", "BareLoad"},
                                                                         {"GetMethodXml", "BareRoundTrip"},
                                                                         {"MethodIsChanged", "BareRoundTrip"},
                                                                         {"AuditTrail", "BareRoundTrip"},
                                                                         {"InsertAndDelete", "BareRoundTrip"},
                                                                         {"ListSelection", "BareRoundTrip"}}};

}  // namespace

void Report::ReportRuns(const std::vector<Run>& runs) {
    for (const auto& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) {
            continue;
        }
        const double time = run.cpu_accumulated_time / static_cast<double>(run.iterations) * 1e9;
        const auto [entry, isNew] = times_.try_emplace(run.run_name.function_name, time);
        if (!isNew) {
            entry->second = std::min(entry->second, time);
        }
    }
    ConsoleReporter::ReportRuns(runs);
}

double Report::timeOf(const std::string& operation, const std::string& dimension, std::size_t size) const {
    const auto found = times_.find(operation + "/" + dimension + "/" + std::to_string(size));
    return found == times_.end() ? std::nan("") : found->second;
}

void Report::printOperation(const std::string& operation, const std::string& bare) const {
    std::printf("\n%s as a multiple of %s, and the exponent of its growth\n%-20s", operation.c_str(), bare.c_str(),
                "dimension");
    for (const auto size : sizes) {
        std::printf(" %9zu", size);
    }
    std::printf(" %9s %9s\n", "all", "last two");
    for (const auto& [dimension, name] : dimensions) {
        std::printf("%-20s", std::string(name).c_str());
        std::vector<std::pair<double, double>> points;
        for (const auto size : sizes) {
            const double time = timeOf(operation, std::string(name), size);
            points.emplace_back(static_cast<double>(size), time);
            std::printf(" %9.2f", time / timeOf(bare, std::string(name), size));
        }
        std::printf(" %9.2f %9.2f\n", growthExponent(points), growthExponent({points.end() - 2, points.end()}));
    }
}

void Report::printTables() const {
    for (const auto& [operation, bare] : operations) {
        printOperation(operation, bare);
    }
}

}  // namespace vrn::bench
