# The examples are a project that finds an installation; here it finds the targets of this tree.
block()
    unset(CMAKE_RUNTIME_OUTPUT_DIRECTORY)
    unset(CMAKE_LIBRARY_OUTPUT_DIRECTORY)
    set(TARVO_DIR ${PROJECT_BINARY_DIR}/tree)
    file(WRITE ${TARVO_DIR}/TARVOConfig.cmake "")
    add_subdirectory(examples)
endblock()
