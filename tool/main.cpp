// The command line tool `tarvo`. Exit status: 0 done, 1 the operation failed, 2 wrong use.
#include "platform/console.h"
#include "tarvo/result.hpp"
#include "tool/commands.h"
#include "tool/failure.h"
#include "tool/library.h"
#include "tool/output.h"
#include "tool/pmc_commands.h"
#include "tool/registry_commands.h"
#include "tool/setup_commands.h"
#include "tool/state_commands.h"
#include "tool/type_library_commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUse = 2 };

void addInfo(CLI::App& app, bool& json) {
    CLI::App* info = app.add_subcommand("info", "Tells what is installed and where its data lie");
    info->add_flag("--json", json, "Print JSON");
    info->footer("Example: tarvo info --json");
    info->callback([&] { tool::printInfo(json); });
}

// "what was tried: RC_NAME (number): text". The library may be what is missing.
std::string describe(const tool::Failure& failure) {
    std::string text = failure.what();
    if (failure.code() == RC_OK)
        return text;
    text.append(": ").append(tarvo::errorOf(failure.code()).message());
    try {
        return text + ": " + tool::Library().description(failure.code());
    } catch (const tool::Failure& other) {
        return text + "; " + other.what();
    }
}

ExitStatus reportWrongUse(const CLI::App& app, const CLI::ParseError& error) {
    // Of a misspelt command CLI11 says only that one is missing.
    const std::vector<std::string> unknown = app.remaining(true);
    tool::printError("tarvo: {}\nRun tarvo --help for more information.\n",
                     unknown.empty() ? error.what() : "not known here: " + unknown.front());
    return kWrongUse;
}

ExitStatus parseAndRun(std::vector<std::string> arguments) {
    const tool::Progress progress;
    tool::RegistryOptions options;
    tool::PmcOptions pmcOptions;
    tool::TypeLibraryOptions libraryOptions;
    tool::StateOptions stateOptions;
    tool::SetupOptions setupOptions;
    bool json = false;
    CLI::App app("Shows, checks and changes what TARVO keeps on this machine.", "tarvo");
    app.footer("Example: tarvo registry show");
    app.set_version_flag("--version", "tarvo " TARVO_VERSION, "Print this tool's version and exit");
    app.get_formatter()->column_width(28);
    app.allow_windows_style_options(false); // a path of the registry begins with a slash
    app.require_subcommand(1);
    tool::addRegistryCommands(app, options);
    tool::addPmcCommands(app, pmcOptions);
    tool::addTypeLibraryCommands(app, libraryOptions);
    tool::addStateCommands(app, stateOptions);
    tool::addSetupCommands(app, setupOptions);
    addInfo(app, json);
    try {
        std::ranges::reverse(arguments); // as CLI takes them
        app.parse(arguments);
    } catch (const CLI::Success& help) {
        app.exit(help);
    } catch (const CLI::ParseError& error) {
        return reportWrongUse(app, error);
    } catch (const tool::Failure& failure) {
        tool::printError("tarvo: {}\n", describe(failure));
        return kFailed;
    }
    return options.faultFound || setupOptions.faultFound ? kFailed : kDone;
}

ExitStatus run(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    for (const auto& argument : TARVO::platform::utf8Arguments(argc, argv)) {
        if (!argument) {
            tool::printError("tarvo: argument {} is malformed text\n", arguments.size() + 1);
            return kWrongUse;
        }
        arguments.push_back(*argument);
    }
    return parseAndRun(std::move(arguments));
}

} // namespace

int main(int argc, char** argv) {
    try {
        TARVO::platform::useUtf8Console();
        const ExitStatus status = run(argc, argv);
        if (std::fflush(stdout) == 0)
            return status;
        std::fputs("tarvo: cannot write the output\n", stderr);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "tarvo: %s\n", exception.what());
    }
    return kFailed;
}
