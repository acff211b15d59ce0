# Sanitizers cover the whole build: half-instrumented programs miss faults and report false ones.
if(CORVEX_SANITIZE)
    add_compile_options(-fsanitize=${CORVEX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${CORVEX_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CORVEX_SANITIZE MATCHES "undefined")
        # With these GCC no longer knows that an inline variable has an address, and refuses constexpr tables whose
        # elements have destructors. The fuzzers' clang build keeps them, and a null access still faults.
        add_compile_options(-fno-sanitize=null,nonnull-attribute,returns-nonnull-attribute)
    endif()
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()
if(CORVEX_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "CORVEX_FUZZ needs clang: libFuzzer is part of it")
    endif()
    add_link_options(-fsanitize=fuzzer-no-link)
endif()

# corvex_fuzz_coverage(TARGET): lets fuzzers see which way an input takes through the target.
function(corvex_fuzz_coverage target)
    if(CORVEX_FUZZ)
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
endfunction()
