#include "hosts/cli/Progress.h"

#include <algorithm>
#include <ostream>
#include <string>

#include "hosts/cli/System.h"

namespace vrn::cli {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 1s;
constexpr auto pause = 100ms;
constexpr std::size_t longestBar = 40;

}  // namespace

Progress::Progress(const Console& console) : console_(&console), enabled_(console.errIsTerminal) {}

void Progress::show(std::size_t done) {
    const auto now = Clock::now();
    if (!enabled_ || total_ <= 1 || now - started_ < patience || now - shown_ < pause) {
        return;
    }
    shown_ = now;
    const auto counts = " " + std::to_string(done) + "/" + std::to_string(total_);
    const auto room = static_cast<std::size_t>(system::terminalWidth());
    const auto width = std::min(longestBar, room > counts.size() + 4 ? room - counts.size() - 4 : 1);
    const auto filled = width * done / total_;
    console_->err << "\r[" << std::string(filled, '#') << std::string(width - filled, '.') << "]" << counts
                  << std::flush;
    visible_ = true;
}

void Progress::hide() {
    if (visible_) {
        console_->err << "\r\x1B[K" << std::flush;
        visible_ = false;
    }
}

}  // namespace vrn::cli
