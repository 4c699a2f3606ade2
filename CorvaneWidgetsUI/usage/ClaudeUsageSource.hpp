#pragma once

#include "CorvaneCore/platform/SystemFolders.hpp"
#include "CorvaneCore/widgets/usage/ClaudeUsage.hpp"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvane {

/// Reads the token usage out of the transcripts Claude Code writes, one folder per project and
/// one JSON-lines file per session. It remembers how far each file was read, so after the first
/// scan a refresh reads only what was appended. Unreadable files and lines are skipped: a scan
/// never fails. Any thread; calls are taken one at a time.
class ClaudeUsageSource {
public:
    /// A first read walks back from a file's end in steps of this many bytes.
    static constexpr std::size_t backwardChunkSize = 524'288;
    /// Appended bytes read at most per refresh; the rest waits for the next one.
    static constexpr std::uint64_t forwardReadLimit = 67'108'864;

    /// How far one transcript has been consumed, and what it gave.
    struct Cursor {
        std::uint64_t offset = 0;
        std::vector<ClaudeUsageEntry> entries;
    };

    /// home + ".claude/projects", the home folder from `HOME`.
    static std::filesystem::path defaultRoot(const ProcessEnvironment& environment);

    explicit ClaudeUsageSource(std::filesystem::path root);
    ~ClaudeUsageSource();
    ClaudeUsageSource(const ClaudeUsageSource&) = delete;
    ClaudeUsageSource& operator=(const ClaudeUsageSource&) = delete;

    const std::filesystem::path& root() const { return root_; }
    /// Whether Claude Code has ever run here: the root folder exists.
    bool isAvailable() const;

    /// Every entry stamped at or after `since` in the transcripts, in no particular order across
    /// files. Files untouched since `since` are not opened unless read before.
    std::vector<ClaudeUsageEntry> entries(Date since);

    /// The cursor kept for a transcript, none when the file was never read or is gone.
    std::optional<Cursor> cursor(const std::filesystem::path& file) const;

    /// One transcript line: the entry it records, or none when it records no usage or does not
    /// decode. Safe for any bytes.
    static std::optional<ClaudeUsageEntry> entry(std::string_view line, const std::optional<std::string>& project);

private:
    struct Reader;

    void read(const std::string& path, const std::optional<std::string>& project, Date since);

    std::filesystem::path root_;
    mutable std::mutex mutex_;
    struct Tracked {
        Cursor cursor;
        /// The last scan that saw the file.
        std::uint64_t scan = 0;
    };
    std::unordered_map<std::string, Tracked> tracked_;
    std::uint64_t scan_ = 0;
    std::unique_ptr<Reader> reader_;
};

} // namespace corvane
