# What is installed, in components: runtime (the library and its catalogues), development, proto, proto_development, tool.
# Everything lies relative to the prefix, so that an installed tree can be moved; only hosts that translate texts
# without setLocalizationDirectory() depend on the prefix that was configured.
include(CMakePackageConfigHelpers)

set(_packageDir "${CMAKE_INSTALL_LIBDIR}/cmake/Corvex")
# corvex_install_library(TARGET RUNTIME DEVELOPMENT INCLUDEDIR FILE_SET...): a library, its headers and its description
# for CMake, in the components RUNTIME and DEVELOPMENT.
function(corvex_install_library target runtime development includedir)
    set(_headers)
    foreach(_set IN LISTS ARGN)
        list(APPEND _headers FILE_SET ${_set} DESTINATION "${includedir}" COMPONENT ${development})
    endforeach()
    install(TARGETS ${target} EXPORT ${target}Targets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${runtime} NAMELINK_COMPONENT ${development}
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${development}
        ${_headers})
    install(EXPORT ${target}Targets NAMESPACE Corvex:: DESTINATION "${_packageDir}" COMPONENT ${development})
endfunction()

# corvex_system_rpath(FILE COMPONENT): what is installed into the system's own directories finds the system's libraries
# without being told where they are.
function(corvex_system_rpath file component)
    install(CODE "if(CMAKE_INSTALL_PREFIX STREQUAL \"/usr\")
        file(RPATH_REMOVE FILE \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${file}\")
    endif()" COMPONENT ${component})
endfunction()

corvex_install_library(Corvex runtime development "${CMAKE_INSTALL_INCLUDEDIR}" HEADERS adapters generatedHeaders)
configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/CorvexConfig.cmake.in" "${PROJECT_BINARY_DIR}/CorvexConfig.cmake"
    INSTALL_DESTINATION "${_packageDir}" NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/CorvexConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/CorvexConfig.cmake" "${PROJECT_BINARY_DIR}/CorvexConfigVersion.cmake"
    DESTINATION "${_packageDir}" COMPONENT development)

# corvex_install_pc(NAME COMPONENT): a .pc file, which finds its prefix from where it lies.
file(RELATIVE_PATH CORVEX_PC_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" CORVEX_PC_PREFIX "${CORVEX_PC_PREFIX}")
# Users of the shared library need not have what it was linked with; pkg-config would ask for it.
set(CORVEX_PC_CFLAGS "")
set(CORVEX_PC_STATIC "")
if(NOT BUILD_SHARED_LIBS)
    set(CORVEX_PC_CFLAGS " -DCORVEX_STATIC")
    string(CONCAT CORVEX_PC_STATIC "Requires.private: libutf8proc libhwy sqlite3${CORVEX_PC_SYSTEMD}\n"
        "Libs.private: -lstdc++ -lm -pthread\n")
endif()
function(corvex_install_pc name component)
    configure_file("${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${name}.pc"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT ${component})
endfunction()
corvex_install_pc(corvex development)

if(CORVEX_HAS_PROTO)
    corvex_install_library(CorvexProto proto proto_development "${CMAKE_INSTALL_INCLUDEDIR}/CorvexProto"
        HEADERS generatedHeaders)
    corvex_install_pc(corvexproto proto_development)
    if(BUILD_SHARED_LIBS)
        corvex_system_rpath("${CMAKE_INSTALL_LIBDIR}/libcorvexproto.so.${PROJECT_VERSION}" proto)
    endif()
endif()
if(CORVEX_HAS_TOOL)
    install(TARGETS corvex RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT tool)
    corvex_system_rpath("${CMAKE_INSTALL_BINDIR}/corvex" tool)
endif()
