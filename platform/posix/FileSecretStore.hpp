#pragma once

#include "CorvaneCore/platform/SecretStore.hpp"

#include <filesystem>

namespace corvane {

/// Secrets as files readable by their owner only (mode 0600), one per service and account, in
/// the data folder. For systems without a keychain. Errors carry the errno value.
class FileSecretStore final : public SecretStore {
public:
    explicit FileSecretStore(std::filesystem::path folder) : folder_(std::move(folder)) {}

    std::optional<Bytes> read(const std::string& service, const std::string& account) override;
    void write(const std::string& service, const std::string& account, const Bytes& secret) override;
    void remove(const std::string& service, const std::string& account) override;

    /// The file that holds the secret of `service` and `account`.
    std::filesystem::path fileFor(const std::string& service, const std::string& account) const;

private:
    std::filesystem::path folder_;
};

} // namespace corvane
