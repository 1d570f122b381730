# The Debian packages, of a build with the prefix /usr: ./dev package.
#   libtavoparser1     libraries, by the names that programs are linked with
#   libtavoparser-dev  headers, link names, CMake package, pkg-config file, examples
#   tavo               the command line
# A package of bindings is one more component: its name, section, description and what it depends on.
set(folder ${TAVO_INSTALL_SOURCES}/debian)
set(runtime libtavoparser${PROJECT_VERSION_MAJOR})
set(dev libtavoparser-dev)
set(tools tavo)
set(components runtime dev)
if(TAVO_BUILD_TOOLS)
  list(APPEND components tools)
endif()

# What each package holds about itself.
tavo_compress(${folder}/changelog changelog.gz)
foreach(component IN LISTS components)
  install(FILES ${folder}/copyright ${PROJECT_BINARY_DIR}/package/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${${component}} COMPONENT ${component})
  if(EXISTS ${folder}/${component}.lintian-overrides)
    configure_file(${folder}/${component}.lintian-overrides
      ${PROJECT_BINARY_DIR}/package/lintian/${${component}} @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/package/lintian/${${component}}
      DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT ${component})
  endif()
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${${component}})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavoparser)
set(CPACK_PACKAGE_VENDOR "TAVOParser")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "TAVOParser maintainers <maintainers@tavoparser.invalid>")
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_COMPONENT_DEV_DEPENDS runtime)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${CMAKE_LIBRARY_OUTPUT_DIRECTORY} ${TAVO_PLATFORM_DIR})
# What tells dpkg-shlibdeps which package a program needs that is linked with ours.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# Tells ldconfig that there are new libraries.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${folder}/triggers)
set(contents "the shared library and its embedded platform.")
if(TAVO_PLATFORM_DIR AND TAVO_INSTALL_PLATFORM)
  set(contents "the shared library and the platform it was built for.")
elseif(TAVO_PLATFORM_DIR)
  list(TRANSFORM TAVO_PLATFORM_LIBRARY_NAMES REPLACE "(.+)" " lib\\1" OUTPUT_VARIABLE needed)
  list(JOIN needed "\n" needed)
  set(contents "the shared library. It needs the platform:\n${needed}")
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS ${TAVO_PLATFORM_PACKAGE})
endif()
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "parameter-string parser of the masking suite
Reads the statements that configure the providers of a data-masking suite and
hands back key/value pairs, or errors with number, position and inserts.
.
This package holds ${contents}")
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)
# A public header names types of the runtime.
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS libantlr3c-dev)
set(CPACK_DEBIAN_DEV_DESCRIPTION "development files of the masking suite's parameter-string parser
Reads the statements that configure the providers of a data-masking suite and
hands back key/value pairs, or errors with number, position and inserts.
.
This package holds headers for C and C++, a CMake package, a pkg-config file
and examples.")
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "command line for the masking suite's parameter statements
Reads the statements that configure the providers of a data-masking suite:
parses and checks them, explains the language and lays statements out.")
include(CPack)
