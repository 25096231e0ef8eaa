# orve_part(TARGET COMPONENT FOLDER): the headers of a library are found from FOLDER in the tree, and from one include folder
# when it is installed; find_package(orve-mailserver COMPONENTS COMPONENT) then offers orve-mailserver::COMPONENT.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(ORVE_INCLUDE_DIR "${CMAKE_INSTALL_INCLUDEDIR}/orve-mailserver")
set(ORVE_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/orve-mailserver")

function(orve_part target component folder)
  target_include_directories(${target} PUBLIC "$<BUILD_INTERFACE:${folder}>" "$<INSTALL_INTERFACE:${ORVE_INCLUDE_DIR}>")
  add_library(orve-mailserver::${component} ALIAS ${target})
  if(WIN32)
    return()
  endif()
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${component})
  install(TARGETS ${target} EXPORT orve-mailserver-${component}
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development)
  install(EXPORT orve-mailserver-${component} NAMESPACE orve-mailserver::
    DESTINATION "${ORVE_CMAKE_DIR}" COMPONENT development)
  file(RELATIVE_PATH below "${folder}" "${CMAKE_CURRENT_SOURCE_DIR}")
  install(DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}/" DESTINATION "${ORVE_INCLUDE_DIR}/${below}"
    COMPONENT development FILES_MATCHING PATTERN "*.h" PATTERN campioni EXCLUDE)
endfunction()

# orve_package(): what find_package reads first, and the Debian packages that `./dev package` makes.
function(orve_package)
  configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/orve-mailserver-config.cmake.in"
    "${PROJECT_BINARY_DIR}/orve-mailserver-config.cmake" INSTALL_DESTINATION "${ORVE_CMAKE_DIR}")
  write_basic_package_version_file("${PROJECT_BINARY_DIR}/orve-mailserver-config-version.cmake"
    COMPATIBILITY SameMinorVersion)
  install(FILES "${PROJECT_BINARY_DIR}/orve-mailserver-config.cmake"
    "${PROJECT_BINARY_DIR}/orve-mailserver-config-version.cmake"
    DESTINATION "${ORVE_CMAKE_DIR}" COMPONENT development)
  install(FILES README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT program)
  install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}" RENAME copyright COMPONENT program)
  install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}-dev" RENAME copyright COMPONENT development)
  install(DIRECTORY docs/ DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs" COMPONENT program)
  install(FILES examples/elenco.csv DESTINATION "${CMAKE_INSTALL_DOCDIR}/examples" COMPONENT program)
  install(FILES examples/CMakeLists.txt examples/invia_fattura.cpp
    DESTINATION "${CMAKE_INSTALL_DOCDIR}-dev/examples" COMPONENT development)
endfunction()
