// A definition file as the parser beside TARVO.dll reads it.
#pragma once

#include "platform/module.h"
#include "tarvo/idl_parser.h"
#include "tarvo/reference.hpp"
#include "tarvo/uuid.hpp"
#include "tool/library.h"

#include <string>
#include <vector>

namespace tool {

class Definition {
  public:
    struct DefinedLibrary {
        tarvo::UUID uuid;
        std::string name;
        std::string version; // empty if it has none
        std::int32_t categories = 0;
        std::int32_t enumerations = 0;
        std::int32_t interfaces = 0;
    };

    // Raises Failure if the parser can't be had, or with its message if the file has mistakes.
    Definition(const Library& library, const std::string& path);

    // The file's whole path, as registerLibrary takes it.
    const std::u16string& path() const { return path_; }

    std::vector<DefinedLibrary> libraries() const;

  private:
    std::u16string path_;
    TARVO::platform::LoadedModule parser_;
    tarvo::Reference<IVaskIDLParseResult> result_; // goes before the parser
};

} // namespace tool
