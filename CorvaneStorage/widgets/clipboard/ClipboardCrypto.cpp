#include "CorvaneStorage/widgets/clipboard/ClipboardCrypto.hpp"

#include <openssl/evp.h>
#include <openssl/rand.h>

#include <dlfcn.h>

#include <climits>
#include <memory>
#include <string>
#include <type_traits>
#include <optional>
#include <vector>

// The folder the build found libcrypto in; the build passes it.
#ifndef CORVANE_CRYPTO_LIBRARY_DIR
#define CORVANE_CRYPTO_LIBRARY_DIR ""
#endif

namespace corvane {

namespace {

[[noreturn]] void fail(ClipboardCryptoError::Kind kind) { throw ClipboardCryptoError::of(kind); }

#define CORVANE_CRYPTO_FUNCTIONS(X) \
    X(EVP_CIPHER_CTX_new) \
    X(EVP_CIPHER_CTX_free) \
    X(EVP_CIPHER_CTX_ctrl) \
    X(EVP_aes_256_gcm) \
    X(EVP_EncryptInit_ex) \
    X(EVP_EncryptUpdate) \
    X(EVP_EncryptFinal_ex) \
    X(EVP_DecryptInit_ex) \
    X(EVP_DecryptUpdate) \
    X(EVP_DecryptFinal_ex) \
    X(RAND_bytes)

/// libcrypto, opened on the first sealing or opening. Linked, it would be loaded and relocated in
/// every run of the tool, although only the clipboard's commands use it.
struct Crypto {
#define CORVANE_CRYPTO_POINTER(name) decltype(&::name) name = nullptr;
    CORVANE_CRYPTO_FUNCTIONS(CORVANE_CRYPTO_POINTER)
#undef CORVANE_CRYPTO_POINTER
};

/// The handle to look libcrypto's functions up in; none when it is not installed. (RTLD_DEFAULT is
/// a null pointer on some systems, so it cannot stand for "none" itself.)
std::optional<void*> openCrypto() {
    // A program that links libcrypto already has it.
    if (::dlsym(RTLD_DEFAULT, "EVP_aes_256_gcm")) return RTLD_DEFAULT;
    // Never the bare "libcrypto.dylib" of macOS: the system's stub of it ends the process.
    std::vector<std::string> names{"libcrypto.so.3", "libcrypto.3.dylib"};
    // Homebrew keeps OpenSSL 3 outside the folders the loader searches for a bare name.
    if (std::string directory = CORVANE_CRYPTO_LIBRARY_DIR; !directory.empty())
        names.insert(names.begin() + 1, directory + "/libcrypto.3.dylib");
    for (const auto& name : names)
        if (void* library = ::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL)) return library;
    return std::nullopt;
}

/// Fails with `cipherFailed` when libcrypto 3 is not installed.
const Crypto& crypto() {
    static const std::unique_ptr<const Crypto> loaded = []() -> std::unique_ptr<const Crypto> {
        auto opened = openCrypto();
        if (!opened) return nullptr;
        void* library = *opened;
        auto api = std::make_unique<Crypto>();
        bool complete = true;
        auto bind = [&](auto& function, const char* symbol) {
            function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(::dlsym(library, symbol));
            complete = complete && function;
        };
#define CORVANE_CRYPTO_BIND(name) bind(api->name, #name);
        CORVANE_CRYPTO_FUNCTIONS(CORVANE_CRYPTO_BIND)
#undef CORVANE_CRYPTO_BIND
        if (!complete) return nullptr;
        return api;
    }();
    if (!loaded) fail(ClipboardCryptoError::Kind::cipherFailed);
    return *loaded;
}

using CipherContext = std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)>;

CipherContext newContext() {
    const auto& api = crypto();
    CipherContext context(api.EVP_CIPHER_CTX_new(), api.EVP_CIPHER_CTX_free);
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
    if (count > 0 && crypto().RAND_bytes(bytes.data(), static_cast<int>(count)) != 1) fail(ClipboardCryptoError::Kind::cipherFailed);
    return bytes;
}

Bytes seal(std::string_view plaintext, const Bytes& key, const Nonce& nonce) {
    requireKey(key);
    const auto& api = crypto();
    auto context = newContext();
    if (api.EVP_EncryptInit_ex(context.get(), api.EVP_aes_256_gcm(), nullptr, nullptr, nullptr) != 1 ||
        api.EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_IVLEN, static_cast<int>(nonceLength), nullptr) != 1 ||
        api.EVP_EncryptInit_ex(context.get(), nullptr, nullptr, key.data(), nonce.data()) != 1)
        fail(ClipboardCryptoError::Kind::cipherFailed);

    Bytes sealed(nonceLength + plaintext.size() + tagLength);
    std::copy(nonce.begin(), nonce.end(), sealed.begin());
    inChunks(reinterpret_cast<const std::uint8_t*>(plaintext.data()), plaintext.size(), sealed.data() + nonceLength,
             [&](std::uint8_t* out, int* written, const std::uint8_t* in, int length) {
                 return api.EVP_EncryptUpdate(context.get(), out, written, in, length);
             });
    int finalLength = 0;
    auto* tag = sealed.data() + nonceLength + plaintext.size();
    if (api.EVP_EncryptFinal_ex(context.get(), tag, &finalLength) != 1 || finalLength != 0 ||
        api.EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_GET_TAG, static_cast<int>(tagLength), tag) != 1)
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

    const auto& api = crypto();
    auto context = newContext();
    if (api.EVP_DecryptInit_ex(context.get(), api.EVP_aes_256_gcm(), nullptr, nullptr, nullptr) != 1 ||
        api.EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_IVLEN, static_cast<int>(nonceLength), nullptr) != 1 ||
        api.EVP_DecryptInit_ex(context.get(), nullptr, nullptr, key.data(), nonce.data()) != 1)
        fail(ClipboardCryptoError::Kind::cipherFailed);

    std::string plaintext(ciphertext.size(), '\0');
    inChunks(ciphertext.data(), ciphertext.size(), reinterpret_cast<std::uint8_t*>(plaintext.data()),
             [&](std::uint8_t* out, int* written, const std::uint8_t* in, int length) {
                 return api.EVP_DecryptUpdate(context.get(), out, written, in, length);
             });
    int finalLength = 0;
    std::uint8_t ignored[16];
    if (api.EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_TAG, static_cast<int>(tagLength), tag.data()) != 1)
        fail(ClipboardCryptoError::Kind::cipherFailed);
    // The tag is checked here; nothing decrypted is returned unless it matches.
    if (api.EVP_DecryptFinal_ex(context.get(), ignored, &finalLength) != 1)
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
