#include "platform/posix/FileSecretStore.hpp"

#include <cctype>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane {

namespace {

[[noreturn]] void fail(int status, const std::string& what) {
    throw SecretStoreError(status, what + ": " + std::strerror(status));
}

// Service and account names become a file name; anything unusual in them is replaced so that
// neither can reach outside the folder.
std::string safeName(const std::string& text) {
    std::string name;
    for (char c : text) name += (std::isalnum(static_cast<unsigned char>(c)) || c == '.' || c == '-') ? c : '_';
    if (name.empty() || name.front() == '.') name.insert(name.begin(), '_');
    return name;
}

} // namespace

std::filesystem::path FileSecretStore::fileFor(const std::string& service, const std::string& account) const {
    return folder_ / (safeName(service) + "--" + safeName(account) + ".key");
}

std::optional<Bytes> FileSecretStore::read(const std::string& service, const std::string& account) {
    auto path = fileFor(service, account);
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0) {
        if (errno == ENOENT) return std::nullopt;
        fail(errno, "cannot read secret");
    }
    Bytes secret;
    std::uint8_t buffer[256];
    for (;;) {
        auto count = ::read(fd, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            int status = errno;
            ::close(fd);
            fail(status, "cannot read secret");
        }
        if (count == 0) break;
        secret.insert(secret.end(), buffer, buffer + count);
    }
    ::close(fd);
    return secret;
}

void FileSecretStore::write(const std::string& service, const std::string& account, const Bytes& secret) {
    std::error_code ec;
    std::filesystem::create_directories(folder_, ec);
    if (ec) fail(ec.value(), "cannot create the secrets folder");
    auto path = fileFor(service, account);
    // mkstemp creates the file with mode 0600, so the secret is never readable by others, not
    // even for a moment; the rename makes the new secret appear whole.
    auto pattern = (folder_ / ("." + path.filename().string() + ".XXXXXX")).string();
    int fd = ::mkstemp(pattern.data());
    if (fd < 0) fail(errno, "cannot write secret");
    std::size_t written = 0;
    int status = 0;
    while (written < secret.size()) {
        auto count = ::write(fd, secret.data() + written, secret.size() - written);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            status = errno;
            break;
        }
        written += static_cast<std::size_t>(count);
    }
    if (status == 0 && ::fsync(fd) != 0) status = errno;
    if (::close(fd) != 0 && status == 0) status = errno;
    if (status == 0 && ::rename(pattern.c_str(), path.c_str()) != 0) status = errno;
    if (status != 0) {
        ::unlink(pattern.c_str());
        fail(status, "cannot write secret");
    }
}

void FileSecretStore::remove(const std::string& service, const std::string& account) {
    if (::unlink(fileFor(service, account).c_str()) != 0 && errno != ENOENT) fail(errno, "cannot remove secret");
}

} // namespace corvane
