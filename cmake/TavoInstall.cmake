# Installation. Include before the first install() so that rules without a component belong to the
# runtime; the rest is deferred until every target exists.
#   runtime  libTAVOParser and the embedded platform, or the one of TAVO_PLATFORM_DIR if
#            TAVO_INSTALL_PLATFORM is on
#   dev      headers, link names, CMake package, pkg-config file, examples
#   tools    tavo, its manual page and completions
# With the prefix /usr, as packages have it, libraries lie where the loader looks for them and nothing
# has a run path; with any other prefix what is installed finds its neighbours wherever that is moved.
include(GNUInstallDirs)
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(TAVO_FOR_PACKAGES ON)
endif()
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME runtime)
set(TAVO_INSTALL_SOURCES ${CMAKE_CURRENT_LIST_DIR})

# tavo_compress(FILE NAME): package/NAME, the same bytes for the same file.
function(tavo_compress file name)
  find_program(TAVO_GZIP gzip REQUIRED)
  set(output ${PROJECT_BINARY_DIR}/package/${name})
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/package
    COMMAND sh -c "exec \"$1\" -9nc \"$2\" >\"$3\"" sh ${TAVO_GZIP} ${file} ${output}
    DEPENDS ${file} VERBATIM)
  add_custom_target(tavo_compress_${name} ALL DEPENDS ${output})
endfunction()

function(tavo_install_library)
  if(NOT TAVO_PLATFORM_DIR)
    tavo_set_run_path(TAVOParser "$ORIGIN")
  elseif(NOT TAVO_FOR_PACKAGES OR TAVO_PLATFORM_RPATH)
    set(run_path "$ORIGIN")
    if(TAVO_PLATFORM_RPATH)
      list(APPEND run_path ${TAVO_PLATFORM_RPATH})
    endif()
    set_target_properties(TAVOParser PROPERTIES INSTALL_RPATH "${run_path}")
  endif()
  install(TARGETS TAVOParser
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ COMPONENT dev
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TAVOParser
    FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp" PATTERN "*.def")
  install(FILES
    ${PROJECT_SOURCE_DIR}/examples/parse_statement.c
    ${PROJECT_SOURCE_DIR}/examples/parse_statement.cpp
    ${PROJECT_SOURCE_DIR}/examples/CMakeLists.txt
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libtavoparser-dev/examples COMPONENT dev)
endfunction()

# The libraries of another platform, with the links by which the loader and the linker find them.
function(tavo_install_other_platform)
  foreach(name IN LISTS TAVO_PLATFORM_LIBRARY_NAMES)
    list(APPEND files "${TAVO_PLATFORM_DIR}/lib${name}.so")
  endforeach()
  install(CODE "file(INSTALL DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}\"
    TYPE SHARED_LIBRARY FOLLOW_SYMLINK_CHAIN FILES ${files})" COMPONENT runtime)
endfunction()

function(tavo_install_packages_of_build_tools)
  include(CMakePackageConfigHelpers)
  set(cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/TAVOParser)
  file(READ ${PROJECT_SOURCE_DIR}/include/TAVOApi.h api)
  string(REGEX MATCH "TAVO_ABI_VERSION ([0-9]+)" unused "${api}")
  set(TAVO_ABI_VERSION ${CMAKE_MATCH_1})
  # Whether the platform is installed next to libTAVOParser; otherwise the package looks for it.
  set(TAVO_PLATFORM_IS_BESIDE ON)
  if(TAVO_PLATFORM_DIR AND NOT TAVO_INSTALL_PLATFORM)
    set(TAVO_PLATFORM_IS_BESIDE OFF)
  endif()
  configure_package_config_file(
    ${TAVO_INSTALL_SOURCES}/TAVOParserConfig.cmake.in
    ${PROJECT_BINARY_DIR}/package/TAVOParserConfig.cmake
    INSTALL_DESTINATION ${cmake_dir}
    PATH_VARS CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_INCLUDEDIR)
  write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/package/TAVOParserConfigVersion.cmake COMPATIBILITY SameMajorVersion)
  install(FILES
    ${PROJECT_BINARY_DIR}/package/TAVOParserConfig.cmake
    ${PROJECT_BINARY_DIR}/package/TAVOParserConfigVersion.cmake
    DESTINATION ${cmake_dir} COMPONENT dev)
  set(TAVO_PC_PLATFORM_DIR "\${libdir}")
  if(TAVO_PLATFORM_RPATH)
    set(TAVO_PC_PLATFORM_DIR ${TAVO_PLATFORM_RPATH})
  endif()
  file(RELATIVE_PATH TAVO_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
  configure_file(${TAVO_INSTALL_SOURCES}/tavoparser.pc.in
                 ${PROJECT_BINARY_DIR}/package/tavoparser.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/package/tavoparser.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
endfunction()

function(tavo_install_tools)
  install(TARGETS tavo RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  tavo_compress(${PROJECT_SOURCE_DIR}/tools/tavo/tavo.1 tavo.1.gz)
  install(FILES ${PROJECT_BINARY_DIR}/package/tavo.1.gz
          DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  install(FILES ${PROJECT_SOURCE_DIR}/docs/cli.md ${PROJECT_SOURCE_DIR}/docs/language.md
                ${PROJECT_SOURCE_DIR}/docs/errors.md ${PROJECT_SOURCE_DIR}/docs/jobs.md
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tavo COMPONENT tools)
  install(FILES ${PROJECT_SOURCE_DIR}/tools/tavo/pipelines/github-problem-matcher.json
          DESTINATION ${CMAKE_INSTALL_DATADIR}/tavo COMPONENT tools)
  set(dir ${PROJECT_BINARY_DIR}/completions)
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

function(tavo_install_everything)
  set(TAVO_PLATFORM_LIBRARY_NAMES
      TAVOOSLibUnix TAVODataCnvLib TAVOErrorHandler TAVOEnvLib TAVOProvider)
  tavo_install_library()
  tavo_install_packages_of_build_tools()
  if(TAVO_PLATFORM_DIR AND TAVO_INSTALL_PLATFORM)
    tavo_install_other_platform()
  endif()
  if(TAVO_BUILD_TOOLS)
    tavo_install_tools()
  endif()
  if(TAVO_FOR_PACKAGES AND PROJECT_IS_TOP_LEVEL)
    include(TavoPackages)
  endif()
endfunction()
cmake_language(DEFER DIRECTORY ${PROJECT_SOURCE_DIR} CALL tavo_install_everything)
