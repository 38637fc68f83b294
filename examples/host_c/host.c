/* A host in C: creates the counter and has it count. Usage: host_c NUMBER... */
#include "../counter/icounter.h"

#include <tarvo/client.h>
#include <tarvo/result.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* A string that the library can fill: what lies behind the pair is the caller's own affair. */
typedef struct Text {
    IVaskString pair;
    uint32_t length;
    char16_t units[1024];
} Text;

static void getText(void* me, const char16_t** text, uint32_t* length) {
    Text* self = me;
    *text = self->units;
    *length = self->length;
}

static TarvoResult setText(void* me, const char16_t* text, uint32_t length) {
    Text* self = me;
    if (length >= sizeof self->units / sizeof self->units[0])
        return RC_OUT_OF_MEMORY;
    memcpy(self->units, text, length * sizeof *text);
    self->units[length] = 0;
    self->length = length;
    return RC_OK;
}

static const IVaskStringTable kTextTable = {getText, setText};

static int fail(const Text* text) {
    uint32_t i;
    for (i = 0; i < text->length; ++i)
        fputc(text->units[i] < 128 ? text->units[i] : '?', stderr);
    fputc('\n', stderr);
    return EXIT_FAILURE;
}

static int failWith(Text* text, TarvoResult result) {
    if (tarvoEntryPoints()->getErrorDescription(result, &text->pair) != RC_OK)
        return EXIT_FAILURE;
    return fail(text);
}

int main(int argc, char** argv) {
    Text text;
    IVaskInterface* instance;
    IVaskInterface* found;
    ICounter* counter;
    TarvoResult result;
    int64_t total = 0;
    int i;

    memset(&text, 0, sizeof text);
    text.pair.me = &text;
    text.pair.table = &kTextTable;
    if (!loadTarvoLibrary(&text.pair))
        return fail(&text);
    result = tarvoEntryPoints()->tarvoCreatePMCInstance(&kCounterComponentId, 0, &instance);
    if (result != RC_OK)
        return failWith(&text, result);
    result = instance->table->queryInterface(instance->me, &kICounterId, &found);
    instance->table->release(instance->me);
    if (result != RC_OK)
        return failWith(&text, result);
    counter = (ICounter*)found;
    for (i = 1; i < argc && result == RC_OK; ++i)
        result = counter->table->add(counter->me, atoi(argv[i]), &total);
    counter->table->release(counter->me);
    if (result != RC_OK)
        return failWith(&text, result);
    printf("%lld\n", (long long)total);
    return EXIT_SUCCESS;
}
