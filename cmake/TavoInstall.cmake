# Installation and packages. Include before the first install() so that rules without a component
# belong to the runtime; the rest is deferred until every target exists.
#   runtime  libTAVOParser and the embedded platform
#   dev      headers, link names, CMake package, pkg-config file, examples
#   tools    tavo, its manual page and completions
include(GNUInstallDirs)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME runtime)
set(TAVO_INSTALL_SOURCES ${CMAKE_CURRENT_LIST_DIR})

function(tavo_install_library)
  set_target_properties(TAVOParser PROPERTIES INSTALL_RPATH "$ORIGIN")
  install(TARGETS TAVOParser
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev)
  install(DIRECTORY ${CMAKE_SOURCE_DIR}/include/ COMPONENT dev
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TAVOParser
    FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp" PATTERN "*.def")
  install(FILES
    ${CMAKE_SOURCE_DIR}/examples/parse_statement.c
    ${CMAKE_SOURCE_DIR}/examples/parse_statement.cpp
    ${CMAKE_SOURCE_DIR}/examples/CMakeLists.txt
    DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples COMPONENT dev)
endfunction()

function(tavo_install_packages_of_build_tools)
  include(CMakePackageConfigHelpers)
  set(cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/TAVOParser)
  file(READ ${CMAKE_SOURCE_DIR}/include/TAVOApi.h api)
  string(REGEX MATCH "TAVO_ABI_VERSION ([0-9]+)" unused "${api}")
  set(TAVO_ABI_VERSION ${CMAKE_MATCH_1})
  # The embedded platform is installed next to libTAVOParser; another platform stays where it is.
  set(TAVO_INSTALLED_PLATFORM "")
  if(NOT TAVO_PLATFORM_DIR)
    set(TAVO_INSTALLED_PLATFORM ${TAVO_PLATFORM_LIBRARY_NAMES})
  endif()
  configure_package_config_file(
    ${TAVO_INSTALL_SOURCES}/TAVOParserConfig.cmake.in
    ${CMAKE_BINARY_DIR}/package/TAVOParserConfig.cmake
    INSTALL_DESTINATION ${cmake_dir}
    PATH_VARS CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_INCLUDEDIR)
  write_basic_package_version_file(
    ${CMAKE_BINARY_DIR}/package/TAVOParserConfigVersion.cmake COMPATIBILITY SameMajorVersion)
  install(FILES
    ${CMAKE_BINARY_DIR}/package/TAVOParserConfig.cmake
    ${CMAKE_BINARY_DIR}/package/TAVOParserConfigVersion.cmake
    DESTINATION ${cmake_dir} COMPONENT dev)
  file(RELATIVE_PATH TAVO_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
  configure_file(${TAVO_INSTALL_SOURCES}/tavoparser.pc.in
                 ${CMAKE_BINARY_DIR}/package/tavoparser.pc @ONLY)
  install(FILES ${CMAKE_BINARY_DIR}/package/tavoparser.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
endfunction()

function(tavo_install_tools)
  install(TARGETS tavo RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  install(FILES ${CMAKE_SOURCE_DIR}/tools/tavo/tavo.1
          DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  install(FILES ${CMAKE_SOURCE_DIR}/docs/cli.md ${CMAKE_SOURCE_DIR}/docs/language.md
                ${CMAKE_SOURCE_DIR}/docs/errors.md
          DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT tools)
  set(dir ${CMAKE_BINARY_DIR}/completions)
  set(files "")
  foreach(shell bash zsh fish)
    add_custom_command(OUTPUT ${dir}/tavo.${shell}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${dir}
      COMMAND tavo completion ${shell} --output ${dir}/tavo.${shell}
      DEPENDS tavo TAVOParser COMMENT "Writing the completion for ${shell}" VERBATIM)
    list(APPEND files ${dir}/tavo.${shell})
  endforeach()
  add_custom_target(tavo_completions ALL DEPENDS ${files})
  install(FILES ${dir}/tavo.bash RENAME tavo COMPONENT tools
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${dir}/tavo.zsh RENAME _tavo COMPONENT tools
          DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
  install(FILES ${dir}/tavo.fish COMPONENT tools
          DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endfunction()

function(tavo_describe_packages)
  set(CPACK_GENERATOR DEB)
  set(CPACK_PACKAGE_NAME tavoparser)
  set(CPACK_PACKAGE_VENDOR "TAVOParser")
  set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
  set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Parameter-string parser of the masking suite")
  set(CPACK_PACKAGE_CONTACT "TAVOParser maintainers <maintainers@tavoparser.invalid>")
  set(CPACK_COMPONENTS_ALL runtime dev)
  if(TAVO_BUILD_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL tools)
  endif()
  set(CPACK_COMPONENT_DEV_DEPENDS runtime)
  set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
  set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
      "Shared library with the embedded platform.\nParses the parameter strings of the masking suite.")
  set(CPACK_DEBIAN_DEV_DESCRIPTION
      "Development files of the library.\nHeaders, CMake package and pkg-config file.")
  set(CPACK_DEBIAN_TOOLS_DESCRIPTION
      "The command line, tavo.\nParses, checks, explains and formats statements.")
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libtavoparser${PROJECT_VERSION_MAJOR})
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_GENERATE_SHLIBS ON)
  set(CPACK_DEBIAN_DEV_PACKAGE_NAME libtavoparser-dev)
  set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
  set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)
  set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS libantlr3c-dev)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME tavo)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
  set(CPACK_STRIP_FILES ON)
  include(CPack)
endfunction()

function(tavo_install_everything)
  set(TAVO_PLATFORM_LIBRARY_NAMES
      TAVOOSLibUnix TAVODataCnvLib TAVOErrorHandler TAVOEnvLib TAVOProvider)
  tavo_install_library()
  tavo_install_packages_of_build_tools()
  if(TAVO_BUILD_TOOLS)
    tavo_install_tools()
  endif()
  tavo_describe_packages()
endfunction()
cmake_language(DEFER DIRECTORY ${CMAKE_SOURCE_DIR} CALL tavo_install_everything)
