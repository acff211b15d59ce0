include(CMakePackageConfigHelpers)

set(_packageDir "${CMAKE_INSTALL_LIBDIR}/cmake/Corvex")
install(TARGETS Corvex EXPORT CorvexTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    FILE_SET adapters DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    FILE_SET generatedHeaders DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(EXPORT CorvexTargets NAMESPACE Corvex:: DESTINATION "${_packageDir}")
if(CORVEX_HAS_PROTO)
    install(TARGETS CorvexProto EXPORT CorvexProtoTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/CorvexProto"
        FILE_SET generatedHeaders DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/CorvexProto")
    install(EXPORT CorvexProtoTargets NAMESPACE Corvex:: DESTINATION "${_packageDir}")
endif()
if(CORVEX_HAS_TOOL)
    install(TARGETS corvex RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()

configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/CorvexConfig.cmake.in" "${PROJECT_BINARY_DIR}/CorvexConfig.cmake"
    INSTALL_DESTINATION "${_packageDir}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/CorvexConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/CorvexConfig.cmake" "${PROJECT_BINARY_DIR}/CorvexConfigVersion.cmake"
    DESTINATION "${_packageDir}")

# The .pc file finds its prefix from where it lies, so that the installed tree can be moved.
file(RELATIVE_PATH CORVEX_PC_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" CORVEX_PC_PREFIX "${CORVEX_PC_PREFIX}")
set(CORVEX_PC_CFLAGS "")
if(NOT BUILD_SHARED_LIBS)
    set(CORVEX_PC_CFLAGS " -DCORVEX_STATIC")
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/corvex.pc.in" "${PROJECT_BINARY_DIR}/corvex.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/corvex.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
