// One line at the terminal that tells how far the work is, once it takes longer than a moment.
#pragma once

#include <chrono>
#include <cstddef>

#include "hosts/cli/Console.h"

namespace vrn::cli {

class Progress {
  public:
    /// Shows nothing unless the error stream is a terminal.
    explicit Progress(const Console& console);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { hide(); }

    /// Shows nothing before it knows how much there is to do, and then only for more than one thing.
    void setTotal(std::size_t total) { total_ = total; }
    /// Tells of what is done so far.
    void show(std::size_t done);
    /// Takes the line away, so that something else can be written.
    void hide();

  private:
    using Clock = std::chrono::steady_clock;
    const Console* console_;
    std::size_t total_ = 0;
    Clock::time_point started_ = Clock::now();
    Clock::time_point shown_;
    bool enabled_;
    bool visible_ = false;
};

}  // namespace vrn::cli
