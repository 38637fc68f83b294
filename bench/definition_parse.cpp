// Reading a definition of 10,000 interfaces beside two parsers of general texts, each of which
// reads the same declarations in its own language: JSON into nlohmann's values and XML into
// pugixml's tree. The peers only build their trees; the reader of definitions also looks up every
// name and checks every identifier.
#include "companions/idl-parser/definition.h"

#include <tarvo/reference.hpp>

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <string>

namespace {

constexpr int kInterfaces = 10'000;
constexpr int kMethods = 8;

std::string identifier(int number) {
    const std::string digits = std::to_string(number);
    return "6f1c2d3a-88b1-4c55-9e0d-" + std::string(12 - digits.size(), '0') + digits;
}

// One language's way to write the declarations.
struct Language {
    const char* start;
    std::string (*interface)(const std::string& id, const std::string& name);
    std::string (*method)(const std::string& name, const std::string& type);
    const char* betweenMethods;
    const char* endOfInterface;
    const char* betweenInterfaces;
    const char* end;
};

std::string textIn(const Language& language) {
    std::string text = language.start;
    for (int i = 0; i < kInterfaces; ++i) {
        text += i == 0 ? "" : language.betweenInterfaces;
        text += language.interface(identifier(i), "IComponent" + std::to_string(i));
        for (int j = 0; j < kMethods; ++j) {
            text += j == 0 ? "" : language.betweenMethods;
            text += language.method("getSomething" + std::to_string(j),
                                    "IComponent" + std::to_string((i * 7 + j) % kInterfaces));
        }
        text += language.endOfInterface;
    }
    return text + language.end;
}

const std::string& definition() {
    static const std::string text = textIn({
        "[uuid(3b78cdeb-7fe8-4542-b58b-26205774d82a), version(1.0)]\nlibrary Bench {\n",
        [](const std::string& id, const std::string& name) {
            return "    /// What a component offers.\n    [uuid(" + id + ")]\n    interface " +
                   name + " : IVaskInterface {\n";
        },
        [](const std::string& name, const std::string& type) {
            return "        result " + name + "(in unsigned index, in string name, out " + type +
                   " component);\n";
        },
        "",
        "    }\n",
        "\n",
        "}\n",
    });
    return text;
}

const std::string& json() {
    static const std::string text = textIn({
        "{\"library\": {\"uuid\": \"3b78cdeb-7fe8-4542-b58b-26205774d82a\", \"interfaces\": [\n",
        [](const std::string& id, const std::string& name) {
            return "  {\"documentation\": \"What a component offers.\", \"uuid\": \"" + id +
                   "\", \"name\": \"" + name + "\", \"base\": \"IVaskInterface\", \"methods\": [\n";
        },
        [](const std::string& name, const std::string& type) {
            return "    {\"name\": \"" + name +
                   "\", \"result\": \"result\", \"parameters\": "
                   "[[\"in\", \"unsigned\", \"index\"], [\"in\", \"string\", \"name\"], "
                   "[\"out\", \"" +
                   type + "\", \"component\"]]}";
        },
        ",\n",
        "]}",
        ",\n",
        "]}}\n",
    });
    return text;
}

const std::string& xml() {
    static const std::string text = textIn({
        "<library uuid=\"3b78cdeb-7fe8-4542-b58b-26205774d82a\">\n",
        [](const std::string& id, const std::string& name) {
            return "  <interface uuid=\"" + id + "\" name=\"" + name +
                   "\" base=\"IVaskInterface\">\n    <documentation>What a component "
                   "offers.</documentation>\n";
        },
        [](const std::string& name, const std::string& type) {
            return "    <method name=\"" + name +
                   "\" result=\"result\"><in type=\"unsigned\" name=\"index\"/>"
                   "<in type=\"string\" name=\"name\"/><out type=\"" +
                   type + "\" name=\"component\"/></method>\n";
        },
        "",
        "  </interface>\n",
        "",
        "</library>\n",
    });
    return text;
}

// Times `parse`, which gives false on failure.
template <class Parse>
void parseText(benchmark::State& state, const std::string& text, Parse&& parse) {
    for (auto _ : state)
        if (!parse(text))
            std::abort();
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) *
                            static_cast<std::int64_t>(state.iterations()));
}

void parseByTarvo(benchmark::State& state) {
    parseText(state, definition(), [](const std::string& text) {
        const auto read = [&](const std::u16string&) {
            return TARVO::idl::FileBytes{text, nullptr, false};
        };
        const auto document = tarvo::Reference<TARVO::idl::Document>::adopt(
            TARVO::idl::readDefinition(u"bench", read));
        return document->getLibraryCount() == 1;
    });
}
BENCHMARK(parseByTarvo)->Name("parse 10,000 interfaces/tarvo")->Unit(benchmark::kMillisecond);

void parseByNlohmann(benchmark::State& state) {
    parseText(state, json(), [](const std::string& text) {
        return nlohmann::json::parse(text)["library"]["interfaces"].size() == kInterfaces;
    });
}
BENCHMARK(parseByNlohmann)
    ->Name("parse 10,000 interfaces/nlohmann-json")
    ->Unit(benchmark::kMillisecond);

void parseByPugixml(benchmark::State& state) {
    parseText(state, xml(), [](const std::string& text) {
        pugi::xml_document document;
        return static_cast<bool>(document.load_buffer(text.data(), text.size()));
    });
}
BENCHMARK(parseByPugixml)->Name("parse 10,000 interfaces/pugixml")->Unit(benchmark::kMillisecond);

} // namespace
