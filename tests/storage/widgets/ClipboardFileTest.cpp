#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneStorage/storage/DataFileError.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/widgets/clipboard/ClipboardHistoryFile.hpp"
#include "fakes/InMemorySecretStore.hpp"
#include "fakes/ReadOnlyFolder.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "fakes/Thrown.hpp"
#include "platform/posix/FileSecretStore.hpp"

#include <gtest/gtest.h>

#include <random>
#include <sys/stat.h>

using namespace corvane;

namespace {

std::vector<ClipboardItem> sampleHistory() {
    ClipboardItem text{.id = Uuid::generate(), .capturedAt = Date{1000}, .text = "h\u00e9llo", .byteSize = 6};
    ClipboardItem image{.id = Uuid::generate(), .kind = ClipboardItem::Kind::image, .imageData = Bytes(300, 7)};
    return {text, image};
}

unsigned mode(const std::filesystem::path& path) {
    struct stat info {};
    ::stat(path.c_str(), &info);
    return info.st_mode & 0777;
}

ClipboardCryptoError::Kind failureOf(const std::function<void()>& read) {
    return thrown<ClipboardCryptoError>(read).value().kind;
}

} // namespace

TEST(ClipboardSealing, UsesTheStandardCombinedLayoutOfNonceCiphertextAndTag) {
    // AES-256-GCM reference vector: zero key, zero nonce, sixteen zero bytes.
    Bytes key(32, 0);
    auto sealed = ClipboardSealing::seal(std::string(16, '\0'), key, ClipboardSealing::Nonce{});
    Bytes expected(12, 0);
    for (auto byte : {0xce, 0xa7, 0x40, 0x3d, 0x4d, 0x60, 0x6b, 0x6e, 0x07, 0x4e, 0xc5, 0xd3, 0xba, 0xf3, 0x9d, 0x18,
                      0xd0, 0xd1, 0xc8, 0xa7, 0x99, 0x99, 0x6b, 0xf0, 0x26, 0x5b, 0x98, 0xb5, 0xd4, 0x8a, 0xb9, 0x19})
        expected.push_back(static_cast<std::uint8_t>(byte));
    EXPECT_EQ(sealed, expected);
    EXPECT_EQ(ClipboardSealing::open(sealed, key), std::string(16, '\0'));

    // Fresh nonces: the same history never seals to the same bytes twice.
    auto random = ClipboardSealing::randomBytes(32);
    EXPECT_NE(ClipboardSealing::seal("x", random), ClipboardSealing::seal("x", random));
    EXPECT_EQ(failureOf([&] { ClipboardSealing::seal("x", Bytes(16, 1)); }), ClipboardCryptoError::Kind::invalidKey);
}

TEST(ClipboardHistoryFile, RoundTripsThroughAnOwnerOnlyFileWithAKeyMadeOnce) {
    TemporaryDirectory dir;
    FileSecretStore secrets(dir.path());
    ClipboardHistoryFile file(StoragePath::clipboardFileURL(dir.path()), secrets);
    EXPECT_EQ(file.read(), std::nullopt); // no file: no key needed, none made
    EXPECT_FALSE(std::filesystem::exists(secrets.fileFor("dev.tessik.corvane.clipboard", "primary")));

    auto history = sampleHistory();
    file.write(history);
    auto keyFile = secrets.fileFor("dev.tessik.corvane.clipboard", "primary");
    EXPECT_EQ(keyFile.parent_path(), dir.path());
    EXPECT_EQ(std::filesystem::file_size(keyFile), 32u);
    EXPECT_EQ(mode(keyFile), 0600u);
    EXPECT_EQ(mode(file.url()), 0600u);
    EXPECT_EQ(file.url().filename(), "clipboard.json.enc");
    auto key = secrets.read("dev.tessik.corvane.clipboard", "primary");

    history.pop_back();
    file.write(history);
    EXPECT_EQ(secrets.read("dev.tessik.corvane.clipboard", "primary"), key);
    EXPECT_EQ(readText(file.url()).find("llo"), std::string::npos); // nothing in the clear

    // A second reader (another launch) opens it with the stored key.
    ClipboardHistoryFile again(file.url(), secrets);
    EXPECT_EQ(again.read(), history);

    again.forget();
    EXPECT_FALSE(std::filesystem::exists(file.url()));
    EXPECT_FALSE(std::filesystem::exists(keyFile));
}

TEST(ClipboardHistoryFile, OpensOnlyWithItsKeyAndUnchangedBytes) {
    TemporaryDirectory dir;
    InMemorySecretStore secrets;
    auto url = StoragePath::clipboardFileURL(dir.path());
    ClipboardHistoryFile(url, secrets).write(sampleHistory());
    const auto original = readText(url);
    auto openFresh = [&] { ClipboardHistoryFile(url, secrets).read(); };
    using Kind = ClipboardCryptoError::Kind;

    for (std::size_t at : {std::size_t{0}, std::size_t{11}, std::size_t{12}, original.size() / 2, original.size() - 17,
                           original.size() - 16, original.size() - 1}) {
        auto damaged = original;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x01);
        writeText(url, damaged);
        EXPECT_EQ(failureOf(openFresh), Kind::authenticationFailed) << "byte " << at;
    }

    writeText(url, original.substr(0, 28));
    auto truncated = thrown<ClipboardCryptoError>(openFresh).value();
    EXPECT_EQ(truncated.kind, Kind::truncated);
    EXPECT_STREQ(truncated.what(), "Failed to read the encrypted clipboard because the file is incomplete");
    writeText(url, original.substr(0, 29));
    EXPECT_EQ(failureOf(openFresh), Kind::authenticationFailed);

    writeText(url, original);
    auto& key = secrets.secrets.begin()->second;
    auto rightKey = key;
    key = ClipboardSealing::randomBytes(32);
    EXPECT_EQ(failureOf(openFresh), Kind::authenticationFailed);
    key.resize(31);
    EXPECT_EQ(failureOf(openFresh), Kind::invalidKey);
    secrets.secrets.clear();
    EXPECT_EQ(failureOf(openFresh), Kind::missingKey);

    secrets.secrets[{"dev.tessik.corvane.clipboard", "primary"}] = rightKey;
    secrets.failWith = -25308; // interaction not allowed: a locked keychain
    auto locked = thrown<ClipboardCryptoError>(openFresh).value();
    EXPECT_EQ(locked.kind, Kind::keychainStatus);
    EXPECT_STREQ(locked.what(), "Failed to access the Keychain because the system returned -25308");
    // A store that cannot answer is not an empty one: no fresh key replaces the real one.
    EXPECT_THROW(ClipboardHistoryFile(url, secrets).write({}), ClipboardCryptoError);
    secrets.failWith.reset();
    EXPECT_EQ(secrets.secrets.begin()->second, rightKey);
    EXPECT_EQ(ClipboardHistoryFile(url, secrets).read()->size(), 2u);
}

TEST(ClipboardHistoryFile, DecodingAnyBytesThrowsItsOwnErrorsAndNeverCrashes) {
    auto key = ClipboardSealing::randomBytes(32);
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        Bytes bytes(random() % 80);
        for (auto& b : bytes) b = static_cast<std::uint8_t>(random());
        try {
            decodeClipboardFile(bytes, key);
            ADD_FAILURE() << "random bytes opened";
        } catch (const ClipboardCryptoError&) {
        }
    }
    // Properly sealed content that is not a history is a decoding error, not garbage.
    for (const std::string& text : std::vector<std::string>{"not json", "{}", "[1, 2]", "[{\"id\": \"nope\"}]", "[{\"imageData\": \"!!\"}]",
                             std::string(5000, '[')}) {
        auto sealed = ClipboardSealing::seal(text, key);
        EXPECT_THROW(decodeClipboardFile(sealed, key), DecodingError) << text.substr(0, 20);
    }
    EXPECT_EQ(decodeClipboardFile(encodeClipboardFile(sampleHistory(), key), key).size(), 2u);
}

TEST(ClipboardHistoryFile, AWriteThatFailsLeavesTheOldFileAndThrows) {
    TemporaryDirectory dir;
    InMemorySecretStore secrets;
    auto folder = dir / "data";
    auto url = StoragePath::clipboardFileURL(folder);
    ClipboardHistoryFile file(url, secrets);
    file.write(sampleHistory());
    const auto before = readText(url);
    {
        ReadOnlyFolder readOnly(folder);
        EXPECT_THROW(file.write({}), DataFileError);
    }
    EXPECT_EQ(readText(url), before);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}
