#include "CorvaneStorage/widgets/clipboard/ClipboardCrypto.hpp"

#include <openssl/evp.h>
#include <openssl/rand.h>

#include <climits>
#include <memory>

namespace corvane {

namespace {

using CipherContext = std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)>;

[[noreturn]] void fail(ClipboardCryptoError::Kind kind) { throw ClipboardCryptoError::of(kind); }

CipherContext newContext() {
    CipherContext context(EVP_CIPHER_CTX_new(), EVP_CIPHER_CTX_free);
    if (!context) fail(ClipboardCryptoError::Kind::cipherFailed);
    return context;
}

void requireKey(const Bytes& key) {
    if (key.size() != ClipboardSealing::keyLength) fail(ClipboardCryptoError::Kind::invalidKey);
}

// EVP lengths are ints; the history can in principle exceed what one call takes.
template <typename Update>
void inChunks(const std::uint8_t* input, std::size_t length, std::uint8_t* output, Update update) {
    constexpr std::size_t chunk = 1u << 30;
    while (length > 0) {
        auto now = std::min(length, chunk);
        int written = 0;
        if (update(output, &written, input, static_cast<int>(now)) != 1 || written != static_cast<int>(now))
            fail(ClipboardCryptoError::Kind::cipherFailed);
        input += now;
        output += now;
        length -= now;
    }
}

} // namespace

ClipboardCryptoError ClipboardCryptoError::keychainStatus(int status) {
    return ClipboardCryptoError(Kind::keychainStatus, status,
                                "Failed to access the Keychain because the system returned " + std::to_string(status));
}

ClipboardCryptoError ClipboardCryptoError::of(Kind kind) {
    switch (kind) {
    case Kind::keychainStatus: return keychainStatus(0);
    case Kind::truncated:
        return {kind, 0, "Failed to read the encrypted clipboard because the file is incomplete"};
    case Kind::authenticationFailed:
        return {kind, 0, "Failed to read the encrypted clipboard because it does not open with its key"};
    case Kind::missingKey:
        return {kind, 0, "Failed to read the encrypted clipboard because its key is missing"};
    case Kind::invalidKey:
        return {kind, 0, "Failed to use the clipboard key because it is not 256 bits long"};
    case Kind::cipherFailed: return {kind, 0, "Failed to encrypt or decrypt the clipboard"};
    }
    return {Kind::cipherFailed, 0, "Failed to encrypt or decrypt the clipboard"};
}

namespace ClipboardSealing {

Bytes randomBytes(std::size_t count) {
    Bytes bytes(count);
    if (count > 0 && RAND_bytes(bytes.data(), static_cast<int>(count)) != 1) fail(ClipboardCryptoError::Kind::cipherFailed);
    return bytes;
}

Bytes seal(std::string_view plaintext, const Bytes& key, const Nonce& nonce) {
    requireKey(key);
    auto context = newContext();
    if (EVP_EncryptInit_ex(context.get(), EVP_aes_256_gcm(), nullptr, nullptr, nullptr) != 1 ||
        EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_IVLEN, static_cast<int>(nonceLength), nullptr) != 1 ||
        EVP_EncryptInit_ex(context.get(), nullptr, nullptr, key.data(), nonce.data()) != 1)
        fail(ClipboardCryptoError::Kind::cipherFailed);

    Bytes sealed(nonceLength + plaintext.size() + tagLength);
    std::copy(nonce.begin(), nonce.end(), sealed.begin());
    inChunks(reinterpret_cast<const std::uint8_t*>(plaintext.data()), plaintext.size(), sealed.data() + nonceLength,
             [&](std::uint8_t* out, int* written, const std::uint8_t* in, int length) {
                 return EVP_EncryptUpdate(context.get(), out, written, in, length);
             });
    int finalLength = 0;
    auto* tag = sealed.data() + nonceLength + plaintext.size();
    if (EVP_EncryptFinal_ex(context.get(), tag, &finalLength) != 1 || finalLength != 0 ||
        EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_GET_TAG, static_cast<int>(tagLength), tag) != 1)
        fail(ClipboardCryptoError::Kind::cipherFailed);
    return sealed;
}

Bytes seal(std::string_view plaintext, const Bytes& key) {
    auto random = randomBytes(nonceLength);
    Nonce nonce;
    std::copy(random.begin(), random.end(), nonce.begin());
    return seal(plaintext, key, nonce);
}

std::string open(std::span<const std::uint8_t> sealed, const Bytes& key) {
    if (sealed.size() < minimumSealedLength) fail(ClipboardCryptoError::Kind::truncated);
    requireKey(key);
    auto nonce = sealed.first(nonceLength);
    auto ciphertext = sealed.subspan(nonceLength, sealed.size() - nonceLength - tagLength);
    Bytes tag(sealed.end() - static_cast<std::ptrdiff_t>(tagLength), sealed.end());

    auto context = newContext();
    if (EVP_DecryptInit_ex(context.get(), EVP_aes_256_gcm(), nullptr, nullptr, nullptr) != 1 ||
        EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_IVLEN, static_cast<int>(nonceLength), nullptr) != 1 ||
        EVP_DecryptInit_ex(context.get(), nullptr, nullptr, key.data(), nonce.data()) != 1)
        fail(ClipboardCryptoError::Kind::cipherFailed);

    std::string plaintext(ciphertext.size(), '\0');
    inChunks(ciphertext.data(), ciphertext.size(), reinterpret_cast<std::uint8_t*>(plaintext.data()),
             [&](std::uint8_t* out, int* written, const std::uint8_t* in, int length) {
                 return EVP_DecryptUpdate(context.get(), out, written, in, length);
             });
    int finalLength = 0;
    std::uint8_t ignored[16];
    if (EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_TAG, static_cast<int>(tagLength), tag.data()) != 1)
        fail(ClipboardCryptoError::Kind::cipherFailed);
    // The tag is checked here; nothing decrypted is returned unless it matches.
    if (EVP_DecryptFinal_ex(context.get(), ignored, &finalLength) != 1)
        fail(ClipboardCryptoError::Kind::authenticationFailed);
    return plaintext;
}

} // namespace ClipboardSealing

std::vector<ClipboardItem> decodeClipboardFile(std::span<const std::uint8_t> bytes, const Bytes& key) {
    return clipboardHistoryFromText(ClipboardSealing::open(bytes, key));
}

Bytes encodeClipboardFile(const std::vector<ClipboardItem>& items, const Bytes& key) {
    return ClipboardSealing::seal(clipboardHistoryText(items), key);
}

std::optional<Bytes> ClipboardCrypto::existingKey() {
    if (cached_) return cached_;
    try {
        cached_ = secrets_.read(std::string(service), std::string(account));
    } catch (const SecretStoreError& error) {
        throw ClipboardCryptoError::keychainStatus(error.status);
    }
    return cached_;
}

Bytes ClipboardCrypto::key() {
    if (auto stored = existingKey()) return *stored;
    auto fresh = ClipboardSealing::randomBytes(ClipboardSealing::keyLength);
    try {
        secrets_.write(std::string(service), std::string(account), fresh);
    } catch (const SecretStoreError& error) {
        throw ClipboardCryptoError::keychainStatus(error.status);
    }
    cached_ = fresh;
    return fresh;
}

void ClipboardCrypto::forgetKey() {
    cached_.reset();
    try {
        secrets_.remove(std::string(service), std::string(account));
    } catch (const SecretStoreError& error) {
        throw ClipboardCryptoError::keychainStatus(error.status);
    }
}

} // namespace corvane
