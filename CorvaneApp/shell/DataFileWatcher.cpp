#include "CorvaneApp/shell/DataFileWatcher.hpp"

namespace corvane {

namespace fs = std::filesystem;

DataFileWatcher::Stamp DataFileWatcher::look(const fs::path& file) {
    std::error_code error;
    auto status = fs::status(file, error);
    if (error || !fs::is_regular_file(status)) return {};
    Stamp stamp{.exists = true};
    stamp.size = fs::file_size(file, error);
    if (error) return {};
    stamp.modified = fs::last_write_time(file, error);
    if (error) return {};
    return stamp;
}

void DataFileWatcher::watch(fs::path file, std::function<void()> onChange) {
    auto seen = look(file);
    watched_.push_back({std::move(file), std::move(onChange), seen});
}

void DataFileWatcher::start() {
    if (running_) return;
    running_ = true;
    scheduleNext();
}

void DataFileWatcher::stop() {
    running_ = false;
    if (pending_) scheduler_.cancel(*pending_);
    pending_.reset();
}

void DataFileWatcher::scheduleNext() {
    pending_ = scheduler_.schedule(interval_, [this] {
        pending_.reset();
        poll();
        // A handler may have stopped the watcher; only a running one looks again.
        if (running_) scheduleNext();
    });
}

void DataFileWatcher::poll() {
    // Indexes, not iterators: a handler may add files to watch.
    for (std::size_t i = 0; i < watched_.size(); ++i) {
        auto now = look(watched_[i].file);
        if (now == watched_[i].seen) continue;
        watched_[i].seen = now;
        if (watched_[i].onChange) watched_[i].onChange();
    }
}

} // namespace corvane
