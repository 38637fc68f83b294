#include "tool/checkup.h"

#include "tarvo/result.hpp"
#include "tool/output.h"
#include "tool/report.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace tool {

namespace {

bool isLeft(const Finding& finding) {
    return finding.mended.empty();
}

void printFinding(std::size_t number, const Finding& finding) {
    printItem(fmt::format("{}.", number), finding.text);
    printItem("", isLeft(finding) ? "To do: " + finding.advice : "Mended: " + finding.mended);
}

} // namespace

void Checkup::beginSection(std::string_view title) {
    Progress::say("Examining: " + std::string(title));
    sections_.push_back({std::string(title), {}});
}

void Checkup::note(std::string_view title, std::string_view text) {
    sections_.back().notes.emplace_back(title, text);
}

void Checkup::report(Finding finding) {
    findings_.push_back(std::move(finding));
}

void Checkup::report(Finding finding, const Mend& mend) {
    if (mends_) {
        try {
            finding.mended = mend();
        } catch (const Failure& failure) {
            noteFailure(finding, failure);
        }
    }
    report(std::move(finding));
}

bool Checkup::hasFindingsLeft() const {
    return std::ranges::any_of(findings_, isLeft);
}

void Checkup::print() const {
    for (const Section& section : sections_) {
        printHeading(section.title);
        for (const auto& [title, text] : section.notes)
            printStep(title, text);
    }
    const auto left = std::ranges::count_if(findings_, isLeft);
    const auto mended = std::ssize(findings_) - left;
    if (findings_.empty())
        return printVerdict("Nothing is wrong.", "");
    printVerdict(mends_ ? fmt::format("Findings mended: {}, left: {}", mended, left)
                        : fmt::format("Findings: {}", left),
                 "");
    for (std::size_t i = 0; i < findings_.size(); ++i)
        printFinding(i + 1, findings_[i]);
}

void Checkup::printJson() const {
    using nlohmann::ordered_json;
    ordered_json sections = ordered_json::object();
    for (const Section& section : sections_) {
        ordered_json& notes = sections[section.title] = ordered_json::object();
        for (const auto& [title, text] : section.notes)
            notes[title] = text;
    }
    ordered_json findings = ordered_json::array();
    for (const Finding& finding : findings_)
        findings.push_back(
            {{"kind", finding.kind},
             {"subject", finding.subject},
             {"text", finding.text},
             {"advice", finding.advice},
             {"mended", isLeft(finding) ? ordered_json() : ordered_json(finding.mended)}});
    const ordered_json whole = {{"seen", sections}, {"findings", findings}};
    printOut("{}\n", whole.dump(2, ' ', false, ordered_json::error_handler_t::replace));
}

std::string reasonOf(const Failure& failure) {
    std::string reason = failure.what();
    if (failure.code() != RC_OK)
        reason.append(": ").append(tarvo::errorOf(failure.code()).message());
    return reason;
}

void noteFailure(Finding& finding, const Failure& failure) {
    finding.advice.append(" Mending it failed: ").append(reasonOf(failure)).append(".");
}

} // namespace tool
