# Read by CPack for each kind of package: the installer is told from the zip by its name.
if(CPACK_GENERATOR STREQUAL "NSIS")
    string(APPEND CPACK_PACKAGE_FILE_NAME "-setup")
endif()
