#include "tool/registry_commands.h"

#include "tool/commands.h"
#include "tool/scope_option.h"

#include <array>
#include <cstddef>

namespace tool {

namespace {

Scope scopeNamed(const std::string& name) {
    if (name == "machine")
        return Scope::machine;
    return name == "user" ? Scope::user : Scope::all;
}

void addShow(CLI::App& registry, RegistryOptions& options) {
    CLI::App* show =
        registry.add_subcommand("show", "Shows a key and all that is below it, value by value");
    show->add_option("PATH", options.path, "The key, with a slash in front; the root if left out")
        ->type_name("");
    show->add_option("--scope", options.shownScope, "One scope alone; both as one if left out")
        ->check(CLI::IsMember({"all", "machine", "user"}).description(""))
        ->type_name("all|machine|user");
    show->add_flag("--json", options.json, "Print JSON");
    show->footer("Each value bears its type and the scope that it comes from. Programs see both\n"
                 "scopes as one, in which the user's values hide the machine's.\n\n"
                 "Example: tarvo registry show /components/pmcs --scope user");
    show->callback(
        [&] { showRegistry(options.path, scopeNamed(options.shownScope), options.json); });
}

void addVerify(CLI::App& registry, RegistryOptions& options) {
    CLI::App* verify =
        registry.add_subcommand("verify", "Finds the first fault of a registry file");
    verify->add_option("FILE", options.file, "The file")->required()->type_name("");
    verify->footer(
        "Prints file:line:column: reason for a malformed file. The exit status is 1 then,\n"
        "and for a file whose end is missing.\n\n"
        "Example: tarvo registry verify registry.dat.backup");
    verify->callback([&] { options.faultFound = !verifyRegistryFile(options.file); });
}

ValueType typeOf(const RegistryOptions& options) {
    if (options.isInteger)
        return ValueType::integer;
    if (options.isUuid)
        return ValueType::uuid;
    return options.isEmpty ? ValueType::empty : ValueType::string;
}

void addSet(CLI::App& registry, RegistryOptions& options) {
    CLI::App* set = registry.add_subcommand("set", "Sets a value, and makes its key if need be");
    set->add_option("KEY", options.key, "The key, with a slash in front")
        ->required()
        ->type_name("");
    set->add_option("NAME", options.name, "The value's name")->required()->type_name("");
    CLI::Option* value =
        set->add_option("VALUE", options.value, "What it is to hold")->type_name("");
    const std::array types = {
        set->add_flag("--string", options.isString, "A text, as it is without any of these"),
        set->add_flag("--integer", options.isInteger, "A whole number of 32 bits"),
        set->add_flag("--uuid", options.isUuid, "An identifier, in braces"),
        set->add_flag("--empty", options.isEmpty, "Nothing; there is no VALUE then"),
    };
    for (std::size_t i = 0; i < types.size(); ++i)
        for (std::size_t other = 0; other < i; ++other)
            types[i]->excludes(types[other]);
    for (CLI::Option* type : types)
        type->option_text(" "); // in place of a list of the others, which the footer tells of
    addScope(set, options.scope);
    set->footer("At most one of --string, --integer, --uuid and --empty can be given.\n\n"
                "Example: tarvo registry set /my/settings size --integer 12");
    set->callback([&options, value] {
        if (options.isEmpty == (value->count() > 0))
            throw CLI::ValidationError(options.isEmpty ? "--empty takes no VALUE"
                                                       : "VALUE is required");
        setRegistryValue({options.key, options.name, scopeNamed(options.scope)}, typeOf(options),
                         options.value);
    });
}

void addDelete(CLI::App& registry, RegistryOptions& options) {
    CLI::App* remove =
        registry.add_subcommand("delete", "Deletes a value, or a key with all below it");
    remove->add_option("KEY", options.key, "The key, with a slash in front")
        ->required()
        ->type_name("");
    const CLI::Option* name =
        remove->add_option("NAME", options.name, "The value; if left out, the key is deleted")
            ->type_name("");
    addScope(remove, options.scope);
    remove->footer("Example: tarvo registry delete /my/settings size");
    remove->callback([&options, name] {
        if (name->count() > 0)
            deleteRegistryValue({options.key, options.name, scopeNamed(options.scope)});
        else
            deleteRegistryKey(options.key, scopeNamed(options.scope));
    });
}

void addExport(CLI::App& registry, RegistryOptions& options) {
    CLI::App* give = registry.add_subcommand("export", "Prints a scope, or a part of it, as JSON");
    give->add_option("PATH", options.path, "The key, with a slash in front; the root if left out")
        ->type_name("");
    addScope(give, options.scope);
    give->footer("What it prints is what import takes.\n\n"
                 "Example: tarvo registry export /my/settings > settings.json");
    give->callback([&] { exportRegistry(options.path, scopeNamed(options.scope)); });
}

void addImport(CLI::App& registry, RegistryOptions& options) {
    CLI::App* take = registry.add_subcommand("import", "Sets all that a JSON file holds");
    take->add_option("FILE", options.file, "What export printed")->required()->type_name("");
    take->add_option("PATH", options.path, "The key to import into; if left out, the root")
        ->type_name("");
    addScope(take, options.scope);
    take->footer("All is set at once, or nothing if the file has a mistake. What is there and not\n"
                 "in the file stays.\n\n"
                 "Example: tarvo registry import settings.json /my/settings");
    take->callback([&] { importRegistry(options.file, options.path, scopeNamed(options.scope)); });
}

void addBackup(CLI::App& registry, RegistryOptions& options) {
    CLI::App* backup =
        registry.add_subcommand("backup", "The copy of the state before the last commit");
    backup->require_subcommand(1);
    backup->footer("Example: tarvo registry backup restore --scope machine");
    CLI::App* restore = backup->add_subcommand("restore", "Puts the backup back");
    addScope(restore, options.scope);
    restore->footer("The backup is checked first, and the file that it replaces is kept aside.\n\n"
                    "Example: tarvo registry backup restore --scope machine");
    restore->callback([&] { restoreBackup(scopeNamed(options.scope)); });
}

} // namespace

void addRegistryCommands(CLI::App& app, RegistryOptions& options) {
    CLI::App* registry =
        app.add_subcommand("registry", "The registry of components and type libraries");
    registry->require_subcommand(1);
    registry->footer("Example: tarvo registry show /types");
    addShow(*registry, options);
    addSet(*registry, options);
    addDelete(*registry, options);
    addExport(*registry, options);
    addImport(*registry, options);
    addVerify(*registry, options);
    addBackup(*registry, options);
}

} // namespace tool
