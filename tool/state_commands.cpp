#include "tool/state_commands.h"

#include "tool/state.h"

namespace tool {

void addStateCommands(CLI::App& app, StateOptions& options) {
    CLI::App* state = app.add_subcommand("state", "Saved state of components");
    state->require_subcommand(1);
    state->footer("Example: tarvo state show counter.state");

    CLI::App* show = state->add_subcommand("show", "Shows the tree that a stream payload holds");
    show->add_option("FILE", options.file, "The payload; see docs/saved-state.md")
        ->required()
        ->type_name("");
    show->add_flag("--json", options.json, "Print JSON, which `state make` takes");
    show->footer("Of a damaged file it shows what is before the damage, and then where and why it\n"
                 "ends.\n\n"
                 "Example: tarvo state show counter.state --json");
    show->callback([&] { showState(options.file, options.json); });

    CLI::App* make = state->add_subcommand("make", "Writes the stream payload of a tree");
    make->add_option("TREE", options.tree, "A JSON file as `state show --json` prints it")
        ->required()
        ->type_name("");
    make->add_option("OUT", options.file, "The file to write, or to replace")
        ->required()
        ->type_name("");
    make->footer("Example: tarvo state make tree.json counter.state");
    make->callback([&] { makeState(options.tree, options.file); });
}

} // namespace tool
