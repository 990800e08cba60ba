#include "Memory.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>

#include "Bare.h"
#include "DocumentSets.h"
#include "shell/VRN_MethodEditor.h"

namespace vrn::bench {

namespace {

// A field of /proc/self/status such as "VmHWM:", in KiB.
long statusField(const std::string& field) {
    std::ifstream status("/proc/self/status");
    for (std::string name; status >> name;) {
        if (name == field) {
            long value = 0;
            status >> value;
            return value;
        }
    }
    throw std::runtime_error("the system does not tell " + field);
}

long peakRise(const std::function<void()>& work) {
    // What the parent has freed goes back first, or the work would be served from it; then the high-water mark starts anew.
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
    const auto before = statusField("VmRSS:");
    work();
    return statusField("VmHWM:") - before;
}

}  // namespace

long peakMemoryOf(const std::function<void()>& work) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        throw std::runtime_error("no pipe");
    }
    const auto child = fork();
    if (child < 0) {
        throw std::runtime_error("no child process");
    }
    if (child == 0) {
        const long rise = peakRise(work);
        const bool told = write(ends[1], &rise, sizeof rise) == static_cast<ssize_t>(sizeof rise);
        _exit(told ? 0 : 1);
    }
    close(ends[1]);
    long rise = 0;
    const bool heard = read(ends[0], &rise, sizeof rise) == static_cast<ssize_t>(sizeof rise);
    close(ends[0]);
    waitpid(child, nullptr, 0);
    if (!heard) {
        throw std::runtime_error("the child process told nothing");
    }
    return rise;
}

void printMemory() {
    std::printf("\nPeak memory of a loaded editor against the bare documents\n");
    std::printf("%-20s %8s %12s %12s %8s\n", "dimension", "size", "bare KiB", "editor KiB", "ratio");
    for (const auto& [dimension, name] : dimensions) {
        const auto& set = documentSet(dimension, sizes.back());
        // Both are held until the high-water mark is read.
        const auto bare = peakMemoryOf([&set] {
            static auto documents = bareLoad(set);
            static_cast<void>(documents);
        });
        const auto editor = peakMemoryOf([&set] {
            static shell::VRN_MethodEditor loaded;
            loaded.SetXmlDocuments(set.macros, set.objects, set.method, set.configuration);
        });
        std::printf("%-20s %8zu %12ld %12ld %8.2f\n", std::string(name).c_str(), sizes.back(), bare, editor,
                    static_cast<double>(editor) / static_cast<double>(bare));
    }
}

}  // namespace vrn::bench
