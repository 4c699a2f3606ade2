#include "platform/macos/KeychainSecretStore.hpp"

#include "platform/macos/CFRef.hpp"

#include <Security/Security.h>

#include <string>

namespace corvane {

namespace {

constexpr const char* kLogCategory = "keychain";

CFRef<CFStringRef> cfString(const std::string& text) {
    return adoptCF(CFStringCreateWithCString(kCFAllocatorDefault, text.c_str(), kCFStringEncodingUTF8));
}

/// The attributes that name one item: class, service and account.
CFRef<CFMutableDictionaryRef> itemQuery(const std::string& service, const std::string& account) {
    auto query = adoptCF(CFDictionaryCreateMutable(kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks,
                                                   &kCFTypeDictionaryValueCallBacks));
    auto cfService = cfString(service);
    auto cfAccount = cfString(account);
    if (!query || !cfService || !cfAccount) throw SecretStoreError(errSecAllocate, "keychain query failed");
    CFDictionarySetValue(query.get(), kSecClass, kSecClassGenericPassword);
    CFDictionarySetValue(query.get(), kSecAttrService, cfService.get());
    CFDictionarySetValue(query.get(), kSecAttrAccount, cfAccount.get());
    return query;
}

CFRef<CFDataRef> cfData(const Bytes& bytes) {
    auto data = adoptCF(CFDataCreate(kCFAllocatorDefault, bytes.data(), static_cast<CFIndex>(bytes.size())));
    if (!data) throw SecretStoreError(errSecAllocate, "keychain data failed");
    return data;
}

} // namespace

std::optional<Bytes> KeychainSecretStore::read(const std::string& service, const std::string& account) {
    auto query = itemQuery(service, account);
    CFDictionarySetValue(query.get(), kSecMatchLimit, kSecMatchLimitOne);
    CFDictionarySetValue(query.get(), kSecReturnData, kCFBooleanTrue);
    CFTypeRef result = nullptr;
    OSStatus status = SecItemCopyMatching(query.get(), &result);
    auto owned = adoptCF(result);
    if (status == errSecItemNotFound) return std::nullopt;
    if (status != errSecSuccess) throw SecretStoreError(status, "keychain read failed");
    if (!owned || CFGetTypeID(owned.get()) != CFDataGetTypeID()) return Bytes{};
    auto data = static_cast<CFDataRef>(owned.get());
    const auto* bytes = CFDataGetBytePtr(data);
    return Bytes(bytes, bytes + CFDataGetLength(data));
}

void KeychainSecretStore::write(const std::string& service, const std::string& account, const Bytes& secret) {
    auto data = cfData(secret);
    auto attributes = itemQuery(service, account);
    CFDictionarySetValue(attributes.get(), kSecValueData, data.get());
    CFDictionarySetValue(attributes.get(), kSecAttrAccessible, kSecAttrAccessibleAfterFirstUnlock);
    OSStatus status = SecItemAdd(attributes.get(), nullptr);
    if (status == errSecSuccess) return;
    if (status != errSecDuplicateItem) {
        log_.error(kLogCategory, "keychain write failed with " + std::to_string(status));
        throw SecretStoreError(status, "keychain write failed");
    }
    auto query = itemQuery(service, account);
    auto changes = adoptCF(CFDictionaryCreateMutable(kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks,
                                                     &kCFTypeDictionaryValueCallBacks));
    if (!changes) throw SecretStoreError(errSecAllocate, "keychain update failed");
    CFDictionarySetValue(changes.get(), kSecValueData, data.get());
    status = SecItemUpdate(query.get(), changes.get());
    if (status != errSecSuccess) {
        log_.error(kLogCategory, "keychain update failed with " + std::to_string(status));
        throw SecretStoreError(status, "keychain update failed");
    }
}

void KeychainSecretStore::remove(const std::string& service, const std::string& account) {
    auto query = itemQuery(service, account);
    OSStatus status = SecItemDelete(query.get());
    if (status != errSecSuccess && status != errSecItemNotFound) throw SecretStoreError(status, "keychain delete failed");
}

} // namespace corvane
