#pragma once

#include "CorvaneCore/support/Base64.hpp"

#include <optional>
#include <stdexcept>
#include <string>

namespace corvane {

/// The system refused a secret-store operation; `status` is its own code (a Security framework
/// status, or an errno value for the file store).
class SecretStoreError : public std::runtime_error {
public:
    SecretStoreError(int code, const std::string& what) : std::runtime_error(what), status(code) {}
    int status;
};

/// Small secrets (keys) kept by the system, one per service and account. Any one thread at a time.
class SecretStore {
public:
    virtual ~SecretStore() = default;

    /// The stored secret, or none when there is no such item. Throws `SecretStoreError`.
    virtual std::optional<Bytes> read(const std::string& service, const std::string& account) = 0;
    /// Adds the item, or replaces the secret of the existing one. Throws `SecretStoreError`.
    virtual void write(const std::string& service, const std::string& account, const Bytes& secret) = 0;
    /// Removing an item that is not there is fine. Throws `SecretStoreError`.
    virtual void remove(const std::string& service, const std::string& account) = 0;
};

} // namespace corvane
