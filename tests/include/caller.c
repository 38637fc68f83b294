#include "caller.h"

#include <tarvo/result.h>
#include <tarvo/uuid.h>

#include <string.h>

static void getText(void* me, const char16_t** units, uint32_t* length) {
    const CallerText* text = me;
    *units = text->units;
    *length = text->length;
}

static TarvoResult setText(void* me, const char16_t* units, uint32_t length) {
    CallerText* text = me;
    if (length >= sizeof text->units / sizeof text->units[0])
        return RC_OUT_OF_MEMORY;
    memcpy(text->units, units, length * sizeof *units);
    text->units[length] = 0;
    text->length = length;
    return RC_OK;
}

static const IVaskStringTable kTextTable = {getText, setText};

void initialiseText(CallerText* text) {
    text->string.me = text;
    text->string.table = &kTextTable;
    text->length = 0;
    text->units[0] = 0;
}

TarvoUUID generateUUID(void) {
    vaskGenUUIDFunction* const generate = vaskGenUUID;
    return generate();
}

TarvoResult printUUID(const TarvoUUID* uuid, CallerText* text) {
    return vaskStringFromUUID(uuid, &text->string);
}

TarvoResult readUUID(const CallerText* text, TarvoUUID* uuid) {
    return vaskUUIDFromString(text->units, uuid);
}
