#include "CorvaneStorage/widgets/clipboard/ClipboardHistoryFile.hpp"

#include "CorvaneStorage/storage/AtomicFile.hpp"
#include "CorvaneStorage/storage/DataFileError.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace corvane {

std::optional<std::vector<ClipboardItem>> ClipboardHistoryFile::read() {
    auto contents = readFileIfExists(url_);
    if (!contents) return std::nullopt;
    auto key = crypto_.existingKey();
    if (!key) {
        // A file too short to be anything says so, whatever the key.
        if (contents->size() < ClipboardSealing::minimumSealedLength)
            throw ClipboardCryptoError::of(ClipboardCryptoError::Kind::truncated);
        throw ClipboardCryptoError::of(ClipboardCryptoError::Kind::missingKey);
    }
    return decodeClipboardFile(std::span(reinterpret_cast<const std::uint8_t*>(contents->data()), contents->size()),
                               *key);
}

void ClipboardHistoryFile::write(const std::vector<ClipboardItem>& items) {
    auto sealed = encodeClipboardFile(items, crypto_.key());
    writeFileAtomically(url_, std::string_view(reinterpret_cast<const char*>(sealed.data()), sealed.size()), 0600);
}

void ClipboardHistoryFile::setAside() {
    if (std::rename(url_.c_str(), damagedURL().c_str()) != 0 && errno != ENOENT)
        throw DataFileError(DataFileError::Operation::write, damagedURL(), std::strerror(errno));
}

void ClipboardHistoryFile::forget() {
    for (const auto& path : {url_, damagedURL()}) {
        std::error_code ec;
        std::filesystem::remove(path, ec);
        if (ec) throw DataFileError(DataFileError::Operation::write, path, ec.message());
    }
    crypto_.forgetKey();
}

} // namespace corvane
