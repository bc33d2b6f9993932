# Installation and packages.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS genutil EXPORT genutil
  RUNTIME COMPONENT library
  LIBRARY COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/genutil COMPONENT development
  FILES_MATCHING PATTERN "*.h")
if(GENUTIL_PROGRAM)
  install(TARGETS genutil_program RUNTIME COMPONENT program)
endif()
if(GENUTIL_PROGRAM AND NOT WIN32)
  # Manual page and completion, generated from the help of the program.
  foreach(kind manual completion)
    add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/genutil.${kind}
      COMMAND genutil_program --${kind} > ${PROJECT_BINARY_DIR}/genutil.${kind}
      DEPENDS genutil_program VERBATIM)
  endforeach()
  add_custom_target(genutil_manual ALL
    DEPENDS ${PROJECT_BINARY_DIR}/genutil.manual ${PROJECT_BINARY_DIR}/genutil.completion)
  install(FILES ${PROJECT_BINARY_DIR}/genutil.manual RENAME genutil.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
  install(FILES ${PROJECT_BINARY_DIR}/genutil.completion RENAME genutil
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT program)
  # The library is found next to the program at any location.
  set_target_properties(genutil_program PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/genutil)
install(EXPORT genutil NAMESPACE genutil:: FILE genutilTargets.cmake DESTINATION ${package_folder}
  COMPONENT development)
# A static library requires its dependencies.
if(NOT GENUTIL_SHARED AND NOT WIN32)
  set(GENUTIL_DEPENDENCIES "include(CMakeFindDependencyMacro)
find_dependency(ICU COMPONENTS uc i18n)
find_dependency(SQLite3)
find_dependency(Threads)")
  set(GENUTIL_PC_REQUIRES "Requires: icu-i18n icu-uc sqlite3")
  set(GENUTIL_PC_LIBS " -lpthread -ldl")
elseif(NOT GENUTIL_SHARED)
  list(TRANSFORM GENUTIL_SYSTEM_LIBRARIES PREPEND " -l" OUTPUT_VARIABLE GENUTIL_PC_LIBS)
  string(REPLACE ";" "" GENUTIL_PC_LIBS "${GENUTIL_PC_LIBS}")
endif()
if(NOT GENUTIL_SHARED)
  set(GENUTIL_PC_CFLAGS " -DGENUTIL_STATIC")
  string(APPEND GENUTIL_PC_LIBS " -lstdc++")
endif()
configure_package_config_file(cmake/genutilConfig.cmake.in ${PROJECT_BINARY_DIR}/genutilConfig.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/genutilConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/genutilConfig.cmake ${PROJECT_BINARY_DIR}/genutilConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)
# Relative, so that the installed tree can be moved.
file(RELATIVE_PATH GENUTIL_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" GENUTIL_PC_PREFIX "${GENUTIL_PC_PREFIX}")
configure_file(cmake/genutil.pc.in ${PROJECT_BINARY_DIR}/genutil.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/genutil.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)

# Packages: three for Debian, one archive for Windows.
set(CPACK_PACKAGE_NAME genutil)
set(CPACK_PACKAGE_VENDOR "the genutil developers")
set(CPACK_PACKAGE_CONTACT "the genutil developers <genutil@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "locale-aware general utility library")
set(CPACK_STRIP_FILES ON)
set(CPACK_THREADS 0)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  math(EXPR windows "8 * ${CMAKE_SIZEOF_VOID_P}")
  set(windows win${windows})
  set(CPACK_PACKAGE_FILE_NAME genutil-${PROJECT_VERSION}-${windows})
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_COMPONENTS_ALL library development program)
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libgenutil1)
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
  set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "locale-aware general utility library
 Text in single-byte and double-byte encodings, conversion, lists, dates,
 numbers and money in every locale, trace, threads and system services.")
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libgenutil-dev)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libgenutil1 (= ${PROJECT_VERSION})")
  set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "locale-aware general utility library: headers
 What is needed to build programs with libgenutil.")
  set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME genutil)
  set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION utils)
  set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "libgenutil1 (= ${PROJECT_VERSION})")
  set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "encodings, locales and settings on the command line
 Detects and converts encodings, shows and reads dates and numbers as the
 users of a locale see them, and reads and writes settings.")
endif()
include(CPack)
