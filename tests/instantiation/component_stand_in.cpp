// A library with an entry point: a component library, or the COM bridge.
#include "tests/instantiation/stand_in.h"

#include <cstdio>

using namespace stand_in;

extern "C" {

TARVO_EXPORT TarvoResult vaskCreateObject(const TarvoUUID* uuid, IVaskInterface** instance) {
    note("create " + std::to_string(uuid->bytes[15]) + (*instance == nullptr ? "" : " over"));
    if (answers.create == RC_OK)
        *instance = &(new Instance(1))->pair;
    return answers.create;
}

TARVO_EXPORT const char* takeNotes() {
    return takeNotesOfModule();
}

TARVO_EXPORT void answerWith(const Answers& given) {
    answers = given;
}
}
