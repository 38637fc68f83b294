// What the modules that stand in for outside libraries share: each notes down the calls that reach
// it, and answers as the test tells it.
#pragma once

#include <tarvo/base.h>
#include <tarvo/instantiation.h>
#include <tarvo/marshal.h>
#include <tarvo/result.h>
#include <tarvo/text.hpp>

#include <atomic>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

// Exported by each of the modules: what was noted since the last call, a line per call.
using takeNotesFunction = const char*();

// Results for the calls of that kind from now on.
struct Answers {
    TarvoResult start = RC_OK;
    TarvoResult create = RC_OK;
    TarvoResult stop = RC_OK;
    bool givesService = true;
};
using answerWithFunction = void(const Answers& answers);

namespace stand_in {

inline std::mutex notesMutex;
inline std::string notes;
inline Answers answers;

inline void note(const std::string& line) {
    const std::lock_guard lock(notesMutex);
    notes += line + "\n";
}

inline std::string narrow(std::u16string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

// The slots that every interface begins with; the notes tell of the count.
template <class Object>
struct Counted {
    static void addReference(void* me) { ++static_cast<Object*>(me)->references; }
    static void release(void* me) {
        auto* object = static_cast<Object*>(me);
        const int left = --object->references;
        note(std::string(Object::kName) + " released, " + std::to_string(left));
        if (left == 0)
            delete object;
    }
    static TarvoResult queryInterface(void*, const TarvoUUID*, IVaskInterface** found) {
        *found = nullptr;
        return RC_NO_INTERFACE;
    }
    static TarvoResult getLastError(void*, IVaskError**) {
        note(std::string(Object::kName) + " asked for its last error");
        return RC_NOT_AVAILABLE;
    }
};

// What all of the modules create.
struct Instance : Counted<Instance> {
    static constexpr const char* kName = "instance";
    static constexpr IVaskInterfaceTable kTable = {addReference, release, queryInterface,
                                                   getLastError};
    explicit Instance(int count) : references(count) {}

    IVaskInterface pair{this, &kTable};
    std::atomic<int> references;
};

inline const char* takeNotesOfModule() {
    static std::string taken;
    const std::lock_guard lock(notesMutex);
    taken = std::exchange(notes, {});
    return taken.c_str();
}

} // namespace stand_in
