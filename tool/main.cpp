// The command line tool `tarvo`. Exit status: 0 done, 1 the operation failed, 2 wrong use.
#include "platform/console.h"
#include "tarvo/result.hpp"
#include "tool/commands.h"
#include "tool/failure.h"
#include "tool/library.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <fmt/format.h>
#include <string>
#include <vector>

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUse = 2 };

struct Options {
    std::string path = "/";
    std::string scope = "all";
    std::string file;
    bool json = false;
    ExitStatus status = kDone;
};

tool::Scope scopeNamed(const std::string& name) {
    if (name == "machine")
        return tool::Scope::machine;
    return name == "user" ? tool::Scope::user : tool::Scope::all;
}

void addShow(CLI::App& registry, Options& options) {
    CLI::App* show =
        registry.add_subcommand("show", "Shows a key and all that is below it, value by value");
    show->add_option("PATH", options.path, "The key, with a slash in front; if left out, the root")
        ->type_name("");
    show->add_option("--scope", options.scope, "One scope alone; if left out, both as one")
        ->check(CLI::IsMember({"all", "machine", "user"}).description(""))
        ->type_name("all|machine|user");
    show->add_flag("--json", options.json, "Print JSON");
    show->footer("Each value bears its type and the scope that it comes from. Programs see both\n"
                 "scopes as one, in which the user's values hide the machine's.\n\n"
                 "Example: tarvo registry show /components/pmcs --scope user");
    show->callback(
        [&] { tool::showRegistry(options.path, scopeNamed(options.scope), options.json); });
}

void addVerify(CLI::App& registry, Options& options) {
    CLI::App* verify =
        registry.add_subcommand("verify", "Finds the first fault of a registry file");
    verify->add_option("FILE", options.file, "The file")->required()->type_name("");
    verify->footer(
        "Prints file:line:column: reason for a malformed file; the exit status is 1 then.\n\n"
        "Example: tarvo registry verify registry.dat.backup");
    verify->callback([&] {
        if (!tool::verifyRegistryFile(options.file))
            options.status = kFailed;
    });
}

void addInfo(CLI::App& app, Options& options) {
    CLI::App* info = app.add_subcommand("info", "Tells what is installed and where its data lie");
    info->add_flag("--json", options.json, "Print JSON");
    info->footer("Example: tarvo info --json");
    info->callback([&] { tool::printInfo(options.json); });
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
    fmt::print(stderr, "tarvo: {}\nRun tarvo --help for more information.\n",
               unknown.empty() ? error.what() : "not known here: " + unknown.front());
    return kWrongUse;
}

ExitStatus run(std::vector<std::string> arguments) {
    Options options;
    CLI::App app("Shows and checks what TARVO keeps on this machine.", "tarvo");
    app.footer("Example: tarvo registry show");
    app.get_formatter()->column_width(28);
    app.allow_windows_style_options(false); // a path of the registry begins with a slash
    app.require_subcommand(1);
    CLI::App* registry =
        app.add_subcommand("registry", "The registry of components and type libraries");
    registry->require_subcommand(1);
    registry->footer("Example: tarvo registry show /types");
    addShow(*registry, options);
    addVerify(*registry, options);
    addInfo(app, options);
    try {
        std::ranges::reverse(arguments); // as CLI takes them
        app.parse(arguments);
    } catch (const CLI::Success& help) {
        app.exit(help);
    } catch (const CLI::ParseError& error) {
        return reportWrongUse(app, error);
    }
    return options.status;
}

} // namespace

int main(int argc, char** argv) {
    const platform::Utf8Console console;
    ExitStatus status = kFailed;
    try {
        status = run(platform::utf8Arguments(argc, argv));
    } catch (const tool::Failure& failure) {
        fmt::print(stderr, "tarvo: {}\n", describe(failure));
    } catch (const std::exception& exception) {
        fmt::print(stderr, "tarvo: {}\n", exception.what());
    }
    if (std::fflush(stdout) != 0) {
        fmt::print(stderr, "tarvo: cannot write the output\n");
        return kFailed;
    }
    return status;
}
