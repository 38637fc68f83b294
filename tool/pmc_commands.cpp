#include "tool/pmc_commands.h"

#include "tool/pmc.h"
#include "tool/scope_option.h"

namespace tool {

namespace {

void addComponent(CLI::App* command, PmcOptions& options) {
    command->add_option("COMPONENT", options.component, "Its identifier, or its ProgID")
        ->required()
        ->type_name("");
}

void addFlags(CLI::App* command, PmcOptions& options) {
    command->add_option("--flags", options.flags, "1 allows what is bound to an apartment")
        ->type_name("N");
}

void addList(CLI::App& pmc, PmcOptions& options) {
    CLI::App* list = pmc.add_subcommand("list", "Lists the components that hosts find");
    list->add_option("--category", options.category, "Those of one category alone")
        ->type_name("ID");
    list->add_flag("--json", options.json, "Print JSON, with all that is known of each");
    list->footer("Native components come from TARVO's registry, COM classes from the system's.\n\n"
                 "Example: tarvo pmc list --json");
    list->callback([&] { listComponents(options.category, options.json); });
}

void addShow(CLI::App& pmc, PmcOptions& options) {
    CLI::App* show = pmc.add_subcommand("show", "Shows all that is known of a component");
    addComponent(show, options);
    show->add_flag("--json", options.json, "Print JSON");
    show->footer("Example: tarvo pmc show Example.Greeter");
    show->callback([&] { showComponent(options.component, options.json); });
}

void addRegister(CLI::App& pmc, PmcOptions& options) {
    CLI::App* add = pmc.add_subcommand("register", "Registers a component from its manifest");
    add->add_option("MANIFEST", options.manifest, "A JSON file; see docs/components.md")
        ->required()
        ->type_name("");
    addScope(add, options.scope);
    add->footer("If the manifest has mistakes, each is named with its place, and nothing is\n"
                "registered. An earlier registration of the component is replaced.\n\n"
                "Example: tarvo pmc register greeter.json --scope machine");
    add->callback([&] { registerComponent(options.manifest, options.scope == "machine"); });
}

void addUnregister(CLI::App& pmc, PmcOptions& options) {
    CLI::App* remove = pmc.add_subcommand("unregister", "Removes a component's registration");
    remove->add_option("UUID", options.component, "Its identifier")->required()->type_name("");
    remove->add_option("--location", options.location, "One location alone")
        ->check(CLI::IsMember({"Inproc32", "Inproc64", "Remote", "Local"}).description(""))
        ->type_name("Inproc32|Inproc64|Remote|Local");
    addScope(remove, options.scope);
    remove->footer("With its last location the component goes as a whole.\n\n"
                   "Example: tarvo pmc unregister {2f8cbd30-41b5-4a80-8d5e-6a0a9c1f3c11}");
    remove->callback([&] {
        unregisterComponent(options.component, options.location, options.scope == "machine");
    });
}

void addCreate(CLI::App& pmc, PmcOptions& options) {
    CLI::App* create = pmc.add_subcommand("create", "Creates an instance, and releases it");
    addComponent(create, options);
    addFlags(create, options);
    create->footer("Prints which way it was created and which of the known interfaces it has.\n\n"
                   "Example: tarvo pmc create Example.Greeter");
    create->callback([&] { createComponent(options.component, options.flags); });
}

void addWhy(CLI::App& pmc, PmcOptions& options) {
    CLI::App* why = pmc.add_subcommand("why", "Explains why a component is created, or is not");
    addComponent(why, options);
    addFlags(why, options);
    why->footer("Goes the way of a host's request step by step; the last lines say how it ends.\n\n"
                "Example: tarvo pmc why Example.Greeter");
    why->callback([&] { explainComponent(options.component, options.flags); });
}

} // namespace

void addPmcCommands(CLI::App& app, PmcOptions& options) {
    CLI::App* pmc = app.add_subcommand("pmc", "Components: what there is, and how it is found");
    pmc->require_subcommand(1);
    pmc->footer("Example: tarvo pmc list");
    addList(*pmc, options);
    addShow(*pmc, options);
    addRegister(*pmc, options);
    addUnregister(*pmc, options);
    addCreate(*pmc, options);
    addWhy(*pmc, options);
}

} // namespace tool
