#pragma once

#include "CorvaneCore/platform/SystemFolders.hpp"
#include "CorvaneCore/widgets/usage/ClaudeUsage.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageCache.hpp"

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
/// one JSON-lines file per session, its sub-agents' in <session>/subagents. It remembers how far
/// each file was read, so after the first scan a refresh reads only what was appended.
/// Unreadable files and lines are skipped: a scan never fails. Any thread; calls are taken one at a time. A scan lists folders and reads files on
/// a few threads of its own, which touch nothing but their own files until it merges their work.
///
/// A cursor is kept only while its file is the one read, grown at most: another file under the
/// same name, a shorter one, one changed without growing, or other bytes where the last read
/// stopped, and the file is read again from its end. With a cache file, the cursors outlive the
/// source: they are taken from the file on the first scan and put back after every scan.
class ClaudeUsageSource {
public:
    /// A first read walks back from a file's end in steps of this many bytes.
    static constexpr std::size_t backwardChunkSize = 524'288;
    /// Appended bytes a refresh reads forwards at most; a file grown by more is read again from its
    /// end, as far as the window goes, as a first read would.
    static constexpr std::uint64_t forwardReadLimit = 67'108'864;

    /// How far one transcript has been consumed, and what it gave.
    struct Cursor {
        std::uint64_t offset = 0;
        std::vector<ClaudeUsageEntry> entries;
    };

    /// home + ".claude/projects", the home folder from `HOME`.
    static std::filesystem::path defaultRoot(const ProcessEnvironment& environment);

    /// Threads a scan uses at most when `workers` is 0: enough to keep a first scan of a large
    /// folder close to the speed of reading its bytes, few enough to leave the machine usable.
    static constexpr std::size_t automaticWorkerLimit = 4;

    /// `workers` threads per scan, the caller's included; 0 picks one per processor, at most
    /// `automaticWorkerLimit`. With a `cacheFile` (see `ClaudeUsageCache`), every entry's id is
    /// compacted, as the cache keeps it.
    explicit ClaudeUsageSource(std::filesystem::path root, std::size_t workers = 0,
                               std::optional<std::filesystem::path> cacheFile = std::nullopt);
    ~ClaudeUsageSource();
    ClaudeUsageSource(const ClaudeUsageSource&) = delete;
    ClaudeUsageSource& operator=(const ClaudeUsageSource&) = delete;

    const std::filesystem::path& root() const { return root_; }
    /// Whether Claude Code has ever run here: the root folder exists.
    bool isAvailable() const;

    /// Every entry stamped at or after `since` in the transcripts, in no particular order across
    /// files. Files untouched since `since` are not opened unless read before.
    std::vector<ClaudeUsageEntry> entries(Date since);
    /// `entries(since)` for a source read once, as one list per transcript in the order of their
    /// paths, so that the first of equal records is the same whichever way the files were read:
    /// the lists are handed over rather than copied or joined, and the cursors are forgotten, so a
    /// later call reads every file anew (or from the cache).
    std::vector<std::vector<ClaudeUsageEntry>> takeEntries(Date since);

    /// The cursor kept for a transcript, none when the file was never read or is gone.
    std::optional<Cursor> cursor(const std::filesystem::path& file) const;

    /// One transcript line: the entry it records, or none when it records no usage or does not
    /// decode. Safe for any bytes.
    static std::optional<ClaudeUsageEntry> entry(std::string_view line, const std::optional<std::string>& project);

private:
    struct Reader;
    struct Tracked {
        Cursor cursor;
        ClaudeUsageCache::FileKey key;
        /// Taken from the cache and not yet checked against the file.
        bool restored = false;
        /// The last scan that saw the file.
        std::uint64_t scan = 0;
    };
    struct Folder;
    struct Task;

    /// Brings every cursor up to date; the caller holds the lock.
    void scan(Date since);
    /// The project folder's transcripts, its sessions' sub-agents' among them.
    void list(Folder& folder, Date since);
    void list(Folder& folder, const std::string& path, Date since, bool withSessions);
    static void read(Reader& reader, Task& task, const std::optional<std::string>& project, Date since);
    /// The cursors the cache holds for this root, when it holds any.
    void restore(const std::string& root);
    /// Puts the cursors in the cache, unless it holds them already.
    void keep(const std::string& root, Date since);

    std::filesystem::path root_;
    std::size_t workers_;
    mutable std::mutex mutex_;
    std::unordered_map<std::string, Tracked> tracked_;
    std::uint64_t scan_ = 0;
    std::optional<std::filesystem::path> cacheFile_;
    bool restored_ = false;
    /// `ClaudeUsageCache::fingerprint` of the cache as last read or written.
    std::uint64_t cacheHash_ = 0;
    /// One per worker, kept from scan to scan with their parsers and buffers.
    std::vector<std::unique_ptr<Reader>> readers_;
};

} // namespace corvane
