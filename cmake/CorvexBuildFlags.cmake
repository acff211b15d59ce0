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
if(CMAKE_UNITY_BUILD)
    # Files that are compiled together see each other's names; apart, every name is checked.
    list(REMOVE_ITEM _corvexWarnings -Wshadow)
endif()
if(CORVEX_WARNINGS_AS_ERRORS)
    list(APPEND _corvexWarnings -Werror)
endif()

function(corvex_build_flags target)
    # No contraction: a fused multiply-add rounds once instead of twice, and results must not depend on the machine.
    target_compile_options(${target} PRIVATE ${_corvexWarnings} -ffp-contract=off)
    set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()
