#pragma once

#include "CorvaneCore/platform/Scheduler.hpp"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace corvane {

/// Notices that files of the data folder changed, most often because the command-line tool or
/// another build saved them, by looking at their size and modification time on the main queue
/// every `interval` seconds. A look costs one `stat` per file, and no system service is needed,
/// so the same watcher serves every system and every kind of file system. Main thread.
class DataFileWatcher {
public:
    static constexpr double defaultInterval = 1.0;

    explicit DataFileWatcher(Scheduler& scheduler, double interval = defaultInterval)
        : scheduler_(scheduler), interval_(interval) {}
    ~DataFileWatcher() { stop(); }
    DataFileWatcher(const DataFileWatcher&) = delete;
    DataFileWatcher& operator=(const DataFileWatcher&) = delete;

    /// `onChange` runs on the main queue after a look that finds the file other than the look
    /// before: written, replaced, created or removed. The file as it is now counts as seen.
    void watch(std::filesystem::path file, std::function<void()> onChange);
    /// Looks every interval from now on, until `stop`.
    void start();
    void stop();
    /// Looks at every file once, now.
    void poll();
    bool isRunning() const { return running_; }

private:
    /// What a look sees of a file; a missing file is all zero and absent.
    struct Stamp {
        bool exists = false;
        std::uintmax_t size = 0;
        std::filesystem::file_time_type modified{};
        bool operator==(const Stamp&) const = default;
    };
    struct Watched {
        std::filesystem::path file;
        std::function<void()> onChange;
        Stamp seen;
    };

    static Stamp look(const std::filesystem::path& file);
    void scheduleNext();

    Scheduler& scheduler_;
    double interval_;
    std::vector<Watched> watched_;
    std::optional<Scheduler::Token> pending_;
    bool running_ = false;
};

} // namespace corvane
