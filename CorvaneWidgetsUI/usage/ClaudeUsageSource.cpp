#include "CorvaneWidgetsUI/usage/ClaudeUsageSource.hpp"

#include "CorvaneCore/support/Iso8601.hpp"
#include "CorvaneFiles/AtomicFile.hpp"
#include "CorvaneWidgetsUI/usage/TranscriptSearch.hpp"
#include "CorvaneWidgetsUI/usage/WorkerThread.hpp"

#include <simdjson.h>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>

namespace corvane {

namespace fs = std::filesystem;

namespace {

/// `size` bytes with at least SIMDJSON_PADDING readable bytes after them, so lines can be decoded
/// where they lie. Grows without clearing.
class PaddedBuffer {
public:
    char* reserve(std::size_t size) {
        if (size > size_) {
            bytes_.reset(new char[size + simdjson::SIMDJSON_PADDING]);
            size_ = size;
        }
        return bytes_.get();
    }
    /// Grows to hold `size` bytes, keeping the `count` bytes at `from` and moving them to the
    /// end of the new room.
    char* grow(std::size_t size, std::size_t from, std::size_t count) {
        std::unique_ptr<char[]> bytes(new char[size + simdjson::SIMDJSON_PADDING]);
        std::memcpy(bytes.get() + size - count, bytes_.get() + from, count);
        bytes_ = std::move(bytes);
        size_ = size;
        return bytes_.get();
    }
    std::size_t size() const { return size_; }
    /// After an unusually large read, so one big append does not stay resident.
    void trim(std::size_t keep) {
        if (size_ > keep) {
            bytes_.reset();
            size_ = 0;
        }
    }

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
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

using FileKey = ClaudeUsageCache::FileKey;

/// The hash of the bytes just before `offset`; none when they cannot be read.
std::optional<std::uint64_t> blockHash(int fd, std::uint64_t offset) {
    char block[ClaudeUsageCache::blockSize];
    const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(offset, sizeof block));
    if (!readAt(fd, block, size, offset - size)) return std::nullopt;
    return ClaudeUsageCache::hash(std::string_view(block, size));
}

FileKey keyOf(const struct stat& info) {
#ifdef __APPLE__
    const auto& modified = info.st_mtimespec;
#else
    const auto& modified = info.st_mtim;
#endif
    FileKey key;
    key.device = static_cast<std::uint64_t>(info.st_dev);
    key.inode = static_cast<std::uint64_t>(info.st_ino);
    key.size = static_cast<std::uint64_t>(info.st_size);
    key.modified = static_cast<std::int64_t>(modified.tv_sec) * 1'000'000'000 + static_cast<std::int64_t>(modified.tv_nsec);
    return key;
}

/// Sessions untouched since the window began hold nothing for it. Whole seconds are portable;
/// counting the second the change fell in errs on reading.
bool untouchedSince(const FileKey& key, Date since) {
    auto seconds = key.modified / 1'000'000'000;
    if (key.modified < 0 && key.modified % 1'000'000'000 != 0) --seconds;
    return Date::fromUnixTime(static_cast<double>(seconds) + 1) <= since;
}

using TranscriptSearch::findUsageKey;
using TranscriptSearch::lastLineFeed;
using TranscriptSearch::usageKey;

/// The fields of `object` named `keys`, each the first of its name as `at_key` would find it,
/// gathered in one walk: looking each key up walks the fields again every time.
template <std::size_t N> struct Fields {
    std::array<simdjson::dom::element, N> values;
    std::array<bool, N> found{};

    Fields(simdjson::dom::object object, const std::array<std::string_view, N>& keys) {
        std::size_t left = N;
        for (auto field = object.begin(); left > 0 && field != object.end(); ++field) {
            const std::size_t length = field.key_length();
            for (std::size_t i = 0; i < N; ++i) {
                if (found[i] || keys[i].size() != length || std::memcmp(keys[i].data(), field.key_c_str(), length) != 0)
                    continue;
                values[i] = field.value();
                found[i] = true;
                --left;
                break;
            }
        }
    }
};

// Wrong types spoil the line, as any decoder of the record would refuse it; null and missing
// keys are simply absent, and so is an empty text: an empty id would make one message of every
// record that has it.
enum class Field { absent, present, wrong };

template <std::size_t N> Field stringField(const Fields<N>& fields, std::size_t index, std::string_view& value) {
    if (!fields.found[index] || fields.values[index].is_null()) return Field::absent;
    if (fields.values[index].get_string().get(value)) return Field::wrong;
    return value.empty() ? Field::absent : Field::present;
}

// A count below zero is no count: it would take tokens off the totals.
template <std::size_t N> bool tokenField(const Fields<N>& fields, std::size_t index, std::int64_t& value) {
    if (!fields.found[index] || fields.values[index].is_null()) return true;
    return !fields.values[index].get_int64().get(value) && value >= 0;
}

/// Calls `visit(folder's descriptor, name, type)` for each entry not starting with ".", so that
/// callers look names up relative to the open folder instead of walking the path every time: a
/// refresh stats every session of every project. An unreadable folder has no entries.
template <typename Visit> void eachVisibleName(const std::string& folder, Visit visit) {
    DIR* dir = ::opendir(folder.c_str());
    if (!dir) return;
    // dirfd is a macro on macOS, so it is not qualified.
    while (const dirent* entry = ::readdir(dir))
        if (entry->d_name[0] != '.') visit(dirfd(dir), entry->d_name, entry->d_type);
    ::closedir(dir);
}

/// Runs `work(worker)` on `workers` threads, the caller's (worker 0) among them, and returns when
/// all are done. A thread that cannot be started leaves its share to the others. The first
/// exception a worker throws sets `failed`, which the others watch between tasks, and is rethrown
/// here.
template <typename Work> void onThreads(std::size_t workers, std::atomic<bool>& failed, Work work) {
    std::exception_ptr failure;
    std::mutex failureMutex;
    auto run = [&](std::size_t worker) {
        try {
            work(worker);
        } catch (...) {
            std::lock_guard lock(failureMutex);
            if (!failure) failure = std::current_exception();
            failed.store(true);
        }
    };
    {
        std::vector<std::unique_ptr<WorkerThread>> threads;
        threads.reserve(workers);
        for (std::size_t worker = 1; worker < workers; ++worker) {
            try {
                threads.push_back(std::make_unique<WorkerThread>([&run, worker] { run(worker); }, worker - 1));
            } catch (const std::system_error&) {
                break;
            }
        }
        run(0);
    }
    if (failure) std::rethrow_exception(failure);
}

} // namespace

/// One project folder as a scan lists it: the transcripts to read, in the folder's own order.
struct ClaudeUsageSource::Folder {
    std::string path;
    std::optional<std::string> project;
    std::vector<Task> tasks;
};

/// One transcript a scan reads, or keeps unread because nothing was appended.
struct ClaudeUsageSource::Task {
    std::string path;
    std::uint64_t size = 0;
    /// The file's state from earlier scans; none when it was never read, or no longer holds.
    Tracked* tracked = nullptr;
    /// The file as listed; the read adds where it stopped.
    FileKey key;
    /// Whether it must be opened: new, grown since it was read, or known only from the cache.
    bool opens = true;
    /// What the read gave; none when a file never read before could not be read.
    std::optional<Cursor> cursor;
};

/// The parser and buffers one worker reuses from file to file.
struct ClaudeUsageSource::Reader {
    /// The room a backward read walks down through: a few chunks, so a line cut by a chunk's
    /// border moves once every few chunks. (Two chunks measured slower: long lines moved often.)
    static constexpr std::size_t backwardWindow = 4 * backwardChunkSize;

    simdjson::dom::parser parser;
    PaddedBuffer buffer;
    /// Whether ids are kept as the cache keeps them.
    bool compactIds = false;

    /// A line whose bytes lie in a buffer with padding after them.
    std::optional<ClaudeUsageEntry> decode(const char* line, std::size_t size, const std::optional<std::string>& project) {
        auto entry = decodeLine(line, size, project);
        if (entry && compactIds) entry->id = ClaudeUsageCache::compactId(entry->id);
        return entry;
    }

    std::optional<ClaudeUsageEntry> decodeLine(const char* line, std::size_t size, const std::optional<std::string>& project) {
        using namespace simdjson;
        dom::element document;
        if (parser.parse(line, size, false).get(document)) return std::nullopt;
        dom::object top;
        if (document.get_object().get(top)) return std::nullopt;
        if (auto entry = decodeRecord(top, project)) return entry;
        // A sub-agent's message as its parent session mirrors it while the agent runs: the only
        // record of it when the agent's own transcript is gone. Its ids are the agent's, so a
        // message found in both places counts once.
        const Fields<2> progress(top, {"type", "data"});
        std::string_view type;
        dom::object data, nested;
        if (stringField(progress, 0, type) != Field::present || type != "progress" || !progress.found[1] ||
            progress.values[1].get_object().get(data))
            return std::nullopt;
        const Fields<1> inData(data, {"message"});
        if (!inData.found[0] || inData.values[0].get_object().get(nested)) return std::nullopt;
        return decodeRecord(nested, project);
    }

    /// A transcript record: a message with its usage, when, and the ids that tell it apart.
    static std::optional<ClaudeUsageEntry> decodeRecord(simdjson::dom::object top, const std::optional<std::string>& project) {
        using namespace simdjson;
        dom::object message, usage;
        const Fields<4> record(top, {"message", "timestamp", "requestId", "uuid"});
        if (!record.found[0] || record.values[0].get_object().get(message)) return std::nullopt;
        const Fields<2> inMessage(message, {"usage", "id"});
        if (!inMessage.found[0] || inMessage.values[0].get_object().get(usage)) return std::nullopt;

        std::string_view timestamp, requestId, messageId, uuid;
        if (stringField(record, 1, timestamp) != Field::present) return std::nullopt;
        auto hasRequest = stringField(record, 2, requestId);
        auto hasMessage = stringField(inMessage, 1, messageId);
        auto hasUuid = stringField(record, 3, uuid);
        if (hasRequest == Field::wrong || hasMessage == Field::wrong || hasUuid == Field::wrong) return std::nullopt;

        ClaudeUsageEntry entry;
        const Fields<4> counts(usage, {"input_tokens", "output_tokens", "cache_creation_input_tokens", "cache_read_input_tokens"});
        if (!tokenField(counts, 0, entry.inputTokens) || !tokenField(counts, 1, entry.outputTokens) ||
            !tokenField(counts, 2, entry.cacheCreationTokens) || !tokenField(counts, 3, entry.cacheReadTokens))
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
            if (auto* feed = lastLineFeed(lineStart, hit)) lineStart = feed + 1;
            auto* lineEnd = static_cast<const char*>(std::memchr(hit, '\n', static_cast<std::size_t>(end - hit)));
            if (!lineEnd) lineEnd = end;
            lines.emplace_back(lineStart, static_cast<std::size_t>(lineEnd - lineStart));
            lineStart = lineEnd + 1;
        }
    }

    std::vector<std::pair<const char*, std::size_t>> lines;

    /// From the end towards the start, until the entries are older than `since`. Sets `offset`
    /// to the end of what was consumed: a last line still being written is left for later.
    ///
    /// Each chunk is read into the buffer just before the start of the line the previous chunk
    /// cut, so that line is whole without copying it; the cut piece moves only when the chunks
    /// have walked down to the buffer's start.
    std::optional<std::vector<ClaudeUsageEntry>> backward(int fd, std::uint64_t size, const std::optional<std::string>& project,
                                                          Date since, std::uint64_t& offset) {
        std::vector<ClaudeUsageEntry> newestFirst;
        offset = size;
        char* base = buffer.reserve(std::max(buffer.size(), backwardWindow));
        // The cut piece of a line: [hi - carry, hi).
        std::size_t hi = buffer.size(), carry = 0;
        bool atEnd = true;
        for (std::uint64_t position = size; position > 0;) {
            const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(backwardChunkSize, position));
            position -= count;
            if (hi - carry < count) {
                const std::size_t room = std::max(buffer.size(), 2 * (count + carry));
                if (room > buffer.size())
                    base = buffer.grow(room, hi - carry, carry);
                else
                    std::memmove(base + room - carry, base + hi - carry, carry);
                hi = room;
            }
            char* bytes = base + hi - carry - count;
            const std::size_t length = count + carry;
            if (!readAt(fd, bytes, count, position)) return std::nullopt;
            const char* end = bytes + length;

            // Before the first line feed lies the end of a line that began in an earlier chunk.
            const char* first = bytes;
            if (position > 0) {
                auto* feed = static_cast<const char*>(std::memchr(bytes, '\n', length));
                if (!feed) {
                    carry = length;
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
            // The piece before the first line feed, without it, is carried where it lies.
            carry = first > bytes ? static_cast<std::size_t>(first - bytes - 1) : 0;
            hi = static_cast<std::size_t>(bytes - base) + carry;
        }
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

ClaudeUsageSource::ClaudeUsageSource(fs::path root, std::size_t workers, std::optional<fs::path> cacheFile)
    : root_(std::move(root)), workers_(workers), cacheFile_(std::move(cacheFile)) {
    if (workers_ == 0) workers_ = std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, automaticWorkerLimit);
}

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
    scan(since);
    std::size_t count = 0;
    for (const auto& [path, tracked] : tracked_) count += tracked.cursor.entries.size();
    std::vector<ClaudeUsageEntry> result;
    result.reserve(count);
    for (const auto& [path, tracked] : tracked_)
        result.insert(result.end(), tracked.cursor.entries.begin(), tracked.cursor.entries.end());
    return result;
}

std::vector<std::vector<ClaudeUsageEntry>> ClaudeUsageSource::takeEntries(Date since) {
    std::lock_guard lock(mutex_);
    scan(since);
    std::vector<std::pair<const std::string*, Tracked*>> files;
    files.reserve(tracked_.size());
    for (auto& [path, tracked] : tracked_)
        if (!tracked.cursor.entries.empty()) files.emplace_back(&path, &tracked);
    std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return *a.first < *b.first; });
    std::vector<std::vector<ClaudeUsageEntry>> lists;
    lists.reserve(files.size());
    for (auto& [path, tracked] : files) lists.push_back(std::move(tracked->cursor.entries));
    tracked_.clear();
    // The cache holds what was just forgotten; the next scan starts from it.
    restored_ = false;
    return lists;
}

void ClaudeUsageSource::scan(Date since) {
    ++scan_;
    auto root = root_.string();
    if (root.size() > 1 && root.ends_with('/')) root.pop_back();
    if (cacheFile_ && !restored_) {
        restored_ = true;
        restore(root);
    }
    std::vector<Folder> folders;
    eachVisibleName(root, [&](int rootFd, const char* name, unsigned char type) {
        struct stat info {};
        if (type != DT_DIR && (::fstatat(rootFd, name, &info, 0) != 0 || !S_ISDIR(info.st_mode))) return;
        folders.push_back({root + "/" + name, ClaudeUsage::projectName(name), {}});
    });
    while (readers_.size() < workers_) {
        readers_.push_back(std::make_unique<Reader>());
        readers_.back()->compactIds = cacheFile_.has_value();
    }

    // Listing only looks cursors up, and each read touches its own file's cursor alone, so the
    // workers share the map without a lock until the merge below. Workers list folders while any
    // are left and meanwhile read what is listed, biggest first, so that none is left with a
    // large file at the end; a worker that starts late only finds less to do.
    std::atomic<std::size_t> nextFolder{0}, listedFolders{0};
    std::atomic<bool> failed{false};
    using Read = std::pair<Task*, const Folder*>;
    std::vector<Read> listed; // a heap, biggest on top
    std::mutex listedMutex;
    auto bySize = [](const Read& a, const Read& b) { return a.first->size < b.first->size; };
    onThreads(workers_, failed, [&](std::size_t worker) {
        while (!failed.load(std::memory_order_relaxed)) {
            if (nextFolder.load(std::memory_order_relaxed) < folders.size()) {
                if (const auto index = nextFolder.fetch_add(1); index < folders.size()) {
                    auto& folder = folders[index];
                    list(folder, since);
                    {
                        std::lock_guard lock(listedMutex);
                        for (auto& task : folder.tasks) {
                            if (!task.opens) continue;
                            listed.emplace_back(&task, &folder);
                            std::push_heap(listed.begin(), listed.end(), bySize);
                        }
                    }
                    listedFolders.fetch_add(1, std::memory_order_release);
                    continue;
                }
            }
            std::optional<Read> next;
            const bool allListed = listedFolders.load(std::memory_order_acquire) == folders.size();
            {
                std::lock_guard lock(listedMutex);
                if (!listed.empty()) {
                    std::pop_heap(listed.begin(), listed.end(), bySize);
                    next = listed.back();
                    listed.pop_back();
                }
            }
            if (next) {
                read(*readers_[worker], *next->first, next->second->project, since);
            } else if (allListed) {
                // Between refreshes a worker's buffer is only memory held (its parser, sized to the
                // longest line, stays); freed here, while other workers may still be reading.
                readers_[worker]->buffer.trim(0);
                return;
            } else {
                // The last folders are being listed; waiting is shorter than a sleep's wake-up.
                std::this_thread::yield();
            }
        }
    });

    // In listing order, so that the map grows as it always did.
    for (auto& folder : folders) {
        for (auto& task : folder.tasks) {
            Tracked* tracked = task.tracked;
            if (task.cursor) {
                if (!tracked) tracked = &tracked_[task.path];
                tracked->cursor = std::move(*task.cursor);
                tracked->key = task.key;
            }
            if (tracked) {
                tracked->scan = scan_;
                tracked->restored = false;
            }
        }
    }
    // Sessions deleted since the last scan.
    std::erase_if(tracked_, [&](const auto& entry) { return entry.second.scan != scan_; });
    if (cacheFile_) keep(root, since);
}

void ClaudeUsageSource::restore(const std::string& root) {
    std::optional<std::string> bytes;
    try {
        bytes = readFileIfExists(*cacheFile_);
    } catch (const std::exception&) {
        return;
    }
    if (!bytes) return;
    auto cache = ClaudeUsageCache::decode(*bytes);
    if (!cache || cache->root != root) return;
    cacheHash_ = ClaudeUsageCache::fingerprint(*bytes);
    for (auto& transcript : cache->transcripts) {
        auto& tracked = tracked_[transcript.path];
        tracked.cursor = {transcript.offset, std::move(transcript.entries)};
        tracked.key = transcript.key;
        tracked.restored = true;
    }
}

void ClaudeUsageSource::keep(const std::string& root, Date since) {
    // The entries are lent to the cache for encoding rather than copied: a week holds many.
    ClaudeUsageCache cache;
    cache.root = root;
    std::vector<Tracked*> lent;
    for (auto& [path, tracked] : tracked_) {
        // Listing skips such a file unless something is appended to it, and then reads it anew.
        if (tracked.cursor.entries.empty() && untouchedSince(tracked.key, since)) continue;
        cache.transcripts.push_back({path, tracked.key, tracked.cursor.offset, std::move(tracked.cursor.entries)});
        lent.push_back(&tracked);
    }
    const auto bytes = cache.encode();
    for (std::size_t i = 0; i < lent.size(); ++i) lent[i]->cursor.entries = std::move(cache.transcripts[i].entries);
    const auto hash = ClaudeUsageCache::fingerprint(bytes);
    if (hash == cacheHash_) return;
    // The cache is never needed: when it cannot be written, the next run reads the files.
    try {
        writeFileAtomically(*cacheFile_, bytes);
        cacheHash_ = hash;
    } catch (const std::exception&) {
    }
}

void ClaudeUsageSource::list(Folder& folder, Date since) {
    list(folder, folder.path, since, true);
}

void ClaudeUsageSource::list(Folder& folder, const std::string& path, Date since, bool withSessions) {
    eachVisibleName(path, [&](int folderFd, const char* name, unsigned char type) {
        struct stat info {};
        if (!std::string_view(name).ends_with(".jsonl")) {
            // A session's sub-agents write transcripts of their own in <session>/subagents; they
            // belong to the project of the folder the session is in.
            if (!withSessions || (type != DT_DIR && type != DT_UNKNOWN)) return;
            if (::fstatat(folderFd, name, &info, 0) != 0 || !S_ISDIR(info.st_mode)) return;
            list(folder, path + "/" + name + "/subagents", since, false);
            return;
        }
        if (::fstatat(folderFd, name, &info, 0) != 0 || !S_ISREG(info.st_mode)) return;
        const auto key = keyOf(info);
        // Sessions untouched since the window began hold nothing for it; never open them.
        const bool old = untouchedSince(key, since);
        if (old && tracked_.empty()) return;
        auto file = path + "/" + name;
        auto found = tracked_.find(file);
        Tracked* tracked = found != tracked_.end() ? &found->second : nullptr;
        // Another file under the name, one cut shorter, or one changed without growing: what was
        // read of it no longer holds.
        const auto* known = tracked ? &tracked->key : nullptr;
        if (known && (key.device != known->device || key.inode != known->inode || key.size < known->size ||
                      (key.size == known->size && key.modified != known->modified)))
            tracked = nullptr;
        if (old && !tracked) return;
        // A file as it was when read has nothing new: opening it would only find that out again.
        // A cursor from the cache is checked once against the file all the same.
        const bool opens = !tracked || tracked->restored || key.size != tracked->key.size;
        folder.tasks.push_back({std::move(file), key.size, tracked, key, opens, std::nullopt});
        if (!opens) {
            auto& entries = tracked->cursor.entries;
            std::erase_if(entries, [&](const auto& entry) { return entry.timestamp < since; });
        }
    });
}

void ClaudeUsageSource::read(Reader& reader, Task& task, const std::optional<std::string>& project, Date since) {
    const int fd = ::open(task.path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return;
    const auto end = ::lseek(fd, 0, SEEK_END);
    if (end >= 0) {
        const auto size = static_cast<std::uint64_t>(end);
        Cursor cursor = task.tracked ? std::move(task.tracked->cursor) : Cursor{};
        // Other bytes where the last read stopped, or more appended than one forward read takes:
        // read as if new, which gives what reading everything would.
        if (task.tracked && (size < cursor.offset || size - cursor.offset > forwardReadLimit ||
                             blockHash(fd, cursor.offset) != task.tracked->key.block))
            cursor = Cursor{};
        bool ok = true;
        if (cursor.offset == 0) {
            // A first read, or a file that no longer continues what was read: start again.
            std::uint64_t offset = 0;
            if (auto entries = reader.backward(fd, size, project, since, offset)) {
                cursor.entries = std::move(*entries);
                cursor.offset = offset;
            } else {
                ok = false;
            }
        } else if (cursor.offset < size) {
            ok = reader.forward(fd, size, project, cursor);
        }
        std::erase_if(cursor.entries, [&](const auto& entry) { return entry.timestamp < since; });
        const auto block = ok ? blockHash(fd, cursor.offset) : std::nullopt;
        if (block)
            task.key.block = *block;
        else
            task.key = FileKey{}; // matches no file, so the next refresh reads it anew
        // A file that failed half-way keeps what it had; the next refresh tries again.
        if (ok || task.tracked) task.cursor = std::move(cursor);
        reader.buffer.trim(2 * Reader::backwardWindow);
    }
    ::close(fd);
}

} // namespace corvane
