// A value of every kind that saved state knows, named after its kind.
#pragma once

#include <tarvo/state_source.hpp>

namespace tests {

inline decltype(tarvo::StateTree::values) richValues() {
    tarvo::Value text;
    text.setText(u"inner");
    tarvo::Value yes;
    yes.setBoolean(7);
    return {{u"real", -1.5},
            {u"int", -5},
            {u"bool", true},
            {u"string", u"text"},
            {u"enum", tarvo::Enumeration{9}},
            {u"value", text},
            {u"reals", std::vector<double>{1, 2}},
            {u"ints", std::vector<std::int32_t>{1, -2}},
            {u"bools", std::vector<bool>{true, false}},
            {u"strings", std::vector<std::u16string>{u"one", u""}},
            {u"enums", std::vector<tarvo::Enumeration>{tarvo::Enumeration{3}}},
            {u"values", std::vector<tarvo::Value>{text, yes, tarvo::Value()}},
            {u"bytes", std::vector<std::uint8_t>{0, 255}}};
}

} // namespace tests
