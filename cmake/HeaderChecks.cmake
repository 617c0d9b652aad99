# header_checks: compiles every header of src/, tests/ and benchmarks/ that has no source of its own
# name by itself, to show that it includes what it uses. Not part of a normal build.
function(tidemark_header_checks)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}"
        "${PROJECT_SOURCE_DIR}/src/*.h" "${PROJECT_SOURCE_DIR}/tests/*.h"
        "${PROJECT_SOURCE_DIR}/benchmarks/*.h")
    set(sources "")
    foreach(header IN LISTS headers)
        string(REGEX REPLACE "\\.h$" ".cpp" twin "${header}")
        if(EXISTS "${PROJECT_SOURCE_DIR}/${twin}")
            continue()
        endif()
        string(REGEX REPLACE "^(src|tests)/" "" name "${header}")
        set(source "${CMAKE_CURRENT_BINARY_DIR}/header_checks/${header}.cpp")
        file(CONFIGURE OUTPUT "${source}" CONTENT "#include \"${name}\"\n")
        list(APPEND sources "${source}")
    endforeach()
    add_library(header_checks OBJECT EXCLUDE_FROM_ALL ${sources})
    tidemark_flags(header_checks)
    target_include_directories(header_checks PRIVATE "${PROJECT_SOURCE_DIR}/tests"
        "${PROJECT_SOURCE_DIR}" "${PROJECT_BINARY_DIR}/generated")
    target_link_libraries(header_checks PRIVATE gmock)
endfunction()
