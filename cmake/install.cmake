# An installation: the modules and the tool in one folder, since they find each other there.
install(TARGETS TARVO TARVOResource TARVOIDLParser tarvo_tool
    RUNTIME DESTINATION bin
    LIBRARY DESTINATION bin
    ARCHIVE DESTINATION lib EXCLUDE_FROM_ALL) # functions are bound at run time, not by import library
install(FILES companions/definitions/component_categories.tidl DESTINATION bin)
install(DIRECTORY include/tarvo DESTINATION include FILES_MATCHING PATTERN *.h PATTERN *.hpp)
install(FILES README.md CHANGELOG.md LICENSE DESTINATION share/doc/tarvo)
install(DIRECTORY docs/ DESTINATION share/doc/tarvo)
