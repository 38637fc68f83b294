# Compares the names that MODULE exports with those of LIST.
if(WINDOWS)
    set(command ${OBJDUMP} -p ${MODULE})
    # "	[   1] getErrorDescription", in the name table alone.
    set(line "\n\t\\[ *[0-9]+\\] ([A-Za-z_][^ \n]*)")
else()
    set(command ${NM} -D --defined-only ${MODULE})
    # "00000000000011a0 T getErrorDescription"
    set(line "[0-9a-f]+ [A-Za-z] ([^ \n]+)")
endif()
execute_process(COMMAND ${command} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "${line}" exported "${output}")
list(TRANSFORM exported REPLACE "${line}" "\\1")

file(STRINGS ${LIST} listed)
if(NOT WINDOWS)
    list(FILTER listed EXCLUDE REGEX "^windows ")
endif()
list(TRANSFORM listed REPLACE "^windows " "")

list(SORT exported)
list(SORT listed)
if(NOT exported STREQUAL listed)
    message(FATAL_ERROR "${MODULE} exports\n  ${exported}\nand not the names listed\n  ${listed}")
endif()
