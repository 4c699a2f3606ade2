#pragma once

#include "CorvaneCore/widgets/clipboard/ClipboardItem.hpp"
#include "CorvaneStorage/widgets/clipboard/ClipboardCrypto.hpp"

#include <filesystem>
#include <optional>
#include <vector>

namespace corvane {

/// "clipboard.json.enc": the history, sealed with the key from the secret store. Readable by
/// its owner only. Any one thread at a time.
class ClipboardHistoryFile {
public:
    ClipboardHistoryFile(std::filesystem::path url, SecretStore& secrets) : url_(std::move(url)), crypto_(secrets) {}

    const std::filesystem::path& url() const { return url_; }
    /// Where an unreadable file is kept aside instead of being written over.
    std::filesystem::path damagedURL() const { return url_.string() + ".damaged"; }

    /// The stored history; none when there is no file (no key is needed or made then). Throws
    /// `ClipboardCryptoError`, `DecodingError` or `DataFileError` (read).
    std::optional<std::vector<ClipboardItem>> read();
    /// Writes the whole history atomically, making the key on first use. Throws
    /// `ClipboardCryptoError` or `DataFileError` (write).
    void write(const std::vector<ClipboardItem>& items);
    /// Moves the file to `damagedURL`, replacing an earlier one. Throws `DataFileError` (write).
    void setAside();
    /// Removes the file, the set-aside copy and the key. Throws `DataFileError` (write) or
    /// `ClipboardCryptoError`.
    void forget();

private:
    std::filesystem::path url_;
    ClipboardCrypto crypto_;
};

} // namespace corvane
