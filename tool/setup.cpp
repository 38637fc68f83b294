#include "tool/setup.h"

#include "platform/system_registry.h"
#include "tool/failure.h"
#include "tool/library.h"
#include "tool/text.h"

#include <fmt/format.h>

namespace tool {

namespace {

constexpr const char16_t* kParent = u"Ostrandia\\TARVO";
constexpr const char16_t* kInstallation = u"x64";

platform::RegistryRoot rootOf(bool allUsers) {
    return allUsers ? platform::RegistryRoot::localMachine : platform::RegistryRoot::currentUser;
}

const char* scopeName(bool allUsers) {
    return allUsers ? "machine" : "user";
}

[[noreturn]] void refuse(bool allUsers) {
    throw Failure(fmt::format("cannot write the {}'s part of the system's registry{}",
                              scopeName(allUsers),
                              allUsers ? "; that needs an administrator, on Linux root" : ""));
}

// Programs find the installation that the tool belongs to by this key.
void install(bool allUsers) {
    const Library library = Library::besideTool();
    const auto software = platform::SystemKey::openForWriting(rootOf(allUsers), u"Software");
    const auto parent = software ? software.create(kParent) : platform::SystemKey();
    const auto key = parent ? parent.create(kInstallation) : platform::SystemKey();
    std::u16string folder = toUtf16(library.folder());
    folder.pop_back(); // the separator
    if (!key || !key.setText(nullptr, folder.c_str()) ||
        !key.setText(u"version", toUtf16(library.version()).c_str()))
        refuse(allUsers);
    fmt::print("Programs find TARVO {} in {} ({} scope).\n", library.version(), toUtf8(folder),
               scopeName(allUsers));
}

void remove(bool allUsers) {
    const auto software = platform::SystemKey::openForWriting(rootOf(allUsers), u"Software");
    const auto parent = software ? software.openForWriting(kParent) : platform::SystemKey();
    if (!parent || !parent.open(kInstallation))
        throw Failure(fmt::format("no installation is known in the {} scope", scopeName(allUsers)));
    if (!parent.deleteTree(kInstallation))
        refuse(allUsers);
}

void addScope(CLI::App* command, SetupOptions& options) {
    command->add_option("--scope", options.scope, "For whom; if left out, the current user")
        ->check(CLI::IsMember({"machine", "user"}).description(""))
        ->type_name("machine|user");
}

} // namespace

void addSetupCommands(CLI::App& app, SetupOptions& options) {
    CLI::App* setup = app.add_subcommand("setup", "How programs find this installation");
    setup->require_subcommand(1);
    setup->footer("Example: tarvo setup install --scope machine");
    CLI::App* add = setup->add_subcommand("install", "Makes this installation known to programs");
    addScope(add, options);
    add->footer("Of several, programs take the newest.\n\n"
                "Example: tarvo setup install --scope machine");
    add->callback([&] { install(options.scope == "machine"); });
    CLI::App* take = setup->add_subcommand("remove", "Makes it unknown again; the files stay");
    addScope(take, options);
    take->footer("Example: tarvo setup remove --scope machine");
    take->callback([&] { remove(options.scope == "machine"); });
}

} // namespace tool
