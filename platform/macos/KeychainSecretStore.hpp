#pragma once

#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/platform/SecretStore.hpp"

namespace corvane {

/// Secrets as generic-password items of the login keychain, readable after the first unlock
/// (so that a login item can read them before the user unlocks again). Errors carry the
/// Security framework's status.
class KeychainSecretStore final : public SecretStore {
public:
    explicit KeychainSecretStore(Log& log) : log_(log) {}

    std::optional<Bytes> read(const std::string& service, const std::string& account) override;
    /// Adds the item; when it exists already, updates its data instead.
    void write(const std::string& service, const std::string& account, const Bytes& secret) override;
    void remove(const std::string& service, const std::string& account) override;

private:
    Log& log_;
};

} // namespace corvane
