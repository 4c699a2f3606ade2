#include "CorvaneWidgetsUI/usage/ClaudeUsageSource.hpp"

#include "CorvaneCore/support/Iso8601.hpp"

#include <simdjson.h>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace corvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view usageKey = "\"usage\"";

/// `size` bytes with at least SIMDJSON_PADDING readable bytes after them, so lines can be decoded
/// where they lie. Grows without clearing.
class PaddedBuffer {
public:
    char* reserve(std::size_t size) {
        if (size + simdjson::SIMDJSON_PADDING > capacity_) {
            capacity_ = size + simdjson::SIMDJSON_PADDING;
            bytes_.reset(new char[capacity_]);
        }
        return bytes_.get();
    }
    /// After an unusually large read, so one big append does not stay resident.
    void trim(std::size_t keep) {
        if (capacity_ > keep) {
            bytes_.reset();
            capacity_ = 0;
        }
    }

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t capacity_ = 0;
};

// Reads exactly `size` bytes at `offset`; a short read means the file changed under us.
bool readAt(int fd, char* into, std::size_t size, std::uint64_t offset) {
    while (size > 0) {
        auto got = ::pread(fd, into, size, static_cast<off_t>(offset));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        into += got;
        size -= static_cast<std::size_t>(got);
        offset += static_cast<std::uint64_t>(got);
    }
    return true;
}

/// The first "\"usage\"" in [begin, end), or null. Nearly all of a transcript's bytes pass
/// through here, and a general substring search costs more than reading them: this tests 64
/// bytes a round for an opening quote, a 'u' after it and a closing quote six on, which JSON
/// rarely puts together (quotes alone are everywhere), and checks only rounds that have one.
/// Vector extensions keep it portable (SSE2, NEON).
const char* findUsageKey(const char* begin, const char* end) {
    using Bytes = unsigned char __attribute__((vector_size(16)));
    auto splat = [](char c) {
        Bytes bytes;
        std::memset(&bytes, c, sizeof bytes);
        return bytes;
    };
    const Bytes quote = splat('"'), u = splat('u');
    auto candidates = [&](const char* at) {
        Bytes at0, at1, at6;
        std::memcpy(&at0, at, sizeof at0);
        std::memcpy(&at1, at + 1, sizeof at1);
        std::memcpy(&at6, at + 6, sizeof at6);
        return Bytes((at0 == quote) & (at1 == u) & (at6 == quote));
    };
    const char* p = begin;
    for (; end - p >= 80; p += 64) {
        const Bytes any = candidates(p) | candidates(p + 16) | candidates(p + 32) | candidates(p + 48);
        std::uint64_t halves[2];
        std::memcpy(halves, &any, sizeof halves);
        if ((halves[0] | halves[1]) == 0) continue;
        for (int i = 0; i < 64; ++i)
            if (std::memcmp(p + i, usageKey.data(), usageKey.size()) == 0) return p + i;
    }
    return static_cast<const char*>(::memmem(p, static_cast<std::size_t>(end - p), usageKey.data(), usageKey.size()));
}

const char* lastLineFeed(const char* begin, const char* end) {
    while (end > begin)
        if (*--end == '\n') return end;
    return nullptr;
}

// Wrong types spoil the line, as any decoder of the record would refuse it; null and missing
// keys are simply absent, and so is an empty text: an empty id would make one message of every
// record that has it.
enum class Field { absent, present, wrong };

Field stringField(simdjson::dom::object object, std::string_view key, std::string_view& value) {
    simdjson::dom::element element;
    if (object.at_key(key).get(element)) return Field::absent;
    if (element.is_null()) return Field::absent;
    if (element.get_string().get(value)) return Field::wrong;
    return value.empty() ? Field::absent : Field::present;
}

// A count below zero is no count: it would take tokens off the totals.
bool tokenField(simdjson::dom::object usage, std::string_view key, std::int64_t& value) {
    simdjson::dom::element element;
    if (usage.at_key(key).get(element) || element.is_null()) return true;
    return !element.get_int64().get(value) && value >= 0;
}

/// Calls `visit(folder's descriptor, name, type)` for each entry not starting with ".", so that
/// callers look names up relative to the open folder instead of walking the path every time: a
/// refresh stats every session of every project. An unreadable folder has no entries.
template <typename Visit> void eachVisibleName(const std::string& folder, Visit visit) {
    DIR* dir = ::opendir(folder.c_str());
    if (!dir) return;
    while (const dirent* entry = ::readdir(dir))
        if (entry->d_name[0] != '.') visit(::dirfd(dir), entry->d_name, entry->d_type);
    ::closedir(dir);
}

} // namespace

/// The parser and buffers one scan reuses from file to file.
struct ClaudeUsageSource::Reader {
    simdjson::dom::parser parser;
    PaddedBuffer buffer;
    std::string carry;

    /// A line whose bytes lie in a buffer with padding after them.
    std::optional<ClaudeUsageEntry> decode(const char* line, std::size_t size, const std::optional<std::string>& project) {
        using namespace simdjson;
        dom::element document;
        if (parser.parse(line, size, false).get(document)) return std::nullopt;
        dom::object top, message, usage;
        if (document.get_object().get(top)) return std::nullopt;
        dom::element element;
        if (top.at_key("message").get(element) || element.get_object().get(message)) return std::nullopt;
        if (message.at_key("usage").get(element) || element.get_object().get(usage)) return std::nullopt;

        std::string_view timestamp, requestId, messageId, uuid;
        if (stringField(top, "timestamp", timestamp) != Field::present) return std::nullopt;
        auto hasRequest = stringField(top, "requestId", requestId);
        auto hasMessage = stringField(message, "id", messageId);
        auto hasUuid = stringField(top, "uuid", uuid);
        if (hasRequest == Field::wrong || hasMessage == Field::wrong || hasUuid == Field::wrong) return std::nullopt;

        ClaudeUsageEntry entry;
        if (!tokenField(usage, "input_tokens", entry.inputTokens) ||
            !tokenField(usage, "output_tokens", entry.outputTokens) ||
            !tokenField(usage, "cache_creation_input_tokens", entry.cacheCreationTokens) ||
            !tokenField(usage, "cache_read_input_tokens", entry.cacheReadTokens))
            return std::nullopt;
        auto date = parseIso8601(timestamp);
        if (!date) return std::nullopt;
        // Without any id a record cannot be told apart from the repeats written while a message
        // streams, so it is left out rather than counted several times.
        if (hasRequest == Field::present)
            entry.id = requestId;
        else if (hasMessage == Field::present)
            entry.id = messageId;
        else if (hasUuid == Field::present)
            entry.id = uuid;
        else
            return std::nullopt;
        entry.timestamp = *date;
        entry.project = project;
        return entry;
    }

    /// The lines in [begin, end) that mention usage, as (start, length), in file order. `end`
    /// must fall on a line end; only these lines are ever decoded.
    static void usageLines(const char* begin, const char* end, std::vector<std::pair<const char*, std::size_t>>& lines) {
        lines.clear();
        const char* lineStart = begin;
        while (lineStart < end) {
            auto* hit = findUsageKey(lineStart, end);
            if (!hit) return;
            while (auto* feed = static_cast<const char*>(std::memchr(lineStart, '\n', static_cast<std::size_t>(hit - lineStart))))
                lineStart = feed + 1;
            auto* lineEnd = static_cast<const char*>(std::memchr(hit, '\n', static_cast<std::size_t>(end - hit)));
            if (!lineEnd) lineEnd = end;
            lines.emplace_back(lineStart, static_cast<std::size_t>(lineEnd - lineStart));
            lineStart = lineEnd + 1;
        }
    }

    std::vector<std::pair<const char*, std::size_t>> lines;

    /// From the end towards the start, until the entries are older than `since`. Sets `offset`
    /// to the end of what was consumed: a last line still being written is left for later.
    std::optional<std::vector<ClaudeUsageEntry>> backward(int fd, std::uint64_t size, const std::optional<std::string>& project,
                                                          Date since, std::uint64_t& offset) {
        std::vector<ClaudeUsageEntry> newestFirst;
        carry.clear();
        offset = size;
        bool atEnd = true;
        for (std::uint64_t position = size; position > 0;) {
            const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(backwardChunkSize, position));
            position -= count;
            const std::size_t length = count + carry.size();
            char* bytes = buffer.reserve(length);
            if (!readAt(fd, bytes, count, position)) return std::nullopt;
            std::memcpy(bytes + count, carry.data(), carry.size());
            const char* end = bytes + length;

            // Before the first line feed lies the end of a line that began in an earlier chunk.
            const char* first = bytes;
            if (position > 0) {
                auto* feed = static_cast<const char*>(std::memchr(bytes, '\n', length));
                if (!feed) {
                    carry.assign(bytes, length);
                    continue;
                }
                first = feed + 1;
            }
            const char* complete = end;
            bool stop = false;
            if (atEnd) {
                atEnd = false;
                auto* feed = lastLineFeed(first, end);
                const char* tail = feed ? feed + 1 : first;
                if (tail < end) {
                    // A line without its line feed is either the file's last line, whole, or
                    // one Claude Code is still writing; only the first decodes.
                    auto last = std::string_view(tail, static_cast<std::size_t>(end - tail)).find(usageKey) !=
                                        std::string_view::npos
                                    ? decode(tail, static_cast<std::size_t>(end - tail), project)
                                    : std::nullopt;
                    if (last) {
                        stop = last->timestamp < since;
                        if (!stop) newestFirst.push_back(std::move(*last));
                    } else {
                        offset = size - static_cast<std::uint64_t>(end - tail);
                    }
                    complete = tail;
                }
            }
            usageLines(first, complete, lines);
            for (auto line = lines.rbegin(); !stop && line != lines.rend(); ++line) {
                auto entry = decode(line->first, line->second, project);
                if (!entry) continue;
                if (entry->timestamp < since)
                    stop = true;
                else
                    newestFirst.push_back(std::move(*entry));
            }
            if (stop) break;
            carry.assign(bytes, first > bytes ? static_cast<std::size_t>(first - bytes - 1) : 0);
        }
        carry.clear();
        carry.shrink_to_fit();
        std::reverse(newestFirst.begin(), newestFirst.end());
        return newestFirst;
    }

    /// What was appended after `offset`, complete lines only.
    bool forward(int fd, std::uint64_t size, const std::optional<std::string>& project, Cursor& cursor) {
        const auto count = static_cast<std::size_t>(std::min(size - cursor.offset, forwardReadLimit));
        char* bytes = buffer.reserve(count);
        if (!readAt(fd, bytes, count, cursor.offset)) return false;
        auto* feed = lastLineFeed(bytes, bytes + count);
        if (!feed) return true;
        usageLines(bytes, feed + 1, lines);
        for (const auto& [start, length] : lines)
            if (auto entry = decode(start, length, project)) cursor.entries.push_back(std::move(*entry));
        cursor.offset += static_cast<std::uint64_t>(feed + 1 - bytes);
        return true;
    }
};

fs::path ClaudeUsageSource::defaultRoot(const ProcessEnvironment& environment) {
    auto home = environment.find("HOME");
    return fs::path(home != environment.end() ? home->second : ".") / ".claude" / "projects";
}

ClaudeUsageSource::ClaudeUsageSource(fs::path root) : root_(std::move(root)), reader_(std::make_unique<Reader>()) {}

ClaudeUsageSource::~ClaudeUsageSource() = default;

bool ClaudeUsageSource::isAvailable() const {
    std::error_code error;
    return fs::is_directory(root_, error);
}

std::optional<ClaudeUsageEntry> ClaudeUsageSource::entry(std::string_view line, const std::optional<std::string>& project) {
    if (line.find(usageKey) == std::string_view::npos) return std::nullopt;
    thread_local Reader reader;
    simdjson::padded_string padded(line);
    return reader.decode(padded.data(), padded.size(), project);
}

std::optional<ClaudeUsageSource::Cursor> ClaudeUsageSource::cursor(const fs::path& file) const {
    std::lock_guard lock(mutex_);
    auto it = tracked_.find(file.string());
    if (it == tracked_.end()) return std::nullopt;
    return it->second.cursor;
}

std::vector<ClaudeUsageEntry> ClaudeUsageSource::entries(Date since) {
    std::lock_guard lock(mutex_);
    ++scan_;
    auto root = root_.string();
    if (root.size() > 1 && root.ends_with('/')) root.pop_back();
    eachVisibleName(root, [&](int rootFd, const char* folderName, unsigned char type) {
        struct stat info {};
        if (type != DT_DIR && (::fstatat(rootFd, folderName, &info, 0) != 0 || !S_ISDIR(info.st_mode))) return;
        const auto project = ClaudeUsage::projectName(folderName);
        const auto folder = root + "/" + folderName;
        eachVisibleName(folder, [&](int folderFd, const char* name, unsigned char) {
            if (!std::string_view(name).ends_with(".jsonl")) return;
            if (::fstatat(folderFd, name, &info, 0) != 0 || !S_ISREG(info.st_mode)) return;
            auto path = folder + "/" + name;
            auto tracked = tracked_.find(path);
            // Sessions untouched since the window began hold nothing for it; never open them.
            // Whole seconds are portable; counting the second the change fell in errs on reading.
            if (tracked == tracked_.end() && Date::fromUnixTime(static_cast<double>(info.st_mtime) + 1) <= since) return;
            read(path, project, since);
            if (tracked == tracked_.end()) tracked = tracked_.find(path);
            if (tracked != tracked_.end()) tracked->second.scan = scan_;
        });
    });
    // Sessions deleted since the last scan.
    std::erase_if(tracked_, [&](const auto& entry) { return entry.second.scan != scan_; });

    std::size_t count = 0;
    for (const auto& [path, tracked] : tracked_) count += tracked.cursor.entries.size();
    std::vector<ClaudeUsageEntry> result;
    result.reserve(count);
    for (const auto& [path, tracked] : tracked_)
        result.insert(result.end(), tracked.cursor.entries.begin(), tracked.cursor.entries.end());
    return result;
}

void ClaudeUsageSource::read(const std::string& path, const std::optional<std::string>& project, Date since) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return;
    const auto end = ::lseek(fd, 0, SEEK_END);
    if (end >= 0) {
        const auto size = static_cast<std::uint64_t>(end);
        auto found = tracked_.find(path);
        Cursor cursor = found != tracked_.end() ? std::move(found->second.cursor) : Cursor{};
        bool ok = true;
        if (size < cursor.offset || cursor.offset == 0) {
            // A first read, or a file rewritten shorter than what was consumed: start again.
            std::uint64_t offset = 0;
            if (auto entries = reader_->backward(fd, size, project, since, offset)) {
                cursor.entries = std::move(*entries);
                cursor.offset = offset;
            } else {
                ok = false;
            }
        } else if (cursor.offset < size) {
            ok = reader_->forward(fd, size, project, cursor);
        }
        std::erase_if(cursor.entries, [&](const auto& entry) { return entry.timestamp < since; });
        // A file that failed half-way keeps what it had; the next refresh tries again.
        if (ok || found != tracked_.end()) tracked_[path].cursor = std::move(cursor);
        reader_->buffer.trim(4 * backwardChunkSize);
    }
    ::close(fd);
}

} // namespace corvane
