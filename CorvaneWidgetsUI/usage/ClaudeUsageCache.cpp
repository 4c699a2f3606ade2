#include "CorvaneWidgetsUI/usage/ClaudeUsageCache.hpp"

#include <bit>
#include <chrono>
#include <cmath>
#include <cstring>
#include <limits>

namespace corvane {

namespace {

// "CVUC" and the format's version; a cache of another version is simply rebuilt.
constexpr std::string_view magic("CVUC\x01\0\0\0", 8);
constexpr std::size_t headerSize = 8 + 8; // magic, then the body's hash

constexpr std::uint64_t mixMultiplier = 0x9E3779B97F4A7C15ull;

std::uint64_t finish(std::uint64_t x) {
    x ^= x >> 33;
    x *= 0xFF51AFD7ED558CCDull;
    x ^= x >> 33;
    x *= 0xC4CEB9FE1A85EC53ull;
    x ^= x >> 33;
    return x;
}

std::uint64_t zigzag(std::int64_t value) {
    return (static_cast<std::uint64_t>(value) << 1) ^ static_cast<std::uint64_t>(value >> 63);
}
std::int64_t unzigzag(std::uint64_t value) {
    return static_cast<std::int64_t>(value >> 1) ^ -static_cast<std::int64_t>(value & 1);
}

// Transcripts stamp whole microseconds, so a timestamp is nearly always the date those make; it
// is then kept as the difference from the entry before, in a few bytes, and otherwise whole.
Date fromMicroseconds(std::int64_t micros) {
    return Date::fromUnixTime(std::chrono::duration<double>(std::chrono::microseconds(micros)).count());
}
std::optional<std::int64_t> asMicroseconds(Date date) {
    const double micros = std::round(date.unixTime() * 1e6);
    // Far enough from the limits that the difference of two never overflows.
    if (!(std::fabs(micros) < 1e18)) return std::nullopt;
    const auto whole = static_cast<std::int64_t>(micros);
    if (std::bit_cast<std::uint64_t>(fromMicroseconds(whole).sinceReferenceDate) !=
        std::bit_cast<std::uint64_t>(date.sinceReferenceDate))
        return std::nullopt;
    return whole;
}

class Writer {
public:
    std::string bytes;

    void varint(std::uint64_t value) {
        while (value >= 0x80) {
            bytes.push_back(static_cast<char>(value | 0x80));
            value >>= 7;
        }
        bytes.push_back(static_cast<char>(value));
    }
    void fixed(std::uint64_t value) {
        char raw[8];
        std::memcpy(raw, &value, 8);
        bytes.append(raw, 8);
    }
    void text(std::string_view value) {
        varint(value.size());
        bytes.append(value);
    }
};

class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    bool varint(std::uint64_t& value) {
        value = 0;
        for (int shift = 0; shift < 64; shift += 7) {
            if (bytes_.empty()) return false;
            const auto byte = static_cast<unsigned char>(bytes_.front());
            bytes_.remove_prefix(1);
            // Only the shortest form is accepted, so that one cache has one encoding.
            if (shift > 0 && byte == 0) return false;
            if (shift == 63 && byte > 1) return false;
            value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
            if (!(byte & 0x80)) return true;
        }
        return false;
    }
    bool count(std::uint64_t& value, std::size_t leastBytesEach) {
        return varint(value) && value <= bytes_.size() / leastBytesEach;
    }
    bool fixed(std::uint64_t& value) {
        if (bytes_.size() < 8) return false;
        std::memcpy(&value, bytes_.data(), 8);
        bytes_.remove_prefix(8);
        return true;
    }
    bool text(std::string& value) {
        std::uint64_t size = 0;
        if (!count(size, 1)) return false;
        value.assign(bytes_.substr(0, size));
        bytes_.remove_prefix(size);
        return true;
    }
    bool tokens(std::int64_t& value) {
        std::uint64_t raw = 0;
        if (!varint(raw) || raw > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) return false;
        value = static_cast<std::int64_t>(raw);
        return true;
    }
    bool atEnd() const { return bytes_.empty(); }

private:
    std::string_view bytes_;
};

} // namespace

std::uint64_t ClaudeUsageCache::hash(std::string_view bytes) {
    std::uint64_t h = finish(bytes.size() ^ mixMultiplier);
    const char* at = bytes.data();
    std::size_t left = bytes.size();
    // A word at a time, so that checking a cache of a megabyte costs a fraction of a millisecond.
    for (; left >= 8; at += 8, left -= 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, at, 8);
        h = std::rotl((h ^ word) * mixMultiplier, 29);
    }
    std::uint64_t tail = 0;
    std::memcpy(&tail, at, left);
    return finish(h ^ tail ^ (static_cast<std::uint64_t>(left) << 59));
}

ClaudeUsageId ClaudeUsageCache::compactId(std::string_view id) {
    const std::uint64_t h = hash(id);
    char raw[8];
    std::memcpy(raw, &h, 8);
    return ClaudeUsageId(std::string_view(raw, 8));
}

std::string ClaudeUsageCache::encode() const {
    Writer body;
    body.text(root);
    // The projects once, each transcript naming its own by position (0 for none).
    std::vector<std::string_view> projects;
    auto projectIndex = [&](const std::optional<std::string>& project) -> std::uint64_t {
        if (!project) return 0;
        for (std::size_t i = 0; i < projects.size(); ++i)
            if (projects[i] == *project) return i + 1;
        projects.push_back(*project);
        return projects.size();
    };
    std::vector<std::uint64_t> indexes;
    for (const auto& transcript : transcripts)
        indexes.push_back(transcript.entries.empty() ? 0 : projectIndex(transcript.entries.front().project));
    body.varint(projects.size());
    for (auto project : projects) body.text(project);

    body.varint(transcripts.size());
    for (std::size_t t = 0; t < transcripts.size(); ++t) {
        const auto& transcript = transcripts[t];
        body.text(transcript.path);
        body.varint(transcript.key.device);
        body.varint(transcript.key.inode);
        body.varint(transcript.key.size);
        body.varint(zigzag(transcript.key.modified));
        body.fixed(transcript.key.block);
        body.varint(transcript.offset);
        body.varint(indexes[t]);
        body.varint(transcript.entries.size());
        std::int64_t previous = 0;
        for (const auto& entry : transcript.entries) {
            std::uint64_t id = 0;
            std::memcpy(&id, entry.id.view().data(), std::min<std::size_t>(8, entry.id.view().size()));
            body.fixed(id);
            if (auto micros = asMicroseconds(entry.timestamp)) {
                body.varint(zigzag(*micros - previous) << 1);
                previous = *micros;
            } else {
                body.varint(1);
                body.fixed(std::bit_cast<std::uint64_t>(entry.timestamp.sinceReferenceDate));
            }
            for (auto count : {entry.inputTokens, entry.outputTokens, entry.cacheCreationTokens, entry.cacheReadTokens})
                body.varint(static_cast<std::uint64_t>(count));
        }
    }

    Writer whole;
    whole.bytes.reserve(headerSize + body.bytes.size());
    whole.bytes.append(magic);
    whole.fixed(hash(body.bytes));
    whole.bytes.append(body.bytes);
    return std::move(whole.bytes);
}

std::uint64_t ClaudeUsageCache::fingerprint(std::string_view bytes) {
    std::uint64_t carried = 0;
    if (bytes.size() >= headerSize) std::memcpy(&carried, bytes.data() + magic.size(), 8);
    return carried;
}

std::optional<ClaudeUsageCache> ClaudeUsageCache::decode(std::string_view bytes) {
    if (bytes.size() < headerSize || bytes.substr(0, magic.size()) != magic) return std::nullopt;
    const auto body = bytes.substr(headerSize);
    if (hash(body) != fingerprint(bytes)) return std::nullopt;

    Reader in(body);
    ClaudeUsageCache cache;
    std::uint64_t projectCount = 0, transcriptCount = 0;
    if (!in.text(cache.root) || !in.count(projectCount, 1)) return std::nullopt;
    std::vector<std::string> projects(projectCount);
    for (auto& project : projects)
        if (!in.text(project)) return std::nullopt;
    // Each transcript takes at least 16 bytes, each entry at least 13: counts beyond what is left
    // are damage, refused before anything is allocated for them.
    if (!in.count(transcriptCount, 16)) return std::nullopt;
    cache.transcripts.resize(transcriptCount);
    for (auto& transcript : cache.transcripts) {
        std::uint64_t modified = 0, projectIndex = 0, entryCount = 0;
        if (!in.text(transcript.path) || !in.varint(transcript.key.device) || !in.varint(transcript.key.inode) ||
            !in.varint(transcript.key.size) || !in.varint(modified) || !in.fixed(transcript.key.block) ||
            !in.varint(transcript.offset) || !in.varint(projectIndex) || projectIndex > projects.size() ||
            !in.count(entryCount, 13))
            return std::nullopt;
        transcript.key.modified = unzigzag(modified);
        std::optional<std::string> project;
        if (projectIndex > 0) project = projects[projectIndex - 1];
        transcript.entries.resize(entryCount);
        std::int64_t previous = 0;
        for (auto& entry : transcript.entries) {
            std::uint64_t id = 0, stamp = 0;
            if (!in.fixed(id) || !in.varint(stamp)) return std::nullopt;
            char raw[8];
            std::memcpy(raw, &id, 8);
            entry.id = ClaudeUsageId(std::string_view(raw, 8));
            if (stamp == 1) {
                std::uint64_t bits = 0;
                if (!in.fixed(bits)) return std::nullopt;
                entry.timestamp.sinceReferenceDate = std::bit_cast<double>(bits);
            } else if (stamp & 1) {
                return std::nullopt;
            } else {
                previous += unzigzag(stamp >> 1);
                entry.timestamp = fromMicroseconds(previous);
            }
            entry.project = project;
            if (!in.tokens(entry.inputTokens) || !in.tokens(entry.outputTokens) ||
                !in.tokens(entry.cacheCreationTokens) || !in.tokens(entry.cacheReadTokens))
                return std::nullopt;
        }
    }
    if (!in.atEnd()) return std::nullopt;
    return cache;
}

} // namespace corvane
