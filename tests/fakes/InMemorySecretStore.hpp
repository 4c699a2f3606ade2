#pragma once

#include "CorvaneCore/platform/SecretStore.hpp"

#include <map>
#include <utility>

namespace corvane {

/// Secrets in a map. A status set in `failWith` makes every call fail with it, as a locked or
/// unreachable keychain does.
class InMemorySecretStore final : public SecretStore {
public:
    std::optional<Bytes> read(const std::string& service, const std::string& account) override {
        check();
        if (auto found = secrets.find({service, account}); found != secrets.end()) return found->second;
        return std::nullopt;
    }
    void write(const std::string& service, const std::string& account, const Bytes& secret) override {
        check();
        secrets[{service, account}] = secret;
        ++writes;
    }
    void remove(const std::string& service, const std::string& account) override {
        check();
        secrets.erase({service, account});
    }

    std::map<std::pair<std::string, std::string>, Bytes> secrets;
    std::optional<int> failWith;
    int writes = 0;

private:
    void check() const {
        if (failWith) throw SecretStoreError(*failWith, "secret store failed");
    }
};

} // namespace corvane
