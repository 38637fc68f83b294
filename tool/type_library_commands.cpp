#include "tool/type_library_commands.h"

#include "tool/scope_option.h"
#include "tool/type_library.h"

namespace tool {

namespace {

constexpr const char* kRemoveExample =
    "Example: tarvo library location remove {0f6a52c8-93f1-4b57-8d1e-6f2b7a90c4d3} Inproc64";

void addFile(CLI::App* command, TypeLibraryOptions& options) {
    command->add_option("FILE", options.file, "A definition file")->required()->type_name("");
}

void addUuid(CLI::App* command, TypeLibraryOptions& options) {
    command->add_option("UUID", options.library, "The library's identifier")
        ->required()
        ->type_name("");
}

void addLocationName(CLI::App* command, TypeLibraryOptions& options) {
    command->add_option("NAME", options.location, "Inproc32, Inproc64, COM32 or COM64")
        ->check(CLI::IsMember({"Inproc32", "Inproc64", "COM32", "COM64"}).description(""))
        ->required()
        ->type_name("");
}

void addCheck(CLI::App& library, TypeLibraryOptions& options) {
    CLI::App* check = library.add_subcommand("check", "Finds the mistakes of a definition file");
    addFile(check, options);
    check->footer("Nothing is registered. The language is told in docs/definition-language.md.\n\n"
                  "Example: tarvo library check clocks.tidl");
    check->callback([&] { checkDefinition(options.file); });
}

void addRegister(CLI::App& library, TypeLibraryOptions& options) {
    CLI::App* add = library.add_subcommand("register", "Registers what a file defines");
    addFile(add, options);
    addScope(add, options.scope);
    add->footer("A copy of the file is kept beside the registry. A lower version is replaced, a\n"
                "higher one stays.\n\n"
                "Example: tarvo library register clocks.tidl --scope machine");
    add->callback([&] { registerDefinition(options.file, options.scope == "machine"); });
}

void addList(CLI::App& library, TypeLibraryOptions& options) {
    CLI::App* list = library.add_subcommand("list", "Lists the registered type libraries");
    list->add_flag("--json", options.json, "Print JSON");
    list->footer("Example: tarvo library list");
    list->callback([&] { listTypeLibraries(options.json); });
}

void addShow(CLI::App& library, TypeLibraryOptions& options) {
    CLI::App* show = library.add_subcommand("show", "Shows a library and what it defines");
    show->add_option("LIBRARY", options.library, "Its identifier, or its name")
        ->required()
        ->type_name("");
    show->add_flag("--json", options.json, "Print JSON");
    show->footer("Example: tarvo library show Clocks");
    show->callback([&] { showTypeLibrary(options.library, options.json); });
}

void addUnregister(CLI::App& library, TypeLibraryOptions& options) {
    CLI::App* remove = library.add_subcommand("unregister", "Removes a library and its items");
    addUuid(remove, options);
    addScope(remove, options.scope);
    remove->footer("Example: tarvo library unregister {3b78cdeb-7fe8-4542-b58b-26205774d82a}");
    remove->callback([&] { unregisterTypeLibrary(options.library, options.scope == "machine"); });
}

void addLocation(CLI::App& library, TypeLibraryOptions& options) {
    CLI::App* location = library.add_subcommand("location", "Where a library's code is");
    location->require_subcommand(1);
    location->footer(kRemoveExample);
    CLI::App* set = location->add_subcommand("set", "Sets a location");
    addUuid(set, options);
    addLocationName(set, options);
    set->add_option("TEXT", options.text, "A path or an identifier")->required()->type_name("");
    addScope(set, options.scope);
    set->footer("Example: tarvo library location set {0f6a52c8-93f1-4b57-8d1e-6f2b7a90c4d3} "
                "Inproc64 clocks.dll");
    set->callback([&] {
        setTypeLibraryLocation(options.library, options.location, options.text,
                               options.scope == "machine");
    });
    CLI::App* remove = location->add_subcommand("remove", "Removes a location");
    addUuid(remove, options);
    addLocationName(remove, options);
    addScope(remove, options.scope);
    remove->footer(kRemoveExample);
    remove->callback([&] {
        removeTypeLibraryLocation(options.library, options.location, options.scope == "machine");
    });
}

} // namespace

void addTypeLibraryCommands(CLI::App& app, TypeLibraryOptions& options) {
    CLI::App* library = app.add_subcommand("library", "Type libraries and their definitions");
    library->require_subcommand(1);
    library->footer("Example: tarvo library list");
    addCheck(*library, options);
    addRegister(*library, options);
    addList(*library, options);
    addShow(*library, options);
    addUnregister(*library, options);
    addLocation(*library, options);
}

} // namespace tool
