// What `tarvo setup check` gathers while it goes from one examination to the next, and how it is
// told: to people as a report with the findings behind it, to programs as JSON.
#pragma once

#include "tool/failure.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tool {

struct Finding {
    std::string kind;    // for programs: it stays when the texts change
    std::string subject; // what it is about: a file, an identifier
    std::string text;    // what is wrong
    std::string advice;  // what the user can do
    std::string mended;  // what was done about it; empty as long as nothing was
};

// Mends a finding and says what it did. Raises Failure if it can't.
using Mend = std::function<std::string()>;

class Checkup {
  public:
    explicit Checkup(bool mends) : mends_(mends) {}

    // Whether findings are to be mended.
    bool mends() const { return mends_; }

    // What was seen: sections with notes in them.
    void beginSection(std::string_view title);
    void note(std::string_view title, std::string_view text);

    void report(Finding finding);

    // The same for one that can be mended, which is done at once if it is asked for, so that what
    // is examined later is examined as mended.
    void report(Finding finding, const Mend& mend);

    bool hasFindingsLeft() const;

    void print() const;
    void printJson() const;

  private:
    struct Section {
        std::string title;
        std::vector<std::pair<std::string, std::string>> notes;
    };

    bool mends_;
    std::vector<Section> sections_;
    std::vector<Finding> findings_;
};

// What was tried and why it failed, with the name of the code if there is one.
std::string reasonOf(const Failure& failure);

// Notes in a finding why mending it failed.
void noteFailure(Finding& finding, const Failure& failure);

} // namespace tool
