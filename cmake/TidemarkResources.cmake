set(TIDEMARK_PICTURES tidemark.ico splash.bmp about.bmp)

# tidemark_resources(TARGET [DESCRIPTION text]): gives a Windows program the application manifest, a
# version resource made from the project's version, and the program's icon and pictures. Without the
# manifest a program gets the old common controls, so test programs have all of it too. The resource
# compiler's failure is the build's.
function(tidemark_resources target)
    cmake_parse_arguments(PARSE_ARGV 1 RESOURCE "" "DESCRIPTION" "")
    if(NOT RESOURCE_DESCRIPTION)
        set(RESOURCE_DESCRIPTION "${target}")
    endif()
    set(RESOURCE_TARGET "${target}")
    string(REPLACE "." "," RESOURCE_VERSION "${TIDEMARK_FILE_VERSION}")
    set(RESOURCE_MANIFEST "${CMAKE_CURRENT_BINARY_DIR}/${target}.manifest")
    set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc")
    configure_file("${PROJECT_SOURCE_DIR}/res/tidemark.manifest" "${RESOURCE_MANIFEST}" @ONLY)
    configure_file("${PROJECT_SOURCE_DIR}/res/version.rc.in" "${script}" @ONLY)
    set_source_files_properties("${script}" PROPERTIES OBJECT_DEPENDS "${RESOURCE_MANIFEST}")
    set(pictures "${CMAKE_CURRENT_BINARY_DIR}/${target}_pictures.rc")
    configure_file("${PROJECT_SOURCE_DIR}/res/pictures.rc.in" "${pictures}" @ONLY)
    list(TRANSFORM TIDEMARK_PICTURES PREPEND "${PROJECT_SOURCE_DIR}/res/" OUTPUT_VARIABLE files)
    set_source_files_properties("${pictures}" PROPERTIES OBJECT_DEPENDS "${files}")
    target_sources(${target} PRIVATE "${script}" "${pictures}")
endfunction()
