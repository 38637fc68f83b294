# The packages of the system that tests and the tool use. All of them come as source, so that one
# installed package serves the Linux and the Windows build.

# GoogleTest, built with the project's own compiler and flags but without its warnings.
set(TARVO_GOOGLETEST /usr/src/googletest/googletest CACHE PATH "The source of GoogleTest")
if(BUILD_TESTING AND NOT TARVO_FUZZ)
    find_package(Threads REQUIRED)
    add_library(tarvo_gtest STATIC EXCLUDE_FROM_ALL
        ${TARVO_GOOGLETEST}/src/gtest-all.cc ${TARVO_GOOGLETEST}/src/gtest_main.cc)
    # Programs with a main of their own leave that one in the archive.
    set_target_properties(tarvo_gtest PROPERTIES UNITY_BUILD OFF)
    target_include_directories(tarvo_gtest PRIVATE ${TARVO_GOOGLETEST})
    target_include_directories(tarvo_gtest SYSTEM PUBLIC ${TARVO_GOOGLETEST}/include)
    target_link_libraries(tarvo_gtest PUBLIC Threads::Threads)
endif()

# Header-only libraries. The compiler for Windows must not see the rest of /usr/include, so that it
# gets these folders alone, as links.
set(TARVO_HEADERS /usr/include CACHE PATH "Where the folders CLI, fmt and nlohmann are")
set(headers ${PROJECT_BINARY_DIR}/headers)
foreach(library CLI fmt nlohmann)
    file(MAKE_DIRECTORY ${headers})
    file(CREATE_LINK ${TARVO_HEADERS}/${library} ${headers}/${library} SYMBOLIC)
endforeach()
add_library(tarvo_headers INTERFACE)
target_include_directories(tarvo_headers SYSTEM INTERFACE ${headers})

# Compiled once: as headers alone, fmt doubles the time that every source takes which uses it.
add_library(tarvo_fmt STATIC EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/cmake/fmt.cpp)
target_link_libraries(tarvo_fmt PUBLIC tarvo_headers)
