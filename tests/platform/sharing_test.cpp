// The hold on a file between processes. The children keep what they have opened until they are told
// otherwise, so that every order of events is made, not hoped for.
#include "platform/file.h"
#include "platform/text.h"
#include "tests/platform/file_errors.h"
#include "tests/platform/temporary_folder.h"
#include "tests/support/process.h"
#include "tests/support/text.h"

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <iterator>
#include <memory>
#include <set>
#include <sstream>
#include <thread>
#include <vector>

namespace {

using support::Process;
using TARVO::platform::File;
using TARVO::platform::FileError;
using tests::narrow;
using tests::wide;

TARVO::platform::OpenedFile openAs(std::string_view way, const std::u16string& path) {
    if (way == "read") {
        return File::openForReading(path);
    }
    return way == "write" ? File::openExclusive(path) : File::createExclusive(path);
}

// Lines "read PATH", "write PATH" and "create PATH" open a file and hold it in place of the last
// one; "close" closes it, "die" ends the process as it is.
void holdFiles() {
    File file;
    for (std::string line; std::getline(std::cin, line);) {
        const std::string command = line.substr(0, line.find(' '));
        if (command == "die") {
            std::_Exit(0);
        }
        file.close();
        FileError error = FileError::none;
        if (command != "close") {
            auto opened = openAs(command, wide(line.substr(command.size() + 1)));
            file = std::move(opened.file);
            error = opened.error;
        }
        std::cout << nameOf(error) << std::endl;
    }
}
const support::Role kHolder{"holder", holdFiles};

TEST(Sharing, BindsOtherProcessesAsItBindsThisOne) {
    const TemporaryFolder folder;
    const auto path = folder.write(u"file", "text");
    const std::string name = ' ' + narrow(path);
    struct Case {
        std::string held;
        std::string asked;
        std::string result;
    };
    const std::vector<Case> cases{{"read", "read", "none"},
                                  {"read", "write", "sharingViolation"},
                                  {"write", "read", "sharingViolation"},
                                  {"write", "write", "sharingViolation"},
                                  {"write", "create", "exists"}};
    Process holder{"holder"};
    Process other{"holder"};
    for (const auto& [held, asked, result] : cases) {
        SCOPED_TRACE(held + ' ' + asked);
        EXPECT_EQ(holder.ask(held + name), "none");
        EXPECT_EQ(other.ask(asked + name), result);
        EXPECT_EQ(nameOf(openAs(asked, path).error), result);
        EXPECT_EQ(holder.ask("close"), "none");
        EXPECT_EQ(other.ask("write" + name), "none");
        EXPECT_EQ(other.ask("close"), "none");
    }
    EXPECT_EQ(holder.ask("create " + narrow(folder / u"new")), "none");
    EXPECT_EQ(other.ask("read " + narrow(folder / u"new")), "sharingViolation");
}

TEST(Sharing, LetsAWriterInBehindTheLastReader) {
    const TemporaryFolder folder;
    const auto path = folder.write(u"file", "text");
    const std::string name = ' ' + narrow(path);
    Process first{"holder"};
    Process second{"holder"};
    EXPECT_EQ(first.ask("read" + name), "none");
    EXPECT_EQ(second.ask("read" + name), "none");
    EXPECT_EQ(File::openExclusive(path).error, FileError::sharingViolation);
    EXPECT_EQ(first.ask("close"), "none");
    EXPECT_EQ(File::openExclusive(path).error, FileError::sharingViolation);
    EXPECT_EQ(second.ask("close"), "none");
    EXPECT_EQ(File::openExclusive(path).error, FileError::none);
}

TEST(Sharing, EndsWithTheProcess) {
    const TemporaryFolder folder;
    const auto path = folder.write(u"file", "text");
    Process holder{"holder"};
    EXPECT_EQ(holder.ask("write " + narrow(path)), "none");
    holder.send("die");
    EXPECT_EQ(holder.wait(), 0);
    EXPECT_EQ(File::openExclusive(path).error, FileError::none);
}

TEST(Sharing, IsNotPassedOnToAChild) {
    const TemporaryFolder folder;
    const auto path = folder.write(u"file", "text");
    File file = File::openExclusive(path).file;
    Process child{"holder"};
    EXPECT_EQ(child.ask("write " + narrow(path)), "sharingViolation");
    file.close();
    EXPECT_EQ(File::openExclusive(path).error, FileError::none);
}

// Starts children in a role, gives each the same line once all of them are there, and collects
// their answers.
std::vector<std::string> runTogether(const char* role, const std::string& line) {
    constexpr std::size_t children = 4;
    std::vector<std::unique_ptr<Process>> processes;
    for (std::size_t i = 0; i < children; ++i) {
        processes.push_back(std::make_unique<Process>(role));
    }
    for (const auto& process : processes) {
        EXPECT_EQ(process->receive(), "ready");
    }
    for (const auto& process : processes) {
        process->send(line);
    }
    std::vector<std::string> answers;
    for (const auto& process : processes) {
        answers.push_back(process->receive().value_or("(ended)"));
        EXPECT_EQ(process->wait(), 0);
    }
    return answers;
}

constexpr int kFiles = 200;

// Gets a folder, tries to create the files 0 to kFiles - 1 in it and tells which it has created.
void createFiles() {
    std::cout << "ready" << std::endl;
    std::string folder;
    std::getline(std::cin, folder);
    std::string created;
    for (int i = 0; i < kFiles; ++i) {
        const auto [file, error] = File::createExclusive(wide(folder + '/' + std::to_string(i)));
        if (error == FileError::none) {
            created += std::to_string(i) + ' ';
        } else if (error != FileError::exists) {
            created += nameOf(error) + ' ';
        }
    }
    std::cout << created << std::endl;
}
const support::Role kCreator{"creator", createFiles};

TEST(Sharing, GivesANewFileToOneOfThoseWhoCreateIt) {
    const TemporaryFolder folder;
    std::multiset<std::string> created;
    for (const auto& answer : runTogether("creator", narrow(folder.path()))) {
        std::istringstream words{answer};
        created.insert(std::istream_iterator<std::string>{words}, {});
    }
    std::multiset<std::string> expected;
    for (int i = 0; i < kFiles; ++i) {
        expected.insert(std::to_string(i));
    }
    EXPECT_EQ(created, expected);
}

constexpr int kSteps = 50;

// The way in which a writer gets at a file that need not be there.
File openToWrite(const std::u16string& path) {
    for (;;) {
        auto opened = File::openExclusive(path);
        if (opened.error == FileError::notFound) {
            opened = File::createExclusive(path);
        }
        if (opened.error == FileError::none) {
            return std::move(opened.file);
        }
        if (opened.error != FileError::sharingViolation && opened.error != FileError::exists) {
            throw std::runtime_error(nameOf(opened.error));
        }
        std::this_thread::yield();
    }
}

std::string textOf(File& file) {
    std::array<char, 100> buffer;
    const auto size = file.read(buffer);
    return {buffer.data(), size.value()};
}

// A text of a number whose length goes up and down, so that a file is cut now and then.
std::string numberText(int number) {
    return std::to_string(number) + std::string(static_cast<std::size_t>(number % 7), ' ');
}

// Gets a file with a number in it and raises the number kSteps times by one.
void countUp() {
    std::cout << "ready" << std::endl;
    std::string path;
    std::getline(std::cin, path);
    for (int i = 0; i < kSteps; ++i) {
        File file = openToWrite(wide(path));
        const std::string text = textOf(file);
        const int number = (text.empty() ? 0 : std::stoi(text)) + 1;
        file.seekTo(0);
        file.write(numberText(number));
        file.truncateHere();
    }
    std::cout << "done" << std::endl;
}
const support::Role kCounter{"counter", countUp};

TEST(Sharing, LosesNoStepOfSeveralWriters) {
    const TemporaryFolder folder;
    const auto path = folder / u"number";
    const auto answers = runTogether("counter", narrow(path));
    for (const auto& answer : answers) {
        EXPECT_EQ(answer, "done");
    }
    EXPECT_EQ(folder.textOf(path), numberText(kSteps * static_cast<int>(answers.size())));
}

} // namespace
