#include "CorvaneApp/cli/ClipboardCommands.hpp"

#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/widgets/clipboard/ClipboardHistoryFile.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <ostream>

namespace corvane {

namespace {

std::string plural(std::size_t count, const std::string& word) {
    return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

} // namespace

void addClipboardCommands(CLI::App& app, ToolContext& context) {
    auto* clipboard = app.add_subcommand("clipboard", "The stored clipboard history");
    clipboard->require_subcommand(1);
    auto json = std::make_shared<bool>(false);

    // The history file opens only with its key, kept where the system keeps secrets.
    auto open = [&context] {
        struct Opened {
            std::unique_ptr<SecretStore> secrets;
            std::unique_ptr<ClipboardHistoryFile> file;
        };
        auto directory = context.dataDirectory();
        Opened opened{context.services.openSecrets(directory), nullptr};
        opened.file = std::make_unique<ClipboardHistoryFile>(StoragePath::clipboardFileURL(directory), *opened.secrets);
        return opened;
    };

    auto* list = clipboard->add_subcommand("list", "What was copied, pinned items first; * marks a pinned one");
    list->add_flag("--json", *json, "The history as JSON");
    list->callback([&context, open, json] {
        auto opened = open();
        auto items = opened.file->read().value_or(std::vector<ClipboardItem>{});
        if (*json) {
            context.out << clipboardHistoryText(items);
            return;
        }
        if (items.empty()) context.out << "Nothing copied yet.\n";
        for (const auto& item : items) context.out << (item.isPinned ? "* " : "  ") << item.previewLine() << "\n";
    });

    auto* clear = clipboard->add_subcommand("clear", "Remove everything that is not pinned");
    clear->callback([&context, open] {
        auto opened = open();
        auto items = opened.file->read();
        if (!items) {
            context.out << "Nothing copied yet.\n";
            return;
        }
        auto removed = std::erase_if(*items, [](const ClipboardItem& item) { return !item.isPinned; });
        if (removed > 0) opened.file->write(*items);
        context.out << "Removed " << plural(removed, "item") << "; kept " << plural(items->size(), "pinned item")
                    << ".\n";
    });

    auto* forget = clipboard->add_subcommand("forget", "Delete the whole history, pinned items and its key included");
    forget->callback([&context, open] {
        open().file->forget();
        context.out << "Forgot the clipboard history.\n";
    });
}

} // namespace corvane
