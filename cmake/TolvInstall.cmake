include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/TolvMessages")
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# Each component is a Debian package; cmake/TolvPackage.cmake describes them.
foreach(library IN ITEMS Core Messages)
    string(TOLOWER "libtolv${library}0" package)
    install(TARGETS Tolv${library} EXPORT TolvTargets
        LIBRARY COMPONENT ${package} NAMELINK_COMPONENT libtolv-dev)
endforeach()
foreach(header IN LISTS TOLV_PUBLIC_HEADERS)
    cmake_path(GET header PARENT_PATH folder)
    install(FILES "${PROJECT_SOURCE_DIR}/src/${header}"
        DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}" COMPONENT libtolv-dev)
endforeach()

install(EXPORT TolvTargets NAMESPACE Tolv:: DESTINATION "${package_dir}"
    COMPONENT libtolv-dev)
configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/TolvMessagesConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/TolvMessagesConfig.cmake"
    INSTALL_DESTINATION "${package_dir}")
# Below 1.0 a minor version may break programs.
write_basic_package_version_file("${PROJECT_BINARY_DIR}/TolvMessagesConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/TolvMessagesConfig.cmake"
    "${PROJECT_BINARY_DIR}/TolvMessagesConfigVersion.cmake"
    DESTINATION "${package_dir}"
    COMPONENT libtolv-dev)

# The .pc files name the prefix relative to themselves, so that an installed tree can be moved.
cmake_path(ABSOLUTE_PATH pkgconfig_dir BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}"
    OUTPUT_VARIABLE full_pkgconfig_dir)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY "${full_pkgconfig_dir}"
    OUTPUT_VARIABLE prefix_from_pc)
foreach(library IN ITEMS core messages)
    configure_file("${PROJECT_SOURCE_DIR}/cmake/tolv-${library}.pc.in"
        "${PROJECT_BINARY_DIR}/tolv-${library}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/tolv-${library}.pc" DESTINATION "${pkgconfig_dir}"
        COMPONENT libtolv-dev)
endforeach()

# The guide and the pages that it links to, in the same folders as in the sources.
install(FILES "${PROJECT_SOURCE_DIR}/SECURITY.md"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT libtolv-dev)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT libtolv-dev PATTERN doxygen EXCLUDE)

# In a folder that the loader searches by default, it finds a new library only through its cache. The
# Debian packages run ldconfig by a trigger.
string(CONFIGURE [[
if(CMAKE_INSTALL_PREFIX MATCHES "^/usr(/local)?/?$")
    message(STATUS
        "Run ldconfig: programs find the libraries in ${CMAKE_INSTALL_PREFIX}/@CMAKE_INSTALL_LIBDIR@ only after it has")
endif()
]] tell_ldconfig @ONLY)
install(CODE "${tell_ldconfig}" COMPONENT libtolvcore0)
