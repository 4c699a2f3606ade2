#pragma once

#include "CorvaneCore/platform/Notifier.hpp"
#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneFiles/AtomicFile.hpp"
#include "CorvaneFiles/DataFileError.hpp"
#include "CorvaneFiles/FileLock.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace corvane {

/// The pattern every store of the data folder follows. The value is loaded when the store is
/// opened (a missing file is the codec's empty value, and nothing is written); each change
/// re-reads the file first, so that what another process saved meanwhile is not lost, then
/// writes the whole file atomically and posts the store's notification. A change holds the data
/// file's lock from the re-read to the write, so two processes never interleave their changes.
/// Changes take ids and records by value: a caller may well pass the store's own, which the
/// re-read replaces before the change uses them.
///
/// `Codec` provides `static Value empty()`, `static Value decode(std::string_view)` (throwing
/// `DecodingError`) and `static std::string encode(const Value&)`.
template <typename Value, typename Codec> class JsonFileStore {
public:
    /// Throws `DataFileError` when the file exists but cannot be read or decoded.
    JsonFileStore(std::filesystem::path url, Notifier* notifier = nullptr, std::string notificationName = {})
        : url_(std::move(url)), notifier_(notifier), notificationName_(std::move(notificationName)) {
        auto contents = readFileIfExists(url_);
        fileExistedOnLoad_ = contents.has_value();
        value_ = contents ? decoded(std::move(*contents)) : Codec::empty();
    }
    /// A store on "/dev/null": it reads nothing and its saves go nowhere, as that file would do
    /// if an atomic write could not replace it. Like that file, it exists.
    struct Discarding {};
    static constexpr Discarding discarding{};
    explicit JsonFileStore(Discarding)
        : url_("/dev/null"), notifier_(nullptr), fileExistedOnLoad_(true), discards_(true), value_(Codec::empty()) {}
    virtual ~JsonFileStore() = default;

    const std::filesystem::path& url() const { return url_; }
    bool fileExistedOnLoad() const { return fileExistedOnLoad_; }
    const Value& value() const { return value_; }
    Value& value() { return value_; }

    /// Replaces the value with the file's, when there is a file.
    void reload() {
        if (discards_) return;
        auto contents = readFileIfExists(url_);
        if (!contents) return;
        // Most re-reads find the file as this store last read or wrote it; a copy of the value
        // decoded then is much cheaper than decoding again.
        if (known_ && *contents == known_->bytes) value_ = known_->value;
        else value_ = decoded(std::move(*contents));
    }

    /// Writes the value; on failure the in-memory value keeps the change.
    void save() {
        if (discards_) return;
        auto bytes = Codec::encode(value_);
        known_.reset();
        writeFileAtomically(url_, bytes);
        known_ = Known{std::move(bytes), value_};
        if (notifier_ && !notificationName_.empty()) notifier_->post(notificationName_);
    }

protected:
    /// Held from the re-read to the write of every change.
    FileLock lockForChange() const { return FileLock(url_); }

    /// Re-reads, applies `mutate` to the fresh value, saves, all under the file's lock. Returns
    /// what `mutate` returns.
    template <typename Mutate> auto change(Mutate&& mutate) {
        auto lock = lockForChange();
        reload();
        if constexpr (std::is_void_v<decltype(mutate(value_))>) {
            mutate(value_);
            save();
        } else {
            auto result = mutate(value_);
            save();
            return result;
        }
    }

private:
    /// The file as this store last read or wrote it.
    struct Known {
        std::string bytes;
        Value value;
    };

    Value decoded(std::string contents) {
        try {
            auto value = Codec::decode(contents);
            known_ = Known{std::move(contents), value};
            return value;
        } catch (const DecodingError& error) {
            throw DataFileError(DataFileError::Operation::decode, url_, error.what());
        }
    }

    std::filesystem::path url_;
    Notifier* notifier_;
    std::string notificationName_;
    bool fileExistedOnLoad_ = false;
    bool discards_ = false;
    Value value_;
    std::optional<Known> known_;
};

} // namespace corvane
