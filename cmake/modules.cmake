# How the library is put together from its folders, and how every module bounds what it exports.

# tarvo_part(NAME SOURCE...): one folder of the library. Its objects go into TARVO.dll and into the
# archive that tests and the tool link.
function(tarvo_part name)
    add_library(tarvo_${name} OBJECT ${ARGN})
    target_link_libraries(tarvo_${name} PRIVATE tarvo_options)
    set_property(GLOBAL APPEND PROPERTY TARVO_PARTS tarvo_${name})
endfunction()

# tarvo_module(TARGET FILE_NAME EXPORTS_FILE): names the module's file alike on both platforms and
# exports exactly the names listed in EXPORTS_FILE, one a line; a name behind "windows " exists there
# alone.
function(tarvo_module target file_name exports_file)
    cmake_path(GET file_name STEM base)
    cmake_path(GET file_name EXTENSION suffix)
    set_target_properties(${target} PROPERTIES PREFIX "" OUTPUT_NAME ${base} SUFFIX ${suffix} NO_SONAME ON)
    # Its version can be read from the file without loading it.
    file(CONFIGURE OUTPUT ${target}_version.c CONTENT
        "__attribute__((used)) static const char kVersion[] = \"@(#)TARVO @PROJECT_VERSION@\";\n" @ONLY)
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.c)
    file(STRINGS ${exports_file} lines)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${exports_file})
    set(names "")
    foreach(line IN LISTS lines)
        if(line MATCHES "^windows (.*)$")
            if(WIN32)
                list(APPEND names ${CMAKE_MATCH_1})
            endif()
        else()
            list(APPEND names ${line})
        endif()
    endforeach()
    if(WIN32)
        list(JOIN names "\n    " body)
        file(CONFIGURE OUTPUT ${target}.def CONTENT "LIBRARY \"${file_name}\"\nEXPORTS\n    ${body}\n")
        target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.def)
        set_target_properties(${target} PROPERTIES ENABLE_EXPORTS OFF)
    else()
        list(JOIN names ";\n    " body)
        file(CONFIGURE OUTPUT ${target}.map CONTENT "{\n  global:\n    ${body};\n  local: *;\n};\n")
        # A module calls its own exports, whatever the program has under the same names.
        target_link_options(${target} PRIVATE -Wl,-Bsymbolic -Wl,--version-script=${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
        if(NOT TARVO_SANITIZE)
            target_link_options(${target} PRIVATE -Wl,-z,defs)
        endif()
    endif()
endfunction()
