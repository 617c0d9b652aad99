# How every target of this project is compiled: the one place for language level, warnings,
# sanitizers and Windows definitions.

option(TIDEMARK_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)

# Applies the project's compile and link flags to a target.
function(tidemark_flags target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_include_directories(${target} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wshadow -Wconversion -Wformat=2 -Wundef -Wnon-virtual-dtor
        -Woverloaded-virtual -Wcast-align -Wextra-semi -Wredundant-decls -Werror)
    if(TIDEMARK_SANITIZE)
        target_compile_options(${target} PUBLIC
            -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
        # CTest starts a program once for each test, and a program at a fixed address starts sooner.
        target_link_options(${target} PUBLIC -fsanitize=address,undefined -no-pie)
    endif()
    if(WIN32)
        target_compile_definitions(${target} PUBLIC
            UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN STRICT STRICT_TYPED_ITEMIDS
            _WIN32_WINNT=0x0601 _WIN32_IE=0x0700)
        target_compile_options(${target} PRIVATE -ffunction-sections -fdata-sections)
        # Nothing but DLLs that Windows brings: the runtime libraries are linked in.
        target_link_options(${target} PUBLIC -static -Wl,--gc-sections)
    endif()
endfunction()

# tidemark_library(NAME source...): a static library of the project.
function(tidemark_library name)
    add_library(${name} STATIC ${ARGN})
    tidemark_flags(${name})
endfunction()
