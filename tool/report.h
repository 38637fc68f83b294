// The form of a report that goes step by step: headings, steps with a title, and a verdict.
#pragma once

#include <string>
#include <string_view>

namespace tool {

void printHeading(std::string_view text);

// The title on the left, the text beside it and, where it is long, below it.
void printStep(std::string_view title, std::string_view text);

// An item of a list: what stands before it, and the text beside that.
void printItem(std::string_view lead, std::string_view text);

// How it ends, and what the reader can do.
void printVerdict(std::string_view verdict, std::string_view advice);

} // namespace tool
