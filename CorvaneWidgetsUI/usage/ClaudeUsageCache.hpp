#pragma once

#include "CorvaneCore/widgets/usage/ClaudeUsage.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// What one run of the tool learnt from the transcripts, kept in the data folder so that the next
/// run reads only what was appended since: each file's cursor with the entries of the window. It
/// is never needed: a cache that is missing, from another version or root, or damaged in any byte,
/// decodes to nothing and the files are read again.
///
/// Entries keep a 64-bit hash of their id instead of its text (`compactId`), so that a week of
/// records fits in well under a megabyte; a source that keeps a cache hashes every id it reads,
/// and messages are still told apart exactly unless two ids collide in 64 bits.
struct ClaudeUsageCache {
    /// What a transcript was when its cursor was taken. Any doubt that the file is the same one,
    /// only appended to since, drops the cursor and the file is read again from its end.
    struct FileKey {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        std::uint64_t size = 0;
        /// Nanoseconds since 1970.
        std::int64_t modified = 0;
        /// `blockHash` of the bytes just before the cursor's offset.
        std::uint64_t block = 0;

        bool operator==(const FileKey&) const = default;
    };

    struct Transcript {
        std::string path;
        FileKey key;
        std::uint64_t offset = 0;
        /// In file order; every one of the transcript's project, ids compacted.
        std::vector<ClaudeUsageEntry> entries;

        bool operator==(const Transcript&) const = default;
    };

    /// Bytes before a cursor's offset that `FileKey::block` covers: enough to hold the last line or
    /// two, so a file rewritten where the last scan stopped is noticed.
    static constexpr std::size_t blockSize = 4096;

    /// The transcripts folder the cursors belong to.
    std::string root;
    std::vector<Transcript> transcripts;

    std::string encode() const;
    /// None unless `bytes` is exactly what `encode` writes.
    static std::optional<ClaudeUsageCache> decode(std::string_view bytes);
    /// The hash an encoded cache carries of its contents, which tells two caches apart without
    /// hashing them again; 0 for bytes too short to carry one.
    static std::uint64_t fingerprint(std::string_view bytes);

    /// The id as the cache keeps it: the 8 bytes of its 64-bit hash.
    static ClaudeUsageId compactId(std::string_view id);
    /// A 64-bit hash of `bytes` that stays the same from build to build.
    static std::uint64_t hash(std::string_view bytes);

    bool operator==(const ClaudeUsageCache&) const = default;
};

} // namespace corvane
