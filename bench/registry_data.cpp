#include "bench/registry_data.h"

#include <random>

namespace bench {

namespace {

class Random {
  public:
    std::string uuid() {
        static constexpr char kDigits[] = "0123456789abcdef";
        std::string text = "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
        for (char& c : text)
            if (c == 'x')
                c = kDigits[engine_() % 16];
        return text;
    }

    std::string words(std::size_t count) {
        static constexpr const char* kWords[] = {"colour",    "filter", "package", "unit",
                                                 "operation", "mixer",  "column",  "of",
                                                 "the",       "steady", "state",   "stream"};
        std::string text;
        for (std::size_t i = 0; i < count; ++i)
            text.append(i == 0 ? "" : " ").append(kWords[engine_() % std::size(kWords)]);
        return text;
    }

  private:
    std::mt19937 engine_{4711};
};

void addString(std::string& out, const char* name, const std::string& text) {
    out.append("    <value name=\"").append(name).append("\" type=\"string\">");
    out.append(text).append("</value>\n");
}

void addComponent(std::string& out, Random& random) {
    out.append("   <key name=\"").append(random.uuid()).append("\">\n");
    addString(out, "name", random.words(3));
    addString(out, "description", random.words(12));
    addString(out, "vaskversion", "1.2");
    addString(out, "componentversion", "4.1.0.17");
    addString(out, "vendorurl", "https://vendor.example/components");
    addString(out, "about", random.words(8));
    addString(out, "progid", "vendor.component.1");
    addString(out, "inproc64", "C:\\Program Files\\Vendor\\Components\\component.dll");
    out.append("    <value name=\"flags\" type=\"integer\">0</value>\n");
    out.append("    <key name=\"categories\">\n");
    for (int i = 0; i < 3; ++i)
        out.append("     <value name=\"").append(random.uuid()).append("\" type=\"empty\"/>\n");
    out.append("    </key>\n   </key>\n");
}

std::string withRoot(const std::string& id, const std::string& content) {
    return "<registry id=\"" + id + "\">\n" + content + "</registry>\n";
}

} // namespace

std::string registryOfSize(std::size_t size, const std::string& id) {
    Random random;
    std::string content = " <key name=\"components\">\n  <key name=\"pmcs\">\n";
    while (content.size() < size)
        addComponent(content, random);
    content.append("  </key>\n </key>\n");
    return withRoot(id, content);
}

std::string registryOfPaths(const std::string& id) {
    std::string content;
    for (int a = 0; a < 10; ++a) {
        content += "<key name=\"a" + std::to_string(a) + "\">";
        for (int b = 0; b < 100; ++b) {
            content += "<key name=\"b" + std::to_string(b) + "\">";
            for (int c = 0; c < 100; ++c)
                content += "<key name=\"c" + std::to_string(c) + "\"/>";
            content += "</key>";
        }
        content += "</key>";
    }
    return withRoot(id, content);
}

} // namespace bench
