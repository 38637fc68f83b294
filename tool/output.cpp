#include "tool/output.h"

#include "platform/console.h"
#include "tool/text.h"

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace tool {

using namespace std::chrono_literals;

Progress* Progress::only_ = nullptr;

Progress::Progress() {
    only_ = this;
    if (TARVO::platform::hasErrorTerminal())
        thread_ = std::jthread([this](const std::stop_token& stop) { show(stop); });
}

Progress::~Progress() {
    end();
    only_ = nullptr;
}

void Progress::say(std::string what) {
    if (only_ == nullptr)
        return;
    const std::lock_guard lock(only_->mutex_);
    only_->what_ = std::move(what);
}

void Progress::end() {
    if (only_ != nullptr && only_->thread_.joinable()) {
        only_->thread_.request_stop();
        only_->thread_.join();
    }
}

// Blanks write over what a longer line left, since not every console knows control sequences.
void Progress::show(const std::stop_token& stop) {
    const auto write = [](const std::string& line) {
        fmt::print(stderr, "\r{:<{}}\r{}", "", TARVO::platform::consoleWidth() - 1, line);
        std::fflush(stderr);
    };
    bool shown = false;
    std::unique_lock lock(mutex_);
    for (int seconds = 1; !stopped_.wait_for(lock, stop, 1s, [&] { return stop.stop_requested(); });
         ++seconds) {
        const std::string time = fmt::format(" ({} s)", seconds);
        write(fitted(printable(what_), TARVO::platform::consoleWidth() - 1 - time.size()) + time);
        shown = true;
    }
    if (shown)
        write("");
}

void writeError(std::string_view text) {
    std::string shown;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        shown.append(printable(text.substr(start, end - start)));
        shown.append(text.substr(end, 1));
        start = end + 1;
    }
    fmt::print(stderr, "{}", shown);
}

} // namespace tool
