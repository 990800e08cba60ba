// One line at the terminal that tells how far the work is, once it takes longer than a moment.
#pragma once

#include <chrono>
#include <cstddef>

#include "hosts/cli/Console.h"

namespace vrn::cli {

class Progress {
  public:
    /// Shows nothing unless the error stream is a terminal and there is more than one thing to do.
    Progress(const Console& console, std::size_t total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { hide(); }

    /// Tells of what is done so far.
    void show(std::size_t done);
    /// Takes the line away, so that something else can be written.
    void hide();

  private:
    using Clock = std::chrono::steady_clock;
    const Console* console_;
    std::size_t total_;
    Clock::time_point started_ = Clock::now();
    Clock::time_point shown_;
    bool enabled_;
    bool visible_ = false;
};

}  // namespace vrn::cli
