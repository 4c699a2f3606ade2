#include "CorvaneWidgetsUI/clipboard/ClipboardSource.hpp"

#include "CorvaneCore/dock/DockURLString.hpp"
#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/widgets/clipboard/ClipboardBoard.hpp"
#include "CorvaneStorage/storage/DataFileError.hpp"

#include <algorithm>

namespace corvane {

namespace {

std::string cutText(std::string text) {
    if (text.size() <= ClipboardItem::maximumTextLength) return text; // fewer bytes than the limit's characters
    auto characters = text::utf8Characters(text);
    if (characters.size() <= ClipboardItem::maximumTextLength) return text;
    const auto& last = characters[ClipboardItem::maximumTextLength - 1];
    text.resize(static_cast<std::size_t>(last.data() + last.size() - text.data()));
    return text;
}

} // namespace

ClipboardSource::ClipboardSource(std::filesystem::path storeURL, ClipboardSourceServices services,
                                 ClipboardOGSource& ogSource, SerialQueue& queue)
    : file_(std::move(storeURL), services.secrets), services_(services), ogSource_(ogSource), queue_(queue) {}

ClipboardSource::~ClipboardSource() {
    {
        std::lock_guard lock(inbox_->mutex);
        inbox_->open = false;
    }
    if (saveToken_) services_.scheduler.cancel(*saveToken_);
}

ClipboardState ClipboardSource::current() const {
    return ClipboardState{items_, unseenCount_, trouble_, hasRead_};
}

ClipboardState ClipboardSource::state(const ClipboardSettings& settings, const ClipboardFrontmostApp& frontmost) {
    settings_ = settings;
    if (!hasRead_) {
        if (settings_.persistAcrossRestarts) readStored();
        hasRead_ = true;
    }
    items_ = ClipboardBoard::applyRetention(std::move(items_), settings_, services_.clock.now());
    return pollAndMerge(settings, frontmost);
}

ClipboardState ClipboardSource::pollAndMerge(const ClipboardSettings& settings, const ClipboardFrontmostApp& frontmost) {
    settings_ = settings;
    auto& pasteboard = services_.pasteboard;
    auto changeCount = pasteboard.changeCount();
    if (changeCount == lastSeenChangeCount_) return current();
    lastSeenChangeCount_ = changeCount;
    if (lastWrittenChangeCount_ && changeCount == *lastWrittenChangeCount_) return current();
    if (settings.ignorePasswordManagers) {
        auto types = pasteboard.types();
        if (std::find(types.begin(), types.end(), transientType) != types.end()) return current();
    }
    auto detected = detect(frontmost);
    if (!detected) return current();
    auto item = accept(std::move(*detected), settings);
    if (!item) return current();
    // The same thing again at the top (often the pasteboard as it was when the app started) is
    // not news.
    auto newest = std::max_element(items_.begin(), items_.end(), [](const auto& a, const auto& b) {
        return a.capturedAt < b.capturedAt;
    });
    if (newest != items_.end() && newest->hasSameContent(*item)) return current();

    auto id = item->id;
    items_ = ClipboardBoard::insert(std::move(items_), std::move(*item));
    ++unseenCount_;
    items_ = ClipboardBoard::applyRetention(std::move(items_), settings_, services_.clock.now());
    scheduleSave();
    auto inserted = std::find_if(items_.begin(), items_.end(), [&](const auto& i) { return i.id == id; });
    if (inserted != items_.end()) schedulePreview(*inserted);
    return current();
}

std::optional<ClipboardItem> ClipboardSource::detect(const ClipboardFrontmostApp& frontmost) {
    // A copied file also brings its name as text and its icon as an image; an image copied from a
    // browser often brings its address as text. The richest kind wins.
    ClipboardItem item{.sourceAppBundleID = frontmost.bundleID, .sourceAppName = frontmost.name};
    auto& pasteboard = services_.pasteboard;
    if (auto url = pasteboard.fileURL(); url && url->starts_with("file://")) {
        item.kind = ClipboardItem::Kind::file;
        item.fileURL = std::move(url);
    } else if (auto image = pasteboard.imageData(); image && !image->empty()) {
        item.kind = ClipboardItem::Kind::image;
        item.imageData = std::move(image);
    } else if (auto text = pasteboard.text(); text && !text->empty()) {
        item.kind = ClipboardItem::Kind::text;
        item.text = std::move(text);
    } else {
        return std::nullopt;
    }
    return item;
}

std::optional<ClipboardItem> ClipboardSource::accept(ClipboardItem item, const ClipboardSettings& settings) {
    switch (item.kind) {
    case ClipboardItem::Kind::text:
        item.text = cutText(std::move(*item.text));
        item.isSensitive = ClipboardItem::looksSensitive(*item.text);
        item.byteSize = static_cast<std::int64_t>(item.text->size());
        break;
    case ClipboardItem::Kind::image:
        item.byteSize = static_cast<std::int64_t>(item.imageData->size());
        if (item.byteSize > settings.maxImageBytes) return std::nullopt;
        break;
    case ClipboardItem::Kind::file: {
        std::error_code ec;
        auto size = std::filesystem::file_size(DockURLString::path(*item.fileURL), ec);
        item.byteSize = ec ? 0 : static_cast<std::int64_t>(size);
        break;
    }
    }
    item.id = Uuid::generate();
    item.capturedAt = services_.clock.now();
    item.isPinned = false;
    return item;
}

ClipboardState ClipboardSource::write(const Uuid& id) {
    auto found = std::find_if(items_.begin(), items_.end(), [&](const auto& i) { return i.id == id; });
    if (found == items_.end()) return current();
    auto& pasteboard = services_.pasteboard;
    switch (found->kind) {
    case ClipboardItem::Kind::text: pasteboard.writeText(found->text.value_or(""), found->isSensitive); break;
    case ClipboardItem::Kind::image: pasteboard.writeImage(found->imageData.value_or(Bytes{})); break;
    case ClipboardItem::Kind::file: pasteboard.writeFile(found->fileURL.value_or("")); break;
    }
    lastWrittenChangeCount_ = pasteboard.changeCount();
    return current();
}

ClipboardState ClipboardSource::togglePin(const Uuid& id) {
    for (auto& item : items_)
        if (item.id == id) item.isPinned = !item.isPinned;
    items_ = ClipboardBoard::order(std::move(items_));
    scheduleSave();
    return current();
}

ClipboardState ClipboardSource::remove(const Uuid& id) {
    if (std::erase_if(items_, [&](const auto& i) { return i.id == id; }) > 0) scheduleSave();
    return current();
}

ClipboardState ClipboardSource::clearUnpinned() {
    if (std::erase_if(items_, [](const auto& i) { return !i.isPinned; }) > 0) scheduleSave();
    unseenCount_ = 0;
    return current();
}

ClipboardState ClipboardSource::forgetEverything() {
    items_.clear();
    unseenCount_ = 0;
    if (saveToken_) services_.scheduler.cancel(*saveToken_);
    saveToken_.reset();
    try {
        file_.forget();
        lastSavedItems_.clear();
        storedHistoryRead_ = true;
        storedHistoryUnreadable_ = false;
        setTrouble(std::nullopt);
    } catch (const ClipboardCryptoError& error) {
        setTrouble(ClipboardTrouble::keychainFailed(error.what()), "clipboard forget failed: ");
    } catch (const DataFileError& error) {
        setTrouble(ClipboardTrouble::persistenceFailed(error.what()), "clipboard forget failed: ");
    }
    return current();
}

ClipboardState ClipboardSource::markSeen() {
    unseenCount_ = 0;
    return current();
}

bool ClipboardSource::readStored() {
    try {
        auto stored = file_.read();
        items_ = ClipboardBoard::merge(std::move(items_), stored.value_or(std::vector<ClipboardItem>{}));
        items_ = ClipboardBoard::applyRetention(std::move(items_), settings_, services_.clock.now());
        lastSavedItems_ = stored.value_or(std::vector<ClipboardItem>{});
        storedHistoryRead_ = true;
        storedHistoryUnreadable_ = false;
        return true;
    } catch (const ClipboardCryptoError& error) {
        if (error.kind == ClipboardCryptoError::Kind::keychainStatus) {
            setTrouble(ClipboardTrouble::keychainFailed(error.what()), "clipboard load failed: ");
            return false;
        }
        storedHistoryUnreadable_ = error.kind != ClipboardCryptoError::Kind::cipherFailed;
        setTrouble(ClipboardTrouble::persistenceFailed(error.what()), "clipboard load failed: ");
    } catch (const DecodingError& error) {
        storedHistoryUnreadable_ = true;
        setTrouble(ClipboardTrouble::persistenceFailed(std::string("Failed to read the clipboard history: ") +
                                                       error.what()),
                   "clipboard load failed: ");
    } catch (const DataFileError& error) {
        setTrouble(ClipboardTrouble::persistenceFailed(error.what()), "clipboard load failed: ");
    }
    return false;
}

void ClipboardSource::save() {
    if (!settings_.persistAcrossRestarts) return;
    if (!storedHistoryRead_ && !readStored()) {
        // A key that cannot be read now may be readable later: the file must wait for it. Content
        // that will never open is kept beside the new file rather than written over.
        if (!storedHistoryUnreadable_) return publish();
        try {
            file_.setAside();
            services_.log.error(std::string(logCategory), "clipboard file unreadable, kept as " +
                                                              file_.damagedURL().filename().string());
            storedHistoryRead_ = true;
            storedHistoryUnreadable_ = false;
        } catch (const DataFileError& error) {
            setTrouble(ClipboardTrouble::persistenceFailed(error.what()), "clipboard save failed: ");
            return publish();
        }
    }
    if (items_ == lastSavedItems_ && !trouble_) return;
    try {
        file_.write(items_);
        lastSavedItems_ = items_;
        setTrouble(std::nullopt);
    } catch (const ClipboardCryptoError& error) {
        auto trouble = error.kind == ClipboardCryptoError::Kind::keychainStatus
                           ? ClipboardTrouble::keychainFailed(error.what())
                           : ClipboardTrouble::persistenceFailed(error.what());
        setTrouble(std::move(trouble), "clipboard save failed: ");
    } catch (const DataFileError& error) {
        setTrouble(ClipboardTrouble::persistenceFailed(error.what()), "clipboard save failed: ");
    }
    publish();
}

void ClipboardSource::close() {
    if (closed_) return;
    if (saveToken_) {
        services_.scheduler.cancel(*saveToken_);
        saveToken_.reset();
        save();
    }
    closed_ = true;
    std::lock_guard lock(inbox_->mutex);
    inbox_->open = false;
}

void ClipboardSource::scheduleSave() {
    if (closed_) return;
    if (saveToken_) services_.scheduler.cancel(*saveToken_);
    auto generation = ++saveGeneration_;
    saveToken_ = services_.scheduler.schedule(saveDelay, [this, generation] {
        queue_.async([this, generation] {
            // A newer request may have replaced this one after it fired; its token stays.
            if (generation == saveGeneration_) saveToken_.reset();
            save();
        });
    });
}

void ClipboardSource::schedulePreview(const ClipboardItem& item) {
    if (closed_ || !settings_.fetchWebsitePreviews || item.kind != ClipboardItem::Kind::text || !item.text ||
        item.isSensitive || item.ogFetchedAt || !ClipboardItem::looksLikeURL(*item.text) ||
        !ClipboardItem::isFetchableHost(*item.text))
        return;
    ogSource_.request(std::string(text::trimmed(*item.text)),
                      [this, id = item.id, inbox = inbox_](std::optional<WebPreview> preview) {
                          std::lock_guard lock(inbox->mutex);
                          if (!inbox->open) return;
                          queue_.async([this, id, preview = std::move(preview)] { applyPreview(id, preview); });
                      });
}

void ClipboardSource::applyPreview(const Uuid& id, const std::optional<WebPreview>& preview) {
    if (closed_ || !preview) return;
    auto found = std::find_if(items_.begin(), items_.end(), [&](const auto& i) { return i.id == id; });
    if (found == items_.end()) return; // removed meanwhile
    found->ogTitle = preview->title;
    found->ogDescription = preview->description;
    found->ogImageData = preview->imageData;
    found->ogFetchedAt = services_.clock.now();
    scheduleSave();
    publish();
}

void ClipboardSource::setTrouble(std::optional<ClipboardTrouble> trouble, std::string_view logMessage) {
    if (trouble && !logMessage.empty()) services_.log.error(std::string(logCategory), std::string(logMessage) + trouble->message);
    trouble_ = std::move(trouble);
}

void ClipboardSource::publish() {
    if (onUpdate) onUpdate(current());
}

} // namespace corvane
