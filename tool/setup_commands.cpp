#include "tool/setup_commands.h"

#include "tool/scope_option.h"
#include "tool/setup.h"

namespace tool {

namespace {

void addInstall(CLI::App& setup, SetupOptions& options) {
    CLI::App* install =
        setup.add_subcommand("install", "Makes this installation known to programs");
    addScope(install, options.scope, "For whom; if left out, the current user");
    install->footer(
        "Of several, programs take the newest. Its component categories are registered\n"
        "too, by which COM classes are known as components.\n\n"
        "Example: tarvo setup install --scope machine");
    install->callback([&] { installSetup(options.scope == "machine"); });
}

void addRemove(CLI::App& setup, SetupOptions& options) {
    CLI::App* remove = setup.add_subcommand("remove", "Makes it unknown again; the files stay");
    addScope(remove, options.scope, "For whom; if left out, the current user");
    remove->footer("Example: tarvo setup remove --scope machine");
    remove->callback([&] { removeSetup(options.scope == "machine"); });
}

void addCheck(CLI::App& setup, SetupOptions& options) {
    CLI::App* check =
        setup.add_subcommand("check", "Examines the installation and what is registered");
    check->add_flag("--fix", options.fix, "Mend what can be mended safely");
    check->add_flag("--json", options.json, "Print JSON");
    check->footer("Says for each finding what to do. The exit status is 1 if findings are left.\n\n"
                  "Example: tarvo setup check --fix");
    check->callback([&] { options.faultFound = !checkSetup(options.json, options.fix); });
}

} // namespace

void addSetupCommands(CLI::App& app, SetupOptions& options) {
    CLI::App* setup = app.add_subcommand("setup", "How programs find this installation");
    setup->require_subcommand(1);
    setup->footer("Example: tarvo setup check");
    addInstall(*setup, options);
    addRemove(*setup, options);
    addCheck(*setup, options);
}

} // namespace tool
