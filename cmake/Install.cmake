# Installs the library, its headers, a CMake package (find_package(Vellacore)) and vellacore.pc.
# Both package descriptions are relocatable: they find the prefix from their own location, so
# `cmake --install build --prefix DIR` works whatever CMAKE_INSTALL_PREFIX was at configure time,
# and an installed tree can be moved as a whole.
include(CMakePackageConfigHelpers)

set(VELLACORE_CMAKE_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Vellacore
    CACHE STRING "Where VellacoreConfig.cmake is installed, relative to the prefix")
set(VELLACORE_PKGCONFIG_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    CACHE STRING "Where vellacore.pc is installed, relative to the prefix")

install(TARGETS vellacore EXPORT VellacoreTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        COMPONENT Runtime NAMELINK_COMPONENT Development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime)
install(DIRECTORY include/Vellacore DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    COMPONENT Development
    FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp" PATTERN "*.inl")

# CMake package.
install(EXPORT VellacoreTargets
    NAMESPACE Vellacore::
    FILE VellacoreTargets.cmake
    DESTINATION ${VELLACORE_CMAKE_INSTALL_DIR}
    COMPONENT Development)
configure_package_config_file(
    ${CMAKE_CURRENT_LIST_DIR}/VellacoreConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/VellacoreConfig.cmake
    INSTALL_DESTINATION ${VELLACORE_CMAKE_INSTALL_DIR}
    PATH_VARS CMAKE_INSTALL_INCLUDEDIR)
write_basic_package_version_file(
    ${CMAKE_CURRENT_BINARY_DIR}/VellacoreConfigVersion.cmake
    VERSION ${PROJECT_VERSION}
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/VellacoreConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/VellacoreConfigVersion.cmake
    DESTINATION ${VELLACORE_CMAKE_INSTALL_DIR}
    COMPONENT Development)

# pkg-config. The prefix is written relative to ${pcfiledir} unless the install dirs are absolute.
function(vellacore_pc_dir out dir)
    if(IS_ABSOLUTE "${dir}")
        set(${out} "${dir}" PARENT_SCOPE)
    else()
        set(${out} "\${prefix}/${dir}" PARENT_SCOPE)
    endif()
endfunction()
if(IS_ABSOLUTE "${VELLACORE_PKGCONFIG_INSTALL_DIR}")
    set(VELLACORE_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
    file(RELATIVE_PATH VELLACORE_PC_UP
        "/vellacore-prefix/${VELLACORE_PKGCONFIG_INSTALL_DIR}" "/vellacore-prefix")
    string(REGEX REPLACE "/$" "" VELLACORE_PC_UP "${VELLACORE_PC_UP}")
    set(VELLACORE_PC_PREFIX "\${pcfiledir}/${VELLACORE_PC_UP}")
endif()
vellacore_pc_dir(VELLACORE_PC_LIBDIR "${CMAKE_INSTALL_LIBDIR}")
vellacore_pc_dir(VELLACORE_PC_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/vellacore.pc.in
    ${CMAKE_CURRENT_BINARY_DIR}/vellacore.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vellacore.pc
    DESTINATION ${VELLACORE_PKGCONFIG_INSTALL_DIR}
    COMPONENT Development)
