#pragma once

#include "CorvaneCore/platform/SecretStore.hpp"
#include "CorvaneCore/support/Base64.hpp"
#include "CorvaneCore/widgets/clipboard/ClipboardItem.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Why the clipboard history could not be sealed or opened.
class ClipboardCryptoError : public std::runtime_error {
public:
    enum class Kind {
        /// The key store refused; `status` is its code.
        keychainStatus,
        /// Too short to hold a nonce, any ciphertext and a tag.
        truncated,
        /// The tag does not match: another key, or changed bytes.
        authenticationFailed,
        /// There is a file but no key to open it.
        missingKey,
        /// The stored key is not 256 bits.
        invalidKey,
        /// The cryptographic library itself failed.
        cipherFailed,
    };

    static ClipboardCryptoError keychainStatus(int status);
    static ClipboardCryptoError of(Kind kind);

    Kind kind;
    int status = 0;

private:
    ClipboardCryptoError(Kind errorKind, int errorStatus, const std::string& description)
        : std::runtime_error(description), kind(errorKind), status(errorStatus) {}
};

/// AES-256-GCM in the combined form the history file uses: the 12-byte nonce, the ciphertext,
/// then the 16-byte tag.
namespace ClipboardSealing {

inline constexpr std::size_t keyLength = 32;
inline constexpr std::size_t nonceLength = 12;
inline constexpr std::size_t tagLength = 16;
/// A nonce, a tag and at least one byte of ciphertext.
inline constexpr std::size_t minimumSealedLength = nonceLength + tagLength + 1;

using Nonce = std::array<std::uint8_t, nonceLength>;

/// From the system's cryptographic random source. Throws `ClipboardCryptoError` (cipherFailed).
Bytes randomBytes(std::size_t count);

/// Throws `ClipboardCryptoError` (invalidKey, cipherFailed).
Bytes seal(std::string_view plaintext, const Bytes& key, const Nonce& nonce);
/// With a fresh random nonce.
Bytes seal(std::string_view plaintext, const Bytes& key);
/// The plaintext, only when the tag proves it was sealed with `key` and not changed since.
/// Throws `ClipboardCryptoError` (truncated, authenticationFailed, invalidKey, cipherFailed).
std::string open(std::span<const std::uint8_t> sealed, const Bytes& key);

} // namespace ClipboardSealing

/// Opens and decodes the bytes of "clipboard.json.enc" with `key`. Any bytes at all are safe to
/// pass: the result is the history, or a thrown `ClipboardCryptoError` or `DecodingError`.
std::vector<ClipboardItem> decodeClipboardFile(std::span<const std::uint8_t> bytes, const Bytes& key);
/// The file's bytes for `items`, sealed with a fresh nonce.
Bytes encodeClipboardFile(const std::vector<ClipboardItem>& items, const Bytes& key);

/// The history's key in the secret store, created at random on first use. Any one thread at a time.
class ClipboardCrypto {
public:
    static constexpr std::string_view service = "dev.tessik.corvane.clipboard";
    static constexpr std::string_view account = "primary";

    explicit ClipboardCrypto(SecretStore& secrets) : secrets_(secrets) {}

    /// The stored key, none when there is none yet. Throws `ClipboardCryptoError`.
    std::optional<Bytes> existingKey();
    /// The stored key, created and stored first when there is none. A store that fails to answer
    /// is never taken for an empty one, so a key is only made when none exists. Throws
    /// `ClipboardCryptoError`.
    Bytes key();
    /// Removes the key; files sealed with it can no longer be opened. Throws `ClipboardCryptoError`.
    void forgetKey();

private:
    SecretStore& secrets_;
    std::optional<Bytes> cached_;
};

} // namespace corvane
