#pragma once

#include "CorvaneCore/platform/Pasteboard.hpp"

#include <mutex>

namespace corvane {

/// A pasteboard the test copies to by hand. Every copy and every write bumps the change count, as
/// the system's does.
class FakePasteboard final : public Pasteboard {
public:
    struct Content {
        std::vector<std::string> types;
        std::optional<std::string> fileURL;
        std::optional<Bytes> imageData;
        std::optional<std::string> text;
        bool concealed = false;
    };

    /// What another application copies.
    void copy(Content content) {
        std::lock_guard lock(mutex_);
        content_ = std::move(content);
        ++changeCount_;
    }
    void copyText(const std::string& text, std::vector<std::string> types = {"public.utf8-plain-text"}) {
        copy({std::move(types), std::nullopt, std::nullopt, text});
    }
    Content content() const {
        std::lock_guard lock(mutex_);
        return content_;
    }

    std::int64_t changeCount() override {
        std::lock_guard lock(mutex_);
        return changeCount_;
    }
    std::vector<std::string> types() override { return content().types; }
    std::optional<std::string> fileURL() override { return content().fileURL; }
    std::optional<Bytes> imageData() override { return content().imageData; }
    std::optional<std::string> text() override { return content().text; }

    void writeText(const std::string& text, bool concealed) override {
        copy({{"public.utf8-plain-text"}, std::nullopt, std::nullopt, text, concealed});
    }
    void writeImage(const Bytes& data) override { copy({{"public.png"}, std::nullopt, data, std::nullopt}); }
    void writeFile(const std::string& fileURL) override {
        copy({{"public.file-url"}, fileURL, std::nullopt, std::nullopt});
    }

private:
    mutable std::mutex mutex_;
    Content content_;
    std::int64_t changeCount_ = 0;
};

} // namespace corvane
