# The Debian packages that scripts/package makes: one per component.
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL libtolvcore0 libtolvmessages0 libtolv-dev tolv-tools)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
    GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_OUTPUT_FILE_PREFIX "${PROJECT_BINARY_DIR}/packages")

set(CPACK_PACKAGE_NAME tolv)
set(CPACK_PACKAGE_CONTACT "Tolv maintainers <maintainers@tolv.invalid>")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
if(CMAKE_LIBRARY_ARCHITECTURE STREQUAL "arm-linux-gnueabihf")
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf) # else that of the machine
endif()

# Listed here, because dpkg-shlibdeps does not know the libraries of the other architecture. The versions
# are those of Debian 12, where the packages are built.
set(runtime "libc6 (>= 2.36), libgcc-s1 (>= 3.5), libstdc++6 (>= 12)")
set(same "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

# package(component section depends summary text): the control file of a component, and the documents that
# every package must contain.
function(package component section depends summary text)
    string(TOUPPER ${component} key)
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${component} PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
    # The first line is the summary.
    set(CPACK_COMPONENT_${key}_DESCRIPTION "${summary}\n${text}" PARENT_SCOPE)
    install(FILES "${PROJECT_BINARY_DIR}/changelog.Debian.gz"
        "${PROJECT_SOURCE_DIR}/cmake/debian/copyright"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${component}" COMPONENT ${component}
        EXCLUDE_FROM_ALL) # `cmake --install` installs no package
endfunction()

set(family "The messages of a modular measurement-instrument platform: typed
objects whose fields mirror themselves into a tree, which travels as
JSON text.")

package(libtolvcore0 libs "${runtime}" "metadata tree and message base of the Tolv libraries"
    "${family}\n.\nThis package has the tree, the JSON reader and writer, and the factory\nof messages.")
package(libtolvmessages0 libs "libtolvcore0 ${same}, ${runtime}"
    "typed messages of a measurement-instrument platform"
    "${family}\n.\nThis package has the message classes.")
package(libtolv-dev libdevel "libtolvmessages0 ${same}, libtolvcore0 ${same}"
    "development files of the Tolv libraries"
    "${family}\n.\nThis package has what a program needs to be compiled with them.")
package(tolv-tools utils "libtolvmessages0 ${same}, libtolvcore0 ${same}, libssl3 (>= 3.0.0), ${runtime}"
    "lists, shows and explains messages of measurement instruments"
    "${family}\n.\nThis package has the command tolvmsg.")
set(CPACK_DEBIAN_TOLV-TOOLS_PACKAGE_RECOMMENDS gnuplot-nox) # for tolvmsg plot
# shlibs names the package that programs linked against the library depend on; the trigger runs ldconfig.
foreach(library IN ITEMS Core Messages)
    string(TOLOWER "libtolv${library}0" component)
    string(TOUPPER ${component} key)
    set(control "${PROJECT_BINARY_DIR}/debian/${component}")
    file(WRITE "${control}/shlibs" "libTolv${library} 0 ${component} (>= ${PROJECT_VERSION})\n")
    file(WRITE "${control}/triggers" "activate-noawait ldconfig\n")
    set(CPACK_DEBIAN_${key}_PACKAGE_CONTROL_EXTRA "${control}/shlibs;${control}/triggers")
endforeach()
# The descriptions contain the summaries.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")

configure_file("${PROJECT_SOURCE_DIR}/cmake/debian/changelog.in"
    "${PROJECT_BINARY_DIR}/changelog.Debian" @ONLY)
execute_process(COMMAND gzip -9nc "${PROJECT_BINARY_DIR}/changelog.Debian"
    OUTPUT_FILE "${PROJECT_BINARY_DIR}/changelog.Debian.gz" COMMAND_ERROR_IS_FATAL ANY)

include(CPack)
