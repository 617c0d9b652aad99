# tidemark_resources(TARGET [DESCRIPTION text]): gives a Windows program the application manifest and
# a version resource made from the project's version. Without the manifest a program gets the old
# common controls, so test programs have it too. The resource compiler's failure is the build's.
function(tidemark_resources target)
    cmake_parse_arguments(PARSE_ARGV 1 RESOURCE "" "DESCRIPTION" "")
    if(NOT RESOURCE_DESCRIPTION)
        set(RESOURCE_DESCRIPTION "${target}")
    endif()
    set(RESOURCE_TARGET "${target}")
    set(RESOURCE_MANIFEST "${CMAKE_CURRENT_BINARY_DIR}/${target}.manifest")
    set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc")
    configure_file("${PROJECT_SOURCE_DIR}/res/tidemark.manifest" "${RESOURCE_MANIFEST}" @ONLY)
    configure_file("${PROJECT_SOURCE_DIR}/res/version.rc.in" "${script}" @ONLY)
    set_source_files_properties("${script}" PROPERTIES OBJECT_DEPENDS "${RESOURCE_MANIFEST}")
    target_sources(${target} PRIVATE "${script}")
endfunction()
