#include "CorvaneApp/cli/TransferCommands.hpp"

#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneApp/cli/WorkspaceArgument.hpp"
#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/workspace/ProfileTransfer.hpp"
#include "CorvaneStorage/storage/AtomicFile.hpp"
#include "CorvaneStorage/storage/DataFileError.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>
#include <sstream>

namespace corvane {

namespace {

struct Arguments {
    std::string file;
    std::vector<std::string> workspaces;
};

std::string describe(const ProfileTransfer::Adjustment& adjustment, const Profile& added) {
    std::vector<std::string> notes;
    if (adjustment.newID) notes.push_back("new id, its id was taken");
    if (adjustment.hotkeyRemoved) notes.push_back("hotkey dropped, another workspace uses it");
    if (adjustment.desktopsDropped)
        notes.push_back(std::to_string(adjustment.desktopsDropped) + " unknown desktop" +
                        (adjustment.desktopsDropped > 1 ? "s" : "") + " dropped");
    std::string line = "  \"" + adjustment.name + "\"";
    if (adjustment.renamed) line += " as \"" + added.name + "\"";
    for (std::size_t i = 0; i < notes.size(); ++i) line += (i ? "; " : " (") + notes[i];
    return line + (notes.empty() ? "" : ")");
}

} // namespace

void addTransferCommands(CLI::App& app, ToolContext& context) {
    auto args = std::make_shared<Arguments>();

    auto* exporting = app.add_subcommand("export", "Write workspaces to a file that another Mac can import");
    exporting->add_option("FILE", args->file, "The file to write (- for standard output)")->required();
    exporting->add_option("WORKSPACE", args->workspaces, "Only these workspaces (default: all)");
    exporting->callback([&context, args] {
        ProfileStore store(StoragePath::profilesFileURL(context.dataDirectory()));
        std::vector<Profile> chosen;
        for (const auto& name : args->workspaces) {
            const auto& profile = resolveWorkspace(store.file().profiles, name);
            if (std::find(chosen.begin(), chosen.end(), profile) == chosen.end()) chosen.push_back(profile);
        }
        if (args->workspaces.empty()) chosen = store.file().profiles;
        auto data = ProfileTransfer::exportData(chosen);
        if (args->file == "-") {
            context.out << data;
            return;
        }
        writeFileAtomically(args->file, data);
        context.out << "Exported " << chosen.size() << (chosen.size() == 1 ? " workspace" : " workspaces") << " to "
                    << args->file << ".\n";
    });

    auto* importing = app.add_subcommand("import", "Add the workspaces of an exported file");
    importing->add_option("FILE", args->file, "A file made by export, or a profiles.json (- for standard input)")
        ->required();
    importing->callback([&context, args] {
        std::optional<std::string> data;
        if (args->file == "-") {
            if (!context.in) throw std::runtime_error("nothing on standard input");
            std::ostringstream text;
            text << context.in->rdbuf();
            data = text.str();
        } else {
            data = readFileIfExists(args->file);
            if (!data) throw DataFileError(DataFileError::Operation::read, args->file, "no such file");
        }
        std::vector<Profile> imported;
        try {
            imported = ProfileTransfer::profiles(*data);
        } catch (const DecodingError& error) {
            throw DataFileError(DataFileError::Operation::decode, args->file == "-" ? "standard input" : args->file,
                                error.what());
        }
        ProfileStore store(StoragePath::profilesFileURL(context.dataDirectory()), &context.services.notifier);
        // The desktops this Mac knows are those its workspaces are bound to already.
        std::set<std::string> knownDesktops;
        for (const auto& profile : store.file().profiles)
            knownDesktops.insert(profile.desktopUUIDs.begin(), profile.desktopUUIDs.end());
        auto existing = store.file().profiles.size();
        auto merged = ProfileTransfer::merge(imported, store.file().profiles, knownDesktops);
        store.file().profiles = merged.profiles;
        store.save();
        context.out << "Imported " << imported.size() << (imported.size() == 1 ? " workspace" : " workspaces")
                    << (imported.empty() ? ".\n" : ":\n");
        for (std::size_t i = 0; i < merged.adjustments.size(); ++i)
            context.out << describe(merged.adjustments[i], merged.profiles[existing + i]) << "\n";
    });
}

} // namespace corvane
