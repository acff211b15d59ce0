# corvex_build_flags(TARGET): the warnings and code-generation rules that every target of this tree shares.
# They are private to the target: nothing of them reaches a consumer of the installed package.

set(_corvexWarnings
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-qual -Wcast-align -Wformat=2 -Wundef -Wextra-semi -Wzero-as-null-pointer-constant)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    list(APPEND _corvexWarnings -Wduplicated-cond -Wlogical-op -Wsuggest-override)
    if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # Reports std::string concatenation in the compiler's own headers (GCC bug 105651).
        list(APPEND _corvexWarnings -Wno-restrict)
        # Reports the object that the compiler itself passes to a capture-less lambda coroutine. clang checks our code.
        list(APPEND _corvexWarnings -Wno-zero-as-null-pointer-constant)
    endif()
    if(CORVEX_SANITIZE)
        # Instrumented code defeats the flow analysis behind this one.
        list(APPEND _corvexWarnings -Wno-maybe-uninitialized)
    endif()
endif()
# Files that are compiled together see each other's names; apart, every name is checked.
list(APPEND _corvexWarnings $<$<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>:-Wno-shadow>)
if(CORVEX_WARNINGS_AS_ERRORS)
    list(APPEND _corvexWarnings -Werror)
endif()

function(corvex_build_flags target)
    # No contraction: a fused multiply-add rounds once instead of twice, and results must not depend on the machine.
    target_compile_options(${target} PRIVATE ${_corvexWarnings} -ffp-contract=off)
    set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
        # Tables of addresses become read-only before main(): a fault elsewhere cannot bend calls.
        target_link_options(${target} PRIVATE LINKER:-z,relro,-z,now)
    endif()
endfunction()

# corvex_library_interface(TARGET): how a library presents itself to the linker. While the major version is 0, a minor
# version may break binary compatibility, so it is part of the soname and of the version of all symbols. The linker hides
# what the compiler cannot: instances of the standard library's templates, which its headers make visible.
function(corvex_library_interface target)
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
        POSITION_INDEPENDENT_CODE ON)
    if(BUILD_SHARED_LIBS AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
        set(_map "${PROJECT_BINARY_DIR}/exports.map")
        configure_file("${PROJECT_SOURCE_DIR}/cmake/exports.map.in" "${_map}" @ONLY)
        target_link_options(${target} PRIVATE "LINKER:--version-script=${_map}")
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${_map}")
    endif()
endfunction()

# corvex_test_flags(TARGET): what is under test is optimised as the preset says; tests themselves are compiled faster than
# they would ever run faster.
function(corvex_test_flags target)
    corvex_build_flags(${target})
    if(CORVEX_SANITIZE)
        target_compile_options(${target} PRIVATE -O0)
    else()
        target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
    endif()
endfunction()
